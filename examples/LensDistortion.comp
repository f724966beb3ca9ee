-- A straight wall through a wide lens; the corners stay pinned.
Composition {
  FrameFormat = { Width = 512, Height = 512, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/brick.png" } } },
    Clay = Brassfennel.BF_Color {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        Type = Input { Value = "Multiply" },
        ColorRed = Input { Value = 1 },
        ColorGreen = Input { Value = 0.62 },
        ColorBlue = Input { Value = 0.47 },
        ColorAlpha = Input { Value = 1 },
      },
    },
    Wall = Transform {
      Inputs = { Input = Input { SourceOp = "Clay", Source = "Output" }, Angle = Input { Value = 90 } },
    },
    Tool1 = Brassfennel.BF_LensDistortion {
      Inputs = {
        Image = Input { SourceOp = "Wall", Source = "Output" },
        Kappa1 = Input { Value = 0.9 },
        Kappa2 = Input { Value = 0.4 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/LensDistortion.png" },
      },
    },
  },
}
