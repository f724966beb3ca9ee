-- A line of three arcs, gone through eighteen times with its heading kept, closes to a rosette; a second one runs beside it.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Night = Background {
      Inputs = {
        Width = Input { Value = 600 },
        Height = Input { Value = 400 },
        Red = Input { Value = 0.05 },
        Green = Input { Value = 0.07 },
        Blue = Input { Value = 0.14 },
      },
    },
    Rosette = Brassfennel.BF_Worm {
      Inputs = {
        Image = Input { SourceOp = "Night" },
        Repositionaroundwormcenter = Input { Value = true },
        GlobalLength = Input { Value = 1.45 },
        Offset = Input { Value = 0.003 },
        Repeatworm = Input { Value = 18 },
        Replicateworm = Input { Value = 2 },
        Replicateoffset = Input { Value = 0.008 },
        CurveAngle1 = Input { Value = 200 },
        CurveLength1 = Input { Value = 0.28 },
        CurveAngle2 = Input { Value = -120 },
        CurveLength2 = Input { Value = 0.12 },
        CurveAngle3 = Input { Value = 60 },
        CurveLength3 = Input { Value = 0.06 },
        PenColorRed = Input { Value = 1 },
        PenColorGreen = Input { Value = 0.72 },
        PenColorBlue = Input { Value = 0.3 },
        PenThickness = Input { Value = 0.003 },
        PenEndType = Input { Value = 1 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Rosette" },
        Filename = Input { Value = "../out/Worm.png" },
      },
    },
  },
}
