-- A portrait in strokes of a round brush: each pixel takes the colour that is most common around it.
Composition {
  FrameFormat = { Width = 512, Height = 384, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/astronaut.jpg" } } },
    Tool1 = Brassfennel.BF_Painterly {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        LuminanceSteps = Input { Value = 24 },
        Type = Input { Value = "Circle" },
        Radius = Input { Value = 7 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/Painterly.png" },
      },
    },
  },
}
