-- Letters filled with coins, each as large as its place lets it be, in the colours of a cup of coffee.
Composition {
  FrameFormat = { Width = 640, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Letters = Text {
      Inputs = {
        Width = Input { Value = 640 },
        Height = Input { Value = 400 },
        StyledText = Input { Value = "BREW" },
        Font = Input { Value = "DejaVu Sans" },
        Style = Input { Value = "Bold" },
        Size = Input { Value = 0.27 },
      },
    },
    Colors = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Night = Background {
      Inputs = {
        Width = Input { Value = 640 },
        Height = Input { Value = 400 },
        Red = Input { Value = 0.05 },
        Green = Input { Value = 0.06 },
        Blue = Input { Value = 0.12 },
        Alpha = Input { Value = 1 },
      },
    },
    Tool1 = Brassfennel.BF_Pack {
      Inputs = {
        Image = Input { SourceOp = "Letters", Source = "Output" },
        ColorMap = Input { SourceOp = "Colors", Source = "Output" },
        MaximumElements = Input { Value = 4000 },
        SizeMinimum = Input { Value = 0.002 },
        SizeMaximum = Input { Value = 0.03 },
        Shapecolor = Input { Value = 1 },
      },
    },
    Laid = Merge {
      Inputs = {
        Background = Input { SourceOp = "Night", Source = "Output" },
        Foreground = Input { SourceOp = "Tool1", Source = "Output" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Laid", Source = "Output" },
        Filename = Input { Value = "../out/Pack.png" },
      },
    },
  },
}
