#pragma once

#include <memory>

#include "framework/KEffectThreads.h"
#include "shapes/KShapeGroup.h"

namespace ombrelune {

class KImageChannel;

/// An effect that draws the stroke of a shape of its own into the image. Only the first list of the group
/// counts, and the brush of the style is not used. Shape units: the image is 1 wide, its lower left corner
/// is the origin.
class KEffectImageShape : public KEffectThreads {
public:
    /// A new group, which the engine's call takes over, or null for nothing.
    virtual KShapeGroup* FShape() { return nullptr; }

    bool Init(KImage* source) override;
    void F(int step, int chunk, KImage* source, KImage* destination) override;

    KVector2 centre;
    bool isCentered; ///< moves the middle of each shape's bounds to the centre
    float offset;
    int replicate; ///< strokes to each side of the shape, itself counted
    float replicateOffset;
    KRange range; ///< part of the path's length
    KStyle style;

protected:
    /// The chapters Shape and Shading, after the tool's own.
    void ParametersAdd();
    /// The chapter Shading alone, for tools that declare where their shape lies themselves.
    void ShadingAdd();

private:
    std::unique_ptr<KShape> PartOf(KShape const& shape) const;
    static std::unique_ptr<KShape> OffsetOf(KShape const& path, float distance, int copies);
    void Stroke(KImageChannel& channel, KShape const& path);
};

} // namespace ombrelune
