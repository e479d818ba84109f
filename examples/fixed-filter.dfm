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
      Graph1.Edges1.InputPin)
  end
  object Edges1: TFXFixedFilter
    FilterType = ftSobelVert
    InputPin.SourcePin = Graph1.ToGrey.OutputPin
    OutputPin.SinkPins = (
      Graph1.Logger1.InputPin)
  end
  object Logger1: TFXFileLogger
    FileName = 'edges-%03d.pgm'
    InputPin.SourcePin = Graph1.Edges1.OutputPin
  end
end
