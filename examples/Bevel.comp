-- Golden letters on a wall: their alpha is the relief that the light falls on.
Composition {
  FrameFormat = { Width = 512, Height = 320, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Wall = Loader { Inputs = { Filename = Input { Value = "media/brick.png" } } },
    Cut = Crop {
      Inputs = {
        Input = Input { SourceOp = "Wall", Source = "Output" },
        XSize = Input { Value = 512 },
        YSize = Input { Value = 320 },
      },
    },
    Title = Text {
      Inputs = {
        Width = Input { Value = 512 },
        Height = Input { Value = 320 },
        StyledText = Input { Value = "GOLD" },
        Font = Input { Value = "DejaVu Serif" },
        Style = Input { Value = "Bold" },
        Size = Input { Value = 0.27 },
        Red1 = Input { Value = 1 },
        Green1 = Input { Value = 0.84 },
        Blue1 = Input { Value = 0.4 },
      },
    },
    Tool1 = Brassfennel.BF_Bevel {
      Inputs = {
        Image = Input { SourceOp = "Title", Source = "Output" },
        BevelFilter = Input { Value = "Gaussian" },
        BevelSize = Input { Value = 9 },
        Height = Input { Value = 0.16 },
        LightPosition = Input { Value = { 0.4, 0.66 } },
      },
    },
    Laid = Merge {
      Inputs = {
        Background = Input { SourceOp = "Cut", Source = "Output" },
        Foreground = Input { SourceOp = "Tool1", Source = "Output" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Laid", Source = "Output" },
        Filename = Input { Value = "../out/Bevel.png" },
      },
    },
  },
}
