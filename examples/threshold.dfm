object Graph1: TFXGraph
  object Pattern1: TFXTestPatternGen
    ImageSize.Width = 160
    ImageSize.Height = 120
    Format = vfRGB32
    OutputPin.SinkPins = (
      Graph1.Threshold1.InputPin)
  end
  object Threshold1: TFXThreshold
    ThresholdTop.Threshold = 12632256
    ThresholdBottom.Threshold = 4210752
    ThresholdBottom.Value = 16777215
    InputPin.SourcePin = Graph1.Pattern1.OutputPin
    OutputPin.SinkPins = (
      Graph1.Logger1.InputPin)
  end
  object Logger1: TFXFileLogger
    FileName = 'threshold.y4m'
    InputPin.SourcePin = Graph1.Threshold1.OutputPin
  end
end
