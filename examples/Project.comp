-- A gallery of five walls, seen from its middle through a wide lens, with a sign that hangs in it.
Composition {
  FrameFormat = { Width = 640, Height = 427, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Dark = Background { Inputs = { Width = Input { Value = 640 }, Height = Input { Value = 427 } } },
    Stars = Loader { Inputs = { Filename = Input { Value = "media/hubble.jpg" } } },
    Portrait = Loader { Inputs = { Filename = Input { Value = "media/astronaut.jpg" } } },
    Pad = Loader { Inputs = { Filename = Input { Value = "media/rocket.jpg" } } },
    Cat = Loader { Inputs = { Filename = Input { Value = "media/chelsea.png" } } },
    Street = Loader { Inputs = { Filename = Input { Value = "media/brick.png" } } },
    Sign = Text {
      Inputs = {
        Width = Input { Value = 640 },
        Height = Input { Value = 200 },
        StyledText = Input { Value = "EXIT" },
        Style = Input { Value = "Bold" },
        Size = Input { Value = 0.2 },
        Red1 = Input { Value = 1 },
        Green1 = Input { Value = 0.85 },
        Blue1 = Input { Value = 0.2 },
      },
    },
    Room = Brassfennel.BF_Project {
      Inputs = {
        Image = Input { SourceOp = "Dark" },
        Top = Input { SourceOp = "Stars" },
        Front = Input { SourceOp = "Portrait" },
        Back = Input { SourceOp = "Street" },
        Left = Input { SourceOp = "Pad" },
        Right = Input { SourceOp = "Cat" },
        CameraAngle = Input { Value = 118 },
        Imagetobecombined = Input { SourceOp = "Sign" },
        AngleX = Input { Value = -14 },
        AngleY = Input { Value = 12 },
        PositionX = Input { Value = 0.5 },
        PositionY = Input { Value = 0.3 },
        PositionZ = Input { Value = 0.3 },
        LocalAngleY = Input { Value = 30 },
        SizeX = Input { Value = 0.6 },
        SizeY = Input { Value = 0.6 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Room" },
        Filename = Input { Value = "../out/Project.png" },
      },
    },
  },
}
