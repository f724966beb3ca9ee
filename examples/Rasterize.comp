-- A poster: the portrait as a turned grid of dots that grow with the light and keep its colours.
Composition {
  FrameFormat = { Width = 512, Height = 384, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/astronaut.jpg" } } },
    Tool1 = Brassfennel.BF_Rasterize {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        Size = Input { Value = 0.007 },
        Angle = Input { Value = 30 },
        Sizeblack = Input { Value = 0.25 },
        Sizewhite = Input { Value = 1.15 },
        Shapecolor = Input { Value = "Image" },
        Supersampling = Input { Value = "4x4" },
      },
    },
    Paper = Background {
      Inputs = {
        Width = Input { Value = 512 },
        Height = Input { Value = 384 },
        Red = Input { Value = 0.03 },
        Green = Input { Value = 0.03 },
        Blue = Input { Value = 0.08 },
      },
    },
    Laid = Merge {
      Inputs = {
        Background = Input { SourceOp = "Paper", Source = "Output" },
        Foreground = Input { SourceOp = "Tool1", Source = "Output" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Laid", Source = "Output" },
        Filename = Input { Value = "../out/Rasterize.png" },
      },
    },
  },
}
