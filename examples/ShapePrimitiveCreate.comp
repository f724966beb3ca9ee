-- A star with twelve points, its edge drawn outside in a darker gold.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Star = Brassfennel.BF_ShapePrimitiveCreate {
      Inputs = {
        Type = Input { Value = 3 },
        Steps = Input { Value = 12 },
        SizeX = Input { Value = 0.58 },
        SizeY = Input { Value = 0.34 },
        AngleStart = Input { Value = 15 },
        BrushColorRed = Input { Value = 0.98 },
        BrushColorGreen = Input { Value = 0.75 },
        BrushColorBlue = Input { Value = 0.2 },
        PenColorRed = Input { Value = 0.75 },
        PenColorGreen = Input { Value = 0.45 },
        PenColorBlue = Input { Value = 0.1 },
        PenThickness = Input { Value = 1.2 },
        PenThicknessBias = Input { Value = 1 },
        PenJoinType = Input { Value = 0 },
      },
    },
    Drawn = Brassfennel.BF_ShapeRender {
      Inputs = { Shape = Input { SourceOp = "Star", Source = "Output" } },
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
        Filename = Input { Value = "../out/ShapePrimitiveCreate.png" },
      },
    },
  },
}
