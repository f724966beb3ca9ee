#pragma once

#include <memory>

#include "framework/KEffect.h"
#include "shapes/KShapeGroup.h"
#include "shapes/KShapeParameter.h"

namespace ombrelune {

/// A group of shapes that the bridge reads or writes as a plain pointer. Owned.
class KShapeSlot {
public:
    KShapeSlot() = default;
    KShapeSlot(KShapeSlot const&) = delete;
    KShapeSlot& operator=(KShapeSlot const&) = delete;
    ~KShapeSlot() { Reset(nullptr); }

    /// Null when nothing came.
    KShapeGroup* Get() const { return static_cast<KShapeGroup*>(group_); }
    /// What came, or else an empty group.
    KShapeGroup& Group()
    {
        if (!group_) Reset(new KShapeGroup);
        return *Get();
    }
    void Reset(KShapeGroup* group)
    {
        delete Get();
        group_ = group;
    }
    /// For the declaration of an input or output.
    void** Target() { return &group_; }

private:
    void* group_ = nullptr;
};

/// An effect whose result is a group of shapes: from shapes as a rule, without any image. Shapes lie around
/// the origin, the frame is 1 wide.
class KEffectShape : public KEffect {
public:
    KEffectShape() { outputs.AddShape(output.Target(), "Output", "PTxt"_id, 1); }
    int ProcessType() override { return KProc_Shapes; }

    /// The result before shading and transformation: a new group, which the effect takes over, or null. It
    /// may read the inputs until it returns.
    virtual KShapeGroup* FShape() { return nullptr; }
    /// Makes the output and frees the input, whose next copy comes with the next request.
    void ProcessData() override;
    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override;

    static char const* Category() { return "Ombrelune\\Shape"; }

    KShapeSlot input, output;
    bool hasShading = false;
    KStyle style;
    bool hasTransform = false;
    KTransformation transformation;

protected:
    /// Main shape inputs are numbered from 1. The first one belongs to `input`.
    void AddShapeInput(KShapeSlot& slot, char const* label, unsigned number);
    /// The chapter Transform: the result is moved.
    void ParametersAddTransform();
    /// The chapter Shading: the result gets a look of the tool's own.
    void ParametersAddShading();

private:
    void ShowDashes(KMessageList& messages) const;
};

} // namespace ombrelune
