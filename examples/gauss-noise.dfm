object Graph1: TFXGraph
  object Pattern1: TFXTestPatternGen
    ImageSize.Width = 160
    ImageSize.Height = 120
    OutputPin.SinkPins = (
      Graph1.Noise1.InputPin)
  end
  object Noise1: TFXGaussNoise
    ROI.Enabled = True
    ROI.Left = 40
    ROI.Top = 30
    ROI.Width = 80
    ROI.Height = 60
    StDev = 20
    InputPin.SourcePin = Graph1.Pattern1.OutputPin
    OutputPin.SinkPins = (
      Graph1.Logger1.InputPin)
  end
  object Logger1: TFXFileLogger
    FileName = 'gauss-noise.y4m'
    InputPin.SourcePin = Graph1.Noise1.OutputPin
  end
end
