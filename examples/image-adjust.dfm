object Graph1: TFXGraph
  object Pattern1: TFXTestPatternGen
    ImageSize.Width = 160
    ImageSize.Height = 120
    OutputPin.SinkPins = (
      Graph1.Adjust1.InputPin)
  end
  object Adjust1: TFXImageAdjust
    Brightness = 0.100000000000000000
    Contrast = 1.200000000000000000
    Saturation = 1.500000000000000000
    Hue = 1.000000000000000000
    InputPin.SourcePin = Graph1.Pattern1.OutputPin
    OutputPin.SinkPins = (
      Graph1.Logger1.InputPin)
  end
  object Logger1: TFXFileLogger
    FileName = 'image-adjust.y4m'
    InputPin.SourcePin = Graph1.Adjust1.OutputPin
  end
end
