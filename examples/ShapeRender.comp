-- A spiral with nothing but a pen, filled all the same: its turns cut each other out by the even-odd rule.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Spiral = Brassfennel.BF_ShapeSpiralCreate {
      Inputs = {
        RadiusStart = Input { Value = 0.02 },
        RadiusEnd = Input { Value = 0.3 },
        AngleEnd = Input { Value = 1440 },
        AngleStep = Input { Value = 5 },
        BrushColorRed = Input { Value = 0.1 },
        BrushColorGreen = Input { Value = 0.55 },
        BrushColorBlue = Input { Value = 0.6 },
        PenColorRed = Input { Value = 1 },
        PenColorGreen = Input { Value = 0.8 },
        PenColorBlue = Input { Value = 0.3 },
        PenThickness = Input { Value = 0.6 },
      },
    },
    Drawn = Brassfennel.BF_ShapeRender {
      Inputs = {
        Shape = Input { SourceOp = "Spiral", Source = "Output" },
        ForceFillOpenShapes = Input { Value = 1 },
        Winding = Input { Value = "Even/Odd" },
      },
    },
    Paper = Background {
      Inputs = {
        Width = Input { Value = 600 },
        Height = Input { Value = 400 },
        Red = Input { Value = 0.05 },
        Green = Input { Value = 0.08 },
        Blue = Input { Value = 0.14 },
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
        Filename = Input { Value = "../out/ShapeRender.png" },
      },
    },
  },
}
