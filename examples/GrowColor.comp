-- Left: what a screen of dots leaves of the photograph. Right: the gaps are filled with the colours around them.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Dots = Brassfennel.BF_Lines {
      Inputs = {
        Width = Input { Value = 600 },
        Height = Input { Value = 400 },
        NumberOfLineSets = Input { Value = 1 },
        Spacing1 = Input { Value = 0.03 },
        Thickness1 = Input { Value = 0.25 },
        Softness1 = Input { Value = 0.02 },
        DotSpacing1 = Input { Value = 0.03 },
        DotLength1 = Input { Value = 0.25 },
        DotSoftness1 = Input { Value = 0.02 },
        Angle1 = Input { Value = 45 },
      },
    },
    Screened = ChannelBooleans {
      Inputs = {
        Background = Input { SourceOp = "Photo", Source = "Output" },
        Foreground = Input { SourceOp = "Dots", Source = "Output" },
        Operation = Input { Value = "Multiply" },
      },
    },
    Filled = Brassfennel.BF_GrowColor {
      Inputs = {
        Image = Input { SourceOp = "Screened", Source = "Output" },
        Resolution = Input { Value = 1 },
        IterationInterrupt = Input { Value = 0.2 },
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
    Left = Crop {
      Inputs = {
        Input = Input { SourceOp = "Screened", Source = "Output" },
        XOffset = Input { Value = 0 },
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
        Filename = Input { Value = "../out/GrowColor.png" },
      },
    },
  },
}
