#pragma once

#include <algorithm>
#include <type_traits>

#include "framework/KEffectPixel.h"
#include "framework/KEffectPosition.h"
#include "host/image/PixPtr.h"
#include "image/PixelMath.h"

namespace ombrelune {

// The loops over one row, written once and instantiated for both records and for each way to call the effect.

/// Word of channel 0 red to 3 alpha.
constexpr int WordOf(int channel) { return channel == 3 ? kChannelAlpha : kChannelRed - channel; }

/// Puts the source's value back into every channel that is not selected.
template <class Word>
void KeepUnselected(PixelRecord<Word>& pixel, PixelRecord<Word> const& source, KProcessImageData const& data)
{
    for (int channel = 0; channel < 4; ++channel)
        if (!data.channels[channel]) pixel.word[WordOf(channel)] = source.word[WordOf(channel)];
}

/// Calls body with cursors that suit both pictures: plain ones, which inline to loads and stores, when both
/// store the record's own words; general ones otherwise.
template <class Record, class Body> void WithCursors(Image* in, Image* out, int y, Body const& body)
{
    using Stored = std::conditional_t<std::is_same_v<Record, Pixel>, std::uint16_t, float>;
    int const depth = std::is_same_v<Record, Pixel> ? kDepthInt16 : kDepthFloat;
    if (in->IsPlain() && out->IsPlain() && in->Depth() == depth && out->Depth() == depth)
        body(PlainPixPtr<Stored>(in, 0, y), PlainPixPtr<Stored>(out, 0, y));
    else body(PixPtr(in, 0, y), PixPtr(out, 0, y));
}

/// @param f  callable as f(x, y, source), returning the record
template <class Record, class F> void PixelRow(KPixelRow const& row, F const& f)
{
    PixPtr out(row.destination->FImage(), 0, row.y);
    int const width = row.destination->Width();
    for (int x = 0; x < width; ++x) {
        Record pixel = f(x, row.y, row.source);
        if (row.keepUnselected) {
            Record source;
            row.source->GetPixel(x, row.y, source);
            KeepUnselected(pixel, source, *row.data);
        }
        out >>= pixel;
    }
}

/// Mean of n x n calls at places around the pixel, all with the same source pixel.
template <class Record, class F>
Record SuperSampled(KPositionRow const& row, int x, Record& source, F const& f)
{
    using Sum = std::conditional_t<std::is_same_v<Record, Pixel>, std::uint32_t, float>;
    int const n = row.data->superSample;
    auto const width = static_cast<float>(row.width), height = static_cast<float>(row.height);
    float const stepX = 1.0F / static_cast<float>(n) / width;
    float const stepY = 1.0F / static_cast<float>(n) / height / row.frameAspect;
    float const firstX = -(static_cast<float>(n - 1) / 2.0F) * stepX;
    float const firstY = -(static_cast<float>(n - 1) / 2.0F) * stepY;

    Record result = source;
    Sum sum[4] = {};
    KVector2 position;
    position.x = (static_cast<float>(x) + firstX) / width;
    for (int i = 0; i < n; ++i, position.x += stepX) {
        position.y = (static_cast<float>(row.y) + firstY) / height / row.frameAspect;
        for (int j = 0; j < n; ++j, position.y += stepY) {
            KVector2 place = position;
            result = f(source, place);
            for (int w = 0; w < 4; ++w) sum[w] += result.word[w];
        }
    }
    for (int w = 0; w < 4; ++w) result.word[w] = sum[w] / static_cast<Sum>(n * n);
    return result;
}

/// @param f  callable as f(source pixel, position), returning the record
template <class Record, class F> void PositionRow(KPositionRow const& row, F const& f)
{
    KProcessImageData const& data = *row.data;
    bool const all = data.AllChannels();
    auto const width = static_cast<float>(row.width);
    float const y = static_cast<float>(row.y) / static_cast<float>(row.height) / row.frameAspect;
    WithCursors<Record>(row.source->FImage(), row.destination->FImage(), row.y, [&](auto in, auto out) {
        for (int x = 0; x < row.width; ++x) {
            Record source;
            source >>= in;
            std::remove_reference_t<decltype(source.alpha)> alpha = 0;
            if (data.preDivide) PixelPreDivide(source, alpha);
            KVector2 position(static_cast<float>(x) / width, y);
            Record result = data.superSample == 1 ? f(source, position) : SuperSampled(row, x, source, f);
            if (!all) KeepUnselected(result, source, data);
            // Words beyond the colour are the source's: the effect's own go no further than its record.
            for (int w = 0; w < 4; ++w) source.word[w] = result.word[w];
            if (data.preDivide) PixelPostMultiply(source, alpha);
            out >>= source;
        }
    });
}

} // namespace ombrelune
