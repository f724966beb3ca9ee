-- A Gaussian of 8 / 720 of the width.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Tool1 = Blur {
      Inputs = { Input = Input { SourceOp = "Photo", Source = "Output" }, XBlurSize = Input { Value = 8 } },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/built-in-Blur.png" },
      },
    },
  },
}
