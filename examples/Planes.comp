-- Galaxies and four words at depths of their own, seen by a camera that has turned: what is nearer moves farther.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Space = Loader { Inputs = { Filename = Input { Value = "media/hubble.jpg" } } },
    A = Text {
      Inputs = {
        Width = Input { Value = 600 },
        Height = Input { Value = 400 },
        StyledText = Input { Value = "FARTHEST" },
        Style = Input { Value = "Bold" },
        Size = Input { Value = 0.1 },
        Center = Input { Value = { 0.5, 0.84 } },
        Red1 = Input { Value = 0.35 },
        Green1 = Input { Value = 0.5 },
        Blue1 = Input { Value = 0.8 },
      },
    },
    B = Text {
      Inputs = {
        Width = Input { Value = 600 },
        Height = Input { Value = 400 },
        StyledText = Input { Value = "FAR" },
        Style = Input { Value = "Bold" },
        Size = Input { Value = 0.12 },
        Center = Input { Value = { 0.5, 0.64 } },
        Red1 = Input { Value = 0.5 },
        Green1 = Input { Value = 0.66 },
        Blue1 = Input { Value = 0.95 },
      },
    },
    C = Text {
      Inputs = {
        Width = Input { Value = 600 },
        Height = Input { Value = 400 },
        StyledText = Input { Value = "NEAR" },
        Style = Input { Value = "Bold" },
        Size = Input { Value = 0.16 },
        Center = Input { Value = { 0.5, 0.4 } },
        Red1 = Input { Value = 0.85 },
        Green1 = Input { Value = 0.88 },
        Blue1 = Input { Value = 1 },
      },
    },
    D = Text {
      Inputs = {
        Width = Input { Value = 600 },
        Height = Input { Value = 400 },
        StyledText = Input { Value = "NEARER" },
        Style = Input { Value = "Bold" },
        Size = Input { Value = 0.16 },
        Center = Input { Value = { 0.5, 0.13 } },
        Red1 = Input { Value = 1 },
        Green1 = Input { Value = 0.8 },
        Blue1 = Input { Value = 0.4 },
      },
    },
    Table = Brassfennel.BF_Planes {
      Inputs = {
        Image = Input { SourceOp = "Space" },
        Plane1Depth = Input { Value = -1 },
        Plane2 = Input { SourceOp = "A" },
        Plane2Depth = Input { Value = -0.6 },
        Plane3 = Input { SourceOp = "B" },
        Plane3Depth = Input { Value = -0.35 },
        Plane4 = Input { SourceOp = "C" },
        Plane4Depth = Input { Value = -0.05 },
        Plane5 = Input { SourceOp = "D" },
        Plane5Depth = Input { Value = 0.25 },
        AngleX = Input { Value = 4 },
        AngleY = Input { Value = 9 },
        CenterZ = Input { Value = -0.45 },
        Zoom = Input { Value = 1.24 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Table" },
        Filename = Input { Value = "../out/Planes.png" },
      },
    },
  },
}
