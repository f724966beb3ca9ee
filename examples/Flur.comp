-- The jump: every star becomes a streak that leads away from where the journey goes.
Composition {
  FrameFormat = { Width = 480, Height = 320, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/hubble.jpg" } } },
    Tool1 = Brassfennel.BF_Flur {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        Center = Input { Value = { 0.5, 0.5 } },
        Length = Input { Value = 0.28 },
      },
    },
    Brighter = ChannelBooleans {
      Inputs = {
        Operation = Input { Value = "Add" },
        Background = Input { SourceOp = "Tool1", Source = "Output" },
        Foreground = Input { SourceOp = "Tool1", Source = "Output" },
      },
    },
    Brightest = ChannelBooleans {
      Inputs = {
        Operation = Input { Value = "Add" },
        Background = Input { SourceOp = "Brighter", Source = "Output" },
        Foreground = Input { SourceOp = "Brighter", Source = "Output" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Brightest", Source = "Output" },
        Filename = Input { Value = "../out/Flur.png" },
      },
    },
  },
}
