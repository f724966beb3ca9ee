-- Ten frames of one beat, as the size of ten dots: a quick rise, a fall to the sustained value, and the release.
Composition {
  CurrentTime = 0,
  FrameFormat = { Width = 600, Height = 400, Rate = 25, Depth = 6 },
  Tools = ordered() {
    Tool1 = Brassfennel.BF_NumberBeat {
      Inputs = {
        Frequency = Input { Value = 10 },
        Attacktime = Input { Value = 2 },
        Decaytime = Input { Value = 2 },
        Sustaintime = Input { Value = 2 },
        Releasetime = Input { Value = 3 },
      },
    },
    Night = Background {
      Inputs = {
        Red = Input { Value = 0.05 },
        Green = Input { Value = 0.07 },
        Blue = Input { Value = 0.13 },
      },
    },
    Dot1 = Text {
      Inputs = {
        StyledText = Input { Value = "●" },
        Input = Input { SourceOp = "Night", Source = "Output" },
        Font = Input { Value = "DejaVu Sans" },
        Size = Input { Expression = "0.03 + 0.15 * Tool1:GetValue(\"Number\", time + 0)" },
        Center = Input { Expression = "Point(0.05, 0.5)" },
        Red1 = Input { Value = 1 },
        Green1 = Input { Value = 0.78 },
        Blue1 = Input { Value = 0.3 },
      },
    },
    Dot2 = Text {
      Inputs = {
        StyledText = Input { Value = "●" },
        Input = Input { SourceOp = "Dot1", Source = "Output" },
        Font = Input { Value = "DejaVu Sans" },
        Size = Input { Expression = "0.03 + 0.15 * Tool1:GetValue(\"Number\", time + 1)" },
        Center = Input { Expression = "Point(0.15, 0.5)" },
        Red1 = Input { Value = 1 },
        Green1 = Input { Value = 0.6 },
        Blue1 = Input { Value = 0.28 },
      },
    },
    Dot3 = Text {
      Inputs = {
        StyledText = Input { Value = "●" },
        Input = Input { SourceOp = "Dot2", Source = "Output" },
        Font = Input { Value = "DejaVu Sans" },
        Size = Input { Expression = "0.03 + 0.15 * Tool1:GetValue(\"Number\", time + 2)" },
        Center = Input { Expression = "Point(0.25, 0.5)" },
        Red1 = Input { Value = 0.97 },
        Green1 = Input { Value = 0.42 },
        Blue1 = Input { Value = 0.3 },
      },
    },
    Dot4 = Text {
      Inputs = {
        StyledText = Input { Value = "●" },
        Input = Input { SourceOp = "Dot3", Source = "Output" },
        Font = Input { Value = "DejaVu Sans" },
        Size = Input { Expression = "0.03 + 0.15 * Tool1:GetValue(\"Number\", time + 3)" },
        Center = Input { Expression = "Point(0.35, 0.5)" },
        Red1 = Input { Value = 0.9 },
        Green1 = Input { Value = 0.3 },
        Blue1 = Input { Value = 0.42 },
      },
    },
    Dot5 = Text {
      Inputs = {
        StyledText = Input { Value = "●" },
        Input = Input { SourceOp = "Dot4", Source = "Output" },
        Font = Input { Value = "DejaVu Sans" },
        Size = Input { Expression = "0.03 + 0.15 * Tool1:GetValue(\"Number\", time + 4)" },
        Center = Input { Expression = "Point(0.45, 0.5)" },
        Red1 = Input { Value = 1 },
        Green1 = Input { Value = 0.78 },
        Blue1 = Input { Value = 0.3 },
      },
    },
    Dot6 = Text {
      Inputs = {
        StyledText = Input { Value = "●" },
        Input = Input { SourceOp = "Dot5", Source = "Output" },
        Font = Input { Value = "DejaVu Sans" },
        Size = Input { Expression = "0.03 + 0.15 * Tool1:GetValue(\"Number\", time + 5)" },
        Center = Input { Expression = "Point(0.55, 0.5)" },
        Red1 = Input { Value = 1 },
        Green1 = Input { Value = 0.6 },
        Blue1 = Input { Value = 0.28 },
      },
    },
    Dot7 = Text {
      Inputs = {
        StyledText = Input { Value = "●" },
        Input = Input { SourceOp = "Dot6", Source = "Output" },
        Font = Input { Value = "DejaVu Sans" },
        Size = Input { Expression = "0.03 + 0.15 * Tool1:GetValue(\"Number\", time + 6)" },
        Center = Input { Expression = "Point(0.65, 0.5)" },
        Red1 = Input { Value = 0.97 },
        Green1 = Input { Value = 0.42 },
        Blue1 = Input { Value = 0.3 },
      },
    },
    Dot8 = Text {
      Inputs = {
        StyledText = Input { Value = "●" },
        Input = Input { SourceOp = "Dot7", Source = "Output" },
        Font = Input { Value = "DejaVu Sans" },
        Size = Input { Expression = "0.03 + 0.15 * Tool1:GetValue(\"Number\", time + 7)" },
        Center = Input { Expression = "Point(0.75, 0.5)" },
        Red1 = Input { Value = 0.9 },
        Green1 = Input { Value = 0.3 },
        Blue1 = Input { Value = 0.42 },
      },
    },
    Dot9 = Text {
      Inputs = {
        StyledText = Input { Value = "●" },
        Input = Input { SourceOp = "Dot8", Source = "Output" },
        Font = Input { Value = "DejaVu Sans" },
        Size = Input { Expression = "0.03 + 0.15 * Tool1:GetValue(\"Number\", time + 8)" },
        Center = Input { Expression = "Point(0.85, 0.5)" },
        Red1 = Input { Value = 1 },
        Green1 = Input { Value = 0.78 },
        Blue1 = Input { Value = 0.3 },
      },
    },
    Dot10 = Text {
      Inputs = {
        StyledText = Input { Value = "●" },
        Input = Input { SourceOp = "Dot9", Source = "Output" },
        Font = Input { Value = "DejaVu Sans" },
        Size = Input { Expression = "0.03 + 0.15 * Tool1:GetValue(\"Number\", time + 9)" },
        Center = Input { Expression = "Point(0.95, 0.5)" },
        Red1 = Input { Value = 1 },
        Green1 = Input { Value = 0.6 },
        Blue1 = Input { Value = 0.28 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Dot10", Source = "Output" },
        Filename = Input { Value = "../out/NumberBeat.png" },
      },
    },
  },
}
