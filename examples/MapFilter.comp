-- Lights out of focus, through a lens whose aperture is a heart: the picture of a heart is the kernel.
Composition {
  FrameFormat = { Width = 420, Height = 210, Rate = 24, Depth = 6 },
  Tools = ordered() {
    File = Loader { Inputs = { Filename = Input { Value = "media/rocket.jpg" } } },
    Black = Background { Inputs = { Width = Input { Value = 420 }, Height = Input { Value = 210 } } },
    Near = Brassfennel.BF_Canvas {
      Inputs = {
        Image = Input { SourceOp = "File", Source = "Output" },
        Crop = Input { Value = "Free" },
        OffsetHorizontal = Input { Value = 62 },
        OffsetVertical = Input { Value = 0 },
        Width = Input { Value = 420 },
        Height = Input { Value = 210 },
      },
    },
    Photo = Merge {
      Inputs = {
        Background = Input { SourceOp = "Black", Source = "Output" },
        Foreground = Input { SourceOp = "Near", Source = "Output" },
      },
    },
    Cores = Brassfennel.BF_Threshold {
      Inputs = { Image = Input { SourceOp = "Photo", Source = "Output" }, Threshold = Input { Value = 0.8 } },
    },
    Lamps = ChannelBooleans {
      Inputs = {
        Background = Input { SourceOp = "Photo", Source = "Output" },
        Foreground = Input { SourceOp = "Cores", Source = "Output" },
        Operation = Input { Value = "Multiply" },
      },
    },
    Heart = Text {
      Inputs = {
        Width = Input { Value = 128 },
        Height = Input { Value = 128 },
        StyledText = Input { Value = "♥" },
        Size = Input { Value = 1.1 },
        Center = Input { Value = { 0.5, 0.54 } },
      },
    },
    Soft = Brassfennel.BF_MapFilter {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        Channel = Input { Value = "Alpha" },
        MapMappermap = Input { SourceOp = "Heart", Source = "Output" },
        Mapwidth = Input { Value = 44 },
        Mapheight = Input { Value = 44 },
        Edges = Input { Value = "Duplicate" },
      },
    },
    Bokeh = Brassfennel.BF_MapFilter {
      Inputs = {
        Image = Input { SourceOp = "Lamps", Source = "Output" },
        Channel = Input { Value = "Alpha" },
        MapMappermap = Input { SourceOp = "Heart", Source = "Output" },
        Mapwidth = Input { Value = 44 },
        Mapheight = Input { Value = 44 },
      },
    },
    Bright = Brassfennel.BF_Combine {
      Inputs = {
        Image = Input { SourceOp = "Black", Source = "Output" },
        Combineimage = Input { SourceOp = "Bokeh", Source = "Output" },
        FractionMerge = Input { Value = 7 },
        FractionMergeUnder = Input { Value = -6 },
      },
    },
    Both = ChannelBooleans {
      Inputs = {
        Background = Input { SourceOp = "Soft", Source = "Output" },
        Foreground = Input { SourceOp = "Bright", Source = "Output" },
        Operation = Input { Value = "Add" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Both", Source = "Output" },
        Filename = Input { Value = "../out/MapFilter.png" },
      },
    },
  },
}
