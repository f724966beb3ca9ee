#include "framework/KInput.h"

#include "image/KImage.h"
#include "image/KLookUpTable.h"

namespace ombrelune {

namespace {

void SetInputVisibility(KInput const& entry, bool visible)
{
    if (!entry.input) return;
    entry.input->SetAttrsTagList({{Attr_ControlVisible, visible}});
    if (entry.parameter->flags & KF_Preview) entry.input->SetAttrsTagList({{Attr_PreviewVisible, visible}});
}

} // namespace

KInput::KInput(std::uint32_t inputId, Input* hostInput, KParameter* declared, int subInput)
    : id(inputId), input(hostInput), parameter(declared), sub(subInput)
{}

KInput::~KInput() = default;

KInput* KInputList::FindInput(std::uint32_t id) const
{
    for (KInput* entry : Each<KInput>())
        if (entry->id == id) return entry;
    return nullptr;
}

void KInputList::SetVisibility(std::uint32_t id, bool visible)
{
    KInput const* const found = FindInput(id);
    if (!found) return;
    SetInputVisibility(*found, visible);
    // The host shows the channels of a colour together; the components of a 3D point stand alone.
    if (found->parameter->group < 0 || found->parameter->control != KCT_Point3D) return;
    for (KInput const* entry : Each<KInput>())
        if (entry->parameter == found->parameter) SetInputVisibility(*entry, visible);
}

void KInputList::SetName(std::uint32_t id, KParameterValue const& value)
{
    KInput const* const found = FindInput(id);
    if (found && found->input) found->input->SetAttrsTagList({{Attr_ControlName, value.text.String()}});
}

void KInputList::SetValue(std::uint32_t id, KParameterValue const& value, float time)
{
    KInput const* const found = FindInput(id);
    if (!found || !found->input) return;
    switch (found->parameter->type) {
    case KPT_Int:
    case KPT_Range: // one end of it
    case KPT_Float: found->input->SetSource(MakeRef<Number>(value.floatValue).Get(), time, nullptr); break;
    case KPT_Point:
        found->input->SetSource(MakeRef<Point>(value.point.x, value.point.y).Get(), time, nullptr);
        break;
    default: break;
    }
}

} // namespace ombrelune
