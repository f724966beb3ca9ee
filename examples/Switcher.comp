-- A number chooses which of the pictures goes on: here the third of its inputs, five frames later the next.
Composition {
  CurrentTime = 15,
  FrameFormat = { Width = 600, Height = 400, Rate = 25, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Negative = Brassfennel.BF_Invert { Inputs = { Image = Input { SourceOp = "Photo", Source = "Output" } } },
    Poster = Brassfennel.BF_Threshold {
      Inputs = { Image = Input { SourceOp = "Photo", Source = "Output" }, Softness = Input { Value = 0.6 } },
    },
    Teal = Brassfennel.BF_HueSaturation {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        Hue = Input { Value = 0.45 },
        SaturationMultiply = Input { Value = 1.2 },
      },
    },
    Tool1 = Brassfennel.BF_Switcher {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        Index = Input { Expression = "floor(time / 5) % 4" },
        Image1 = Input { SourceOp = "Negative", Source = "Output" },
        Image2 = Input { SourceOp = "Poster", Source = "Output" },
        Image3 = Input { SourceOp = "Teal", Source = "Output" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/Switcher.png" },
      },
    },
  },
}
