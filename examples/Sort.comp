-- Right: the pixels of a cup of coffee in the order of their brightness. Left: a cat made of them, by giving each of
-- its pixels the one of the same rank.
Composition {
  FrameFormat = { Width = 451, Height = 300, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Cat = Loader { Inputs = { Filename = Input { Value = "media/chelsea.png" } } },
    Coffee = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Made = Brassfennel.BF_Sort {
      Inputs = {
        Image = Input { SourceOp = "Cat", Source = "Output" },
        Ordermap = Input { SourceOp = "Coffee", Source = "Output" },
      },
    },
    InOrder = Brassfennel.BF_Sort { Inputs = { Image = Input { SourceOp = "Coffee", Source = "Output" } } },
    Strip = Crop {
      Inputs = {
        Input = Input { SourceOp = "InOrder", Source = "Output" },
        XOffset = Input { Value = 0 },
        YOffset = Input { Value = 0 },
        XSize = Input { Value = 90 },
        YSize = Input { Value = 400 },
      },
    },
    Joined = Merge {
      Inputs = {
        Background = Input { SourceOp = "Made", Source = "Output" },
        Foreground = Input { SourceOp = "Strip", Source = "Output" },
        Center = Input { Value = { 0.94, 0.5 } },
        Size = Input { Value = 0.75 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Joined", Source = "Output" },
        Filename = Input { Value = "../out/Sort.png" },
      },
    },
  },
}
