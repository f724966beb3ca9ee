-- A turning picture whose middle lives forty frames later than its edge becomes a whirl.
Composition {
  CurrentTime = 0,
  FrameFormat = { Width = 600, Height = 400, Rate = 25, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Camera = Transform {
      Inputs = {
        Input = Input { SourceOp = "Photo", Source = "Output" },
        Pivot = Input { Value = { 0.42, 0.5 } },
        Center = Input { Value = { 0.5, 0.5 } },
        Size = Input { Expression = "1.25 + time * 0.0" },
        Angle = Input { Expression = "time * 3" },
        Edges = Input { Value = "Duplicate" },
      },
    },
    Disc = Brassfennel.BF_ShapePrimitiveCreate {
      Inputs = {
        Type = Input { Value = "Star" },
        Steps = Input { Value = 16 },
        SizeX = Input { Value = 0.36 },
        SizeY = Input { Value = 0.36 },
        BrushEnabled = Input { Value = 1 },
      },
    },
    Drawn = Brassfennel.BF_ShapeRender {
      Inputs = { Shape = Input { SourceOp = "Disc", Source = "Output" } },
    },
    Map = Blur {
      Inputs = { Input = Input { SourceOp = "Drawn", Source = "Output" }, XBlurSize = Input { Value = 150 } },
    },
    Tool1 = Brassfennel.BF_TimeMapper {
      Inputs = {
        Input = Input { SourceOp = "Camera", Source = "Output" },
        Timemap = Input { SourceOp = "Map", Source = "Output" },
        Timeoffsetblack = Input { Value = 0 },
        Timeoffsetwhite = Input { Value = 40 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/TimeMapper.png" },
      },
    },
  },
}
