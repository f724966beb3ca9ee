#pragma once

#include <cstdint>

#include "host/value/FuID.h"

namespace ombrelune {

// Attributes of inputs and outputs.
inline constexpr std::uint32_t Attr_DataType = 0x88020000;
inline constexpr std::uint32_t Attr_MainNumber = 0x10020001;
inline constexpr std::uint32_t Attr_InputControl = 0x80030000;
inline constexpr std::uint32_t Attr_PreviewControl = 0x80030001;
inline constexpr std::uint32_t Attr_CurveClass = 0x80030002;
inline constexpr std::uint32_t Attr_DefaultId = 0x80030003;
inline constexpr std::uint32_t Attr_External = 0x10030000;
inline constexpr std::uint32_t Attr_Required = 0x10030002;
inline constexpr std::uint32_t Attr_Priority = 0x10030004;
inline constexpr std::uint32_t Attr_GroupNumber = 0x10030006;
inline constexpr std::uint32_t Attr_GroupChannel = 0x10030007;
inline constexpr std::uint32_t Attr_PreviewPart = 0x10030008;
inline constexpr std::uint32_t Attr_PreviewNumber = 0x10030009;
inline constexpr std::uint32_t Attr_PreviewFlag = 0x1003000a;
inline constexpr std::uint32_t Attr_IntegerValue = 0x1003000c;
inline constexpr std::uint32_t Attr_FrameSlots = 0x1003000d; ///< 0 on a main input that takes several frames
inline constexpr std::uint32_t Attr_Notify2 = 0x1003000e;
inline constexpr std::uint32_t Attr_ScrewSteps = 0x10040003;
inline constexpr std::uint32_t Attr_ControlWidth = 0x20040007;
inline constexpr std::uint32_t Attr_ControlVisible = 0x10040008;
inline constexpr std::uint32_t Attr_PreviewVisible = 0x10048001;
inline constexpr std::uint32_t Attr_ControlName = 0x30040000;
inline constexpr std::uint32_t Attr_ListEntry = 0x38040000;
inline constexpr std::uint32_t Attr_TextLines = 0x10050000;
inline constexpr std::uint32_t Attr_ButtonLabels = 0x1005000a;
inline constexpr std::uint32_t Attr_CurveFlag = 0x10050002;
inline constexpr std::uint32_t Attr_MinHard = 0x20030000;
inline constexpr std::uint32_t Attr_MaxHard = 0x20030001;
inline constexpr std::uint32_t Attr_MinSoft = 0x20030002;
inline constexpr std::uint32_t Attr_MaxSoft = 0x20030003;
inline constexpr std::uint32_t Attr_Default = 0x20030004;
inline constexpr std::uint32_t Attr_DefaultX = 0x20030005;
inline constexpr std::uint32_t Attr_DefaultY = 0x20030006;
inline constexpr std::uint32_t Attr_DefaultText = 0x30030003;
inline constexpr std::uint32_t Attr_PreviewCenter =
    0x60058000; ///< Input*: the point an on-screen control sits on
inline constexpr std::uint32_t Attr_Icon1 = 0x68050001;
inline constexpr std::uint32_t Attr_Icon2 = 0x68050003;

// Attributes of a control page.
inline constexpr std::uint32_t Page_Id = 0x30000000;
inline constexpr std::uint32_t Page_Label = 0x30000001;
inline constexpr std::uint32_t Page_Last = 0x10000000; ///< the page stands behind all others

// Attributes of a registration.
inline constexpr std::uint32_t Reg_InitFunction = 0x60000001;
inline constexpr std::uint32_t Reg_CleanupFunction = 0x60000002;
inline constexpr std::uint32_t Reg_ClassType = 0x10000000;
inline constexpr std::uint32_t Reg_BuildText = 0x30000008;
inline constexpr std::uint32_t Reg_ParentClass = 0x60000010;
inline constexpr std::uint32_t Reg_ScriptInfo = 0x60000005;
inline constexpr std::uint32_t Reg_NewFunction = 0x60000000;
inline constexpr std::uint32_t Reg_NewParameterFunction = 0x60000012; ///< of a class of values
inline constexpr std::uint32_t Reg_OutputType = 0x80000001;
inline constexpr std::uint32_t Reg_TimeVariant = 0x1000002f;
inline constexpr std::uint32_t Reg_SourceFlags[] = {0x10000012, 0x10000013, 0x10000014};
inline constexpr std::uint32_t Reg_TileColor = 0x6000000d;
inline constexpr std::uint32_t Reg_TileFlag = 0x1000003e;
inline constexpr std::uint32_t Reg_Category = 0x30000003;
inline constexpr std::uint32_t Reg_Company = 0x30000009;
inline constexpr std::uint32_t Reg_WebAddress = 0x3000000a;
inline constexpr std::uint32_t Reg_ShortName = 0x30000004;
inline constexpr std::uint32_t Reg_DisplayName = 0x30000002;
inline constexpr std::uint32_t Reg_Description = 0x30000005;
inline constexpr std::uint32_t Reg_Flags3D[] = {0x10000003, 0x10000017, 0x10000019};

// Attributes given to an operator's constructor.
inline constexpr std::uint32_t Op_Document = 0x60030001; ///< FusionDoc*
inline constexpr std::uint32_t Op_Name = 0x30030010;

// Classes of input controls, on-screen controls and curves.
inline FuID const CLSID_InputControl_Button{"ButtonControl"};
inline FuID const CLSID_InputControl_Checkbox{"CheckboxControl"};
inline FuID const CLSID_InputControl_Color{"ColorControl"};
inline FuID const CLSID_InputControl_Combo{"ComboControl"};
inline FuID const CLSID_InputControl_File{"FileControl"};
inline FuID const CLSID_InputControl_Image{"ImageControl"};
inline FuID const CLSID_InputControl_Label{"LabelControl"};
inline FuID const CLSID_InputControl_MultiButton{"MultiButtonControl"};
inline FuID const CLSID_InputControl_MultiButtonID{"MultiButtonIDControl"};
inline FuID const CLSID_InputControl_Nest{"NestControl"};
inline FuID const CLSID_InputControl_Offset{"OffsetControl"};
inline FuID const CLSID_InputControl_Range{"RangeControl"};
inline FuID const CLSID_InputControl_Screw{"ScrewControl"};
inline FuID const CLSID_InputControl_Slider{"SliderControl"};
inline FuID const CLSID_InputControl_Spline{"SplineControl"};
inline FuID const CLSID_InputControl_TextEdit{"TextEditControl"};
inline FuID const CLSID_PreviewControl_Angle{"AnglePreview"};
inline FuID const CLSID_PreviewControl_Crosshair{"CrosshairPreview"};
inline FuID const CLSID_PreviewControl_Ellipse{"EllipsePreview"};
inline FuID const CLSID_PreviewControl_Point{"PointPreview"};
inline FuID const CLSID_PreviewControl_Rectangle{"RectanglePreview"};
inline FuID const CLSID_PreviewControl_Transform{"TransformPreview"};
inline FuID const CLSID_LUT_Bezier{"LUTBezier"};

// Rotation orders, as values of an id input.
inline FuID const ROID_XYZ{"XYZ"};
inline FuID const ROID_XZY{"XZY"};
inline FuID const ROID_YXZ{"YXZ"};
inline FuID const ROID_YZX{"YZX"};
inline FuID const ROID_ZXY{"ZXY"};
inline FuID const ROID_ZYX{"ZYX"};

} // namespace ombrelune
