#pragma once

namespace ombrelune {

/// Progress of v on the way from `from` (0) to `to` (1), in either direction, clamped at the ends. Shape 1
/// eases in (t^2), 2 eases out, 3 both (t^2 (3 - 2t)), any other is linear. Equal ends make a step.
inline float KTween(float v, float from, float to, int shape)
{
    if (from == to) return v >= from ? 1.0F : 0.0F;
    float const t = (v - from) / (to - from);
    if (!(t > 0.0F)) return 0.0F;
    if (t >= 1.0F) return 1.0F;
    switch (shape) {
    case 1: return t * t;
    case 2: return 1.0F - (1.0F - t) * (1.0F - t);
    case 3: return t * t * (3.0F - 2.0F * t);
    default: return t;
    }
}

} // namespace ombrelune
