-- A lens over the face of the cat.
Composition {
  FrameFormat = { Width = 451, Height = 300, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/chelsea.png" } } },
    Tool1 = Brassfennel.BF_Spherize {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        Center = Input { Value = { 0.5, 0.6 } },
        Size = Input { Value = 0.75 },
        Iterations = Input { Value = 1 },
        Deformation = Input { Value = 0.6 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/Spherize.png" },
      },
    },
  },
}
