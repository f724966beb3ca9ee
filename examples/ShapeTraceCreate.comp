-- What is bright in a photograph, cut out of paper.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Soft = Blur {
      Inputs = { Input = Input { SourceOp = "Photo", Source = "Output" }, XBlurSize = Input { Value = 3 } },
    },
    Trace = Brassfennel.BF_ShapeTraceCreate {
      Inputs = {
        Image = Input { SourceOp = "Soft", Source = "Output" },
        Threshold = Input { Value = 0.42 },
        BrushColorRed = Input { Value = 0.98 },
        BrushColorGreen = Input { Value = 0.9 },
        BrushColorBlue = Input { Value = 0.75 },
        PenColorRed = Input { Value = 0.62 },
        PenColorGreen = Input { Value = 0.36 },
        PenColorBlue = Input { Value = 0.2 },
        PenThickness = Input { Value = 0.3 },
        PenJoinType = Input { Value = 2 },
      },
    },
    Drawn = Brassfennel.BF_ShapeRender {
      Inputs = { Shape = Input { SourceOp = "Trace", Source = "Output" } },
    },
    Paper = Background {
      Inputs = {
        Width = Input { Value = 600 },
        Height = Input { Value = 400 },
        Red = Input { Value = 0.28 },
        Green = Input { Value = 0.13 },
        Blue = Input { Value = 0.09 },
      },
    },
    Laid = Merge {
      Inputs = {
        Background = Input { SourceOp = "Paper", Source = "Output" },
        Foreground = Input { SourceOp = "Drawn", Source = "Output" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Laid", Source = "Output" },
        Filename = Input { Value = "../out/ShapeTraceCreate.png" },
      },
    },
  },
}
