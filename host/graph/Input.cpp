#include "host/graph/Input.h"

#include <limits>

#include "host/graph/Operator.h"
#include "host/graph/Request.h"

namespace ombrelune {

namespace {

Ref<Parameter> DefaultOf(TagList const& attributes)
{
    FuID const type = attributes.GetId(Attr_DataType);
    if (type == CLSID_DataType_Number) return MakeRef<Number>(attributes.GetFloat(Attr_Default));
    if (type == CLSID_DataType_Point)
        return MakeRef<Point>(attributes.GetFloat(Attr_DefaultX, 0.5),
                              attributes.GetFloat(Attr_DefaultY, 0.5));
    if (type == CLSID_DataType_Text) return MakeRef<Text>(attributes.GetText(Attr_DefaultText));
    if (type == CLSID_DataType_FuID) return MakeRef<IdParameter>(attributes.GetId(Attr_DefaultId));
    if (type == CLSID_DataType_LookUpTable) return MakeRef<LookUpTable>(BezierCurve::Identity());
    return nullptr;
}

} // namespace

Input::Input(Operator* owner, int index, FuID name, FuID id, TagList attributes)
    : owner_(owner), index_(index), name_(name), id_(id), attributes_(std::move(attributes)),
      priority_(static_cast<int>(attributes_.GetInt(Attr_Priority))), default_(DefaultOf(attributes_))
{}

void Input::SetAttrsTagList(TagList const& tags)
{
    attributes_.Merge(tags);
    priority_ = static_cast<int>(attributes_.GetInt(Attr_Priority));
}

bool Input::IsImage() const
{
    return DataType() == CLSID_DataType_Image || DataType() == CLSID_DataType_Mask;
}

Parameter* Input::GetValue(Request* request, int slot) const { return request->InputData(*this, slot); }

Ref<Parameter> Input::Limited(Ref<Parameter> value) const
{
    auto const* number = dynamic_cast<Number const*>(value.Get());
    if (!number) return value;
    constexpr double kNone = std::numeric_limits<double>::infinity();
    double const least = attributes_.GetFloat(Attr_MinHard, -kNone);
    double const most = attributes_.GetFloat(Attr_MaxHard, kNone);
    if (number->value < least) return MakeRef<Number>(least);
    return number->value > most ? MakeRef<Number>(most) : value;
}

void Input::SetSource(Parameter* value, double time, TagList const* tags)
{
    if (time == kDefaultTime) {
        default_ = Ref<Parameter>::Share(value);
        return;
    }
    value_ = Ref<Parameter>::Share(value);
    TagList none;
    owner_->NotifyChanged(this, value, time, const_cast<TagList*>(tags ? tags : &none));
}

} // namespace ombrelune
