-- One photograph starts two branches, and the second begins at a link: a negative, turned, over the positive.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 25, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Tool1 = Brassfennel.BF_WirelessLinky {
      Inputs = { Link1 = Input { SourceOp = "Photo", Source = "Output" } },
    },
    Negative = Brassfennel.BF_Invert { Inputs = { Image = Input { SourceOp = "Tool1", Source = "Output" } } },
    Laid = Merge {
      Inputs = {
        Background = Input { SourceOp = "Photo", Source = "Output" },
        Foreground = Input { SourceOp = "Negative", Source = "Output" },
        Center = Input { Value = { 0.5, 0.5 } },
        Size = Input { Value = 0.55 },
        Angle = Input { Value = 180 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Laid", Source = "Output" },
        Filename = Input { Value = "../out/WirelessLinky.png" },
      },
    },
  },
}
