-- Somebody types: two thirds are written, and the cursor waits.
Composition {
  CurrentTime = 42,
  FrameFormat = { Width = 600, Height = 400, Rate = 25, Depth = 6 },
  Tools = ordered() {
    Screen = Background {
      Inputs = {
        Red = Input { Value = 0.02 },
        Green = Input { Value = 0.05 },
        Blue = Input { Value = 0.04 },
      },
    },
    Tool1 = Brassfennel.BF_TextWrite {
      Inputs = {
        Text = Input { Value = "Once the lamp is lit,\nthe shadows learn\nwhere they belong." },
        Write = Input { Expression = "time / 60" },
        Cursor = Input { Value = "█" },
        Prefix = Input { Value = "> " },
        Prefixshow = Input { Value = 1 },
      },
    },
    Typed = Text {
      Inputs = {
        StyledText = Input { SourceOp = "Tool1", Source = "Output" },
        Input = Input { SourceOp = "Screen", Source = "Output" },
        Font = Input { Value = "DejaVu Sans Mono" },
        Size = Input { Value = 0.06 },
        Center = Input { Value = { 0.07, 0.8 } },
        HorizontalJustification = Input { Value = "Left" },
        VerticalJustification = Input { Value = "Top" },
        Red1 = Input { Value = 0.45 },
        Green1 = Input { Value = 1 },
        Blue1 = Input { Value = 0.6 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Typed", Source = "Output" },
        Filename = Input { Value = "../out/TextWrite.png" },
      },
    },
  },
}
