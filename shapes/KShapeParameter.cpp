#include "shapes/KShapeParameter.h"

#include "framework/KObjectType.h"
#include "host/graph/Registry.h"
#include "host/io/ValueFormat.h"
#include "shapes/svg/SvgWriter.h"

namespace ombrelune {

namespace {

Parameter* New(Registry const* registry, ScriptVal const& value, TagList const& tags)
{
    return new KShapeParameter(registry, value, tags);
}

Registry const shapeRegistry(ClassRegistry(), KShapeParameter::kClassId,
                             {{Reg_ClassType, 0},
                              {Reg_ParentClass, FuID("Parameter")},
                              {Reg_NewParameterFunction, New}});

/// The integers of boolean operations and offsets hold a hundred times more.
constexpr float kFarthest = 1e10F;

char const* Refuse(Parameter const* value)
{
    auto const* const shapes = dynamic_cast<KShapeParameter const*>(value);
    if (shapes && shapes->Group() && !shapes->Group()->IsWithin(kFarthest))
        return "is a shape with a point beyond 1e10 frame widths, or nowhere: make it smaller where it comes "
               "from";
    return nullptr;
}

KObjectTypeRegistration const shapeType({
    KPT_Shape,
    KShapeParameter::kClassId,
    [](Parameter* value) -> void* {
        auto const* const shapes = dynamic_cast<KShapeParameter const*>(value);
        return shapes && shapes->Group() ? shapes->Group()->CopyOf() : new KShapeGroup;
    },
    [](void* group) { delete static_cast<KShapeGroup*>(group); },
    // A copy: the effect owns its group and may be asked for it again.
    [](void* group) -> Parameter* { return new KShapeParameter(static_cast<KShapeGroup*>(group), true); },
    Refuse,
});

ValueFormatRegistration const svgFormat(
    {KShapeParameter::kClassId, "svg",
     [](Parameter const& value, FrameFormat const& frame, std::string& text) -> std::optional<Problem> {
         auto const* const shapes = dynamic_cast<KShapeParameter const*>(&value);
         KShapeGroup const none;
         return WriteSvg(shapes && shapes->Group() ? *shapes->Group() : none, frame, text);
     }});

} // namespace

bool ShapesAreRegistered() { return true; }

KShapeParameter::KShapeParameter(KShapeGroup* group, bool copy)
    : group_(group && copy ? group->CopyOf() : group)
{}

KShapeParameter::KShapeParameter(KShapeParameter const& other) : KShapeParameter(other.Group(), true) {}

KShapeParameter::KShapeParameter(Registry const*, ScriptVal const&, TagList const&)
    : KShapeParameter(new KShapeGroup, false)
{}

void KShapeParameter::Save(ScriptVal& table, TagList const& /*tags*/) const
{
    if (!table.AsTable()) table = ScriptVal(std::make_shared<ScriptTable>());
    table.AsTable()->Set("Version", ScriptVal(1.0));
    table.AsTable()->Set("Type", ScriptVal(std::string("Shape")));
}

} // namespace ombrelune
