#include <memory>

#include <tesselator.h>

#include "shapes/KShape.h"
#include "shapes/KShapeArray.h"

namespace ombrelune {

KShape* KShape::TriangulateOf(KShapeEffectTriangulateData const& data) const
{
    auto* result = new KShape;
    if (data.type == 1) return result;
    TESSalloc memory{}; // the library's own functions
    memory.extraVertices = 2560;
    std::unique_ptr<TESStesselator, decltype(&tessDeleteTess)> const tess(tessNewTess(&memory),
                                                                          tessDeleteTess);
    KShapeArrayList const arrays(this);
    for (KShapeArray const* array : arrays.Each<KShapeArray>())
        if (array->IsBounded())
            tessAddContour(tess.get(), 2, array->points.data(), sizeof(KVector2), array->GetCount());
    if (!tessTesselate(tess.get(), TESS_WINDING_ODD, TESS_POLYGONS, 3, 2, nullptr)) return result;

    float const* const vertices = tessGetVertices(tess.get());
    int const* const corners = tessGetElements(tess.get());
    auto const corner = [&](int i) {
        return KVector2(vertices + std::size_t{2} * static_cast<std::size_t>(corners[i]));
    };
    for (int i = 0; i < tessGetElementCount(tess.get()); ++i) {
        result->MoveTo(corner(3 * i));
        result->LineTo(corner(3 * i + 1));
        result->LineTo(corner(3 * i + 2), true);
    }
    return result;
}

} // namespace ombrelune
