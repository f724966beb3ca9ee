-- A star and a disc, together and not together: what only one of them covers.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Star = Brassfennel.BF_ShapePrimitiveCreate {
      Inputs = {
        Type = Input { Value = 3 },
        Steps = Input { Value = 9 },
        SizeX = Input { Value = 0.62 },
        SizeY = Input { Value = 0.3 },
        AngleStart = Input { Value = 10 },
        BrushColorRed = Input { Value = 0.86 },
        BrushColorGreen = Input { Value = 0.27 },
        BrushColorBlue = Input { Value = 0.2 },
        PenColorRed = Input { Value = 0.96 },
        PenColorGreen = Input { Value = 0.92 },
        PenColorBlue = Input { Value = 0.84 },
        PenThickness = Input { Value = 0.6 },
        PenJoinType = Input { Value = 0 },
      },
    },
    Disc = Brassfennel.BF_ShapePrimitiveCreate {
      Inputs = {
        Type = Input { Value = 1 },
        Steps = Input { Value = 96 },
        SizeX = Input { Value = 0.44 },
        SizeY = Input { Value = 0.44 },
        AngleStart = Input { Value = 0 },
      },
    },
    Xor = Brassfennel.BF_ShapeBoolean {
      Inputs = {
        Shape1 = Input { SourceOp = "Star", Source = "Output" },
        Shape2 = Input { SourceOp = "Disc", Source = "Output" },
        Type = Input { Value = 3 },
      },
    },
    Drawn = Brassfennel.BF_ShapeRender { Inputs = { Shape = Input { SourceOp = "Xor", Source = "Output" } } },
    Paper = Background {
      Inputs = {
        Width = Input { Value = 600 },
        Height = Input { Value = 400 },
        Red = Input { Value = 0.13 },
        Green = Input { Value = 0.12 },
        Blue = Input { Value = 0.16 },
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
        Filename = Input { Value = "../out/ShapeBoolean.png" },
      },
    },
  },
}
