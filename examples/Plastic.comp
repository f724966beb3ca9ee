-- Letters under a film of plastic: nothing but its highlights is added to them.
Composition {
  FrameFormat = { Width = 512, Height = 320, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Paper = Background {
      Inputs = {
        Width = Input { Value = 512 },
        Height = Input { Value = 320 },
        Red = Input { Value = 0.05 },
        Green = Input { Value = 0.28 },
        Blue = Input { Value = 0.33 },
      },
    },
    Title = Text {
      Inputs = {
        StyledText = Input { Value = "WRAP" },
        Input = Input { SourceOp = "Paper", Source = "Output" },
        Font = Input { Value = "DejaVu Sans" },
        Style = Input { Value = "Bold" },
        Size = Input { Value = 0.27 },
        Red1 = Input { Value = 0.95 },
        Green1 = Input { Value = 0.25 },
        Blue1 = Input { Value = 0.2 },
      },
    },
    Tool1 = Brassfennel.BF_Plastic {
      Inputs = {
        Image = Input { SourceOp = "Title", Source = "Output" },
        Bumpchannel = Input { Value = "Red" },
        Blursize = Input { Value = 11 },
        Height = Input { Value = 0.4 },
        Position = Input { Value = { 0.7, 0.85 } },
        Redlow = Input { Value = 0.6 },
        high = Input { Value = 0.9 },
        Combine = Input { Value = "Add" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/Plastic.png" },
      },
    },
  },
}
