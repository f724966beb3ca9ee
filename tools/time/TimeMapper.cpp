// Time Mapper: each pixel comes from a time of its own, which a grey map picks out of a run of frames.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <type_traits>
#include <vector>

#include "framework/Registration.h"
#include "host/image/PixPtr.h"
#include "host/image/Vector4.h"
#include "tools/time/FrameSizes.h"

namespace ombrelune {

namespace {

constexpr int kMostFrames = 1024;
constexpr int kStretch = 1024; // pixels

// Least and largest by lanes; of two that cannot be compared the second one. One instruction each, which the
// compiler makes of no comparison of vectors.
#ifdef __SSE4_1__
Float4 Least(Float4 a, Float4 b) { return _mm_min_ps(a, b); }
Float4 Most(Float4 a, Float4 b) { return _mm_max_ps(a, b); }
#else
Float4 Least(Float4 a, Float4 b) { return a < b ? a : b; }
Float4 Most(Float4 a, Float4 b) { return a > b ? a : b; }
#endif

/// A row of the pictures, whose pixels are four words of 0 to 65535 as floats.
template <class Stored> class PlainRow {
public:
    PlainRow(int y, Image* map, Image* const* frames, Image* out)
        : y_(y), map_(Start(map)), frames_(frames), out_(reinterpret_cast<Stored*>(out->MainRow(y)))
    {}

    Float4 Map(int x) const { return Load(map_ + 4 * x); }
    Stored const* Frame(int i) const { return Start(frames_[i]); }
    Float4 Read(Stored const* frame, int x) const { return Load(frame + 4 * x); }
    Float4 ReadNext(Stored const* frame, int x) const { return Load(frame + 4 * x); }
    void Write(int x, Int4 words) const
    {
        if constexpr (std::is_same_v<Stored, float>)
            Store(__builtin_convertvector(words, Float4) / 65535.0F, out_ + 4 * x);
        else Store(reinterpret_cast<UInt4>(words), out_ + 4 * x);
    }

private:
    Stored const* Start(Image* image) const { return reinterpret_cast<Stored const*>(image->MainRow(y_)); }
    static Float4 Load(Stored const* stored)
    {
        Float4 const words = LoadFloat4(stored);
        if constexpr (std::is_same_v<Stored, float>) {
            // As any float is read as an integer: limited, 0 for what is not a number, rounded.
            Float4 const zero{}, limited = Least(Most(words, zero), zero + 1.0F) * 65535.0F + 0.5F;
            return __builtin_convertvector(__builtin_convertvector(limited, Int4), Float4);
        } else {
            return words;
        }
    }

    int y_;
    Stored const* map_;
    Image* const* frames_;
    Stored* out_;
};

/// The same for pictures of any depth; auxiliary words are those of the frame.
class AnyRow {
public:
    AnyRow(int row, Image* map, Image* const* frames, Image* out)
        : y(row), in(map, 0, row), images(frames), to(out, 0, row)
    {}

    Float4 Map(int)
    {
        next >>= in;
        return Words(next);
    }
    Image* Frame(int i) const { return images[i]; }
    Float4 Read(Image* frame, int x) { return Read(frame, x, pixel); }
    Float4 ReadNext(Image* frame, int x) { return Read(frame, x, next); }
    void Write(int, Int4 words)
    {
        Store(reinterpret_cast<UInt4>(words), pixel.word);
        to >>= pixel;
    }

private:
    static Float4 Words(Pixel const& p)
    {
        return __builtin_convertvector(reinterpret_cast<Int4>(LoadUInt4(p.word)), Float4);
    }
    Float4 Read(Image* frame, int x, Pixel& into) const
    {
        PixPtr(frame, x, y).GetPixel(into);
        return Words(into);
    }

