-- A title over a photograph: letters far apart, a thin line of text below, both at places of a fraction of a pixel.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 25, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Shade = Background {
      Inputs = {
        Red = Input { Value = 0.03 },
        Green = Input { Value = 0.02 },
        Blue = Input { Value = 0.05 },
        Alpha = Input { Value = 0.5 },
      },
    },
    Dark = Merge {
      Inputs = {
        Background = Input { SourceOp = "Photo", Source = "Output" },
        Foreground = Input { SourceOp = "Shade", Source = "Output" },
      },
    },
    Title = Text {
      Inputs = {
        StyledText = Input { Value = "ESPRESSO" },
        Input = Input { SourceOp = "Dark", Source = "Output" },
        Font = Input { Value = "DejaVu Serif" },
        Style = Input { Value = "Bold" },
        Size = Input { Value = 0.095 },
        CharacterSpacing = Input { Value = 1.18 },
        Center = Input { Value = { 0.5, 0.55 } },
        Red1 = Input { Value = 1 },
        Green1 = Input { Value = 0.88 },
        Blue1 = Input { Value = 0.66 },
      },
    },
    Line = Text {
      Inputs = {
        StyledText = Input { Value = "slowly poured\nand quickly gone" },
        Input = Input { SourceOp = "Title", Source = "Output" },
        Font = Input { Value = "DejaVu Sans" },
        Size = Input { Value = 0.04 },
        LineSpacing = Input { Value = 1.2 },
        Center = Input { Value = { 0.5, 0.46 } },
        VerticalJustification = Input { Value = "Top" },
        Alpha1 = Input { Value = 0.85 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Line", Source = "Output" },
        Filename = Input { Value = "../out/built-in-Text.png" },
      },
    },
  },
}
