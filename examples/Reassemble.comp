-- A sliding puzzle: eight of nine tiles of a cat, moved about, with gaps between them.
Composition {
  FrameFormat = { Width = 474, Height = 324, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/chelsea.png" } } },
    Tool1 = Brassfennel.BF_Reassemble {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        Width = Input { Value = 474 },
        Height = Input { Value = 324 },
        Numberofregions = Input { Value = 8 },
        SourceX1 = Input { Value = 0 }, SourceY1 = Input { Value = 0 }, SourceWidth1 = Input { Value = 150 }, SourceHeight1 = Input { Value = 100 }, DestinationX1 = Input { Value = 162 }, DestinationY1 = Input { Value = 6 },
        SourceX2 = Input { Value = 150 }, SourceY2 = Input { Value = 0 }, SourceWidth2 = Input { Value = 150 }, SourceHeight2 = Input { Value = 100 }, DestinationX2 = Input { Value = 6 }, DestinationY2 = Input { Value = 218 },
        SourceX3 = Input { Value = 0 }, SourceY3 = Input { Value = 100 }, SourceWidth3 = Input { Value = 150 }, SourceHeight3 = Input { Value = 100 }, DestinationX3 = Input { Value = 318 }, DestinationY3 = Input { Value = 218 },
        SourceX4 = Input { Value = 150 }, SourceY4 = Input { Value = 100 }, SourceWidth4 = Input { Value = 150 }, SourceHeight4 = Input { Value = 100 }, DestinationX4 = Input { Value = 6 }, DestinationY4 = Input { Value = 6 },
        SourceX5 = Input { Value = 300 }, SourceY5 = Input { Value = 100 }, SourceWidth5 = Input { Value = 150 }, SourceHeight5 = Input { Value = 100 }, DestinationX5 = Input { Value = 318 }, DestinationY5 = Input { Value = 112 },
        SourceX6 = Input { Value = 0 }, SourceY6 = Input { Value = 200 }, SourceWidth6 = Input { Value = 150 }, SourceHeight6 = Input { Value = 100 }, DestinationX6 = Input { Value = 162 }, DestinationY6 = Input { Value = 218 },
        SourceX7 = Input { Value = 150 }, SourceY7 = Input { Value = 200 }, SourceWidth7 = Input { Value = 150 }, SourceHeight7 = Input { Value = 100 }, DestinationX7 = Input { Value = 6 }, DestinationY7 = Input { Value = 112 },
        SourceX8 = Input { Value = 300 }, SourceY8 = Input { Value = 200 }, SourceWidth8 = Input { Value = 150 }, SourceHeight8 = Input { Value = 100 }, DestinationX8 = Input { Value = 318 }, DestinationY8 = Input { Value = 6 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/Reassemble.png" },
      },
    },
  },
}
