-- A cat out of two left halves.
Composition {
  FrameFormat = { Width = 451, Height = 300, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/chelsea.png" } } },
    Tool1 = Brassfennel.BF_Mirror {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        MirrorLeft = Input { Value = { 0.51, 1 } },
        MirrorRight = Input { Value = { 0.51, 0 } },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/Mirror.png" },
      },
    },
  },
}
