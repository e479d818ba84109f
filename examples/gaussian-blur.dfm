object Graph1: TFXGraph
  object Pattern1: TFXTestPatternGen
    OutputPin.SinkPins = (
      Graph1.Blur1.InputPin)
  end
  object Blur1: TFXGaussianBlur
    Kernel.Height = 7
    Kernel.SigmaY = 2.000000000000000000
    InputPin.SourcePin = Graph1.Pattern1.OutputPin
    OutputPin.SinkPins = (
      Graph1.Logger1.InputPin)
  end
  object Logger1: TFXFileLogger
    FileName = 'blurred.y4m'
    InputPin.SourcePin = Graph1.Blur1.OutputPin
  end
end
