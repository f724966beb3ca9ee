-- The cup, cut out and turned a little, lies over its own soft and pale surroundings.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Cut = Crop {
      Inputs = {
        Input = Input { SourceOp = "Photo", Source = "Output" },
        XOffset = Input { Value = 150 },
        YOffset = Input { Value = 100 },
        XSize = Input { Value = 260 },
        YSize = Input { Value = 230 },
      },
    },
    Grey = Brassfennel.BF_HueSaturation {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        SaturationMultiply = Input { Value = 0.15 },
      },
    },
    Soft = Blur {
      Inputs = { Input = Input { SourceOp = "Grey", Source = "Output" }, XBlurSize = Input { Value = 12 } },
    },
    Tool1 = Merge {
      Inputs = {
        Background = Input { SourceOp = "Soft", Source = "Output" },
        Foreground = Input { SourceOp = "Cut", Source = "Output" },
        Center = Input { Value = { 0.45, 0.52 } },
        Size = Input { Value = 0.9 },
        Angle = Input { Value = 12 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/built-in-Merge.png" },
      },
    },
  },
}
