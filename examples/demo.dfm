object Demo: TFXGraph
  object Pattern: TFXTestPatternGen
    ImageSize.Width = 640
    ImageSize.Height = 360
    OutputPin.SinkPins = (
      Demo.Adjust.InputPin
      Demo.Still.InputPin
      Demo.Edges.InputPin)
  end
  object Adjust: TFXImageAdjust
    Brightness = -0.050000000000000000
    Contrast = 1.200000000000000000
    InputPin.SourcePin = Demo.Pattern.OutputPin
    OutputPin.SinkPins = (
      Demo.ToYUV.InputPin)
  end
  object ToYUV: TFXChangeFormat
    Format = vfI420
    InputPin.SourcePin = Demo.Adjust.OutputPin
    OutputPin.SinkPins = (
      Demo.Video.InputPin)
  end
  object Video: TFXFileLogger
    FileName = 'framix-demo.y4m'
    InputPin.SourcePin = Demo.ToYUV.OutputPin
  end
  object Still: TFXFileLogger
    FileName = 'framix-demo.png'
    InputPin.SourcePin = Demo.Pattern.OutputPin
  end
  object Edges: TFXFixedFilter
    FilterType = ftSobelVert
    InputPin.SourcePin = Demo.Pattern.OutputPin
    OutputPin.SinkPins = (
      Demo.EdgesStill.InputPin)
  end
  object EdgesStill: TFXFileLogger
    FileName = 'framix-demo-edges.png'
    InputPin.SourcePin = Demo.Edges.OutputPin
  end
end
