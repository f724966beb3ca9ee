-- A ring that starts a good fifth of its way round, opened there and not drawn to its end.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Ring = Brassfennel.BF_ShapePrimitiveCreate {
      Inputs = {
        Type = Input { Value = 1 },
        Steps = Input { Value = 80 },
        SizeX = Input { Value = 0.48 },
        SizeY = Input { Value = 0.48 },
        AngleStart = Input { Value = 0 },
        BrushEnabled = Input { Value = 0 },
        PenColorRed = Input { Value = 0.3 },
        PenColorGreen = Input { Value = 0.75 },
        PenColorBlue = Input { Value = 0.7 },
        PenThickness = Input { Value = 5 },
        PenJoinType = Input { Value = 2 },
        PenEndType = Input { Value = 1 },
      },
    },
    Open = Brassfennel.BF_ShapeTools {
      Inputs = {
        Shape = Input { SourceOp = "Ring", Source = "Output" },
        StartOffset = Input { Value = 0.225 },
        OpenClose = Input { Value = 2 },
      },
    },
    Part = Brassfennel.BF_ShapeWriteOn {
      Inputs = {
        Shape = Input { SourceOp = "Open", Source = "Output" },
        RangeEnd = Input { Value = 0.85 },
        CurvePrecision = Input { Value = 16 },
      },
    },
    Drawn = Brassfennel.BF_ShapeRender {
      Inputs = { Shape = Input { SourceOp = "Part", Source = "Output" } },
    },
    Paper = Background {
      Inputs = {
        Width = Input { Value = 600 },
        Height = Input { Value = 400 },
        Red = Input { Value = 0.07 },
        Green = Input { Value = 0.1 },
        Blue = Input { Value = 0.2 },
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
        Filename = Input { Value = "../out/ShapeTools.png" },
      },
    },
  },
}
