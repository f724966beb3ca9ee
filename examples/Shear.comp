-- A flat wall becomes the corner of a house: what lies right of the axis slants.
Composition {
  FrameFormat = { Width = 512, Height = 512, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/brick.png" } } },
    Clay = Brassfennel.BF_Color {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        Type = Input { Value = "Multiply" },
        ColorRed = Input { Value = 1 },
        ColorGreen = Input { Value = 0.62 },
        ColorBlue = Input { Value = 0.47 },
        ColorAlpha = Input { Value = 1 },
      },
    },
    Wall = Transform {
      Inputs = { Input = Input { SourceOp = "Clay", Source = "Output" }, Angle = Input { Value = 90 } },
    },
    Tool1 = Brassfennel.BF_Shear {
      Inputs = {
        Image = Input { SourceOp = "Wall", Source = "Output" },
        Shear = Input { Value = 0.5 },
        AxisAngle = Input { Value = 0 },
        AxisPivot = Input { Value = { 0.45, 0.5 } },
      },
    },
    Sky = Background {
      Inputs = {
        Width = Input { Value = 512 },
        Height = Input { Value = 512 },
        Red = Input { Value = 0.62 },
        Green = Input { Value = 0.78 },
        Blue = Input { Value = 0.9 },
      },
    },
    Laid = Merge {
      Inputs = {
        Background = Input { SourceOp = "Sky", Source = "Output" },
        Foreground = Input { SourceOp = "Tool1", Source = "Output" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Laid", Source = "Output" },
        Filename = Input { Value = "../out/Shear.png" },
      },
    },
  },
}
