-- Drops that melt together over the photograph.
Composition {
  FrameFormat = { Width = 600, Height = 400, Rate = 24, Depth = 6 },
  Tools = ordered() {
    Photo = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Drops = Brassfennel.BF_Blobs {
      Inputs = {
        Width = Input { Value = 600 },
        Height = Input { Value = 400 },
        Count = Input { Value = 7 },
        GeneralBlobiness = Input { Value = 1e-05 },
        ColorRed = Input { Value = 0.75 },
        ColorGreen = Input { Value = 0.9 },
        ColorBlue = Input { Value = 1 },
        ColorAlpha = Input { Value = 1 },
        BlobPosition1 = Input { Value = { 0.2, 0.3 } },
        BlobSizeType1 = Input { Value = "Individual" },
        BlobSize1 = Input { Value = 0.09 },
        BlobPosition2 = Input { Value = { 0.36, 0.42 } },
        BlobSizeType2 = Input { Value = "Individual" },
        BlobSize2 = Input { Value = 0.06 },
        BlobPosition3 = Input { Value = { 0.3, 0.68 } },
        BlobSizeType3 = Input { Value = "Individual" },
        BlobSize3 = Input { Value = 0.1 },
        BlobPosition4 = Input { Value = { 0.52, 0.6 } },
        BlobSizeType4 = Input { Value = "Individual" },
        BlobSize4 = Input { Value = 0.07 },
        BlobPosition5 = Input { Value = { 0.68, 0.42 } },
        BlobSizeType5 = Input { Value = "Individual" },
        BlobSize5 = Input { Value = 0.11 },
        BlobPosition6 = Input { Value = { 0.82, 0.66 } },
        BlobSizeType6 = Input { Value = "Individual" },
        BlobSize6 = Input { Value = 0.08 },
        BlobPosition7 = Input { Value = { 0.55, 0.22 } },
        BlobSizeType7 = Input { Value = "Individual" },
        BlobSize7 = Input { Value = 0.06 },
      },
    },
    Laid = Merge {
      Inputs = {
        Background = Input { SourceOp = "Photo", Source = "Output" },
        Foreground = Input { SourceOp = "Drops", Source = "Output" },
        Blend = Input { Value = 0.7 },
      },
    },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Laid", Source = "Output" },
        Filename = Input { Value = "../out/Blobs.png" },
      },
    },
  },
}
