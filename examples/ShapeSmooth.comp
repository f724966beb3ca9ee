-- A star with its corners drawn out into curves.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Star = Brassfennel.BF_ShapePrimitiveCreate {
      Inputs = {
        Type = Input { Value = 3 },
        Steps = Input { Value = 7 },
        SizeX = Input { Value = 0.58 },
        SizeY = Input { Value = 0.22 },
        AngleStart = Input { Value = 0 },
        BrushColorRed = Input { Value = 0.93 },
        BrushColorGreen = Input { Value = 0.45 },
        BrushColorBlue = Input { Value = 0.55 },
        PenColorRed = Input { Value = 0.6 },
        PenColorGreen = Input { Value = 0.12 },
        PenColorBlue = Input { Value = 0.3 },
        PenThickness = Input { Value = 1 },
        PenJoinType = Input { Value = 2 },
      },
    },
    Soft = Brassfennel.BF_ShapeSmooth {
      Inputs = {
        Shape = Input { SourceOp = "Star", Source = "Output" },
        Smooth = Input { Value = 1 },
        SmoothCurvature = Input { Value = 1.2 },
      },
    },
    Drawn = Brassfennel.BF_ShapeRender {
      Inputs = { Shape = Input { SourceOp = "Soft", Source = "Output" } },
    },
    Paper = Background {
      Inputs = {
        Width = Input { Value = 600 },
        Height = Input { Value = 400 },
        Red = Input { Value = 0.97 },
        Green = Input { Value = 0.9 },
        Blue = Input { Value = 0.86 },
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
        Filename = Input { Value = "../out/ShapeSmooth.png" },
      },
    },
  },
}
