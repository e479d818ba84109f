object Graph1: TFXGraph
  object Pattern1: TFXTestPatternGen
    ImageSize.Width = 160
    ImageSize.Height = 120
    Format = vfRGB32
    OutputPin.SinkPins = (
      Graph1.Gamma1.InputPin)
  end
  object Gamma1: TFXGammaFilter
    GammaType = gtInverse
    InputPin.SourcePin = Graph1.Pattern1.OutputPin
    OutputPin.SinkPins = (
      Graph1.Logger1.InputPin)
  end
  object Logger1: TFXFileLogger
    FileName = 'gamma.y4m'
    InputPin.SourcePin = Graph1.Gamma1.OutputPin
  end
end
