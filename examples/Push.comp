-- A cat comes in from the right and pushes the coffee out.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Cat = Loader { Inputs = { Filename = Input { Value = "media/chelsea.png" } } },
    Black = Background { Inputs = { Width = Input { Value = 600 }, Height = Input { Value = 400 } } },
    Fitted = Merge {
      Inputs = {
        Background = Input { SourceOp = "Black", Source = "Output" },
        Foreground = Input { SourceOp = "Cat", Source = "Output" },
        Size = Input { Value = 1.335 },
      },
    },
    Tool1 = Brassfennel.BF_Push {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        Deformationmap = Input { SourceOp = "Fitted", Source = "Output" },
        PushX = Input { Value = 0.55 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/Push.png" },
      },
    },
  },
}
