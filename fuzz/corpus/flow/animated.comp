{ FrameFormat = { Width = 8, Height = 4, Rate = 24, Depth = 5 }, GlobalRange = { 0, 9 }, Tools = {
  S = BezierSpline { KeyFrames = { [0] = { 0, RH = { 8, 0.33 }, Flags = { Linear = true } }, [24.5] = { 1, LH = { 16, 0.66 } }, [30] = 2 } },
  P = XYPath { Inputs = { X = Input { SourceOp = "S", Source = "Value" }, Y = Input { Expression = "P.X + time" } } },
  L = LUTBezier { KeyFrames = { [0] = { 0 }, [1] = { 1 } } },
  B = Background { PassThrough = false, Inputs = { Red = 0.5, ["Width"] = 5; ProcessMode = "Fields" } },
  Out = Saver { PassThrough = true, Inputs = { Input = Input { SourceOp = "B" }, Filename = [[o.####.png]] } } } }
