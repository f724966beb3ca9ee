#pragma once

#include <array>

#include "host/image/SummedAreaTable.h"

namespace ombrelune {

/// Means over quadrilaterals of one picture by its table. Pixel x covers x - 0.5 to x + 0.5. A side below a
/// pixel counts as one, which makes small cells bilinear samples. Auxiliary words come from the pixel nearest
/// to the centre. Without a table the result is the bilinear sample at the centre.
template <class Record, EdgeModes Edges> class AreaSampler {
public:
    /// Both must outlive the sampler; the table may be null.
    AreaSampler(Image const& image, SummedAreaTable const* table) : image_(image), table_(table) {}

    /// @param x, y  corners in 16.16 pixels, in any order
    void operator()(std::array<int, 4> const& x, std::array<int, 4> const& y, Record& record) const;

private:
    Image const& image_;
    SummedAreaTable const* table_;
};

extern template class AreaSampler<Pixel, kEdgeBlack>;
extern template class AreaSampler<Pixel, kEdgeWrap>;
extern template class AreaSampler<Pixel, kEdgeDuplicate>;
extern template class AreaSampler<FltPixel, kEdgeBlack>;
extern template class AreaSampler<FltPixel, kEdgeWrap>;
extern template class AreaSampler<FltPixel, kEdgeDuplicate>;

} // namespace ombrelune
