-- A matte from the photograph, full of specks; on the right they are gone.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Matte = Brassfennel.BF_Threshold {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        Threshold = Input { Value = 0.4 },
        Softness = Input { Value = 0.05 },
      },
    },
    Empty = Background { Inputs = { Width = Input { Value = 600 }, Height = Input { Value = 400 } } },
    Grain = Brassfennel.BF_Noise {
      Inputs = { Image = Input { SourceOp = "Empty", Source = "Output" }, RandomSeed = Input { Value = 3 } },
    },
    Specks = Brassfennel.BF_Threshold {
      Inputs = {
        Image = Input { SourceOp = "Grain", Source = "Output" },
        Threshold = Input { Value = 0.78 },
      },
    },
    Dirty = ChannelBooleans {
      Inputs = {
        Background = Input { SourceOp = "Matte", Source = "Output" },
        Foreground = Input { SourceOp = "Specks", Source = "Output" },
        Operation = Input { Value = "Difference" },
      },
    },
    Once = Brassfennel.BF_MatteCleaner {
      Inputs = {
        Image = Input { SourceOp = "Dirty", Source = "Output" },
        ThresholdRough = Input { Value = 0.6 },
      },
    },
    Twice = Brassfennel.BF_MatteCleaner {
      Inputs = {
        Image = Input { SourceOp = "Once", Source = "Output" },
        ThresholdRough = Input { Value = 0.5 },
      },
    },
    Right = Crop {
      Inputs = {
        Input = Input { SourceOp = "Twice", Source = "Output" },
        XOffset = Input { Value = 300 },
        YOffset = Input { Value = 0 },
        XSize = Input { Value = 300 },
        YSize = Input { Value = 400 },
      },
    },
    Left = Crop {
      Inputs = {
        Input = Input { SourceOp = "Dirty", Source = "Output" },
        XOffset = Input { Value = 0 },
        YOffset = Input { Value = 0 },
        XSize = Input { Value = 300 },
        YSize = Input { Value = 400 },
      },
    },
    Paper = Background {
      Inputs = {
        Width = Input { Value = 600 },
        Height = Input { Value = 400 },
        Red = Input { Value = 0.08 },
        Green = Input { Value = 0.25 },
        Blue = Input { Value = 0.3 },
      },
    },
    Laid = Merge {
      Inputs = {
        Background = Input { SourceOp = "Paper", Source = "Output" },
        Foreground = Input { SourceOp = "Left", Source = "Output" },
        Center = Input { Value = { 0.25, 0.5 } },
      },
    },
    Joined = Merge {
      Inputs = {
        Background = Input { SourceOp = "Laid", Source = "Output" },
        Foreground = Input { SourceOp = "Right", Source = "Output" },
        Center = Input { Value = { 0.75, 0.5 } },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Joined", Source = "Output" },
        Filename = Input { Value = "../out/MatteCleaner.png" },
      },
    },
  },
}
