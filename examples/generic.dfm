object Graph1: TFXGraph
  object Gen1: TFXGenericGen
    ImageSize.Width = 160
    ImageSize.Height = 120
    Format = vfGray8
    OutputPin.SinkPins = (
      Graph1.Filter1.InputPin)
  end
  object Filter1: TFXGenericFilter
    Threading.Enabled = True
    InputPin.SourcePin = Graph1.Gen1.OutputPin
    OutputPin.SinkPins = (
      Graph1.Sink1.InputPin)
  end
  object Sink1: TFXGenericSink
    InputPin.SourcePin = Graph1.Filter1.OutputPin
  end
end
