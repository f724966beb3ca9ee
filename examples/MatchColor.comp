-- Three colours pull the photograph towards a cold, soft print.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Tool1 = Brassfennel.BF_MatchColor {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        -- The shadows lift to a slate blue, the middle cools, the lights stay a little below white.
        WhatitshouldbeRed = Input { Value = 0.08 },
        WhatitshouldbeGreen = Input { Value = 0.11 },
        WhatitshouldbeBlue = Input { Value = 0.2 },
        WhatitshouldbeRed_1 = Input { Value = 0.45 },
        WhatitshouldbeGreen_1 = Input { Value = 0.52 },
        WhatitshouldbeBlue_1 = Input { Value = 0.55 },
        WhatitshouldbeRed_2 = Input { Value = 0.93 },
        WhatitshouldbeGreen_2 = Input { Value = 0.96 },
        WhatitshouldbeBlue_2 = Input { Value = 0.9 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/MatchColor.png" },
      },
    },
  },
}
