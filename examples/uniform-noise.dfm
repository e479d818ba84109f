object Graph1: TFXGraph
  object Noise1: TFXUniformNoise
    ImageSize.Width = 160
    ImageSize.Height = 120
    BackgroundColor = 8404992
    High = 64
    OutputPin.SinkPins = (
      Graph1.Logger1.InputPin)
  end
  object Logger1: TFXFileLogger
    FileName = 'uniform-noise.y4m'
    InputPin.SourcePin = Graph1.Noise1.OutputPin
  end
end
