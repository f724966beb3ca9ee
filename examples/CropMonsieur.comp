-- A portrait out of a larger photo: the window follows its centre.
Composition {
  FrameFormat = { Width = 512, Height = 512, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/astronaut.jpg" } } },
    Portrait = Brassfennel.BF_CropMonsieur {
      Inputs = {
        Image = Input { SourceOp = "Photo" },
        Crop = Input { Value = 0 },
        Center = Input { Value = { 0.44, 0.68 } },
        Width = Input { Value = 310 },
        Height = Input { Value = 320 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Portrait" },
        Filename = Input { Value = "../out/CropMonsieur.png" },
      },
    },
  },
}
