-- The red cup becomes blue; the selection works on hue, lightness and saturation.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Tool1 = Brassfennel.BF_ReplaceColor {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        Colorspace = Input { Value = "HLS" },
        SourceColorRed = Input { Value = 0.55 },
        SourceColorGreen = Input { Value = 0.05 },
        SourceColorBlue = Input { Value = 0.04 },
        RedCorrection = Input { Value = -0.4 },
        Lockrangeforallchannels = Input { Value = false },
        LockSoftnessForAllChannels = Input { Value = false },
        RedRange = Input { Value = 0.025 },
        RedSoftness = Input { Value = 0.015 },
        GreenRange = Input { Value = 0.6 },
        BlueRange = Input { Value = 0.3 },
        BlueSoftness = Input { Value = 0.2 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/ReplaceColor.png" },
      },
    },
  },
}
