object Graph1: TFXGraph
  object Player1: TFXFilePlayer
    FileName = '-'
    OutputPin.SinkPins = (
      Graph1.Mirror1.InputPin)
  end
  object Mirror1: TFXMirror
    MirrorType = mtVertical
    InputPin.SourcePin = Graph1.Player1.OutputPin
    OutputPin.SinkPins = (
      Graph1.Logger1.InputPin)
  end
  object Logger1: TFXFileLogger
    FileName = '-'
    InputPin.SourcePin = Graph1.Mirror1.OutputPin
  end
end
