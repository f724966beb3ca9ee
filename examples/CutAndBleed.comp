-- A star is cut into the photograph and its light bleeds along the edge.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Star = Brassfennel.BF_ShapePrimitiveCreate {
      Inputs = {
        Type = Input { Value = 3 },
        Steps = Input { Value = 7 },
        SizeX = Input { Value = 0.52 },
        SizeY = Input { Value = 0.3 },
        AngleStart = Input { Value = 12 },
      },
    },
    Drawn = Brassfennel.BF_ShapeRender {
      Inputs = {
        Shape = Input { SourceOp = "Star", Source = "Output" },
        Width = Input { Value = 600 },
        Height = Input { Value = 400 },
      },
    },
    Tool1 = Brassfennel.BF_CutAndBleed {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        Cuttingimage = Input { SourceOp = "Drawn", Source = "Output" },
        Invertchannel = Input { Value = false },
        Cutoriginal = Input { Value = 0.75 },
        Cutinnerwidth = Input { Value = 14 },
        Bleedwidth = Input { Value = 10 },
        Brightness = Input { Value = 3 },
      },
    },
    Paper = Background {
      Inputs = {
        Width = Input { Value = 600 },
        Height = Input { Value = 400 },
        Red = Input { Value = 0.02 },
        Green = Input { Value = 0.03 },
        Blue = Input { Value = 0.08 },
      },
    },
    Laid = Merge {
      Inputs = {
        Background = Input { SourceOp = "Paper", Source = "Output" },
        Foreground = Input { SourceOp = "Tool1", Source = "Output" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Laid", Source = "Output" },
        Filename = Input { Value = "../out/CutAndBleed.png" },
      },
    },
  },
}
