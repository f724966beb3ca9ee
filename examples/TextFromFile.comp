-- Subtitles from a text file: a line holds from its start frame until the next.
Composition {
  CurrentTime = 60,
  FrameFormat = { Width = 600, Height = 400, Rate = 25, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Tool1 = Brassfennel.BF_TextFromFile { Inputs = { Filename = Input { Value = "media/subtitles.txt" } } },
    Shadow = Text {
      Inputs = {
        StyledText = Input { SourceOp = "Tool1", Source = "Output" },
        Font = Input { Value = "DejaVu Sans" },
        Style = Input { Value = "Bold" },
        Size = Input { Value = 0.05 },
        Center = Input { Value = { 0.5, 0.12 } },
        Red1 = Input { Value = 0 },
        Green1 = Input { Value = 0 },
        Blue1 = Input { Value = 0 },
      },
    },
    Soft = Blur {
      Inputs = { Input = Input { SourceOp = "Shadow", Source = "Output" }, XBlurSize = Input { Value = 4 } },
    },
    Under = Merge {
      Inputs = {
        Background = Input { SourceOp = "Photo", Source = "Output" },
        Foreground = Input { SourceOp = "Soft", Source = "Output" },
      },
    },
    Subtitle = Text {
      Inputs = {
        StyledText = Input { SourceOp = "Tool1", Source = "Output" },
        Input = Input { SourceOp = "Under", Source = "Output" },
        Font = Input { Value = "DejaVu Sans" },
        Style = Input { Value = "Bold" },
        Size = Input { Value = 0.05 },
        Center = Input { Value = { 0.5, 0.12 } },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Subtitle", Source = "Output" },
        Filename = Input { Value = "../out/TextFromFile.png" },
      },
    },
  },
}
