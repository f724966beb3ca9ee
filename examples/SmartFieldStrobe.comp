-- A title that races across a still picture, taken in fields: combed on the left, and on the right without the
-- lines of one field, but only where it moves.
Composition {
  CurrentTime = 5,
  FrameFormat = { Width = 300, Height = 200, Rate = 25, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Still = Crop {
      Inputs = {
        Input = Input { SourceOp = "Photo", Source = "Output" },
        XOffset = Input { Value = 130 },
        YOffset = Input { Value = 100 },
        XSize = Input { Value = 300 },
        YSize = Input { Value = 200 },
      },
    },
    Title = Text {
      Inputs = {
        StyledText = Input { Value = "RACE" },
        ProcessMode = Input { Value = "Fields" },
        Font = Input { Value = "DejaVu Sans" },
        Style = Input { Value = "Bold" },
        Size = Input { Value = 0.26 },
        Center = Input { Expression = "Point(0.1 + time * 0.08, 0.5)" },
        Red1 = Input { Value = 1 },
        Green1 = Input { Value = 0.85 },
        Blue1 = Input { Value = 0.3 },
      },
    },
    Taken = Merge {
      Inputs = {
        Background = Input { SourceOp = "Still", Source = "Output" },
        Foreground = Input { SourceOp = "Title", Source = "Output" },
      },
    },
    Tool1 = Brassfennel.BF_SmartFieldStrobe {
      Inputs = { Input = Input { SourceOp = "Taken", Source = "Output" }, High = Input { Value = 0.12 } },
    },
    Half = Crop {
      Inputs = {
        Input = Input { SourceOp = "Taken", Source = "Output" },
        XSize = Input { Value = 150 },
        YSize = Input { Value = 200 },
      },
    },
    Compared = Merge {
      Inputs = {
        Background = Input { SourceOp = "Tool1", Source = "Output" },
        Foreground = Input { SourceOp = "Half", Source = "Output" },
        Center = Input { Value = { 0.25, 0.5 } },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Compared", Source = "Output" },
        Filename = Input { Value = "../out/SmartFieldStrobe.png" },
      },
    },
  },
}
