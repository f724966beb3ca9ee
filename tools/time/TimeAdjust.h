#pragma once

#include "framework/KMessage.h"

namespace ombrelune {

/// Which time of the material a tool takes as the present.
struct TimeAdjust {
    int mode; // 0 the flow's, 1 that times the speed, 2 the source time
    float speed, sourceTime;

    float At(float time) const
    {
        switch (mode) {
        case 1: return time * speed;
        case 2: return sourceTime;
        default: return time;
        }
    }
    /// Shows the setting that a mode uses.
    static void ShowMode(KMessageList& messages, int shownMode)
    {
        messages.Show("TiSp"_id, shownMode == 1);
        messages.Show("TiSo"_id, shownMode == 2);
    }
};

} // namespace ombrelune
