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

/// Calls body with cursors that suit all the pictures: plain ones, which inline to loads and stores, when
/// every picture stores the record's own words; general ones otherwise.
template <class Record, class Body, class... Images>
void WithCursors(int y, Body const& body, Images*... images)
{
    if (((images->Layout() == kPlainLayout<Record>)&&...))
        body(PlainPixPtr<StoredWord<Record>>(images, 0, y)...);
    else body(PixPtr(images, 0, y)...);
}

/// @param f  callable as f(x, y, source), returning the record
template <class Record, class F> void PixelRow(KPixelRow const& row, F const& f)
{
    int const width = row.destination->Width();
    auto const loop = [&](auto out) {
        for (int x = 0; x < width; ++x) {
            Record pixel = f(x, row.y, row.source);
            if (row.keepUnselected) {
                Record source;
                row.source->GetPixel(x, row.y, source);
                KeepUnselected(pixel, source, *row.data);
            }
            out >>= pixel;
        }
    };
    WithCursors<Record>(row.y, loop, row.destination->FImage());
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

/// @param f  callable as f(source pixel, position, x), returning the record
template <class Record, class F> void PositionLoop(KPositionRow const& row, F const& f)
{
    KProcessImageData const& data = *row.data;
    bool const all = data.AllChannels(), preDivide = data.preDivide;
    auto const width = static_cast<float>(row.width);
    float const y = static_cast<float>(row.y) / static_cast<float>(row.height) / row.frameAspect;
    auto const loop = [&](auto in, auto out) {
        for (int x = 0; x < row.width; ++x) {
            Record source;
            source >>= in;
            std::remove_reference_t<decltype(source.alpha)> alpha = 0;
            if (preDivide) PixelPreDivide(source, alpha);
            KVector2 position(static_cast<float>(x) / width, y);
            Record result = f(source, position, x);
            if (!all) KeepUnselected(result, source, data);
            // Words beyond the colour are the source's: the effect's own go no further than its record.
            for (int w = 0; w < 4; ++w) source.word[w] = result.word[w];
            if (preDivide) PixelPostMultiply(source, alpha);
            out >>= source;
        }
    };
    WithCursors<Record>(row.y, loop, row.source->FImage(), row.destination->FImage());
}

/// @param f  callable as f(source pixel, position), returning the record
template <class Record, class F> void PositionRow(KPositionRow const& row, F const& f)
{
    // Two loops: a pixel that a call may hold on to would live in memory in both.
    if (row.data->superSample == 1)
        PositionLoop<Record>(row,
                             [&](Record& source, KVector2& position, int) { return f(source, position); });
    else
        PositionLoop<Record>(
            row, [&](Record& source, KVector2&, int x) { return SuperSampled(row, x, source, f); });
}

} // namespace ombrelune
