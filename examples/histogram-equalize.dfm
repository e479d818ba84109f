object Graph1: TFXGraph
  object Pattern1: TFXTestPatternGen
    ImageSize.Width = 160
    ImageSize.Height = 120
    Format = vfGray8
    OutputPin.SinkPins = (
      Graph1.Equalize1.InputPin)
  end
  object Equalize1: TFXHistogramEqualize
    InputPin.SourcePin = Graph1.Pattern1.OutputPin
    OutputPin.SinkPins = (
      Graph1.Logger1.InputPin)
  end
  object Logger1: TFXFileLogger
    FileName = 'histogram-equalize.y4m'
    InputPin.SourcePin = Graph1.Equalize1.OutputPin
  end
end
