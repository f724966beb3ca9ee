-- The untouched photograph, brought in at the far end of the flow to lie over its graded copy.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 25, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Graded = Brassfennel.BF_HueSaturation {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        Hue = Input { Value = 0.5 },
        LightnessMultiply = Input { Value = 0.55 },
      },
    },
    Soft = Blur {
      Inputs = { Input = Input { SourceOp = "Graded", Source = "Output" }, XBlurSize = Input { Value = 10 } },
    },
    Tool1 = Brassfennel.BF_WirelessLink {
      Inputs = { Link1 = Input { SourceOp = "Photo", Source = "Output" } },
    },
    Laid = Merge {
      Inputs = {
        Background = Input { SourceOp = "Soft", Source = "Output" },
        Foreground = Input { SourceOp = "Tool1", Source = "Output" },
        Center = Input { Value = { 0.72, 0.3 } },
        Size = Input { Value = 0.42 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Laid", Source = "Output" },
        Filename = Input { Value = "../out/WirelessLink.png" },
      },
    },
  },
}
