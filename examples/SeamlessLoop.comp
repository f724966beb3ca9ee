-- The end of a camera move dissolves into the frames before its beginning: halfway, both are there.
Composition {
  CurrentTime = 32,
  FrameFormat = { Width = 600, Height = 400, Rate = 25, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Camera = Transform {
      Inputs = {
        Input = Input { SourceOp = "Photo", Source = "Output" },
        Size = Input { Value = 1.5 },
        Center = Input { Expression = "Point(0.27 + time * 0.008, 0.5)" },
        Edges = Input { Value = "Duplicate" },
      },
    },
    Tool1 = Brassfennel.BF_SeamlessLoop {
      Inputs = {
        Input = Input { SourceOp = "Camera", Source = "Output" },
        Looplength = Input { Value = 40 },
        Dissolvelength = Input { Value = 16 },
        Fadetype = Input { Value = "Smooth" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/SeamlessLoop.png" },
      },
    },
  },
}
