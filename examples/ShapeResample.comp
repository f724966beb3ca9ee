-- The outlines of a photograph with points far apart: large forms turn angular, specks go.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Soft = Blur {
      Inputs = { Input = Input { SourceOp = "Photo", Source = "Output" }, XBlurSize = Input { Value = 3 } },
    },
    Trace = Brassfennel.BF_ShapeTraceCreate {
      Inputs = {
        Image = Input { SourceOp = "Soft", Source = "Output" },
        Threshold = Input { Value = 0.55 },
        BrushColorRed = Input { Value = 0.96 },
        BrushColorGreen = Input { Value = 0.92 },
        BrushColorBlue = Input { Value = 0.84 },
        PenColorRed = Input { Value = 0.86 },
        PenColorGreen = Input { Value = 0.27 },
        PenColorBlue = Input { Value = 0.2 },
        PenThickness = Input { Value = 0.25 },
      },
    },
    Coarse = Brassfennel.BF_ShapeResample {
      Inputs = { Shape = Input { SourceOp = "Trace", Source = "Output" }, Distance = Input { Value = 0.05 } },
    },
    Drawn = Brassfennel.BF_ShapeRender {
      Inputs = { Shape = Input { SourceOp = "Coarse", Source = "Output" } },
    },
    Paper = Background {
      Inputs = {
        Width = Input { Value = 600 },
        Height = Input { Value = 400 },
        Red = Input { Value = 0.13 },
        Green = Input { Value = 0.12 },
        Blue = Input { Value = 0.16 },
      },
    },
    Laid = Merge {
      Inputs = {
        Background = Input { SourceOp = "Paper", Source = "Output" },
        Foreground = Input { SourceOp = "Drawn", Source = "Output" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Laid", Source = "Output" },
        Filename = Input { Value = "../out/ShapeResample.png" },
      },
    },
  },
}
