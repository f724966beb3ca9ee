-- A polygon bent into a cogged wheel, and a disc on it.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Wheel = Brassfennel.BF_ShapePrimitiveCreate {
      Inputs = {
        Type = Input { Value = 1 },
        Steps = Input { Value = 12 },
        SizeX = Input { Value = 0.48 },
        SizeY = Input { Value = 0.48 },
        AngleStart = Input { Value = 0 },
        BrushColorRed = Input { Value = 0.9 },
        BrushColorGreen = Input { Value = 0.3 },
        BrushColorBlue = Input { Value = 0.22 },
        PenColorRed = Input { Value = 0.35 },
        PenColorGreen = Input { Value = 0.08 },
        PenColorBlue = Input { Value = 0.1 },
        PenThickness = Input { Value = 0.8 },
        PenJoinType = Input { Value = 0 },
      },
    },
    Bent = Brassfennel.BF_ShapeZigZag {
      Inputs = {
        Shape = Input { SourceOp = "Wheel", Source = "Output" },
        Steps = Input { Value = 4 },
        Offset = Input { Value = 0.02 },
      },
    },
    Hub = Brassfennel.BF_ShapePrimitiveCreate {
      Inputs = {
        Type = Input { Value = 1 },
        Steps = Input { Value = 48 },
        SizeX = Input { Value = 0.2 },
        SizeY = Input { Value = 0.2 },
        AngleStart = Input { Value = 0 },
        BrushColorRed = Input { Value = 0.96 },
        BrushColorGreen = Input { Value = 0.92 },
        BrushColorBlue = Input { Value = 0.84 },
        PenColorRed = Input { Value = 0.35 },
        PenColorGreen = Input { Value = 0.08 },
        PenColorBlue = Input { Value = 0.1 },
        PenThickness = Input { Value = 0.8 },
      },
    },
    Both = Brassfennel.BF_ShapeMerge {
      Inputs = {
        Shape1 = Input { SourceOp = "Bent", Source = "Output" },
        Shape2 = Input { SourceOp = "Hub", Source = "Output" },
      },
    },
    Drawn = Brassfennel.BF_ShapeRender {
      Inputs = { Shape = Input { SourceOp = "Both", Source = "Output" } },
    },
    Paper = Background {
      Inputs = {
        Width = Input { Value = 600 },
        Height = Input { Value = 400 },
        Red = Input { Value = 0.95 },
        Green = Input { Value = 0.87 },
        Blue = Input { Value = 0.7 },
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
        Filename = Input { Value = "../out/ShapeZigZag.png" },
      },
    },
  },
}
