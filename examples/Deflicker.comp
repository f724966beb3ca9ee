-- A lamp flickers: on the left as it was taken, on the right brought back to the light of the first frame.
Composition {
  CurrentTime = 2,
  FrameFormat = { Width = 600, Height = 400, Rate = 25, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Flicker = Brassfennel.BF_Color {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        Type = Input { Value = "Multiply" },
        ColorRed = Input { Expression = "0.7 + 0.3 * cos(time * 2)" },
        ColorGreen = Input { Expression = "0.62 + 0.38 * cos(time * 2)" },
        ColorBlue = Input { Expression = "0.5 + 0.5 * cos(time * 2)" },
      },
    },
    Tool1 = Brassfennel.BF_Deflicker {
      Inputs = {
        Input = Input { SourceOp = "Flicker", Source = "Output" },
        Reference = Input { Value = "Fixed Time" },
        ReferenceTime = Input { Value = 0 },
      },
    },
    Half = Crop {
      Inputs = {
        Input = Input { SourceOp = "Flicker", Source = "Output" },
        XSize = Input { Value = 300 },
        YSize = Input { Value = 400 },
      },
    },
    Compared = Merge {
      Inputs = {
        Background = Input { SourceOp = "Tool1", Source = "Output" },
        Foreground = Input { SourceOp = "Half", Source = "Output" },
        Center = Input { Value = { 0.25, 0.5 } },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Compared", Source = "Output" },
        Filename = Input { Value = "../out/Deflicker.png" },
      },
    },
  },
}
