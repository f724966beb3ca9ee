-- A drawing in neon: lines along equal brightness of a soft portrait, in each channel by itself.
Composition {
  FrameFormat = { Width = 512, Height = 384, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/astronaut.jpg" } } },
    Soft = Blur {
      Inputs = {
        Input = Input { SourceOp = "Photo", Source = "Output" },
        XBlurSize = Input { Value = 6 },
      },
    },
    Tool1 = Brassfennel.BF_Contour {
      Inputs = {
        Image = Input { SourceOp = "Soft", Source = "Output" },
        Width = Input { Value = 0.004 },
        Levels = Input { Value = 5 },
      },
    },
    Night = Background {
      Inputs = {
        Width = Input { Value = 512 },
        Height = Input { Value = 384 },
        Red = Input { Value = 0.02 },
        Green = Input { Value = 0.02 },
        Blue = Input { Value = 0.08 },
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
        Filename = Input { Value = "../out/Contour.png" },
      },
    },
  },
}
