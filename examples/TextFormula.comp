-- A label made of numbers, a point and another text.
Composition {
  CurrentTime = 42,
  FrameFormat = { Width = 600, Height = 400, Rate = 25, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Pan = BezierSpline { KeyFrames = { [0] = { 0.3, Flags = { Linear = true } }, [100] = { 0.7 } } },
    Where = XYPath {
      Inputs = { X = Input { SourceOp = "Pan", Source = "Value" }, Y = Input { Value = 0.62 } },
    },
    Tool1 = Brassfennel.BF_TextFormula {
      Inputs = {
        Text = Input { Value = "t1  n1\nfocus p1x / p1y" },
        n1 = Input { Expression = "time" },
        p1 = Input { SourceOp = "Where", Source = "Value" },
        t1 = Input { Value = "SHOT 12" },
        Precisionnumbervalues = Input { Value = 0 },
        Minimumnumbervaluedigitsbeforedot = Input { Value = 4 },
        Addspaceifnotnegative = Input { Value = 0 },
        Addspaceifnotnegative_1 = Input { Value = 0 },
      },
    },
    Dark = Merge {
      Inputs = {
        Background = Input { SourceOp = "Photo", Source = "Output" },
        Foreground = Input { SourceOp = "Shade", Source = "Output" },
      },
    },
    Shade = Background {
      Inputs = {
        Red = Input { Value = 0 },
        Green = Input { Value = 0 },
        Blue = Input { Value = 0 },
        Alpha = Input { Value = 0.45 },
      },
    },
    Label = Text {
      Inputs = {
        StyledText = Input { SourceOp = "Tool1", Source = "Output" },
        Input = Input { SourceOp = "Dark", Source = "Output" },
        Font = Input { Value = "DejaVu Sans Mono" },
        Style = Input { Value = "Bold" },
        Size = Input { Value = 0.05 },
        Center = Input { Value = { 0.05, 0.08 } },
        HorizontalJustification = Input { Value = "Left" },
        VerticalJustification = Input { Value = "Bottom" },
        Red1 = Input { Value = 1 },
        Green1 = Input { Value = 0.85 },
        Blue1 = Input { Value = 0.4 },
      },
    },
    Mark = Text {
      Inputs = {
        StyledText = Input { Value = "+" },
        Input = Input { SourceOp = "Label", Source = "Output" },
        Font = Input { Value = "DejaVu Sans" },
        Size = Input { Value = 0.12 },
        Center = Input { SourceOp = "Where", Source = "Value" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Mark", Source = "Output" },
        Filename = Input { Value = "../out/TextFormula.png" },
      },
    },
  },
}
