-- Tiles that are turned a little, each about its own centre.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Tool1 = Brassfennel.BF_SegmentTransform {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        SegmentSizeX = Input { Value = 0.1 },
        Angle = Input { Value = 15 },
        ScaleX = Input { Value = 1.25 },
        Edges = Input { Value = "Duplicate" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/SegmentTransform.png" },
      },
    },
  },
}
