-- A quilt of five colours, chosen anew for each cell.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Paper = Background { Inputs = { Width = Input { Value = 600 }, Height = Input { Value = 400 } } },
    Tool1 = Brassfennel.BF_Noise {
      Inputs = {
        Image = Input { SourceOp = "Paper", Source = "Output" },
        RandomSeed = Input { Value = 12 },
        Size = Input { Value = "Grid" },
        SizeX = Input { Value = 24 },
        SizeY = Input { Value = 16 },
        Colors = Input { Value = "Selected" },
        Numberofcolors = Input { Value = 5 },
        Color1Red = Input { Value = 0.93 },
        Color1Green = Input { Value = 0.88 },
        Color1Blue = Input { Value = 0.78 },
        Color1Alpha = Input { Value = 1 },
        Color2Red = Input { Value = 0.1 },
        Color2Green = Input { Value = 0.36 },
        Color2Blue = Input { Value = 0.42 },
        Color2Alpha = Input { Value = 1 },
        Color3Red = Input { Value = 0.86 },
        Color3Green = Input { Value = 0.42 },
        Color3Blue = Input { Value = 0.2 },
        Color3Alpha = Input { Value = 1 },
        Color4Red = Input { Value = 0.95 },
        Color4Green = Input { Value = 0.7 },
        Color4Blue = Input { Value = 0.3 },
        Color4Alpha = Input { Value = 1 },
        Color5Red = Input { Value = 0.3 },
        Color5Green = Input { Value = 0.16 },
        Color5Blue = Input { Value = 0.2 },
        Color5Alpha = Input { Value = 1 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/Noise.png" },
      },
    },
  },
}
