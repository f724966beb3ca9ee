-- A title that comes up letter by letter: half of the sweep is over.
Composition {
  FrameFormat = { Width = 640, Height = 427, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/rocket.jpg" } } },
    Title = Text {
      Inputs = {
        Width = Input { Value = 640 },
        Height = Input { Value = 427 },
        StyledText = Input { Value = "LETTER BY LETTER" },
        Font = Input { Value = "DejaVu Sans" },
        Style = Input { Value = "Bold" },
        Size = Input { Value = 0.085 },
      },
    },
    Tool1 = Brassfennel.BF_Fragments {
      Inputs = {
        Image = Input { SourceOp = "Title", Source = "Output" },
        Channel = Input { Value = 3 },
        RangeType = Input { Value = 2 },
        RangeRandomOneByOne = Input { Value = 1 },
        RangeRandomSeed = Input { Value = 5 },
        RangeLength = Input { Value = 5 },
        RangeMax = Input { Value = 0.6 },
      },
    },
    Laid = Merge {
      Inputs = {
        Background = Input { SourceOp = "Photo", Source = "Output" },
        Foreground = Input { SourceOp = "Tool1", Source = "Output" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Laid", Source = "Output" },
        Filename = Input { Value = "../out/Fragments.png" },
      },
    },
  },
}
