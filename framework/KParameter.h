#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>

#include "host/value/FourCC.h"
#include "host/value/Parameter.h"
#include "image/KColor.h"
#include "image/KList.h"
#include "image/KRange.h"
#include "image/KString.h"
#include "image/KTransformation.h"
#include "image/KVector2.h"
#include "image/KVector3.h"

namespace ombrelune {

class KImage;
class KLookUpTable;

/// What the target of a parameter holds.
enum KParameterType {
    KPT_None = 0,
    KPT_Standard = 1,
    KPT_Bool = 2,
    KPT_Color = 3,
    KPT_Image = 4,
    KPT_Int = 5,
    KPT_Float = 6,
    KPT_Curve = 7,
    KPT_Point = 8,
    KPT_Range = 9,
    KPT_Region3D = 10,
    KPT_Shape = 11,
    KPT_Text = 12,
    KPT_Transformation = 14,
    KPT_Point3D = 15,
};

/// How a parameter is shown.
enum KControlType {
    KCT_Standard = 1,
    KCT_Chapter = 2,
    KCT_GroupStart = 3,
    KCT_GroupEnd = 4,
    KCT_Angle = 5,
    KCT_Button = 6,
    KCT_Buttons = 7,
    KCT_Checkbox = 8,
    KCT_Curve = 9,
    KCT_Color = 10,
    KCT_Filename = 11,
    KCT_Image = 12,
    KCT_Label = 14,
    KCT_List = 15,
    KCT_Matte = 16,
    KCT_Point = 17,
    KCT_Range = 18,
    KCT_Region3D = 19,
    KCT_Slider = 20,
    KCT_Screw = 21,
    KCT_Shape = 22,
    KCT_Text = 23,
    KCT_Transformation = 24,
    KCT_Point3D = 25,
};

/// Inputs that the bridge owns; see KTool for label and control of each.
enum KParameterStandard {
    KPS_Image = 0,
    KPS_ColorSpace = 1,
    KPS_ChannelsRGB = 2,
    KPS_ChannelsRGBA = 3,
    KPS_UnderSample = 4,
    KPS_SuperSample = 5,
    KPS_SuperSampleFilter = 6,
    KPS_SubPixel = 7,
    KPS_Filtering = 8,
    KPS_Edges = 9,
    KPS_PreDivide = 10,
    KPS_Trails = 11,
    KPS_MultiThreading = 12,
    KPS_WarpMask = 13,
};

/// Unit of an angle's target. The host turns clockwise and effects turn counter-clockwise, so both negate.
enum KAngleType { KAngle_Degrees = 0, KAngle_Radians = 1 };

/// What a point's target holds once the image is known; x and y are the host's normalised point.
enum KPointType {
    KPoint_Normal = 0,         ///< x, y
    KPoint_Aspect = 1,         ///< x, y / frame aspect
    KPoint_Pixels = 2,         ///< x * width, y * height
    KPoint_Centered = 3,       ///< x - 0.5, y - 0.5
    KPoint_CenteredAspect = 4, ///< x - 0.5, (y - 0.5) / frame aspect
};

/// Which inputs a transformation has.
enum KTransformationType {
    KTransformation_All = 0,
    KTransformation_AllToo = 1, ///< the same as 0
    KTransformation_PositionRotation = 2,
    KTransformation_Scale = 3,
    KTransformation_Rotation = 4,
};

enum KParameterFlag : unsigned {
    KF_AffectInputs = 0x1, ///< a change is reported to AffectInputs
    KF_Hidden = 0x2,       ///< the control starts hidden
    KF_Preview = 0x4,      ///< has an on-screen control
    KF_MainInput = 0x8,    ///< image, shape or region: a main input of the node; the id is its number
    KF_Internal = 0x10,    ///< not for connecting: computed values and labels
    KF_Late = 0x20,        ///< arrives after the pre-render stage
    KF_SoftMin = 0x400,    ///< the minimum only scales the control
    KF_SoftMax = 0x800,    ///< the maximum only scales the control
    KF_PreviewEllipse = 0x100000,
    KF_PreviewRectWidth = 0x200000,
    KF_PreviewRectHeight = 0x400000,
    KF_PreviewFollow = 0x800000,
    KF_PreviewCentered = 0x1000000,
    KF_HiddenToo = 0x80000000,
};

/// One entry of a list, a button row or a file filter.
class KName : public KListItem {
public:
    explicit KName(char const* text) : name(text) {}
    KString name;
};

using KNames = std::initializer_list<char const*>;

/// The entries of a list or button row, in order.
class KNameList : public KList {
public:
    void Add(KNames names);
};

/// The value that a message carries and that AffectInputs is given.
class KParameterValue {
public:
    KParameterValue();
    ~KParameterValue();

