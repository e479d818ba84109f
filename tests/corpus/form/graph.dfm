object Graph1: TFXGraph
  object Jaehne1: TFXJaehneGen
    ImageSize.Width = 320
    ImageSize.Height = 240
  end
  object Blur1: TFXGaussianBlur
    Kernel.Width = 7
    Kernel.SigmaX = 1.500000000000000000
    InputPin.SourcePin = Graph1.Jaehne1.OutputPin
    OutputPin.SinkPins = (
      Graph1.Logger1.InputPin)
  end
  object Logger1: TFXFileLogger
    FileName = 'out.y4m'
    InputPin.SourcePin = Graph1.Blur1.OutputPin
  end
end
