-- Left: a fence of wire is cut out of a photograph. Right: the colours on both sides have spread over the gaps.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Dots = Brassfennel.BF_Lines {
      Inputs = {
        Width = Input { Value = 600 },
        Height = Input { Value = 400 },
        NumberOfLineSets = Input { Value = 1 },
        Spacing1 = Input { Value = 0.02 },
        Thickness1 = Input { Value = 0.4 },
        Softness1 = Input { Value = 0 },
        DotSpacing1 = Input { Value = 0.02 },
        DotLength1 = Input { Value = 0.4 },
        DotSoftness1 = Input { Value = 0 },
        Angle1 = Input { Value = 30 },
      },
    },
    Hard = Brassfennel.BF_Threshold {
      Inputs = { Image = Input { SourceOp = "Dots", Source = "Output" }, Threshold = Input { Value = 0.5 } },
    },
    Screened = ChannelBooleans {
      Inputs = {
        Background = Input { SourceOp = "Photo", Source = "Output" },
        Foreground = Input { SourceOp = "Hard", Source = "Output" },
        Operation = Input { Value = "Multiply" },
      },
    },
    Filled = Brassfennel.BF_Spread {
      Inputs = { Image = Input { SourceOp = "Screened", Source = "Output" } },
    },
    Left = Crop {
      Inputs = {
        Input = Input { SourceOp = "Screened", Source = "Output" },
        XOffset = Input { Value = 0 },
        YOffset = Input { Value = 0 },
        XSize = Input { Value = 300 },
        YSize = Input { Value = 400 },
      },
    },
    Right = Crop {
      Inputs = {
        Input = Input { SourceOp = "Filled", Source = "Output" },
        XOffset = Input { Value = 300 },
        YOffset = Input { Value = 0 },
        XSize = Input { Value = 300 },
        YSize = Input { Value = 400 },
      },
    },
    Paper = Background {
      Inputs = {
        Width = Input { Value = 600 },
        Height = Input { Value = 400 },
        Red = Input { Value = 0.05 },
        Green = Input { Value = 0.05 },
        Blue = Input { Value = 0.08 },
      },
    },
    Laid = Merge {
      Inputs = {
        Background = Input { SourceOp = "Paper", Source = "Output" },
        Foreground = Input { SourceOp = "Left", Source = "Output" },
        Center = Input { Value = { 0.25, 0.5 } },
      },
    },
    Joined = Merge {
      Inputs = {
        Background = Input { SourceOp = "Laid", Source = "Output" },
        Foreground = Input { SourceOp = "Right", Source = "Output" },
        Center = Input { Value = { 0.75, 0.5 } },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Joined", Source = "Output" },
        Filename = Input { Value = "../out/Spread.png" },
      },
    },
  },
}