    int y;
    PixPtr in;
    Image* const* images;
    PixPtr to;
    Pixel pixel, next;
};

enum MapChannel { kRed, kGreen, kBlue, kAlpha, kLuminance };

} // namespace

class KEffectTimeMapper : public KEffectThreads {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "TMap", "Time Mapper"); }

    KEffectTimeMapper()
    {
        ImagesInitialise(kMostFrames);
        unsigned const soft = KF_SoftMin | KF_SoftMax;
        // clang-format off
        parameters.AddChapter("Time Mapper");
        parameters.AddButtons  (&mainTime, 0, "Main Time", "TiAd"_id, KF_AffectInputs, {"Flow Time", "Slider"});
        parameters.AddScrew    (&sourceTime, 0.0F, "Source time", "TiSo"_id, soft, 0.0, 100.0);
        parameters.AddSliderInt(&black, 0, "Time offset black", "TiOB"_id, soft, -8, 8);
        parameters.AddSliderInt(&white, 8, "Time offset white", "TiOW"_id, soft, -8, 8);
        parameters.AddCheckbox (&interpolate, true, "Interpolate between frames", "TiIn"_id, KF_AffectInputs);
        parameters.AddButtonsChannel(&channel, kLuminance, "Channel", "TiCh"_id, 0);
        parameters.AddImage    (&map, "Time map", 2, KF_MainInput);
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        if (id == "TiAd"_id) messages->Show("TiSo"_id, value.intValue == 1);
        return messages;
    }

    int GetInputTimes(unsigned input, float now, float* times) override
    {
        if (input != 0) return KEffectThreads::GetInputTimes(input, now, times);
        if (!times) return kMostFrames;
        std::fill_n(times, kMostFrames, kNoFrame);
        float const base = (mainTime == 1 ? sourceTime : now) + static_cast<float>(black);
        for (int i = 0; i < Count(); ++i) {
            float const exact = base + static_cast<float>(i) * Sign();
            times[i] = static_cast<float>(std::floor(exact * 2.0 + 0.5 + 0.0001) * 0.5); // half frames
        }
        return kMostFrames;
    }

    bool Init(KImage* source) override
    {
        KEffectThreads::Init(source);
        if (!source || !map || map->Width() < width || map->Height() < height) return false;
        FitFrames(*this);
        frames.clear();
        KImage* known = nullptr;
        for (int i = 0; i < Count(); ++i) {
            frames.push_back(GetImage(i) ? GetImage(i)->FImage() : nullptr);
            if (GetImage(i)) known = GetImage(i);
        }
        if (!known) return false;
        std::replace(frames.begin(), frames.end(), static_cast<Image*>(nullptr), known->FImage());
        scale = static_cast<float>(Sign() * static_cast<float>(Span()) / 65535.0);
        return true;
    }

    int ThreadCount(int) override { return height; }
    void F(int, int y, KImage*, KImage* destination) override
    {
        if (AreAll(PixelLayout::kPlainInt16, *destination))
            MapRow(PlainRow<std::uint16_t>(y, map->FImage(), frames.data(), destination->FImage()));
        else if (AreAll(PixelLayout::kPlainFloat, *destination))
            MapRow(PlainRow<float>(y, map->FImage(), frames.data(), destination->FImage()));
        else MapRow(AnyRow(y, map->FImage(), frames.data(), destination->FImage()));
    }

    int mainTime; // 0 the flow's, 1 the source time
    float sourceTime;
    int black, white; // offsets in frames
    bool interpolate;
    int channel; // MapChannel
    KImage* map;

private:
    long long Span() const { return static_cast<long long>(white) - black; }
    float Sign() const { return Span() > 0 ? 1.0F : -1.0F; }
    int Count() const
    {
        return static_cast<int>(std::min(std::abs(Span()) + 1, static_cast<long long>(kMostFrames)));
    }

    bool AreAll(PixelLayout layout, KImage const& destination) const
    {
        auto const is = [layout](Image const* image) { return image->Layout() == layout; };
        return is(map->FImage()) && is(destination.FImage()) && std::all_of(frames.begin(), frames.end(), is);
    }

    /// Where in the run of frames each pixel of a stretch lies: a frame, and the part of the next one.
    struct Places {
        float exact[kStretch];
        int frames[kStretch];
        float parts[kStretch];
    };

    /// First the places of a stretch, then its pixels: neither waits for the other.
    template <class Row> void MapRow(Row row) const
    {
        // Copies: what a pixel is written to might be one of ours, for all that the compiler knows.
        int const last = static_cast<int>(frames.size()) - 1, size = width;
        bool const isMixed = interpolate;
        Places places;
        for (int x = 0; x < size; x += kStretch) {
            int const count = std::min(kStretch, size - x);
            FindPlaces(row, x, places, count);
            for (int p = 0; p < count;) {
                int const i = places.frames[p];
                auto const frame = row.Frame(i), next = row.Frame(std::min(i + 1, last));
                // As far as the same two frames serve.
                for (; p < count && places.frames[p] == i; ++p) {
                    Float4 words = row.Read(frame, x + p);
                    if (isMixed) {
                        float const f = places.parts[p], rest = 1.0F - f;
                        words = Float4{rest, rest, rest, rest} * words +
                                Float4{f, f, f, f} * row.ReadNext(next, x + p);
                    }
                    row.Write(x + p, __builtin_convertvector(words, Int4));
                }
            }
        }
    }
    template <class Row> void FindPlaces(Row& row, int x, Places& places, int count) const
    {
        float const perStep = scale, last = static_cast<float>(frames.size() - 1);
        auto const find = [&](auto const& selected) {
            for (int p = 0; p < count; ++p) places.exact[p] = selected(row.Map(x + p)) * perStep;
            for (int p = 0; p < count; ++p) {
                places.frames[p] = static_cast<int>(std::min(places.exact[p], last));
                places.parts[p] = places.exact[p] - std::trunc(places.exact[p]);
            }
        };
        switch (channel) {
        case kRed: return find([](Float4 p) { return p[int{kChannelRed}]; });
        case kGreen: return find([](Float4 p) { return p[int{kChannelGreen}]; });
        case kBlue: return find([](Float4 p) { return p[int{kChannelBlue}]; });
        case kAlpha: return find([](Float4 p) { return p[int{kChannelAlpha}]; });
        default:
            return find([](Float4 p) {
                Float4 const q = __builtin_shufflevector(p, p, 1, 2, 0, 3),
                             r = __builtin_shufflevector(p, p, 2, 0, 1, 3);
                return (Least(Least(p, q), r)[0] + Most(Most(p, q), r)[0]) * 0.5F;
            });
        }
    }

    std::vector<Image*> frames; // one for each time, from black to white
    float scale = 0.0F;         // frames for each step of the map
};

OMBRELUNE_TOOL(BF_TimeMapper, BF_ThreadedOperator, KEffectTimeMapper, .isTimeVariant = true);

} // namespace ombrelune
