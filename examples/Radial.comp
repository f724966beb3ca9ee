-- Everything moves by the same way towards a point between the eyes.
Composition {
  FrameFormat = { Width = 451, Height = 300, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/chelsea.png" } } },
    Tool1 = Brassfennel.BF_Radial {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        Center = Input { Value = { 0.52, 0.6 } },
        RadialOffset = Input { Value = -0.06 },
        Edges = Input { Value = "Duplicate" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/Radial.png" },
      },
    },
  },
}
