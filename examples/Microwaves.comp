-- A gear in front of a lamp: brightness gathers along the rays from its middle and fades behind the teeth.
Composition {
  FrameFormat = { Width = 480, Height = 320, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Space = Loader { Inputs = { Filename = Input { Value = "media/hubble.jpg" } } },
    Gear = SVGLoader { Inputs = { Filename = Input { Value = "media/gear.svg" } } },
    Small = Brassfennel.BF_ShapeTransform {
      Inputs = {
        Shape = Input { SourceOp = "Gear", Source = "Output" },
        TransformScaleX = Input { Value = 0.34 },
      },
    },
    Drawn = Brassfennel.BF_ShapeRender {
      Inputs = {
        Width = Input { Value = 480 },
        Height = Input { Value = 320 },
        Shape = Input { SourceOp = "Small", Source = "Output" },
      },
    },
    Tool1 = Brassfennel.BF_Microwaves {
      Inputs = {
        Image = Input { SourceOp = "Drawn", Source = "Output" },
        Brightness = Input { Value = 0.035 },
        Center = Input { Value = { 0.5, 0.5 } },
        Length = Input { Value = 0.38 },
        Fulledges = Input { Value = 0 },
      },
    },
    Laid = Merge {
      Inputs = {
        Background = Input { SourceOp = "Space", Source = "Output" },
        Foreground = Input { SourceOp = "Tool1", Source = "Output" },
      },
    },
    Top = Merge {
      Inputs = {
        Background = Input { SourceOp = "Laid", Source = "Output" },
        Foreground = Input { SourceOp = "Drawn", Source = "Output" },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Top", Source = "Output" },
        Filename = Input { Value = "../out/Microwaves.png" },
      },
    },
  },
}
