-- Watered silk: three sets of fine lines, each turned a little further.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Tool1 = Brassfennel.BF_Lines {
      Inputs = {
        Width = Input { Value = 600 },
        Height = Input { Value = 400 },
        NumberOfLineSets = Input { Value = 3 },
        Overlap = Input { Value = "Screen" },
        Angle1 = Input { Value = 30 },
        Angle2 = Input { Value = 42 },
        Center1 = Input { Value = { 0.4, 0.5 } },
        Center2 = Input { Value = { 0.6, 0.5 } },
        Spacing1 = Input { Value = 0.03 },
        Spacing2 = Input { Value = 0.027 },
        Thickness1 = Input { Value = 0.2 },
        Thickness2 = Input { Value = 0.2 },
        Softness1 = Input { Value = 0.15 },
        Softness2 = Input { Value = 0.15 },
        Color1Red = Input { Value = 0.85 },
        Color1Green = Input { Value = 0.3 },
        Color1Blue = Input { Value = 0.12 },
        Color1Alpha = Input { Value = 1 },
        Color2Red = Input { Value = 0.1 },
        Color2Green = Input { Value = 0.45 },
        Color2Blue = Input { Value = 0.75 },
        Color2Alpha = Input { Value = 1 },
        Supersampling = Input { Value = "3x3" },
      },
    },
    Paper = Background {
      Inputs = {
        Width = Input { Value = 600 },
        Height = Input { Value = 400 },
        Red = Input { Value = 0.06 },
        Green = Input { Value = 0.05 },
        Blue = Input { Value = 0.12 },
      },
    },
    Laid = Merge {
      Inputs = {
        Background = Input { SourceOp = "Paper", Source = "Output" },
        Foreground = Input { SourceOp = "Tool1", Source = "Output" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Laid", Source = "Output" },
        Filename = Input { Value = "../out/Lines.png" },
      },
    },
  },
}