    int intValue = 0;
    float floatValue = 0.0F;
    KVector2 point;
    KVector3 point3;
    std::unique_ptr<KImage> image; ///< of an image input
    KString text;
    KTransformation transformation;
};

/// One declared parameter: label, identifiers, control, target and defaults. Its target is a public member of
/// the effect, not owned.
class KParameter : public KListItem {
public:
    KString label{"Dummy"};
    std::uint32_t id[4] =
        {};         ///< the first is the parameter's; the others name sub-inputs of colours and ranges
    int group = -1; ///< number of a compound parameter; the line count of a text
    KNameList names;
    float width = 0.0F; ///< how many checkboxes share a row
    int transformationType = KTransformation_All;
    KParameterType type = KPT_None;
    KControlType control = KCT_Label;
    void* target = nullptr;
    float defaultValue = 0.0F;
    double minimum = 0.0, maximum = 0.0; ///< not in single precision, which would put 0.1 above the told 0.1
    KColor defaultColor{0.0F, 0.0F, 0.0F, 0.0F};
    KRange defaultRange{0.0F, 1.0F};
    KVector2 defaultPoint;
    KVector3 defaultPoint3;
    FuStringT<char> defaultText;
    KTransformation defaultTransformation;
    int angleType = KAngle_Degrees, pointType = KPoint_Normal, standard = KPS_Image;
    unsigned flags = 0;
};

/// Everything that an effect declares, in the order in which users see it. Each operation appends one
/// parameter and writes its default into the target at once. Names are given in order, without an end mark.
class KParameterList : public KList {
public:
    void GroupStart(char const* label, std::uint32_t id, unsigned flags);
    void GroupEnd();
    void AddChapter(char const* label);
    void AddStandard(int* target, int value, KParameterStandard standard, unsigned flags);
    void AddAngle(float* target, float value, char const* label, std::uint32_t id, unsigned flags,
                  KAngleType unit);
    void AddButton(char const* label, std::uint32_t id, unsigned flags);
    void AddButtons(int* target, int value, char const* label, std::uint32_t id, unsigned flags,
                    KNames names);
    void AddButtonsChannel(int* target, int value, char const* label, std::uint32_t id, unsigned flags);
    void AddCheckbox(bool* target, bool value, char const* label, std::uint32_t id, unsigned flags,
                     int width = 1);
    /// The ids of green, blue and alpha are id - 11, id - 16 and id - 17: a last letter R becomes G, B and A.
    void AddColor(KColor* target, KColor const& value, char const* label, std::uint32_t id, unsigned flags);
    void AddCurve(KLookUpTable** target, char const* label, std::uint32_t id, unsigned flags,
                  KColor const& color);
    void AddFilename(FuStringT<char>* target, FuStringT<char> const& value, char const* label,
                     std::uint32_t id, unsigned flags, char const* filter);
    void AddImage(KImage** target, char const* label, std::uint32_t id, unsigned flags);
    void AddLabel(char const* label, std::uint32_t id, unsigned flags);
    void AddList(int* target, int value, char const* label, std::uint32_t id, unsigned flags, KNames names);
    void AddMatte(KImage** target, char const* label, std::uint32_t id, unsigned flags);
    void AddPoint(KVector2* target, KVector2 const& value, char const* label, std::uint32_t id,
                  unsigned flags, KPointType unit);
    void AddPoint3D(KVector3* target, KVector3 const& value, char const* label, std::uint32_t id,
                    unsigned flags);
    void AddRange(KRange* target, KRange value, char const* label, char const* label2, std::uint32_t id,
                  std::uint32_t id2, unsigned flags, double minimum, double maximum);
    void AddRegion3D(void** target, char const* label, std::uint32_t id, unsigned flags);
    void AddShape(void** target, char const* label, std::uint32_t id, unsigned flags);
    void AddSlider(float* target, float value, char const* label, std::uint32_t id, unsigned flags,
                   double minimum, double maximum);
    void AddSliderInt(int* target, int value, char const* label, std::uint32_t id, unsigned flags,
                      int minimum, int maximum);
    void AddSliderSeed(int* target, char const* label, std::uint32_t id, unsigned flags);
    void AddScrew(float* target, float value, char const* label, std::uint32_t id, unsigned flags,
                  double minimum, double maximum);
    void AddScrewInt(int* target, int value, char const* label, std::uint32_t id, unsigned flags, int minimum,
                     int maximum);
    void AddText(FuStringT<char>* target, FuStringT<char> const& value, char const* label, std::uint32_t id,
                 unsigned flags, int lines);
    void AddTransformation(KTransformation* target, KTransformation const& value, char const* label,
                           std::uint32_t id, unsigned flags, KTransformationType type);

private:
    KParameter& Append(KControlType control, KParameterType type, void* target, char const* label,
                       std::uint32_t id, unsigned flags);
    KParameter& AppendNumber(KControlType control, KParameterType type, void* target, double value,
                             char const* label, std::uint32_t id, unsigned flags, double minimum,
                             double maximum);

    int lastGroup_ = 10;
};

} // namespace ombrelune
