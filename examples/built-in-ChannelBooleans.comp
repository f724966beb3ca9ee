-- Red and blue change places: the cup turns blue.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Tool1 = ChannelBooleans {
      Inputs = {
        Background = Input { SourceOp = "Photo", Source = "Output" },
        ToRed = Input { Value = "Blue FG" },
        ToBlue = Input { Value = "Red FG" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/built-in-ChannelBooleans.png" },
      },
    },
  },
}
