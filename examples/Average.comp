-- The mean of twenty-four frames: a camera that turns and comes closer leaves the light's path behind.
Composition {
  CurrentTime = 0,
  FrameFormat = { Width = 600, Height = 400, Rate = 25, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Camera = Transform {
      Inputs = {
        Input = Input { SourceOp = "Photo", Source = "Output" },
        Pivot = Input { Value = { 0.42, 0.5 } },
        Center = Input { Value = { 0.5, 0.5 } },
        Size = Input { Expression = "1.3 + time * 0.02" },
        Angle = Input { Expression = "time * 1.1" },
        Edges = Input { Value = "Duplicate" },
      },
    },
    Tool1 = Brassfennel.BF_Average {
      Inputs = {
        Input = Input { SourceOp = "Camera", Source = "Output" },
        Numberofframes = Input { Value = 24 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/Average.png" },
      },
    },
  },
}
