-- A ring with a star cut out, in triangles.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Disc = Brassfennel.BF_ShapePrimitiveCreate {
      Inputs = {
        Type = Input { Value = 1 },
        Steps = Input { Value = 32 },
        SizeX = Input { Value = 0.6 },
        SizeY = Input { Value = 0.6 },
        AngleStart = Input { Value = 0 },
        BrushColorRed = Input { Value = 0.16 },
        BrushColorGreen = Input { Value = 0.5 },
        BrushColorBlue = Input { Value = 0.45 },
        PenColorRed = Input { Value = 0.85 },
        PenColorGreen = Input { Value = 0.95 },
        PenColorBlue = Input { Value = 0.8 },
        PenThickness = Input { Value = 0.25 },
        PenJoinType = Input { Value = 2 },
      },
    },
    Star = Brassfennel.BF_ShapePrimitiveCreate {
      Inputs = {
        Type = Input { Value = 3 },
        Steps = Input { Value = 6 },
        SizeX = Input { Value = 0.42 },
        SizeY = Input { Value = 0.2 },
        AngleStart = Input { Value = 0 },
      },
    },
    Ring = Brassfennel.BF_ShapeBoolean {
      Inputs = {
        Shape1 = Input { SourceOp = "Disc", Source = "Output" },
        Shape2 = Input { SourceOp = "Star", Source = "Output" },
        Type = Input { Value = 2 },
      },
    },
    Cut = Brassfennel.BF_ShapeTriangulate {
      Inputs = { Shape = Input { SourceOp = "Ring", Source = "Output" } },
    },
    Drawn = Brassfennel.BF_ShapeRender { Inputs = { Shape = Input { SourceOp = "Cut", Source = "Output" } } },
    Paper = Background {
      Inputs = {
        Width = Input { Value = 600 },
        Height = Input { Value = 400 },
        Red = Input { Value = 0.05 },
        Green = Input { Value = 0.18 },
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
        Filename = Input { Value = "../out/ShapeTriangulate.png" },
      },
    },
  },
}
