-- Letters among galaxies send out rays, away from a light that stands below their middle.
Composition {
  FrameFormat = { Width = 480, Height = 320, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Space = Loader { Inputs = { Filename = Input { Value = "media/hubble.jpg" } } },
    Title = Text {
      Inputs = {
        Width = Input { Value = 480 },
        Height = Input { Value = 320 },
        StyledText = Input { Value = "FIRST LIGHT" },
        Font = Input { Value = "DejaVu Sans" },
        Style = Input { Value = "Bold" },
        Size = Input { Value = 0.1 },
        Center = Input { Value = { 0.5, 0.45 } },
        Red1 = Input { Value = 1 },
        Green1 = Input { Value = 0.93 },
        Blue1 = Input { Value = 0.8 },
      },
    },
    Tool1 = Brassfennel.BF_Beams {
      Inputs = {
        Image = Input { SourceOp = "Title", Source = "Output" },
        Brightness = Input { Value = 0.035 },
        Center = Input { Value = { 0.5, 0.3 } },
        Length = Input { Value = 0.8 },
        ColorRed = Input { Value = 1 },
        ColorGreen = Input { Value = 0.62 },
        ColorBlue = Input { Value = 0.2 },
        ColorAlpha = Input { Value = 0.9 },
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
        Filename = Input { Value = "../out/Beams.png" },
      },
    },
  },
}
