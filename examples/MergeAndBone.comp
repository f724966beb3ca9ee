-- A dark word turned in space: the light of the room behind it wraps round its edges, so that it belongs there.
Composition {
  FrameFormat = { Width = 451, Height = 300, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/chelsea.png" } } },
    Word = Text {
      Inputs = {
        Width = Input { Value = 512 },
        Height = Input { Value = 512 },
        StyledText = Input { Value = "Chelsea" },
        Style = Input { Value = "Bold" },
        Size = Input { Value = 0.18 },
        Red1 = Input { Value = 0.04 },
        Green1 = Input { Value = 0.05 },
        Blue1 = Input { Value = 0.12 },
      },
    },
    Together = Brassfennel.BF_MergeAndBone {
      Inputs = {
        Image = Input { SourceOp = "Photo" },
        Foreground = Input { SourceOp = "Word" },
        Position = Input { Value = { 0.5, 0.3 } },
        AngleY = Input { Value = -24 },
        SizeX = Input { Value = 1.1 },
        WrapBackgroundOverForeground = Input { Value = 0.9 },
        WrapBackgroundSizeX = Input { Value = 5 },
        WrapBackgroundSteps = Input { Value = 3 },
        WrapBackgroundSizeSpread = Input { Value = 2 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Together" },
        Filename = Input { Value = "../out/MergeAndBone.png" },
      },
    },
  },
}
