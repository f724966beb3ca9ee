-- A photograph as it is. "####" or "%04d" in the name stands for the number of the frame.
Composition {
  Tools = ordered() {
    Tool1 = Loader { Inputs = { Filename = Input { Value = "media/coffee.png" } } },
    Out = Saver {
      Inputs = {
        Input = Input { SourceOp = "Tool1", Source = "Output" },
        Filename = Input { Value = "../out/built-in-Loader.png" },
      },
    },
  },
}
