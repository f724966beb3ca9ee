-- Two fans of dotted rings, one about each of two centres.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Tool1 = Brassfennel.BF_Shapes {
      Inputs = {
        Width = Input { Value = 600 },
        Height = Input { Value = 400 },
        NumberOfLineSets = Input { Value = 2 },
        Overlap = Input { Value = "Screen" },
        Center1 = Input { Value = { 0.36, 0.5 } },
        Center2 = Input { Value = { 0.64, 0.5 } },
        Spacing1 = Input { Value = 0.05 },
        Spacing2 = Input { Value = 0.05 },
        Thickness1 = Input { Value = 0.2 },
        Thickness2 = Input { Value = 0.2 },
        DotSpacing1 = Input { Value = 0.2618 },
        DotSpacing2 = Input { Value = 0.2618 },
        DotLength1 = Input { Value = 0.32 },
        DotLength2 = Input { Value = 0.32 },
        Color1Red = Input { Value = 0.95 },
        Color1Green = Input { Value = 0.6 },
        Color1Blue = Input { Value = 0.15 },
        Color1Alpha = Input { Value = 1 },
        Color2Red = Input { Value = 0.15 },
        Color2Green = Input { Value = 0.55 },
        Color2Blue = Input { Value = 0.9 },
        Color2Alpha = Input { Value = 1 },
        Supersampling = Input { Value = "3x3" },
      },
    },
    Paper = Background {
      Inputs = {
        Width = Input { Value = 600 },
        Height = Input { Value = 400 },
        Red = Input { Value = 0.1 },
        Green = Input { Value = 0.09 },
        Blue = Input { Value = 0.14 },
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
        Filename = Input { Value = "../out/Shapes.png" },
      },
    },
  },
}
