-- A closed spline round the cup, with echoes to both sides.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Line = Brassfennel.BF_Connect {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        Type = Input { Value = 1 },
        Subdivision = Input { Value = 12 },
        NumberOfPoints = Input { Value = 8 },
        Close = Input { Value = 1 },
        Point1 = Input { Value = { 0.69, 0.725 } },
        Point2 = Input { Value = { 0.631, 0.891 } },
        Point3 = Input { Value = { 0.49, 0.96 } },
        Point4 = Input { Value = { 0.349, 0.891 } },
        Point5 = Input { Value = { 0.29, 0.725 } },
        Point6 = Input { Value = { 0.349, 0.559 } },
        Point7 = Input { Value = { 0.49, 0.49 } },
        Point8 = Input { Value = { 0.631, 0.559 } },
        ShapeReplicate = Input { Value = 3 },
        ShapeReplicateOffset = Input { Value = 0.018 },
        PenThickness = Input { Value = 0.005 },
        PenColorRed = Input { Value = 1 },
        PenColorGreen = Input { Value = 0.85 },
        PenColorBlue = Input { Value = 0.45 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Line", Source = "Output" },
        Filename = Input { Value = "../out/Connect.png" },
      },
    },
  },
}
