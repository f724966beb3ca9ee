-- A sun goes down behind hills: each shape keeps its own look.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Sun = Brassfennel.BF_ShapePrimitiveCreate {
      Inputs = {
        Type = Input { Value = 1 },
        Steps = Input { Value = 64 },
        SizeX = Input { Value = 0.3 },
        SizeY = Input { Value = 0.3 },
        AngleStart = Input { Value = 0 },
        TransformPositionX = Input { Value = 0.1 },
        TransformPositionY = Input { Value = 0.05 },
        BrushColorRed = Input { Value = 1 },
        BrushColorGreen = Input { Value = 0.62 },
        BrushColorBlue = Input { Value = 0.2 },
        PenColorRed = Input { Value = 1 },
        PenColorGreen = Input { Value = 0.8 },
        PenColorBlue = Input { Value = 0.5 },
        PenThickness = Input { Value = 0.8 },
        PenOpacity = Input { Value = 0.6 },
      },
    },
    FarHill = Brassfennel.BF_ShapePrimitiveCreate {
      Inputs = {
        Type = Input { Value = 1 },
        Steps = Input { Value = 64 },
        SizeX = Input { Value = 1.2 },
        SizeY = Input { Value = 0.5 },
        AngleStart = Input { Value = 0 },
        TransformPositionX = Input { Value = -0.3 },
        TransformPositionY = Input { Value = -0.28 },
        BrushColorRed = Input { Value = 0.55 },
        BrushColorGreen = Input { Value = 0.2 },
        BrushColorBlue = Input { Value = 0.32 },
        PenEnabled = Input { Value = 0 },
      },
    },
    NearHill = Brassfennel.BF_ShapePrimitiveCreate {
      Inputs = {
        Type = Input { Value = 1 },
        Steps = Input { Value = 64 },
        SizeX = Input { Value = 1.3 },
        SizeY = Input { Value = 0.5 },
        AngleStart = Input { Value = 0 },
        TransformPositionX = Input { Value = 0.35 },
        TransformPositionY = Input { Value = -0.36 },
        BrushColorRed = Input { Value = 0.27 },
        BrushColorGreen = Input { Value = 0.1 },
        BrushColorBlue = Input { Value = 0.24 },
        PenEnabled = Input { Value = 0 },
      },
    },
    Behind = Brassfennel.BF_ShapeMerge {
      Inputs = {
        Shape1 = Input { SourceOp = "Sun", Source = "Output" },
        Shape2 = Input { SourceOp = "FarHill", Source = "Output" },
      },
    },
    All = Brassfennel.BF_ShapeMerge {
      Inputs = {
        Shape1 = Input { SourceOp = "Behind", Source = "Output" },
        Shape2 = Input { SourceOp = "NearHill", Source = "Output" },
      },
    },
    Drawn = Brassfennel.BF_ShapeRender { Inputs = { Shape = Input { SourceOp = "All", Source = "Output" } } },
    Paper = Background {
      Inputs = {
        Width = Input { Value = 600 },
        Height = Input { Value = 400 },
        Red = Input { Value = 0.96 },
        Green = Input { Value = 0.76 },
        Blue = Input { Value = 0.6 },
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
        Filename = Input { Value = "../out/ShapeMerge.png" },
      },
    },
  },
}
