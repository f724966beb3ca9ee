-- Letters rise, column by column, until they rest under a slanted surface.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Water = Background {
      Inputs = {
        Width = Input { Value = 600 },
        Height = Input { Value = 400 },
        Red = Input { Value = 0.03 },
        Green = Input { Value = 0.16 },
        Blue = Input { Value = 0.27 },
      },
    },
    Letters = Text {
      Inputs = {
        Width = Input { Value = 600 },
        Height = Input { Value = 400 },
        StyledText = Input { Value = "BUOYANT" },
        Style = Input { Value = "Bold" },
        Size = Input { Value = 0.18 },
        Center = Input { Value = { 0.5, 0.22 } },
        Red1 = Input { Value = 1 },
        Green1 = Input { Value = 0.8 },
        Blue1 = Input { Value = 0.4 },
      },
    },
    Risen = Brassfennel.BF_Rest {
      Inputs = {
        Image = Input { SourceOp = "Letters", Source = "Output" },
        Channel = Input { Value = "Alpha" },
        FloorLeft = Input { Value = { 0, 0.75 } },
        FloorRight = Input { Value = { 1, 0.92 } },
        Position = Input { Value = "Under" },
      },
    },
    Below = Merge {
      Inputs = {
        Background = Input { SourceOp = "Water", Source = "Output" },
        Foreground = Input { SourceOp = "Letters", Source = "Output" },
        Blend = Input { Value = 0.25 },
      },
    },
    Both = Merge {
      Inputs = {
        Background = Input { SourceOp = "Below", Source = "Output" },
        Foreground = Input { SourceOp = "Risen", Source = "Output" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Both", Source = "Output" },
        Filename = Input { Value = "../out/Rest.png" },
      },
    },
  },
}
