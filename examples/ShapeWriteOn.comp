-- A part of a star is drawn, from the middle of its way over its start.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Ghost = Brassfennel.BF_ShapePrimitiveCreate {
      Inputs = {
        Type = Input { Value = 3 },
        Steps = Input { Value = 5 },
        SizeX = Input { Value = 0.58 },
        SizeY = Input { Value = 0.24 },
        AngleStart = Input { Value = -18 },
        BrushEnabled = Input { Value = 0 },
        PenColorRed = Input { Value = 0.55 },
        PenColorGreen = Input { Value = 0.5 },
        PenColorBlue = Input { Value = 0.6 },
        PenThickness = Input { Value = 0.3 },
      },
    },
    Star = Brassfennel.BF_ShapePrimitiveCreate {
      Inputs = {
        Type = Input { Value = 3 },
        Steps = Input { Value = 5 },
        SizeX = Input { Value = 0.58 },
        SizeY = Input { Value = 0.24 },
        AngleStart = Input { Value = -18 },
        BrushEnabled = Input { Value = 0 },
        PenColorRed = Input { Value = 1 },
        PenColorGreen = Input { Value = 0.45 },
        PenColorBlue = Input { Value = 0.25 },
        PenThickness = Input { Value = 2 },
        PenJoinType = Input { Value = 2 },
      },
    },
    Part = Brassfennel.BF_ShapeWriteOn {
      Inputs = {
        Shape = Input { SourceOp = "Star", Source = "Output" },
        RangeEnd = Input { Value = 0.6 },
        Shift = Input { Value = 0.7 },
      },
    },
    Both = Brassfennel.BF_ShapeMerge {
      Inputs = {
        Shape1 = Input { SourceOp = "Ghost", Source = "Output" },
        Shape2 = Input { SourceOp = "Part", Source = "Output" },
      },
    },
    Drawn = Brassfennel.BF_ShapeRender {
      Inputs = { Shape = Input { SourceOp = "Both", Source = "Output" } },
    },
    Paper = Background {
      Inputs = {
        Width = Input { Value = 600 },
        Height = Input { Value = 400 },
        Red = Input { Value = 0.16 },
        Green = Input { Value = 0.12 },
        Blue = Input { Value = 0.22 },
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
        Filename = Input { Value = "../out/ShapeWriteOn.png" },
      },
    },
  },
}
