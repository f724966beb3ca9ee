-- A blur that comes and goes, seen on the eighth of its sixteen frames.
Composition {
  GlobalRange = { 0, 16 },
  RenderRange = { 0, 16 },
  CurrentTime = 8,
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Softness = BezierSpline {
      KeyFrames = {
        [0] = { 0, RH = { 4, 0 } },
        [10] = { 20, LH = { 6, 20 }, RH = { 12, 20 } },
        [16] = { 0, Flags = { Linear = true } },
      },
    },
    Soft = Blur {
      Inputs = {
        Input = Input { SourceOp = "Photo", Source = "Output" },
        XBlurSize = Input { SourceOp = "Softness", Source = "Value" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Soft", Source = "Output" },
        Filename = Input { Value = "../out/built-in-BezierSpline.####.png" },
      },
    },
  },
}
