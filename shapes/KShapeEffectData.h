#pragma once

#include <algorithm>

#include "image/KRange.h"

namespace ombrelune {

class KShapeGroup;

// Parameters of the operations on shapes. Plain records: the inputs of tools are bound to their members.

/// Join of two sides of an offset or a pen.
enum ShapeJoinType { kJoinMiter = 0, kJoinBevel = 1, kJoinRound = 2 };

struct KShapeEffectData {
    int steps = 16; ///< straight segments that stand for a curved one
};

struct KShapeEffectBooleanData : KShapeEffectData {
    int type = 0;                 ///< 0 intersect, 1 union, 2 difference, 3 xor
    int fill = 0;                 ///< 0 even odd, 1 non zero
    KShapeGroup* other = nullptr; ///< not owned
};

struct KShapeEffectOffsetData : KShapeEffectData {
    KShapeEffectOffsetData() = default;
    KShapeEffectOffsetData(float newOffset, int newJoinType, int newJoinPrecision, int newSteps,
                           int newCopies = 1)
        : KShapeEffectData{newSteps}, joinType(newJoinType), offset(newOffset),
          joinPrecision(newJoinPrecision), copies(newCopies)
    {}

    int joinType = kJoinMiter;
    float offset = 0.0F;
    int joinPrecision = 8; ///< segments of half a turn
    int copies = 1;        ///< offsets made together, which share the time that clipping may take
};

/// How many of the wanted offsets of a path with so many points are made to each side: 1024 at most, and
/// together with those of the other side 2^19 points.
inline int CopiesOf(int wanted, int points)
{
    return std::clamp(wanted, 0, std::min(1024, (1 << 18) / std::max(points, 1)));
}

struct KShapeEffectReplicateData : KShapeEffectData {
    bool keepOriginal = false;
    int number = 1;
    float offset = 0.0F;
    int joinType = kJoinMiter;
    int sides = 0; ///< 0 both, 1 inside, 2 outside
    int joinPrecision = 8;
};

struct KShapeEffectDashDotData : KShapeEffectData {
    static constexpr int kSlots = 16;

    int lineType = 0;       ///< 0 solid, 1 dashed, 2 dotted, 3 custom
    int dashCount = 3;      ///< slots of a custom line
    float dashScale = 1.0F; ///< a length of 1 is so many thicknesses of the pen
    float dashLengths[kSlots] = {2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17};
    float spaceLengths[kSlots] = {2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2};
};

struct KShapeEffectResampleData : KShapeEffectData {
    bool keepEndPoints = false;
    bool keepOriginalPoints = false;
    float offset = 0.0F;
    float distance = 0.11F;
    float minimumAngle = 0.0F; ///< radians; nothing reads it
};

struct KShapeEffectKillData : KShapeEffectData {
    bool byAngle = true;
    float angleMinimum = 0.0F, angleMaximum = 0.0F, angleOffset = 0.0F; ///< radians
    bool byLength = false;
    float lengthMinimum = 0.0F, lengthMaximum = 0.1F;
};

/// Over what a range of a path's length is spread.
enum ShapeWriteOnLevel { kLevelGlobal = 0, kLevelShape = 1, kLevelElement = 2 };

struct KShapeEffectWriteOnData : KShapeEffectData {
    int level = kLevelGlobal;
    KRange range{0.0F, 1.0F};
    float shift = 0.0F;
    bool wrap = true;
};

struct KShapeEffectToolsData : KShapeEffectData {
    float startOffset = 0.0F;
    int openClose = 0; ///< 0 keep, 1 close all, 2 open all, 3 swap
};

struct KShapeEffectTriangulateData : KShapeEffectData {
    int type = 0;
};

enum ShapeZigZagType { kZigZagNone = 0, kZigZagSegments = 1, kZigZagDistance = 2 };

} // namespace ombrelune
