-- The reds turn to green, a little paler.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Tool1 = Brassfennel.BF_HueSaturation {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        Hue = Input { Value = 0.33 },
        SaturationMultiply = Input { Value = 0.8 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/HueSaturation.png" },
      },
    },
  },
}
