-- Five turns inwards, with round ends.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Spiral = Brassfennel.BF_ShapeSpiralCreate {
      Inputs = {
        RadiusStart = Input { Value = 0.3 },
        RadiusEnd = Input { Value = 0.02 },
        AngleEnd = Input { Value = 1800 },
        AngleStep = Input { Value = 6 },
        BrushEnabled = Input { Value = 0 },
        PenColorRed = Input { Value = 0.96 },
        PenColorGreen = Input { Value = 0.92 },
        PenColorBlue = Input { Value = 0.84 },
        PenThickness = Input { Value = 1.6 },
        PenJoinType = Input { Value = 2 },
      },
    },
    Drawn = Brassfennel.BF_ShapeRender {
      Inputs = { Shape = Input { SourceOp = "Spiral", Source = "Output" } },
    },
    Paper = Background {
      Inputs = {
        Width = Input { Value = 600 },
        Height = Input { Value = 400 },
        Red = Input { Value = 0.1 },
        Green = Input { Value = 0.45 },
        Blue = Input { Value = 0.47 },
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
        Filename = Input { Value = "../out/ShapeSpiralCreate.png" },
      },
    },
  },
}
