// Time Mapper: each pixel comes from a time of its own, which a grey map picks out of a run of frames.

#include <algorithm>
#include <cmath>
#include <vector>

#include "framework/Registration.h"
#include "host/image/PixPtr.h"
#include "image/PixelMath.h"
#include "tools/time/FrameSizes.h"

namespace ombrelune {

namespace {

constexpr int kMostFrames = 1024;

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
        parameters.AddImage    (reinterpret_cast<void**>(&map), "Time map", 2, KF_MainInput);
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
        int const last = static_cast<int>(frames.size()) - 1;
        PixPtr mapped(map->FImage(), 0, y), out(destination->FImage(), 0, y);
        Pixel m, pixel, next;
        for (int x = 0; x < width; ++x) {
            m >>= mapped;
            float const v = Selected(m) * scale;
            int const i = std::clamp(static_cast<int>(v), 0, last);
            Read(i, x, y, pixel);
            if (interpolate) {
                Read(std::min(i + 1, last), x, y, next);
                float const f = v - std::trunc(v);
                for (int w = 0; w < 4; ++w)
                    pixel.word[w] = static_cast<std::uint32_t>(
                        static_cast<int>((1.0F - f) * static_cast<float>(pixel.word[w]) +
                                         f * static_cast<float>(next.word[w])));
            }
            out >>= pixel;
        }
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

    void Read(int frame, int x, int y, Pixel& pixel) const
    {
        PixPtr(frames[static_cast<std::size_t>(frame)], x, y).GetPixel(pixel);
    }

    /// 0 to 65535.
    float Selected(Pixel const& p) const
    {
        switch (channel) {
        case kRed: return static_cast<float>(p.red);
        case kGreen: return static_cast<float>(p.green);
        case kBlue: return static_cast<float>(p.blue);
        case kAlpha: return static_cast<float>(p.alpha);
        default:
            return static_cast<float>(std::min({p.red, p.green, p.blue}) +
                                      std::max({p.red, p.green, p.blue})) *
                   0.5F;
        }
    }

    std::vector<Image*> frames; // one for each time, from black to white
    float scale = 0.0F;         // frames for each step of the map
};

OMBRELUNE_TOOL(BF_TimeMapper, BF_ThreadedOperator, KEffectTimeMapper, .isTimeVariant = true);

} // namespace ombrelune
