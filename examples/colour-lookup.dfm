object Graph1: TFXGraph
  object Pattern1: TFXTestPatternGen
    ImageSize.Width = 160
    ImageSize.Height = 120
    OutputPin.SinkPins = (
      Graph1.Lookup1.InputPin)
  end
  object Lookup1: TFXColorLookup
    LookupTables.LookupMode = clmLinear
    LookupTables.ColorChannels = (
      ()
      ()
      (
        0
        255
        256
        0)
      ())
    InputPin.SourcePin = Graph1.Pattern1.OutputPin
    OutputPin.SinkPins = (
      Graph1.Logger1.InputPin)
  end
  object Logger1: TFXFileLogger
    FileName = 'colour-lookup.y4m'
    InputPin.SourcePin = Graph1.Lookup1.OutputPin
  end
end
