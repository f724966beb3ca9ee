-- Mirrored triangles out of the rim of a cup.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Tool1 = Brassfennel.BF_Kaleidoscope {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        Radius = Input { Value = 0.22 },
        Angle = Input { Value = 12 },
        Sourcecenter = Input { Value = { 0.36, 0.5 } },
        Sourceangle = Input { Value = 20 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/Kaleidoscope.png" },
      },
    },
  },
}
