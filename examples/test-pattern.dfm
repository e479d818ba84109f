object Graph1: TFXGraph
  object Pattern1: TFXTestPatternGen
    ImageSize.Height = 180
    FrameRate = 30.000000000000000000
    Format = vfRGB32
    Speed = 8
    OutputPin.SinkPins = (
      Graph1.Logger1.InputPin)
  end
  object Logger1: TFXFileLogger
    FileName = 'pattern.y4m'
    InputPin.SourcePin = Graph1.Pattern1.OutputPin
  end
end
