-- The histogram of a photograph, laid over it.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Graph = Brassfennel.BF_Analyzer {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        Width = Input { Value = 256 },
        Height = Input { Value = 160 },
        SampleFraction = Input { Value = 1 },
        VerticalScale = Input { Value = 0.35 },
      },
    },
    Dim = Brassfennel.BF_Color {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        Type = Input { Value = "Multiply" },
        ColorRed = Input { Value = 0.35 },
        ColorGreen = Input { Value = 0.35 },
        ColorBlue = Input { Value = 0.4 },
        ColorAlpha = Input { Value = 1 },
      },
    },
    Laid = Merge {
      Inputs = {
        Background = Input { SourceOp = "Dim", Source = "Output" },
        Foreground = Input { SourceOp = "Graph", Source = "Output" },
        Size = Input { Value = 2.3438 },
        Center = Input { Value = { 0.5, 0.469 } },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Laid", Source = "Output" },
        Filename = Input { Value = "../out/Analyzer.png" },
      },
    },
  },
}
