-- A double exposure: a cat merged over a launch pad, and under it.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/rocket.jpg" } } },
    Cat = Loader { Inputs = { Filename = Input { Value = "media/chelsea.png" } } },
    Tool1 = Brassfennel.BF_Combine {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        Combineimage = Input { SourceOp = "Cat", Source = "Output" },
        FractionMerge = Input { Value = 1 },
        FractionMergeUnder = Input { Value = 1.3 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/Combine.png" },
      },
    },
  },
}
