object Graph1: TFXGraph
  object Pattern1: TFXTestPatternGen
    ImageSize.Width = 160
    ImageSize.Height = 120
    OutputPin.SinkPins = (
      Graph1.Twist1.InputPin)
  end
  object Twist1: TFXColorTwist
    ColorTwists.RedTwist.Red = 0.393000000000000000
    ColorTwists.RedTwist.Green = 0.769000000000000000
    ColorTwists.RedTwist.Blue = 0.189000000000000000
    ColorTwists.RedTwist.Offset = 0.000000000000000000
    ColorTwists.GreenTwist.Red = 0.349000000000000000
    ColorTwists.GreenTwist.Green = 0.686000000000000000
    ColorTwists.GreenTwist.Blue = 0.168000000000000000
    ColorTwists.GreenTwist.Offset = 0.000000000000000000
    ColorTwists.BlueTwist.Red = 0.272000000000000000
    ColorTwists.BlueTwist.Green = 0.534000000000000000
    ColorTwists.BlueTwist.Blue = 0.131000000000000000
    ColorTwists.BlueTwist.Offset = 0.000000000000000000
    InputPin.SourcePin = Graph1.Pattern1.OutputPin
    OutputPin.SinkPins = (
      Graph1.Logger1.InputPin)
  end
  object Logger1: TFXFileLogger
    FileName = 'colour-twist.y4m'
    InputPin.SourcePin = Graph1.Twist1.OutputPin
  end
end
