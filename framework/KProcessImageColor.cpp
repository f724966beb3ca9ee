#include "framework/KProcessImageColor.h"

#include <bit>
#include <type_traits>

#include "framework/RowForms.h"
#include "host/image/PixPtr.h"
#include "image/PixelMath.h"

namespace ombrelune {

namespace {

constexpr int kRun = 256; // colours of a run stay in the first-level cache

template <class Record> using WordType = std::remove_reference_t<decltype(Record::alpha)>;

template <class Color, class Record> Color ColorOf(Record const& pixel) { return Color(pixel); }

template <class Record, class Color> void SetColor(Record& pixel, Color const& color)
{
    pixel.red = static_cast<WordType<Record>>(color.red);
    pixel.green = static_cast<WordType<Record>>(color.green);
    pixel.blue = static_cast<WordType<Record>>(color.blue);
    pixel.alpha = static_cast<WordType<Record>>(color.alpha);
}

Float4 LoadWords(float const* words) { return LoadFloat4(words); }
UInt4 LoadWords(std::uint16_t const* words) { return LoadUInt4(words); }

// The channels of a colour in one vector: red, green, blue, alpha.
static_assert(sizeof(KColor) == sizeof(Float4) && sizeof(KColor32) == sizeof(UInt4));
Float4 LoadColor(KColor const& color) { return std::bit_cast<Float4>(color); }
UInt4 LoadColor(KColor32 const& color) { return std::bit_cast<UInt4>(color); }
template <class Vector, class Color> void StoreColor(Vector channels, Color& color)
{
    color = std::bit_cast<Color>(channels);
}

} // namespace

/// Every channel of a plain picture as it is: a run is loaded, given to the effect and stored.
template <class Record, class Color> void KProcessImageColor::PlainRow(int y)
{
    using Stored = StoredWord<Record>;
    auto* const colors = static_cast<KEffectColor*>(effect);
    auto const* in = reinterpret_cast<Stored const*>(source->FImage()->MainRow(y));
    auto* out = reinterpret_cast<Stored*>((*destination)->FImage()->MainRow(y));
    Color run[kRun];
    for (int x = 0; x < source->Width(); x += kRun) {
        int const count = std::min(kRun, source->Width() - x);
        for (int i = 0; i < count; ++i, in += 4) StoreColor(RedBlueSwapped(LoadWords(in)), run[i]);
        colors->Span(run, count);
        for (int i = 0; i < count; ++i, out += 4) Store(RedBlueSwapped(LoadColor(run[i])), out);
    }
}

template <class Record, class Color> void KProcessImageColor::Row(int y)
{
    if (data.AllChannels() && !data.preDivide && source->FImage()->Layout() == kPlainLayout<Record> &&
        (*destination)->FImage()->Layout() == kPlainLayout<Record>)
        return PlainRow<Record, Color>(y);
    auto* const colors = static_cast<KEffectColor*>(effect);
    bool const all = data.AllChannels();
    auto const loop = [&](auto in, auto out) {
        Color run[kRun];
        WordType<Record> alphas[kRun];
        for (int x = 0; x < source->Width(); x += kRun) {
            int const count = std::min(kRun, source->Width() - x);
            auto again = in; // the run is read twice: for the effect, and for what the effect leaves alone
            Record pixel;
            for (int i = 0; i < count; ++i) {
                pixel >>= in;
                if (data.preDivide) PixelPreDivide(pixel, alphas[i]);
                run[i] = ColorOf<Color>(pixel);
            }
            colors->Span(run, count);
            for (int i = 0; i < count; ++i) {
                Record work;
                SetColor(work, run[i]);
                if (data.preDivide) PixelPostMultiply(work, alphas[i]);
                pixel >>= again;
                if (!all) KeepUnselected(work, pixel, data);
                for (int w = 0; w < 4; ++w) pixel.word[w] = work.word[w];
                out >>= pixel;
            }
        }
    };
    WithCursors<Record>(y, loop, source->FImage(), (*destination)->FImage());
}

template <class Record, class Color> void KProcessImageColor::SuperSampledRow(int y)
{
    using Sum = std::conditional_t<std::is_same_v<Record, Pixel>, std::uint32_t, float>;
    auto* const colors = static_cast<KEffectColor*>(effect);
    int const n = data.superSample;
    float const step = data.superSampleFilter / static_cast<float>(n);
    float const first = static_cast<float>(n - 1) * -0.5F * step;

    PixPtr out((*destination)->FImage(), 0, y);
    for (int x = 0; x < source->Width(); ++x) {
        Color samples[16 * 16];
        WordType<Record> alphas[16 * 16];
        Record pixel; // ends as the last sample taken, which is what unselected channels keep
        int count = 0;
        float sx = static_cast<float>(x) + first;
        for (int i = 0; i < n; ++i, sx += step) {
            float sy = static_cast<float>(y) + first;
            for (int j = 0; j < n; ++j, sy += step, ++count) {
                source->SamplePixelD(sx, sy, pixel);
                Record work = pixel;
                if (data.preDivide) PixelPreDivide(work, alphas[count]);
                samples[count] = ColorOf<Color>(work);
            }
        }
        colors->Span(samples, count);
        Sum sum[4] = {};
        for (int i = 0; i < count; ++i) {
            Record work;
            SetColor(work, samples[i]);
            if (data.preDivide) PixelPostMultiply(work, alphas[i]);
            for (int w = 0; w < 4; ++w) sum[w] += work.word[w];
        }
        Record mean;
        for (int w = 0; w < 4; ++w) mean.word[w] = sum[w] / static_cast<Sum>(count);
        KeepUnselected(mean, pixel, data);
        for (int w = 0; w < 4; ++w) pixel.word[w] = mean.word[w];
        out >>= pixel;
    }
}

void KProcessImageColor::DoThread(int y, int)
{
    if (skip) return CopyRow(y);
    bool const single = data.superSample == 1;
    if (data.depth == 2) single ? Row<FltPixel, KColor>(y) : SuperSampledRow<FltPixel, KColor>(y);
    else single ? Row<Pixel, KColor32>(y) : SuperSampledRow<Pixel, KColor32>(y);
}

} // namespace ombrelune
