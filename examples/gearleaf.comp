-- Two SVG files combined: a leaf is cut out of a gear, and what both share is drawn over it.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Gear = SVGLoader {
      Inputs = { Filename = Input { Value = "media/gear.svg" }, FlattenCurves = Input { Value = 1 } },
    },
    Leaf = SVGLoader {
      Inputs = { Filename = Input { Value = "media/leaf.svg" }, FlattenCurves = Input { Value = 1 } },
    },
    Small = Brassfennel.BF_ShapeTransform {
      Inputs = {
        Shape = Input { SourceOp = "Gear", Source = "Output" },
        TransformScaleX = Input { Value = 0.6 },
      },
    },
    Turned = Brassfennel.BF_ShapeTransform {
      Inputs = {
        Shape = Input { SourceOp = "Leaf", Source = "Output" },
        TransformScaleX = Input { Value = 0.56 },
      },
    },
    Rest = Brassfennel.BF_ShapeBoolean {
      Inputs = {
        Shape1 = Input { SourceOp = "Small", Source = "Output" },
        Shape2 = Input { SourceOp = "Turned", Source = "Output" },
        Type = Input { Value = 2 },
      },
    },
    Cut = Brassfennel.BF_ShapeShading {
      Inputs = {
        Shape = Input { SourceOp = "Rest", Source = "Output" },
        BrushColorRed = Input { Value = 0.88 },
        BrushColorGreen = Input { Value = 0.65 },
        BrushColorBlue = Input { Value = 0.15 },
        PenThickness = Input { Value = 0.6 },
        PenJoinType = Input { Value = 2 },
      },
    },
    Part = Brassfennel.BF_ShapeBoolean {
      Inputs = {
        Shape1 = Input { SourceOp = "Small", Source = "Output" },
        Shape2 = Input { SourceOp = "Turned", Source = "Output" },
        Type = Input { Value = 0 },
      },
    },
    Shared = Brassfennel.BF_ShapeShading {
      Inputs = {
        Shape = Input { SourceOp = "Part", Source = "Output" },
        BrushColorRed = Input { Value = 0.42 },
        BrushColorGreen = Input { Value = 0.66 },
        BrushColorBlue = Input { Value = 0.31 },
        PenEnabled = Input { Value = 0 },
      },
    },
    Both = Brassfennel.BF_ShapeMerge {
      Inputs = {
        Shape1 = Input { SourceOp = "Cut", Source = "Output" },
        Shape2 = Input { SourceOp = "Shared", Source = "Output" },
      },
    },
    Drawn = Brassfennel.BF_ShapeRender { Inputs = { Shape = Input { SourceOp = "Both", Source = "Output" } } },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Drawn", Source = "Output" },
        Filename = Input { Value = "../out/gearleaf.png" },
      },
    },
  },
}
