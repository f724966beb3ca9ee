-- An SVG picture as shapes: its fills, strokes, dashes and transforms, drawn at any size.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Lune = SVGLoader {
      Inputs = { Filename = Input { Value = "media/lune.svg" } },
    },
    Drawn = Brassfennel.BF_ShapeRender { Inputs = { Shape = Input { SourceOp = "Lune", Source = "Output" } } },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Drawn", Source = "Output" },
        Filename = Input { Value = "../out/built-in-SVGLoader.png" },
      },
    },
  },
}
