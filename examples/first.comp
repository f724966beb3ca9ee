-- A photograph, graded: deep blue shadows, warm lights, a little more colour.
Composition {
  GlobalRange = { 0, 0 },
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader {
      Inputs = { Filename = Input { Value = "media/coffee.png" } },
    },
    Match1 = Brassfennel.BF_MatchColor {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        -- What is black becomes a deep blue, what is white a warm white.
        WhatitshouldbeRed = Input { Value = 0.02 },
        WhatitshouldbeGreen = Input { Value = 0.03 },
        WhatitshouldbeBlue = Input { Value = 0.09 },
        WhatitshouldbeRed_2 = Input { Value = 1.0 },
        WhatitshouldbeGreen_2 = Input { Value = 0.96 },
        WhatitshouldbeBlue_2 = Input { Value = 0.86 },
      },
    },
    Grade = Brassfennel.BF_HueSaturation {
      Inputs = {
        Image = Input { SourceOp = "Match1", Source = "Output" },
        SaturationMultiply = Input { Value = 1.25 },
        LightnessMultiply = Input { Value = 1.15 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Grade", Source = "Output" },
        Filename = Input { Value = "../out/first.png" },
      },
    },
  },
}
