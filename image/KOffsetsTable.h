#pragma once

#include <memory>
#include <vector>

#include "host/value/LockableObject.h"
#include "image/KOffsets.h"

namespace ombrelune {

/// Kept for callers; changes nothing.
using KOffsetsTableType = int;

/// Lines of one quadrant by angle, made when they are first asked for and shared between threads from then
/// on.
class KOffsetsTable : public LockableObject {
public:
    /// As many lines as `count`, from one axis to the other; see KOffsets for the rest.
    KOffsetsTable(KOffsetsTableType, int count, float aspect, bool roundUp, bool quick);
    ~KOffsetsTable();

    /// The line for an angle; callers multiply its x and y by the signs. A line has the angle at which its
    /// slot begins, so it does not matter which thread asks first, and the length of the first call: callers
    /// of one table ask for one length.
    KOffsets const* GetOffsets(float angle, float length, int& signX, int& signY);

private:
    float aspect_;
    bool roundUp_, quick_;
    std::vector<std::unique_ptr<KOffsets>> slots_;
};

} // namespace ombrelune
