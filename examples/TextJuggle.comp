-- The same words at once in order and juggled; each frame has an order of its own.
Composition {
  CurrentTime = 9,
  FrameFormat = { Width = 600, Height = 400, Rate = 25, Depth = 6 },
  Tools = ordered() {
    Paper = Background {
      Inputs = { Red = Input { Value = 0.93 }, Green = Input { Value = 0.9 }, Blue = Input { Value = 0.84 } },
    },
    Tool1 = Brassfennel.BF_TextJuggle {
      Inputs = {
        Text = Input { Value = "LETTERS LOOSE\nIN THE WIND" },
        Jugglecharacters = Input { Value = 0.35 },
        Keepspacesinplace = Input { Value = 1 },
      },
    },
    Plain = Text {
      Inputs = {
        StyledText = Input { Value = "LETTERS LOOSE\nIN THE WIND" },
        Input = Input { SourceOp = "Paper", Source = "Output" },
        Font = Input { Value = "DejaVu Serif" },
        Style = Input { Value = "Bold" },
        Size = Input { Value = 0.085 },
        Center = Input { Value = { 0.5, 0.72 } },
        Red1 = Input { Value = 0.15 },
        Green1 = Input { Value = 0.15 },
        Blue1 = Input { Value = 0.18 },
      },
    },
    Loose = Text {
      Inputs = {
        StyledText = Input { SourceOp = "Tool1", Source = "Output" },
        Input = Input { SourceOp = "Plain", Source = "Output" },
        Font = Input { Value = "DejaVu Serif" },
        Style = Input { Value = "Bold" },
        Size = Input { Value = 0.085 },
        Center = Input { Value = { 0.5, 0.3 } },
        Red1 = Input { Value = 0.78 },
        Green1 = Input { Value = 0.2 },
        Blue1 = Input { Value = 0.16 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Loose", Source = "Output" },
        Filename = Input { Value = "../out/TextJuggle.png" },
      },
    },
  },
}
