-- Bands of light and dark: a soft threshold that runs through its ramp five times.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Tool1 = Brassfennel.BF_Threshold {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        Softness = Input { Value = 0.9 },
        Repeat = Input { Value = 5 },
        Alpha = Input { Value = 0 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/Threshold.png" },
      },
    },
  },
}
