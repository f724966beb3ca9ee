-- A photo becomes a poster on the pavement: its four corners go to where the stones meet.
Composition {
  FrameFormat = { Width = 512, Height = 512, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Street = Loader { Inputs = { Filename = Input { Value = "media/brick.png" } } },
    Photo = Loader { Inputs = { Filename = Input { Value = "media/astronaut.jpg" } } },
    Poster = Brassfennel.BF_Positioner {
      Inputs = {
        Image = Input { SourceOp = "Photo" },
        Source1 = Input { Value = { 0, 0 } },
        Source2 = Input { Value = { 1, 0 } },
        Source3 = Input { Value = { 1, 1 } },
        Source4 = Input { Value = { 0, 1 } },
        Destination1 = Input { Value = { 0.1, 0.1 } },
        Destination2 = Input { Value = { 0.86, 0.14 } },
        Destination3 = Input { Value = { 0.76, 0.88 } },
        Destination4 = Input { Value = { 0.28, 0.84 } },
      },
    },
    Laid = Merge {
      Inputs = {
        Background = Input { SourceOp = "Street" },
        Foreground = Input { SourceOp = "Poster" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Laid" },
        Filename = Input { Value = "../out/Positioner.png" },
      },
    },
  },
}
