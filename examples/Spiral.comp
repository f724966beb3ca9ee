-- A zig-zag spiral, smoothed to ripples on the coffee.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Ripples = Brassfennel.BF_Spiral {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        RadiusStart = Input { Value = 0.03 },
        RadiusEnd = Input { Value = 0.16 },
        AngleEnd = Input { Value = 1440 },
        AngleStep = Input { Value = 12 },
        ShapeCenter = Input { Value = { 0.475, 0.71 } },
        ZigZagType = Input { Value = 1 },
        ZigZagSteps = Input { Value = 1 },
        ZigZagOffset = Input { Value = 0.005 },
        PenThickness = Input { Value = 0.004 },
        PenEndType = Input { Value = 1 },
        PenOpacity = Input { Value = 0.9 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Ripples", Source = "Output" },
        Filename = Input { Value = "../out/Spiral.png" },
      },
    },
  },
}
