#pragma once

#include <vector>

#include "framework/KEffectWarp.h"
#include "framework/KProcessImageWarp.h"

namespace ombrelune {

/// Engine of KEffectWarp: asks the effect for the source of each output place and samples there, by pixel or
/// by area, directly or through a coarse map of every u-th place. A warp mask fades the displacement, not the
/// pixels. Channel boxes matter only when none is ticked.
class KProcessImageInverse : public KProcessImageWarp {
public:
    KProcessImageInverse(KImage* newSource, KImage** newDestination, KEffectImage* newEffect,
                         KProcessImageData const& newData);

    int GetStepCount() override { return IsMapped() ? 2 : 1; }
    int GetThreadCount(int step) override { return IsMapped() && step == 0 ? mapHeight : height; }
    void DoThread(int chunk, int step) override;

    static constexpr int kRun = 128; ///< places that are asked for at once

private:
    /// Where an output pixel comes from.
    enum class Origin : unsigned char {
        kNothing, ///< no source: all zeros
        kSample,  ///< sampled at its place
        kCopy,    ///< the source pixel itself, without any filtering
    };
    struct Edge {
        KVector2 top, bottom;
    };

    bool IsMapped() const { return !skip && data.underSample >= 2; }
    bool IsArea() const { return data.filtering == 2; }
    KVector2 Normalised(float x, float y) const { return {x / scaleX, y / scaleY}; }
    KVector2 InPixels(KVector2 const& place) const { return {place.x * scaleX, place.y * scaleY}; }
    /// Mask alphas of a run; 65535 everywhere without a mask.
    void MaskRun(int x, int y, int count, unsigned* alphas) const;

    void MapRow(int row);
    /// The map between its nodes, for a run of whole pixels.
    void MapRun(int x, int y, int count, KVector2* places) const;

    void PlaceRun(int x, int y, int count, KVector2* places, Origin* origins) const;
    void EdgeRun(int x, int y, int count, Edge* edges, Origin* origins) const;
    Edge FirstEdge(int y) const;

    template <class Record> void SampleRow(int y);
    template <class Record, class Samples> void SampleRow(int y, Samples samples);
    template <class Record> void AreaRow(int y);

    float scaleX = 1.0F, scaleY = 1.0F; ///< pixels of a normalised 1
    int mapWidth = 0, mapHeight = 0;
    std::vector<KVector2> map; ///< source places in pixels, row after row
    std::unique_ptr<KImage> fittedMask;
    KImage* mask = nullptr;
};

} // namespace ombrelune
