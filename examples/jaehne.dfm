object Graph1: TFXGraph
  object Rings1: TFXJaehneGen
    ImageSize.Width = 256
    ImageSize.Height = 256
    OutputPin.SinkPins = (
      Graph1.Logger1.InputPin)
  end
  object Logger1: TFXFileLogger
    FileName = 'jaehne-%03d.png'
    InputPin.SourcePin = Graph1.Rings1.OutputPin
  end
end
