-- Fifty frames in two branches: the lights of the photograph come and go and leave trails, while its colours
-- turn. One curve drives both.   ombrelune render examples/animated.comp --proxy 4
Composition {
  GlobalRange = { 0, 49 },
  RenderRange = { 0, 49 },
  FrameFormat = { Width = 600, Height = 400, Rate = 25, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },

    -- Slow at both ends: the handles lie level with their keys.
    Rise = BezierSpline {
      KeyFrames = {
        [0] = { 0.2, RH = { 10, 0.2 } },
        [25] = { 0.85, LH = { 15, 0.85 }, RH = { 35, 0.85 } },
        [49] = { 0.2, LH = { 40, 0.2 } },
      },
    },

    Lights = Brassfennel.BF_Threshold {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        Channelusedasthreshold = Input { Value = "Lumin." },
        Threshold = Input { SourceOp = "Rise", Source = "Value" },
        Softness = Input { Value = 0.1 },
      },
    },
    -- Trails lie under what is transparent, so every light leaves the tint of its time behind.
    Glow = Brassfennel.BF_Color {
      Inputs = {
        Image = Input { SourceOp = "Lights", Source = "Output" },
        Type = Input { Value = "Multiply" },
        ColorRed = Input { Expression = "0.6 + 0.4 * cos(2 * pi * time / comp.GlobalEnd)" },
        ColorGreen = Input { Value = 0.5 },
        ColorBlue = Input { Expression = "1.2 - Glow.ColorRed" },
        Trails = Input { Value = true },
        Fade = Input { Value = 0.92 },
      },
    },

    Turn = Brassfennel.BF_HueSaturation {
      Inputs = {
        Image = Input { SourceOp = "Photo", Source = "Output" },
        Hue = Input { Expression = "Rise.Value - Rise:GetValue(\"Value\", 0)" },
        SaturationMultiply = Input { Expression = "1 + 0.5 * Lights.Threshold" },
      },
    },
    Joined = Merge {
      Inputs = {
        Background = Input { SourceOp = "Turn", Source = "Output" },
        Foreground = Input { SourceOp = "Glow", Source = "Output" },
        Blend = Input { Value = 0.8 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Joined", Source = "Output" },
        Filename = Input { Value = "../out/animated/####.png" },
      },
    },
  },
}
