-- Squares, each turned and smaller than the one before.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Square0 = Brassfennel.BF_ShapePrimitiveCreate {
      Inputs = {
        Type = Input { Value = 2 },
        SizeX = Input { Value = 0.5 },
        SizeY = Input { Value = 0.5 },
        BrushOpacity = Input { Value = 0.35 },
        BrushColorRed = Input { Value = 0.35 },
        BrushColorGreen = Input { Value = 0.5 },
        BrushColorBlue = Input { Value = 0.9 },
        PenColorRed = Input { Value = 1 },
        PenColorGreen = Input { Value = 1 },
        PenColorBlue = Input { Value = 1 },
        PenThickness = Input { Value = 0.35 },
      },
    },
    Turned1 = Brassfennel.BF_ShapeTransform {
      Inputs = {
        Shape = Input { SourceOp = "Square0", Source = "Output" },
        TransformRotationZ = Input { Value = 15 },
        TransformScaleX = Input { Value = 0.82 },
      },
    },
    Turned2 = Brassfennel.BF_ShapeTransform {
      Inputs = {
        Shape = Input { SourceOp = "Turned1", Source = "Output" },
        TransformRotationZ = Input { Value = 15 },
        TransformScaleX = Input { Value = 0.82 },
      },
    },
    Turned3 = Brassfennel.BF_ShapeTransform {
      Inputs = {
        Shape = Input { SourceOp = "Turned2", Source = "Output" },
        TransformRotationZ = Input { Value = 15 },
        TransformScaleX = Input { Value = 0.82 },
      },
    },
    Turned4 = Brassfennel.BF_ShapeTransform {
      Inputs = {
        Shape = Input { SourceOp = "Turned3", Source = "Output" },
        TransformRotationZ = Input { Value = 15 },
        TransformScaleX = Input { Value = 0.82 },
      },
    },
    Turned5 = Brassfennel.BF_ShapeTransform {
      Inputs = {
        Shape = Input { SourceOp = "Turned4", Source = "Output" },
        TransformRotationZ = Input { Value = 15 },
        TransformScaleX = Input { Value = 0.82 },
      },
    },
    All1 = Brassfennel.BF_ShapeMerge {
      Inputs = {
        Shape1 = Input { SourceOp = "Square0", Source = "Output" },
        Shape2 = Input { SourceOp = "Turned1", Source = "Output" },
      },
    },
    All2 = Brassfennel.BF_ShapeMerge {
      Inputs = {
        Shape1 = Input { SourceOp = "All1", Source = "Output" },
        Shape2 = Input { SourceOp = "Turned2", Source = "Output" },
      },
    },
    All3 = Brassfennel.BF_ShapeMerge {
      Inputs = {
        Shape1 = Input { SourceOp = "All2", Source = "Output" },
        Shape2 = Input { SourceOp = "Turned3", Source = "Output" },
      },
    },
    All4 = Brassfennel.BF_ShapeMerge {
      Inputs = {
        Shape1 = Input { SourceOp = "All3", Source = "Output" },
        Shape2 = Input { SourceOp = "Turned4", Source = "Output" },
      },
    },
    All5 = Brassfennel.BF_ShapeMerge {
      Inputs = {
        Shape1 = Input { SourceOp = "All4", Source = "Output" },
        Shape2 = Input { SourceOp = "Turned5", Source = "Output" },
      },
    },
    Drawn = Brassfennel.BF_ShapeRender {
      Inputs = { Shape = Input { SourceOp = "All5", Source = "Output" } },
    },
    Paper = Background {
      Inputs = {
        Width = Input { Value = 600 },
        Height = Input { Value = 400 },
        Red = Input { Value = 0.08 },
        Green = Input { Value = 0.08 },
        Blue = Input { Value = 0.18 },
      },
    },
    Laid = Merge {
      Inputs = {
        Background = Input { SourceOp = "Paper", Source = "Output" },
        Foreground = Input { SourceOp = "Drawn", Source = "Output" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Laid", Source = "Output" },
        Filename = Input { Value = "../out/ShapeTransform.png" },
      },
    },
  },
}
