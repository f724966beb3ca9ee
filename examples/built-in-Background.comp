-- An even amber.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Tool1 = Background {
      Inputs = {
        Red = Input { Value = 0.91 },
        Green = Input { Value = 0.65 },
        Blue = Input { Value = 0.34 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/built-in-Background.png" },
      },
    },
  },
}
