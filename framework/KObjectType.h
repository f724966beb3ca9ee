#pragma once

#include "framework/KParameter.h"

namespace ombrelune {

/// How the bridge handles values of a class that is declared further up, such as shapes and regions. The
/// subsystem that owns the class registers one with a static KObjectTypeRegistration.
struct KObjectType {
    KParameterType type;
    /// Data type of inputs and outputs, an id like "Brassfennel.BF_ShapeParameter".
    char const* dataType;
    /// Copy of the object inside a host value for the effect, which may take it over by clearing the slot.
    /// The value may be null or hold nothing; what an effect gets then is the class's own choice.
    void* (*copyForEffect)(Parameter* value);
    /// Frees a copy that the effect left in its slot.
    void (*release)(void* object);
    /// New host value of the object, which may be null. Whether it takes the object over or holds a copy is
    /// the class's own choice.
    Parameter* (*wrap)(void* object);
    /// Why no operator can work on the value, as the end of a sentence; null when all is well. May be null.
    char const* (*refuse)(Parameter const* value) = nullptr;
};

/// Null when no subsystem has registered the type.
KObjectType const* FindObjectType(KParameterType type);

class KObjectTypeRegistration {
public:
    explicit KObjectTypeRegistration(KObjectType const& type);
};

} // namespace ombrelune
