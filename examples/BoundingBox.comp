-- A plate that follows its words, whatever they are: the box around them, a little larger, laid under them.
Composition {
  FrameFormat = { Width = 640, Height = 427, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/rocket.jpg" } } },
    Words = Text {
      Inputs = {
        Width = Input { Value = 640 },
        Height = Input { Value = 427 },
        StyledText = Input { Value = "T minus ten" },
        Font = Input { Value = "DejaVu Sans" },
        Style = Input { Value = "Bold" },
        Size = Input { Value = 0.075 },
        Center = Input { Value = { 0.5, 0.16 } },
        Red1 = Input { Value = 0.1 },
        Green1 = Input { Value = 0.08 },
        Blue1 = Input { Value = 0.05 },
      },
    },
    Plate = Brassfennel.BF_BoundingBox {
      Inputs = {
        Image = Input { SourceOp = "Words" },
        Channel = Input { Value = 3 },
        Lock = Input { Value = 1 },
        ExtendLeft = Input { Value = 0.04 },
        ExtendTop = Input { Value = 0.025 },
        ColorRed = Input { Value = 1 },
        ColorGreen = Input { Value = 0.78 },
        ColorBlue = Input { Value = 0.2 },
        ColorAlpha = Input { Value = 0.92 },
      },
    },
    Under = Merge {
      Inputs = {
        Background = Input { SourceOp = "Photo" },
        Foreground = Input { SourceOp = "Plate" },
      },
    },
    Laid = Merge {
      Inputs = {
        Background = Input { SourceOp = "Under" },
        Foreground = Input { SourceOp = "Words" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Laid" },
        Filename = Input { Value = "../out/BoundingBox.png" },
      },
    },
  },
}
