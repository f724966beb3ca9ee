-- A rocket with one more stage: the middle is longer, both ends have only moved.
Composition {
  FrameFormat = { Width = 640, Height = 427, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/rocket.jpg" } } },
    Tool1 = Brassfennel.BF_Stretch {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        SourceStart = Input { Value = { 0.5, 0.42 } },
        SourceEnd = Input { Value = { 0.5, 0.5 } },
        DestinationStart = Input { Value = { 0.5, 0.32 } },
        DestinationEnd = Input { Value = { 0.5, 0.62 } },
        Edges = Input { Value = "Duplicate" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/Stretch.png" },
      },
    },
  },
}
