object Graph1: TFXGraph
  object Pattern1: TFXTestPatternGen
    Format = vfGray8
    Noise = 40
    OutputPin.SinkPins = (
      Graph1.Median1.InputPin)
  end
  object Median1: TFXBoxFilter
    MaskSize.Width = 5
    MaskSize.Height = 5
    FilterMode = bfmMedian
    InputPin.SourcePin = Graph1.Pattern1.OutputPin
    OutputPin.SinkPins = (
      Graph1.Logger1.InputPin)
  end
  object Logger1: TFXFileLogger
    FileName = 'denoised.y4m'
    InputPin.SourcePin = Graph1.Median1.OutputPin
  end
end
