-- A dusk blue is multiplied over the photograph.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Tool1 = Brassfennel.BF_Color {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        ColorRed = Input { Value = 0.55 },
        ColorGreen = Input { Value = 0.65 },
        ColorBlue = Input { Value = 1.0 },
        Type = Input { Value = "Multiply" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/Color.png" },
      },
    },
  },
}
