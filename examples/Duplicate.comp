-- Stars seen through a lens out of focus: copies along a hexagon, the brightest of them kept.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Space = Loader { Inputs = { Filename = Input { Value = "media/hubble.jpg" } } },
    Bokeh = Brassfennel.BF_Duplicate {
      Inputs = {
        Image = Input { SourceOp = "Space" },
        Numberofduplicates = Input { Value = 48 },
        Shapecorners1 = Input { Value = 6 },
        Shapesize1 = Input { Value = 0.02 },
        Combine = Input { Value = 1 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Bokeh" },
        Filename = Input { Value = "../out/Duplicate.png" },
      },
    },
  },
}
