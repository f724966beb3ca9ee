-- Rings of which only the sides that run to the upper left are kept.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Disc = Brassfennel.BF_ShapePrimitiveCreate {
      Inputs = {
        Type = Input { Value = 1 },
        Steps = Input { Value = 64 },
        SizeX = Input { Value = 0.1 },
        SizeY = Input { Value = 0.1 },
        AngleStart = Input { Value = 0 },
        BrushEnabled = Input { Value = 0 },
        PenColorRed = Input { Value = 0.98 },
        PenColorGreen = Input { Value = 0.75 },
        PenColorBlue = Input { Value = 0.2 },
        PenThickness = Input { Value = 1.1 },
        PenEndType = Input { Value = 1 },
      },
    },
    Rings = Brassfennel.BF_ShapeOffset {
      Inputs = {
        Shape = Input { SourceOp = "Disc", Source = "Output" },
        Number = Input { Value = 11 },
        Offset = Input { Value = 0.022 },
        JoinType = Input { Value = 2 },
        Keeporiginal = Input { Value = 1 },
      },
    },
    Kept = Brassfennel.BF_ShapeKill {
      Inputs = {
        Shape = Input { SourceOp = "Rings", Source = "Output" },
        AngleMinimum = Input { Value = 40 },
        AngleMaximum = Input { Value = 250 },
      },
    },
    Drawn = Brassfennel.BF_ShapeRender {
      Inputs = { Shape = Input { SourceOp = "Kept", Source = "Output" } },
    },
    Paper = Background {
      Inputs = {
        Width = Input { Value = 600 },
        Height = Input { Value = 400 },
        Red = Input { Value = 0.22 },
        Green = Input { Value = 0.1 },
        Blue = Input { Value = 0.27 },
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
        Filename = Input { Value = "../out/ShapeKill.png" },
      },
    },
  },
}
