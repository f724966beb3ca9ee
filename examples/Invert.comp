-- Light becomes dark and dark light, while every hue stays.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Tool1 = Brassfennel.BF_Invert {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        Type = Input { Value = "Luminance" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/Invert.png" },
      },
    },
  },
}
