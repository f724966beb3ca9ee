-- A gallery: five walls and a floor, seen from the middle through a wide lens, with a sign that hangs in it.
Composition {
  FrameFormat = { Width = 640, Height = 427, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Stars = Loader { Inputs = { Filename = Input { Value = "media/hubble.jpg" } } },
    Portrait = Loader { Inputs = { Filename = Input { Value = "media/astronaut.jpg" } } },
    Pad = Loader { Inputs = { Filename = Input { Value = "media/rocket.jpg" } } },
    Cat = Loader { Inputs = { Filename = Input { Value = "media/chelsea.png" } } },
    Street = Loader { Inputs = { Filename = Input { Value = "media/brick.png" } } },
    Floor = Crop { Inputs = { Input = Input { SourceOp = "Street" }, YSize = Input { Value = 342 } } },
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
        Image = Input { SourceOp = "Floor" },
        Top = Input { SourceOp = "Stars" },
        Front = Input { SourceOp = "Portrait" },
        Back = Input { SourceOp = "Stars" },
        Left = Input { SourceOp = "Pad" },
        Right = Input { SourceOp = "Cat" },
        CameraAngle = Input { Value = 128 },
        Imagetobecombined = Input { SourceOp = "Sign" },
        AngleX = Input { Value = -2 },
        AngleY = Input { Value = 20 },
        PositionX = Input { Value = 0.35 },
        PositionY = Input { Value = -0.45 },
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
