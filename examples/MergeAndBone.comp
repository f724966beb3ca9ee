-- Letters of fire in front of a launch pad: they light tower and sky, and the evening sky shines on their edges.
Composition {
  FrameFormat = { Width = 480, Height = 320, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Pad = Loader { Inputs = { Filename = Input { Value = "media/rocket.jpg" } } },
    Title = Text {
      Inputs = {
        Width = Input { Value = 640 },
        Height = Input { Value = 427 },
        StyledText = Input { Value = "IGNITION" },
        Font = Input { Value = "DejaVu Sans" },
        Style = Input { Value = "Bold" },
        Size = Input { Value = 0.16 },
        Red1 = Input { Value = 1 },
        Green1 = Input { Value = 0.5 },
        Blue1 = Input { Value = 0.12 },
      },
    },
    Tool1 = Brassfennel.BF_MergeAndBone {
      Inputs = {
        Image = Input { SourceOp = "Pad", Source = "Output" },
        Foreground = Input { SourceOp = "Title", Source = "Output" },
        Position = Input { Value = { 0.52, 0.36 } },
        PositionZ = Input { Value = 0.05 },
        AngleY = Input { Value = -30 },
        SizeX = Input { Value = 0.9 },
        WrapForegroundOverBackground = Input { Value = 1 },
        WrapForegroundSizeX = Input { Value = 12 },
        WrapForegroundSteps = Input { Value = 4 },
        WrapForegroundSizeSpread = Input { Value = 2 },
        WrapBackgroundOverForeground = Input { Value = 0.35 },
        WrapBackgroundSizeX = Input { Value = 6 },
        WrapBackgroundSteps = Input { Value = 2 },
        WrapBackgroundSizeSpread = Input { Value = 2 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/MergeAndBone.png" },
      },
    },
  },
}
