-- A star grows with round corners and shrinks with sharp ones.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Star = Brassfennel.BF_ShapePrimitiveCreate {
      Inputs = {
        Type = Input { Value = 3 },
        Steps = Input { Value = 5 },
        SizeX = Input { Value = 0.4 },
        SizeY = Input { Value = 0.18 },
        AngleStart = Input { Value = -18 },
        BrushEnabled = Input { Value = 0 },
        PenColorRed = Input { Value = 0.07 },
        PenColorGreen = Input { Value = 0.1 },
        PenColorBlue = Input { Value = 0.2 },
        PenThickness = Input { Value = 0.35 },
      },
    },
    Rings = Brassfennel.BF_ShapeOffset {
      Inputs = {
        Shape = Input { SourceOp = "Star", Source = "Output" },
        Keeporiginal = Input { Value = 1 },
        Number = Input { Value = 8 },
        Offset = Input { Value = 0.012 },
        JoinType = Input { Value = 2 },
        Sides = Input { Value = 0 },
      },
    },
    Drawn = Brassfennel.BF_ShapeRender {
      Inputs = { Shape = Input { SourceOp = "Rings", Source = "Output" } },
    },
    Paper = Background {
      Inputs = {
        Width = Input { Value = 600 },
        Height = Input { Value = 400 },
        Red = Input { Value = 0.98 },
        Green = Input { Value = 0.83 },
        Blue = Input { Value = 0.35 },
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
        Filename = Input { Value = "../out/ShapeOffset.png" },
      },
    },
  },
}
