object Graph1: TFXGraph
  object Player1: TFXFilePlayer
    FileName = 'input.y4m'
    OutputPin.SinkPins = (
      Graph1.Kernel1.InputPin)
  end
  object Kernel1: TFXRectKernelFilter
    Kernel.MatrixData = (
      9
      0.000000000000000000
      -1.000000000000000000
      0.000000000000000000
      -1.000000000000000000
      5.000000000000000000
      -1.000000000000000000
      0.000000000000000000
      -1.000000000000000000
      0.000000000000000000)
    InputPin.SourcePin = Graph1.Player1.OutputPin
    OutputPin.SinkPins = (
      Graph1.Logger1.InputPin)
  end
  object Logger1: TFXFileLogger
    FileName = 'sharpened.y4m'
    InputPin.SourcePin = Graph1.Kernel1.OutputPin
  end
end
