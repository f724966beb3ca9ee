#include "image/KOffsetsTable.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "image/PixelMath.h"

namespace ombrelune {

namespace {

constexpr float kPi = std::numbers::pi_v<float>, kQuarterTurn = kPi / 2.0F;

} // namespace

KOffsetsTable::KOffsetsTable(KOffsetsTableType, int count, float aspect, bool roundUp, bool quick)
    : aspect_(aspect), roundUp_(roundUp), quick_(quick), slots_(static_cast<std::size_t>(std::max(count, 1)))
{}

KOffsetsTable::~KOffsetsTable() = default;

KOffsets const* KOffsetsTable::GetOffsets(float angle, float length, int& signX, int& signY)
{
    float a = std::fmod(angle, 2.0F * kPi);
    if (a < 0.0F) a += 2.0F * kPi;
    signX = a <= kQuarterTurn || a > 3.0F * kQuarterTurn ? 1 : -1;
    signY = a <= kPi ? 1 : -1;
    if (a > 3.0F * kQuarterTurn) a = 2.0F * kPi - a;
    else if (a > kPi) a -= kPi;
    else if (a > kQuarterTurn) a = kPi - a;

    int const last = static_cast<int>(slots_.size()) - 1;
    int const slot = std::clamp(TruncateToInt(a / kQuarterTurn * static_cast<float>(last)), 0, last);
    std::unique_ptr<KOffsets>& line = slots_[static_cast<std::size_t>(slot)];
    ObtainLock();
    if (!line) {
        float const start =
            last > 0 ? kQuarterTurn * static_cast<float>(slot) / static_cast<float>(last) : 0.0F;
        line = std::make_unique<KOffsets>(start, length, aspect_, roundUp_, quick_);
    }
    ReleaseLock();
    return line.get();
}

} // namespace ombrelune
