-- A launch bent to a little planet of its own.
Composition {
  FrameFormat = { Width = 640, Height = 427, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/rocket.jpg" } } },
    Tool1 = Brassfennel.BF_Bend {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        Type = Input { Value = "Center and radius" },
        Start = Input { Value = { 0.5, 0.45 } },
        StartAngle = Input { Value = 270 },
        EndAngle = Input { Value = -90 },
        Radius = Input { Value = 0.28 },
        ScaleVertical = Input { Value = 0.75 },
        Edges = Input { Value = "Duplicate" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/Bend.png" },
      },
    },
  },
}
