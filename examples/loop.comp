-- Fifty frames that close on themselves: a beat swells the picture, a label counts along, and the end
-- dissolves into the frames before the beginning.   ombrelune render examples/loop.comp --stats
Composition {
  GlobalRange = { 0, 49 },
  RenderRange = { 0, 49 },
  CurrentTime = 0,
  FrameFormat = { Width = 600, Height = 400, Rate = 25, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Beat = Brassfennel.BF_NumberBeat {
      Inputs = {
        Frequency = Input { Value = 12.5 },
        Attacktime = Input { Value = 2 },
        Decaytime = Input { Value = 4 },
        Sustaintime = Input { Value = 1 },
        Releasetime = Input { Value = 4 },
        Sustainvalue = Input { Value = 0.35 },
        Endtime = Input { Value = 10000 },
      },
    },
    Pulse = Transform {
      Inputs = {
        Input = Input { SourceOp = "Photo", Source = "Output" },
        Size = Input { Expression = "1.15 + 0.2 * Beat.Number" },
        Center = Input { Expression = "Point(0.5 + 0.04 * sin(time / 8), 0.5)" },
        Edges = Input { Value = "Duplicate" },
      },
    },
    Swell = Brassfennel.BF_Spherize {
      Inputs = {
        Image = Input { SourceOp = "Pulse", Source = "Output" },
        Algorithm = Input { Value = 2 },
        Center = Input { Value = { 0.52, 0.55 } },
        Deformation = Input { Expression = "-0.7 * Beat.Number" },
        Edges = Input { Value = 2 },
      },
    },
    Count = Brassfennel.BF_TextFormula {
      Inputs = {
        Text = Input { Value = "BEAT n1" },
        n1 = Input { Expression = "floor(time / 12.5) + 1" },
        Precisionnumbervalues = Input { Value = 0 },
        Addspaceifnotnegative = Input { Value = 0 },
      },
    },
    Label = Text {
      Inputs = {
        StyledText = Input { SourceOp = "Count", Source = "Output" },
        Input = Input { SourceOp = "Swell", Source = "Output" },
        Font = Input { Value = "DejaVu Sans" },
        Style = Input { Value = "Bold" },
        Size = Input { Expression = "0.06 + 0.02 * Beat.Number" },
        Center = Input { Value = { 0.5, 0.12 } },
      },
    },
    Loop = Brassfennel.BF_SeamlessLoop {
      Inputs = {
        Input = Input { SourceOp = "Label", Source = "Output" },
        Looplength = Input { Value = 50 },
        Dissolvelength = Input { Value = 12 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Loop", Source = "Output" },
        Filename = Input { Value = "../out/loop/####.png" },
      },
    },
  },
}
