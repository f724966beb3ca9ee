#pragma once

#include "image/ChannelStyle.h"
#include "image/KColor.h"
#include "shapes/KShapeEffectData.h"
#include "shapes/KShapePoint.h"

namespace ombrelune {

struct KFillStyle {
    int type = 0; ///< 1 even-odd, any other non-zero
    KColor color;
};

struct KPenStyle : KFillStyle {
    float thickness = 0.1F;
    float bias = 0.0F;       ///< -1 all of it on the left of the path, 1 all of it on the right
    float miterLimit = 4.0F; ///< farthest tip of a mitre from its corner, in thicknesses
    int joinType = kJoinMiter;
    int joinPrecision = 8;     ///< segments of half a turn of a round join or cap
    int endType = 1;           ///< 0 simple, 1 round
    float endRoundness = 1.0F; ///< 0 square, 1 round
    ShapeWindingMode winding = kWindingOutline;
    KShapeEffectDashDotData dash;

    // Parts of the thickness on the right (outer) and on the left (inner) of the path.
    double ThicknessOuter() const { return 0.5 * (double{bias} + 1.0) * thickness; }
    double ThicknessInner() const { return 0.5 * (1.0 - double{bias}) * thickness; }
};

struct KShapeEffectOutlineData : KShapeEffectData {
    KPenStyle pen;
};

/// The look of shapes: a brush for the inside and a pen for the stroke.
struct KStyle {
    ChannelStyle brush, penChannel;
    KFillStyle fill;
    KPenStyle pen;

    /// Brings the two colours into the pixel forms of the channels; before drawing.
    void Init();
};

} // namespace ombrelune
