-- A trail of fire: the letters are smeared to the left, and stand on it once more, sharp.
Composition {
  FrameFormat = { Width = 480, Height = 320, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Space = Loader { Inputs = { Filename = Input { Value = "media/hubble.jpg" } } },
    Title = Text {
      Inputs = {
        Width = Input { Value = 480 },
        Height = Input { Value = 320 },
        StyledText = Input { Value = "METEOR" },
        Font = Input { Value = "DejaVu Sans" },
        Style = Input { Value = "Bold Oblique" },
        Size = Input { Value = 0.15 },
        Center = Input { Value = { 0.6, 0.5 } },
        Red1 = Input { Value = 1 },
        Green1 = Input { Value = 0.85 },
        Blue1 = Input { Value = 0.5 },
      },
    },
    Fire = Brassfennel.BF_Color {
      Inputs = {
        Image = Input { SourceOp = "Title", Source = "Output" },
        Type = Input { Value = "Multiply" },
        ColorRed = Input { Value = 1 },
        ColorGreen = Input { Value = 0.4 },
        ColorBlue = Input { Value = 0.15 },
        ColorAlpha = Input { Value = 1 },
      },
    },
    Tool1 = Brassfennel.BF_Smear {
      Inputs = {
        Image = Input { SourceOp = "Fire", Source = "Output" },
        Length = Input { Value = -0.4 },
        Normalize = Input { Value = 3 },
      },
    },
    Laid = Merge {
      Inputs = {
        Background = Input { SourceOp = "Space", Source = "Output" },
        Foreground = Input { SourceOp = "Tool1", Source = "Output" },
      },
    },
    Top = Merge {
      Inputs = {
        Background = Input { SourceOp = "Laid", Source = "Output" },
        Foreground = Input { SourceOp = "Title", Source = "Output" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Top", Source = "Output" },
        Filename = Input { Value = "../out/Smear.png" },
      },
    },
  },
}
