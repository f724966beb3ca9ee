{ Tools = ordered() {
    A = XYPath { Inputs = { X = 1, Y = Input { SourceOp = "A2" , Source = "Flat" } } },
    A2 = GroupOperator {
        Inputs = ordered() {
            Main = InstanceInput { SourceOp = "A", Source = "X", Name = "Width", Value = 5 },
            Deep = InstanceInput { SourceOp = "Inner", Source = "Far", Expression = "A.X + time" },
            Soft = InstanceInput { SourceOp = "B", Source = "X", Default = 0.125, Page = "Controls" },
        },
        Outputs = { Out = InstanceOutput { SourceOp = "A", Source = "Value" },
                    Flat = InstanceOutput { SourceOp = "Inner", Source = "Number" } },
        Tools = ordered() {
            A = XYPath { Inputs = { X = 2, Y = 3 } },
            B = XYPath { Inputs = { Y = Input { Expression = "A.X + C.X" } } },
            Inner = MacroOperator {
                Inputs = { Far = InstanceInput { SourceOp = "A", Source = "Y" } },
                Outputs = { Number = InstanceOutput { SourceOp = "S", Source = "Value" } },
                Tools = { S = BezierSpline { KeyFrames = { [0] = 40, [10] = 50 } }, A = XYPath { } },
                ViewInfo = GroupInfo { Pos = { 0, 0 } },
            },
        },
    },
    C = XYPath { Inputs = { X = Input { Expression = "A2.Main + A2.Out.X + A2.Flat" },
                            Y = Input { Expression = "A_2.Y + B.X" } } },
} }
