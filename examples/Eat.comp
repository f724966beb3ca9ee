-- What is bright is eaten from the dark parts on its left, with a frayed end.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Tool1 = Brassfennel.BF_Eat {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        Length = Input { Value = 0.035 },
        Noiselength = Input { Value = 0.9 },
        Basechannel = Input { Value = "Red" },
        Eatrangelow = Input { Value = 0.36 },
        Left = Input { Value = true },
        Top = Input { Value = false },
        ColorRed = Input { Value = 0.03 },
        ColorGreen = Input { Value = 0.05 },
        ColorBlue = Input { Value = 0.16 },
        ColorAlpha = Input { Value = 1 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/Eat.png" },
      },
    },
  },
}
