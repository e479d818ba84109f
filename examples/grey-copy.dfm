object Graph1: TFXGraph
  object Player1: TFXFilePlayer
    FileName = 'input.y4m'
    OutputPin.SinkPins = (
      Graph1.ToGrey.InputPin)
  end
  object ToGrey: TFXChangeFormat
    Format = vfGray8
    InputPin.SourcePin = Graph1.Player1.OutputPin
    OutputPin.SinkPins = (
      Graph1.Logger1.InputPin)
  end
  object Logger1: TFXFileLogger
    FileName = 'grey.y4m'
    InputPin.SourcePin = Graph1.ToGrey.OutputPin
  end
end
