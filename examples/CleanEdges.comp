-- A photograph that was moved leaves black borders; its last good pixels are drawn out over them.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Moved = Transform {
      Inputs = {
        Input = Input { SourceOp = "Photo", Source = "Output" },
        Center = Input { Value = { 0.5, 0.5 } },
        Size = Input { Value = 0.78 },
      },
    },
    Tool1 = Brassfennel.BF_CleanEdges {
      Inputs = {
        Image = Input { SourceOp = "Moved", Source = "Output" },
        Lock = Input { Value = "Vert./Horiz." },
        PixelsLeft = Input { Value = 68 },
        PixelsTop = Input { Value = 46 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/CleanEdges.png" },
      },
    },
  },
}
