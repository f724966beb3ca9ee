#include "shapes/KShapeParameter.h"

#include "framework/KObjectType.h"
#include "host/graph/Registry.h"

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

KObjectTypeRegistration const shapeType({
    KPT_Shape,
    KShapeParameter::kClassId,
    [](Parameter* value) -> void* {
        auto const* const shapes = dynamic_cast<KShapeParameter const*>(value);
        return shapes && shapes->Group() ? shapes->Group()->CopyOf() : new KShapeGroup;
    },
    // A copy: the effect owns its group and may be asked for it again.
    [](void* group) -> Parameter* { return new KShapeParameter(static_cast<KShapeGroup*>(group), true); },
});

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
