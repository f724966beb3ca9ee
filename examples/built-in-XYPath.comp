-- The spoon travels along a wave; this is a third of its way.
Composition {
  GlobalRange = { 0, 24 },
  RenderRange = { 0, 24 },
  CurrentTime = 8,
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Soft = Blur {
      Inputs = { Input = Input { SourceOp = "Photo", Source = "Output" }, XBlurSize = Input { Value = 15 } },
    },
    Spoon = Crop {
      Inputs = {
        Input = Input { SourceOp = "Photo", Source = "Output" },
        XOffset = Input { Value = 310 },
        YOffset = Input { Value = 70 },
        XSize = Input { Value = 110 },
        YSize = Input { Value = 110 },
      },
    },
    Across = BezierSpline {
      KeyFrames = { [0] = { 0.1, Flags = { Linear = true } }, [24] = { 0.9, Flags = { Linear = true } } },
    },
    Way = XYPath {
      Inputs = {
        X = Input { SourceOp = "Across", Source = "Value" },
        Y = Input { Expression = "0.5 + 0.25 * sin(time / 24 * 2 * pi)" },
      },
    },
    Joined = Merge {
      Inputs = {
        Background = Input { SourceOp = "Soft", Source = "Output" },
        Foreground = Input { SourceOp = "Spoon", Source = "Output" },
        Center = Input { SourceOp = "Way", Source = "Value" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Joined", Source = "Output" },
        Filename = Input { Value = "../out/built-in-XYPath.####.png" },
      },
    },
  },
}
