-- Flat letters become solid ones: their bodies run back to a vanishing point below, lit from the lower left.
Composition {
  FrameFormat = { Width = 512, Height = 512, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Wall = Loader { Inputs = { Filename = Input { Value = "media/brick.png" } } },
    Letters = Text {
      Inputs = {
        Width = Input { Value = 512 },
        Height = Input { Value = 512 },
        StyledText = Input { Value = "SOLID" },
        Style = Input { Value = "Bold" },
        Size = Input { Value = 0.27 },
        Center = Input { Value = { 0.5, 0.58 } },
        Red1 = Input { Value = 1 },
        Green1 = Input { Value = 0.86 },
        Blue1 = Input { Value = 0.35 },
      },
    },
    Body = Brassfennel.BF_Extrude {
      Inputs = {
        Image = Input { SourceOp = "Letters" },
        Perspectivetype = Input { Value = 1 },
        Center = Input { Value = { 0.5, -0.1 } },
        Length = Input { Value = 0.2 },
        ColorRed = Input { Value = 0.85 },
        ColorGreen = Input { Value = 0.35 },
        ColorBlue = Input { Value = 0.12 },
        Lightangle = Input { Value = 135 },
        Removelightingdetail = Input { Value = 1.5 },
      },
    },
    Laid = Merge {
      Inputs = {
        Background = Input { SourceOp = "Wall" },
        Foreground = Input { SourceOp = "Body" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Laid" },
        Filename = Input { Value = "../out/Extrude.png" },
      },
    },
  },
}
