-- A star leans and grows about its own foot, wherever it stands; the pale one shows where it was.
Composition {
  FrameFormat = { Width = 640, Height = 427, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/rocket.jpg" } } },
    Star = Brassfennel.BF_ShapePrimitiveCreate {
      Inputs = {
        Type = Input { Value = "Star" },
        Steps = Input { Value = 5 },
        SizeX = Input { Value = 0.18 },
        SizeY = Input { Value = 0.075 },
        AngleStart = Input { Value = 54 },
        BrushColorRed = Input { Value = 0.98 },
        BrushColorGreen = Input { Value = 0.75 },
        BrushColorBlue = Input { Value = 0.2 },
        PenColorRed = Input { Value = 1 },
        PenColorGreen = Input { Value = 0.95 },
        PenColorBlue = Input { Value = 0.8 },
        PenJoinType = Input { Value = "Round" },
        TransformPositionX = Input { Value = -0.16 },
        TransformPositionY = Input { Value = 0.08 },
      },
    },
    Drawn = Brassfennel.BF_ShapeRender {
      Inputs = {
        Shape = Input { SourceOp = "Star", Source = "Output" },
        Width = Input { Value = 640 },
        Height = Input { Value = 427 },
      },
    },
    Tool1 = Brassfennel.BF_RelativeTransform {
      Inputs = {
        Image = Input { SourceOp = "Drawn", Source = "Output" },
        CenterChannel = Input { Value = "Alpha" },
        PivotY = Input { Value = -1 },
        Axisangle = Input { Value = 25 },
        SizeX = Input { Value = 1.2 },
        SizeY = Input { Value = 1.6 },
      },
    },
    Pale = Brassfennel.BF_Color {
      Inputs = {
        Image = Input { SourceOp = "Drawn", Source = "Output" },
        Type = Input { Value = "Multiply" },
        ColorRed = Input { Value = 0.35 },
        ColorGreen = Input { Value = 0.35 },
        ColorBlue = Input { Value = 0.35 },
        ColorAlpha = Input { Value = 0.35 },
      },
    },
    Grown = Merge {
      Inputs = {
        Background = Input { SourceOp = "Photo", Source = "Output" },
        Foreground = Input { SourceOp = "Tool1", Source = "Output" },
      },
    },
    Laid = Merge {
      Inputs = {
        Background = Input { SourceOp = "Grown", Source = "Output" },
        Foreground = Input { SourceOp = "Pale", Source = "Output" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Laid", Source = "Output" },
        Filename = Input { Value = "../out/RelativeTransform.png" },
      },
    },
  },
}
