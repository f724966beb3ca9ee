-- A flood runs from the middle along the lines of a honeycomb; a band of it is shown over the dimmed photograph.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Dim = Brassfennel.BF_Color {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        Type = Input { Value = "Multiply" },
        ColorRed = Input { Value = 0.3 },
        ColorGreen = Input { Value = 0.3 },
        ColorBlue = Input { Value = 0.42 },
        ColorAlpha = Input { Value = 1 },
      },
    },
    Comb = Brassfennel.BF_Pattern {
      Inputs = {
        Width = Input { Value = 600 },
        Height = Input { Value = 400 },
        Type = Input { Value = "Honeycomb" },
        Size = Input { Value = 0.035 },
        Thickness = Input { Value = 0.3 },
        ColorFill1Red = Input { Value = 0 },
        ColorFill1Green = Input { Value = 0 },
        ColorFill1Blue = Input { Value = 0 },
        ColorFill1Alpha = Input { Value = 0 },
        ColorRed = Input { Value = 1 },
        ColorGreen = Input { Value = 0.75 },
        ColorBlue = Input { Value = 0.3 },
        ColorAlpha = Input { Value = 1 },
      },
    },
    Flood = Brassfennel.BF_Grow {
      Inputs = {
        Image = Input { SourceOp = "Comb", Source = "Output" },
        GrowStart = Input { Value = 0.06 },
        GrowEnd = Input { Value = 0.42 },
        SoftnessStart = Input { Value = 0.04 },
        SoftnessEnd = Input { Value = 0.3 },
        Seed1 = Input { Value = { 0.56, 0.5 } },
      },
    },
    Laid = Merge {
      Inputs = {
        Background = Input { SourceOp = "Dim", Source = "Output" },
        Foreground = Input { SourceOp = "Flood", Source = "Output" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Laid", Source = "Output" },
        Filename = Input { Value = "../out/Grow.png" },
      },
    },
  },
}
