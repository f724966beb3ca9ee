-- A spotlight on the cup: its cone lets the photograph through, all around night falls.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Tool1 = Brassfennel.BF_Gradient {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        Type = Input { Value = "Light" },
        Start = Input { Value = { 0.47, 0.62 } },
        End = Input { Value = { 0.75, 0.95 } },
        LightZdistance = Input { Value = 0.35 },
        Lightconeangle = Input { Value = 34 },
        Midpoint = Input { Value = 0.25 },
        StartTransparency = Input { Value = 1 },
        EndTransparency = Input { Value = 0.12 },
        EndColorRed = Input { Value = 0.02 },
        EndColorGreen = Input { Value = 0.04 },
        EndColorBlue = Input { Value = 0.12 },
        EndColorAlpha = Input { Value = 1 },
        StartColorRed = Input { Value = 0.02 },
        StartColorGreen = Input { Value = 0.04 },
        StartColorBlue = Input { Value = 0.12 },
        StartColorAlpha = Input { Value = 1 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/Gradient.png" },
      },
    },
  },
}
