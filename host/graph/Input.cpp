#include "host/graph/Input.h"

#include <limits>
#include <mutex>

#include "host/graph/Changes.h"
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
    : owner_(owner), index_(index), name_(name), id_(id), dataType_(attributes.GetId(Attr_DataType)),
      mainNumber_(static_cast<int>(attributes.GetInt(Attr_MainNumber))), attributes_(std::move(attributes)),
      default_(DefaultOf(attributes_))
{
    state_.value = default_;
    ReadAttributes();
}

void Input::ReadAttributes()
{
    constexpr double kNone = std::numeric_limits<double>::infinity();
    state_.priority = static_cast<int>(attributes_.GetInt(Attr_Priority));
    state_.isVisible = attributes_.GetBool(Attr_ControlVisible, true);
    state_.isRequired = attributes_.GetBool(Attr_Required, IsImage());
    state_.least = attributes_.GetFloat(Attr_MinHard, -kNone);
    state_.most = attributes_.GetFloat(Attr_MaxHard, kNone);
}

template <class Change> void Input::Edit(Change const& change)
{
    std::lock_guard guard(owner_->EditLock());
    change();
    owner_->Edited();
}

void Input::SetAttrsTagList(TagList const& tags)
{
    Edit([&] {
        attributes_.Merge(tags);
        ReadAttributes();
    });
}

TagList Input::Attributes() const
{
    std::lock_guard guard(owner_->EditLock());
    return attributes_;
}

std::string Input::Label() const
{
    std::lock_guard guard(owner_->EditLock());
    return attributes_.GetText(Attr_ControlName, name_.Text());
}

InputState Input::State() const
{
    std::lock_guard guard(owner_->EditLock());
    return state_;
}

bool Input::HasValue() const
{
    std::lock_guard guard(owner_->EditLock());
    return hasValue_;
}

Ref<Parameter> Input::Default() const
{
    std::lock_guard guard(owner_->EditLock());
    return default_;
}

Parameter* Input::GetValue(Request* request, int slot) const { return request->InputData(*this, slot); }

Ref<Parameter> InputState::Limited(Ref<Parameter> computed) const
{
    auto const* number = dynamic_cast<Number const*>(computed.Get());
    if (!number) return computed;
    if (number->value < least) return MakeRef<Number>(least);
    return number->value > most ? MakeRef<Number>(most) : computed;
}

// What was there goes after the lock is let go: its last owner may have much to free.

void Input::SetValueQuietly(Ref<Parameter> value)
{
    Edit([&] {
        hasValue_ = static_cast<bool>(value);
        if (!value) value = default_;
        std::swap(state_.value, value);
    });
}

void Input::ConnectTo(Output* source)
{
    Edit([&] { state_.source = source; });
}

void Input::SetExpression(std::shared_ptr<InputExpression const> expression)
{
    Edit([&] { std::swap(state_.expression, expression); });
}

void Input::SetSource(Parameter* value, double time, TagList const* tags)
{
    Ref<Parameter> given = Ref<Parameter>::Share(value);
    if (time == kDefaultTime) {
        Edit([&] {
            std::swap(default_, given);
            if (!hasValue_) state_.value = default_;
        });
        return;
    }
    SetValueQuietly(given);
    TellOfChange(*this, std::move(given), time, tags ? *tags : TagList{});
}

} // namespace ombrelune
