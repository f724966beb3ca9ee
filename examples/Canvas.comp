-- A photograph is turned to the left and laid on a larger canvas.
Composition {
  FrameFormat = { Width = 451, Height = 300, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/chelsea.png" } } },
    Tool1 = Brassfennel.BF_Canvas {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        Rotation = Input { Value = "90° CCW" },
        Crop = Input { Value = "Centered" },
        Width = Input { Value = 400 },
        Height = Input { Value = 550 },
        ColorToExtendCanvasWithRed = Input { Value = 0.09 },
        ColorToExtendCanvasWithGreen = Input { Value = 0.2 },
        ColorToExtendCanvasWithBlue = Input { Value = 0.19 },
        ColorToExtendCanvasWithAlpha = Input { Value = 1 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/Canvas.png" },
      },
    },
  },
}
