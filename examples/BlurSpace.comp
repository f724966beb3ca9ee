-- Left: a photograph with noise in its colours. Right: U and V are blurred, while Y keeps what is sharp.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    File = Loader { Inputs = { Filename = Input { Value = "media/chelsea.png" } } },
    Black = Background { Inputs = { Width = Input { Value = 600 }, Height = Input { Value = 400 } } },
    Photo = Merge {
      Inputs = {
        Background = Input { SourceOp = "Black", Source = "Output" },
        Foreground = Input { SourceOp = "File", Source = "Output" },
        Size = Input { Value = 1.335 },
      },
    },
    Noise = Brassfennel.BF_Noise {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        SizeX = Input { Value = 3 },
        SizeY = Input { Value = 3 },
        Colors = Input { Value = "Selected" },
        Numberofcolors = Input { Value = 4 },
        Color1Red = Input { Value = 0.9 },
        Color1Green = Input { Value = 0.2 },
        Color1Blue = Input { Value = 0.9 },
        Color2Red = Input { Value = 0.1 },
        Color2Green = Input { Value = 0.72 },
        Color2Blue = Input { Value = 0.3 },
        Color3Red = Input { Value = 0.25 },
        Color3Green = Input { Value = 0.52 },
        Color3Blue = Input { Value = 1 },
        Color4Red = Input { Value = 1 },
        Color4Green = Input { Value = 0.32 },
        Color4Blue = Input { Value = 0.05 },
      },
    },
    Grain = Merge {
      Inputs = {
        Background = Input { SourceOp = "Photo", Source = "Output" },
        Foreground = Input { SourceOp = "Noise", Source = "Output" },
        Blend = Input { Value = 0.35 },
      },
    },
    Clean = Brassfennel.BF_BlurSpace {
      Inputs = {
        Image = Input { SourceOp = "Grain", Source = "Output" },
        BlurFilter = Input { Value = "Gaussian" },
        BlurSize = Input { Value = 10 },
        Colorspace = Input { Value = "YUV" },
        Red = Input { Value = false },
      },
    },
    Left = Crop {
      Inputs = {
        Input = Input { SourceOp = "Grain", Source = "Output" },
        XOffset = Input { Value = 0 },
        YOffset = Input { Value = 0 },
        XSize = Input { Value = 300 },
        YSize = Input { Value = 400 },
      },
    },
    Right = Crop {
      Inputs = {
        Input = Input { SourceOp = "Clean", Source = "Output" },
        XOffset = Input { Value = 300 },
        YOffset = Input { Value = 0 },
        XSize = Input { Value = 300 },
        YSize = Input { Value = 400 },
      },
    },
    Paper = Background {
      Inputs = {
        Width = Input { Value = 600 },
        Height = Input { Value = 400 },
        Red = Input { Value = 0.05 },
        Green = Input { Value = 0.05 },
        Blue = Input { Value = 0.08 },
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
        Filename = Input { Value = "../out/BlurSpace.png" },
      },
    },
  },
}
