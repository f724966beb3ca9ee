-- Ripples: a soft spiral tells how far each pixel moves.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Rings = Brassfennel.BF_ShapeSpiralCreate {
      Inputs = {
        RadiusStart = Input { Value = 0.02 },
        RadiusEnd = Input { Value = 0.5 },
        AngleEnd = Input { Value = 2880 },
        AngleStep = Input { Value = 6 },
        BrushEnabled = Input { Value = 0 },
        PenThickness = Input { Value = 3 },
      },
    },
    Drawn = Brassfennel.BF_ShapeRender {
      Inputs = { Shape = Input { SourceOp = "Rings", Source = "Output" } },
    },
    Ripples = Blur {
      Inputs = { Input = Input { SourceOp = "Drawn", Source = "Output" }, XBlurSize = Input { Value = 14 } },
    },
    Tool1 = Brassfennel.BF_Offset {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        Deformationmap = Input { SourceOp = "Ripples", Source = "Output" },
        HorizontalOffsetBlack = Input { Value = -0.02 },
        HorizontalOffsetWhite = Input { Value = 0.02 },
        VerticalOffsetBlack = Input { Value = -0.02 },
        VerticalOffsetWhite = Input { Value = 0.02 },
        Edges = Input { Value = "Duplicate" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/Offset.png" },
      },
    },
  },
}
