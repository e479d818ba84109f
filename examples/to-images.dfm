object Graph1: TFXGraph
  object Player1: TFXFilePlayer
    FileName = 'input.y4m'
    OutputPin.SinkPins = (
      Graph1.Logger1.InputPin)
  end
  object Logger1: TFXFileLogger
    FileName = 'frame_%04d.ppm'
    InputPin.SourcePin = Graph1.Player1.OutputPin
  end
end
