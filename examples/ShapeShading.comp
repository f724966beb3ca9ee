-- A hexagon with a pen of its own: long dash, two short ones, round joins and ends.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Hexagon = Brassfennel.BF_ShapePrimitiveCreate {
      Inputs = {
        Type = Input { Value = 1 },
        Steps = Input { Value = 6 },
        SizeX = Input { Value = 0.52 },
        SizeY = Input { Value = 0.52 },
        AngleStart = Input { Value = 0 },
      },
    },
    Look = Brassfennel.BF_ShapeShading {
      Inputs = {
        Shape = Input { SourceOp = "Hexagon", Source = "Output" },
        BrushColorRed = Input { Value = 0.12 },
        BrushColorGreen = Input { Value = 0.2 },
        BrushColorBlue = Input { Value = 0.33 },
        PenColorRed = Input { Value = 0.98 },
        PenColorGreen = Input { Value = 0.85 },
        PenColorBlue = Input { Value = 0.5 },
        PenThickness = Input { Value = 2.2 },
        PenJoinType = Input { Value = 2 },
        PenEndType = Input { Value = 1 },
        PenLineType = Input { Value = 3 },
        PenLineScale = Input { Value = 0.9 },
        PenLineDash1 = Input { Value = 4.4 },
        PenLineSpace1 = Input { Value = 1.9 },
        PenLineDash2 = Input { Value = 0.8 },
        PenLineSpace2 = Input { Value = 1.9 },
        PenLineDash3 = Input { Value = 0.8 },
        PenLineSpace3 = Input { Value = 1.9 },
      },
    },
    Drawn = Brassfennel.BF_ShapeRender {
      Inputs = { Shape = Input { SourceOp = "Look", Source = "Output" } },
    },
    Paper = Background {
      Inputs = {
        Width = Input { Value = 600 },
        Height = Input { Value = 400 },
        Red = Input { Value = 0.05 },
        Green = Input { Value = 0.09 },
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
        Filename = Input { Value = "../out/ShapeShading.png" },
      },
    },
  },
}
