-- From a line through the cup, each column keeps the brightest colour that it has met.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Tool1 = Brassfennel.BF_Extend {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        Start = Input { Value = { 0.5, 0.56 } },
        Direction = Input { Value = "Vertical" },
        Channel = Input { Value = "Lumin." },
        Hold = Input { Value = "Maximum" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/Extend.png" },
      },
    },
  },
}
