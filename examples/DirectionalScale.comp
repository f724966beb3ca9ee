-- One half of the cat is twice as wide.
Composition {
  FrameFormat = { Width = 451, Height = 300, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/chelsea.png" } } },
    Tool1 = Brassfennel.BF_DirectionalScale {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        Center = Input { Value = { 0.52, 0.5 } },
        Sizealongaxis = Input { Value = 2 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/DirectionalScale.png" },
      },
    },
  },
}
