-- Left: the photograph. Right: two levels for each channel, and a grain that keeps the colours.
Composition {
  FrameFormat = { Width = 320, Height = 220, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/chelsea.png" } } },
    Cut = Brassfennel.BF_Canvas {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        Crop = Input { Value = "Free" },
        OffsetHorizontal = Input { Value = 80 },
        OffsetVertical = Input { Value = 20 },
        Width = Input { Value = 320 },
        Height = Input { Value = 220 },
      },
    },
    Grain = Brassfennel.BF_Dither {
      Inputs = {
        Image = Input { SourceOp = "Cut", Source = "Output" },
        Outputbitsforeachchannel = Input { Value = 1 },
      },
    },
    Right = Crop {
      Inputs = {
        Input = Input { SourceOp = "Grain", Source = "Output" },
        XOffset = Input { Value = 110 },
        YOffset = Input { Value = 0 },
        XSize = Input { Value = 210 },
        YSize = Input { Value = 220 },
      },
    },
    Joined = Merge {
      Inputs = {
        Background = Input { SourceOp = "Cut", Source = "Output" },
        Foreground = Input { SourceOp = "Right", Source = "Output" },
        Center = Input { Value = { 0.671875, 0.5 } },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Joined", Source = "Output" },
        Filename = Input { Value = "../out/Dither.png" },
      },
    },
  },
}
