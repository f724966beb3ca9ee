-- The spoon alone.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Tool1 = Crop {
      Inputs = {
        Input = Input { SourceOp = "Photo", Source = "Output" },
        XOffset = Input { Value = 290 },
        YOffset = Input { Value = 50 },
        XSize = Input { Value = 180 },
        YSize = Input { Value = 120 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/built-in-Crop.png" },
      },
    },
  },
}
