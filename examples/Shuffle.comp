-- A sliding puzzle after a dozen moves.
Composition {
  FrameFormat = { Width = 451, Height = 300, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/chelsea.png" } } },
    Tool1 = Brassfennel.BF_Shuffle {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        RandomSeed = Input { Value = 7 },
        Horizontalsubdivisions = Input { Value = 4 },
        Verticalsubdivisions = Input { Value = 3 },
        Amount = Input { Value = 14 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/Shuffle.png" },
      },
    },
  },
}
