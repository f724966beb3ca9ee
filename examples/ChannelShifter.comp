-- A misprint: red, green and blue lie beside each other.
Composition {
  FrameFormat = { Width = 640, Height = 427, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/rocket.jpg" } } },
    Shifted = Brassfennel.BF_ChannelShifter {
      Inputs = {
        Image = Input { SourceOp = "Photo" },
        RedHorizontal = Input { Value = -0.014 },
        RedVertical = Input { Value = 0.004 },
        BlueHorizontal = Input { Value = 0.014 },
        BlueVertical = Input { Value = -0.004 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Shifted" },
        Filename = Input { Value = "../out/ChannelShifter.png" },
      },
    },
  },
}
