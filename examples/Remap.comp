-- A square of the picture, taken as longitude and latitude, seen in a mirror ball.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Square = Crop {
      Inputs = {
        Input = Input { SourceOp = "Photo", Source = "Output" },
        XOffset = Input { Value = 90 },
        YOffset = Input { Value = 0 },
        XSize = Input { Value = 400 },
        YSize = Input { Value = 400 },
      },
    },
    Ball = Brassfennel.BF_Remap {
      Inputs = {
        Image = Input { SourceOp = "Square", Source = "Output" },
        TypeInput = Input { Value = "Spherical" },
        TypeOutput = Input { Value = "Probe" },
        AngleY = Input { Value = 0 },
        AngleX = Input { Value = -30 },
        Edges = Input { Value = "Wrap" },
      },
    },
    Soft = Blur {
      Inputs = { Input = Input { SourceOp = "Photo", Source = "Output" }, XBlurSize = Input { Value = 30 } },
    },
    Laid = Merge {
      Inputs = {
        Background = Input { SourceOp = "Soft", Source = "Output" },
        Foreground = Input { SourceOp = "Ball", Source = "Output" },
        Size = Input { Value = 0.9 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Laid", Source = "Output" },
        Filename = Input { Value = "../out/Remap.png" },
      },
    },
  },
}
