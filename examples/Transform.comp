-- The cup smaller and turned; edges that wrap make a wallpaper of it.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Tool1 = Brassfennel.BF_Transform {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        Axisangle = Input { Value = 30 },
        Axis = Input { Value = { 0.47, 0.7 } },
        SizeX = Input { Value = 0.4 },
        SizeY = Input { Value = 0.4 },
        Edges = Input { Value = "Wrap" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/Transform.png" },
      },
    },
  },
}
