#pragma once

#include <vector>

#include "image/KVector2.h"

namespace ombrelune {

class KImage;

/// One pixel of a KOffsets.
struct KOffset {
    int x = 0, y = 0;      ///< from the centre pixel
    int weight = 0;        ///< 0 to 65535
    bool flag = false;     ///< in a list of edges: the kernel begins here
    float distance = 0.0F; ///< of a line: pixels from the centre along the longer axis
    int position = 0;      ///< of a line: 0 at the centre to 65535 at the end
};

/// Pixels around a centre with weights: a line, or a kernel made of an image, so that the walks of a tool are
/// plain table reads.
class KOffsets {
public:
    /// Line from the centre outward: along (-cos angle, sin angle times aspect), one step to a pixel of the
    /// longer axis. A quick line has one pixel a step, else two share the weight by how near they are, the
    /// nearer one first, and the last step may be a part; `roundUp` makes it a whole one. Lengths are pixels
    /// and limited to 131072.
    KOffsets(float angle, float length, float aspect, bool roundUp, bool quick);
    /// Kernel of a channel. Mode 0: its pixels that are not 0, as weights. Mode 1: where its rows change from
    /// or to 0, the weight is the amount of the change and the place is the pixel before. Mode 2: the same by
    /// columns. `flip` turns it by half a turn.
    KOffsets(KImage const* image, int channel, bool flip, int mode);
    /// So many entries for the caller to fill.
    explicit KOffsets(int count);

    int Count() const { return static_cast<int>(entries.size()); }
    void Clear() { entries = {}; }

    float length = 0.0F; ///< of a line: in steps, the centre counted
    float aspect = 1.0F;
    std::vector<KOffset> entries;

private:
    void SetSingleSidedLine_Quick(KVector2 const& step);
    void SetSingleSidedLine_Exact(KVector2 const& step);
    void AddPair(bool alongX, int major, float minor, float weight);
    void SetPositions();
    void SetKernel(KImage const& image, int channel, bool flip);
    void SetEdges(KImage const& image, int channel, bool flip, bool byColumns);
};

} // namespace ombrelune
