#include "image/KLookUpTable.h"

#include <algorithm>

#include "image/PixelMath.h"

namespace ombrelune {

KLookUpTable::KLookUpTable(LookUpTable const* curve)
{
    if (curve)
        table_ = curve->MakeTable(
            {{Lut_EntryBytes, 2}, {Lut_Low, 0.0}, {Lut_High, 1.0}, {Lut_Count, kIdentityCount}});
}

float KLookUpTable::GetValueFloat(float f) const
{
    int const count = UsedCount();
    return GetValueNormalised(std::clamp(TruncateToInt(f * (count - 0.5001)), 0, count - 1));
}

} // namespace ombrelune
