-- Letters are cut out of paper: the edge of the paper casts a shadow inwards. The word below hovers over it.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Paper = Background {
      Inputs = {
        Width = Input { Value = 600 },
        Height = Input { Value = 400 },
        Red = Input { Value = 0.93 },
        Green = Input { Value = 0.9 },
        Blue = Input { Value = 0.85 },
      },
    },
    Letters = Text {
      Inputs = {
        Width = Input { Value = 600 },
        Height = Input { Value = 400 },
        StyledText = Input { Value = "CUT" },
        Style = Input { Value = "Bold" },
        Size = Input { Value = 0.36 },
        Center = Input { Value = { 0.5, 0.63 } },
      },
    },
    Filled = ChannelBooleans {
      Inputs = {
        Background = Input { SourceOp = "Photo", Source = "Output" },
        Foreground = Input { SourceOp = "Letters", Source = "Output" },
        Operation = Input { Value = "Multiply" },
      },
    },
    Cut = Brassfennel.BF_Border {
      Inputs = {
        Image = Input { SourceOp = "Filled", Source = "Output" },
        EnableInnerShadow = Input { Value = true },
        InnerShadowCenter = Input { Value = { 0.512, 0.485 } },
        InnerShadowBlurSize = Input { Value = 9 },
        InnerShadowColorAlpha = Input { Value = 0.9 },
      },
    },
    Holes = Merge {
      Inputs = {
        Background = Input { SourceOp = "Paper", Source = "Output" },
        Foreground = Input { SourceOp = "Cut", Source = "Output" },
      },
    },
    Word = Text {
      Inputs = {
        Width = Input { Value = 600 },
        Height = Input { Value = 400 },
        StyledText = Input { Value = "hover" },
        Font = Input { Value = "DejaVu Serif" },
        Style = Input { Value = "Bold" },
        Size = Input { Value = 0.17 },
        Center = Input { Value = { 0.5, 0.22 } },
        Red1 = Input { Value = 0.72 },
        Green1 = Input { Value = 0.2 },
        Blue1 = Input { Value = 0.1 },
      },
    },
    Lifted = Brassfennel.BF_Border {
      Inputs = {
        Image = Input { SourceOp = "Word", Source = "Output" },
        EnableDropShadow = Input { Value = true },
        DropShadowCenter = Input { Value = { 0.52, 0.46 } },
        DropShadowBlurSize = Input { Value = 8 },
        DropShadowColorAlpha = Input { Value = 0.6 },
      },
    },
    Laid = Merge {
      Inputs = {
        Background = Input { SourceOp = "Holes", Source = "Output" },
        Foreground = Input { SourceOp = "Lifted", Source = "Output" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Laid", Source = "Output" },
        Filename = Input { Value = "../out/Border.png" },
      },
    },
  },
}
