#pragma once

#include <memory>

#include "host/value/Parameter.h"
#include "host/value/ScriptVal.h"
#include "shapes/KShapeGroup.h"

namespace ombrelune {

class Registry;

/// Host value around a group of shapes, which it owns. Geometry is computed anew for every request and never
/// saved.
class KShapeParameter : public Parameter {
public:
    static constexpr char const* kClassId = "Brassfennel.BF_ShapeParameter";

    /// Holds a deep copy, or takes the group over. The group may be null.
    KShapeParameter(KShapeGroup* group, bool copy);
    KShapeParameter(KShapeParameter const& other);
    /// As the host makes one: an empty group, whatever was saved.
    KShapeParameter(Registry const*, ScriptVal const&, TagList const&);

    FuID DataType() const override { return kClassId; }
    KShapeGroup* Group() const { return group_.get(); }
    KShapeParameter* Copy() const { return new KShapeParameter(*this); }
    /// Adds version and type to a table, which is made if there is none.
    void Save(ScriptVal& table, TagList const& tags) const;
    /// Shapes do not interpolate: null.
    Parameter* InterpolateWith(Parameter const*, double) const { return nullptr; }

private:
    std::unique_ptr<KShapeGroup> group_;
};

} // namespace ombrelune
