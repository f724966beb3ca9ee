-- A smaller picture, turned, repeats itself to the edges of the frame.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Tool1 = Transform {
      Inputs = {
        Input = Input { SourceOp = "Photo", Source = "Output" },
        Size = Input { Value = 0.4 },
        Angle = Input { Value = 20 },
        Edges = Input { Value = "Wrap" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/built-in-Transform.png" },
      },
    },
  },
}
