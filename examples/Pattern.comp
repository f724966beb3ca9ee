-- Triangles in two colours.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Tool1 = Brassfennel.BF_Pattern {
      Inputs = {
        Width = Input { Value = 600 },
        Height = Input { Value = 400 },
        Type = Input { Value = "Triangles" },
        Size = Input { Value = 0.16 },
        Rotation = Input { Value = 20 },
        Thickness = Input { Value = 0.08 },
        Fill = Input { Value = "Checkers" },
        ColorRed = Input { Value = 0.96 },
        ColorGreen = Input { Value = 0.92 },
        ColorBlue = Input { Value = 0.84 },
        ColorAlpha = Input { Value = 1 },
        ColorFill1Red = Input { Value = 0.1 },
        ColorFill1Green = Input { Value = 0.45 },
        ColorFill1Blue = Input { Value = 0.47 },
        ColorFill1Alpha = Input { Value = 1 },
        ColorFill2Red = Input { Value = 0.86 },
        ColorFill2Green = Input { Value = 0.36 },
        ColorFill2Blue = Input { Value = 0.2 },
        ColorFill2Alpha = Input { Value = 1 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/Pattern.png" },
      },
    },
  },
}
