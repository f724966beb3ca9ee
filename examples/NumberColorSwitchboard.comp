-- Four words take their colours from one place. With an offset of 1 each has moved on by one, and the last begins anew.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 25, Depth = 6 },
  Tools = ordered() {
    Tool1 = Brassfennel.BF_NumberColorSwitchboard {
      Inputs = {
        CycleRange = Input { Value = 4 },
        CycleOffset = Input { Value = 1 },
        Color11Red = Input { Value = 0.98 },
        Color11Green = Input { Value = 0.35 },
        Color11Blue = Input { Value = 0.2 },
        Color12Red = Input { Value = 0.45 },
        Color12Green = Input { Value = 0.8 },
        Color12Blue = Input { Value = 0.35 },
        Color13Red = Input { Value = 0.25 },
        Color13Green = Input { Value = 0.6 },
        Color13Blue = Input { Value = 0.95 },
        Color14Red = Input { Value = 0.75 },
        Color14Green = Input { Value = 0.45 },
        Color14Blue = Input { Value = 0.9 },
      },
    },
    Night = Background {
      Inputs = {
        Red = Input { Value = 0.05 },
        Green = Input { Value = 0.07 },
        Blue = Input { Value = 0.13 },
      },
    },
    Fire = Text {
      Inputs = {
        StyledText = Input { Value = "FIRE" },
        Input = Input { SourceOp = "Night", Source = "Output" },
        Font = Input { Value = "DejaVu Sans" },
        Style = Input { Value = "Bold" },
        Size = Input { Value = 0.115 },
        Center = Input { Value = { 0.28, 0.66 } },
        Red1 = Input { SourceOp = "Tool1", Source = "R1" },
        Green1 = Input { SourceOp = "Tool1", Source = "G1" },
        Blue1 = Input { SourceOp = "Tool1", Source = "B1" },
      },
    },
    Leaf = Text {
      Inputs = {
        StyledText = Input { Value = "LEAF" },
        Input = Input { SourceOp = "Fire", Source = "Output" },
        Font = Input { Value = "DejaVu Sans" },
        Style = Input { Value = "Bold" },
        Size = Input { Value = 0.115 },
        Center = Input { Value = { 0.72, 0.66 } },
        Red1 = Input { SourceOp = "Tool1", Source = "R2" },
        Green1 = Input { SourceOp = "Tool1", Source = "G2" },
        Blue1 = Input { SourceOp = "Tool1", Source = "B2" },
      },
    },
    Wave = Text {
      Inputs = {
        StyledText = Input { Value = "WAVE" },
        Input = Input { SourceOp = "Leaf", Source = "Output" },
        Font = Input { Value = "DejaVu Sans" },
        Style = Input { Value = "Bold" },
        Size = Input { Value = 0.115 },
        Center = Input { Value = { 0.28, 0.34 } },
        Red1 = Input { SourceOp = "Tool1", Source = "R3" },
        Green1 = Input { SourceOp = "Tool1", Source = "G3" },
        Blue1 = Input { SourceOp = "Tool1", Source = "B3" },
      },
    },
    Dusk = Text {
      Inputs = {
        StyledText = Input { Value = "DUSK" },
        Input = Input { SourceOp = "Wave", Source = "Output" },
        Font = Input { Value = "DejaVu Sans" },
        Style = Input { Value = "Bold" },
        Size = Input { Value = 0.115 },
        Center = Input { Value = { 0.72, 0.34 } },
        Red1 = Input { SourceOp = "Tool1", Source = "R4" },
        Green1 = Input { SourceOp = "Tool1", Source = "G4" },
        Blue1 = Input { SourceOp = "Tool1", Source = "B4" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Dusk", Source = "Output" },
        Filename = Input { Value = "../out/NumberColorSwitchboard.png" },
      },
    },
  },
}
