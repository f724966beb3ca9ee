-- A ring lit by a coffee table: each place takes the colour that a blurred cup has where it faces.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/ring.exr" } } },
    Ball = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Lights = Blur {
      Inputs = {
        Input = Input { SourceOp = "Ball", Source = "Output" },
        XBlurSize = Input { Value = 20 },
      },
    },
    Tool1 = Brassfennel.BF_ShadeBySample {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        ShadingMap = Input { SourceOp = "Lights", Source = "Output" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/ShadeBySample.png" },
      },
    },
  },
}
