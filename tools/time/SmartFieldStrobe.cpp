// Smart Field Strobe: takes one of the two interlaced fields away, but only where the picture moves: there
// the lines of the field become the mean of their neighbours.

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <utility>

#include "framework/Registration.h"
#include "host/image/PixPtr.h"
#include "image/PixelMath.h"
#include "tools/time/TimeAdjust.h"

namespace ombrelune {

namespace {

constexpr int kAlphaChannel = 8; // of the blur

/// Largest difference of the colours, alpha left out.
std::uint32_t Difference(Pixel const& a, Pixel const& b)
{
    int most = 0;
    for (int w = 0; w < 3; ++w)
        most = std::max(most, std::abs(static_cast<int>(a.word[w]) - static_cast<int>(b.word[w])));
    return static_cast<std::uint32_t>(most);
}

} // namespace

class KEffectSmartFieldStrobe : public KEffectThreads {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "SFS", "Smart Field Strobe",
                      "Smart Field Strobe tries to detect motion and only removes fields where there is.");
    }

    KEffectSmartFieldStrobe()
    {
        ImagesInitialise(3);
        unsigned const soft = KF_SoftMin | KF_SoftMax;
        // clang-format off
        parameters.AddChapter("Field Strobe");
        parameters.AddList    (&field, 2, "Strip field", "SmSe"_id, 0,
                               {"One", "Two", "Based on time (one dominant)", "Based on time (two dominant)"});
        // Never shown, without effect.
        parameters.AddSlider  (&smart, 1.0F, "Classic                              Smart", "Smrt"_id, KF_HiddenToo, 0.0, 1.0);
        parameters.AddCheckbox(&selectionToAlpha, false, "Output pixel selection to alpha", "SmOA"_id, 0);
        parameters.AddSlider  (&blur,     0.0F, "Blur",              "SmBl"_id, KF_SoftMax, 0.0, 20.0);
        parameters.AddSlider  (&contract, 0.0F, "Contract / Expand", "SmCo"_id, soft,      -1.0, 1.0);
        parameters.AddSlider  (&gamma,    1.0F, "Gamma",             "SmGa"_id, KF_SoftMax, 0.0, 3.0);
        parameters.AddRange   (&levels, {0.0F, 1.0F}, "Low", "High", "SmTL"_id, "SmTH"_id, 0, 0.0, 1.0);

        parameters.AddChapter("Time");
        parameters.AddButtons (&time.mode, 0, "Adjust", "TiAd"_id, KF_AffectInputs, {"Not", "Time Speed", "Time Stretch"});
        parameters.AddSlider  (&time.speed,      1.0F, "Speed",       "TiSp"_id, KF_SoftMax, 0.0, 3.0);
        parameters.AddScrew   (&time.sourceTime, 0.0F, "Source time", "TiSo"_id, soft, 0.0, 100.0);
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        if (id == "TiAd"_id) TimeAdjust::ShowMode(*messages, value.intValue);
        return messages;
    }

    /// The present frame, the one before and the one after.
    int GetInputTimes(unsigned input, float now, float* times) override
    {
        if (input != 0) return KEffectThreads::GetInputTimes(input, now, times);
        if (!times) return 3;
        float const present = time.At(now);
        times[0] = std::floor(present + 0.0001F);
        times[1] = std::floor(present - 1.0F + 0.0001F);
        times[2] = std::floor(present + 1.0F + 0.0001F);
        return 3;
    }

    bool Init(KImage* source) override
    {
        KEffectThreads::Init(source);
        if (!source || !GetImage(0)) return false;
        strobedRow = StrobedRow();
        low = static_cast<int>(levels.low * 65535.0F);
        high = static_cast<int>(levels.high * 65535.0F);
        for (int slot : {1, 2})
            if (KImage const* frame = GetImage(slot); frame && !frame->SameSize(GetImage(0)))
                SetImage(slot, nullptr);
        mask.reset(source->LikeOf(-1, -1, -1.0F, -1.0F));
        return mask != nullptr;
    }

    // The motion of each row, its refinement as a whole, the rows of the result.
    int StepCount() override { return 3; }
    int ThreadCount(int step) override { return step == 1 ? 1 : height; }
    void F(int step, int chunk, KImage* source, KImage* destination) override
    {
        switch (step) {
        case 0: MaskRow(chunk); break;
        case 1: RefineMask(); break;
        default:
            chunk % 2 == strobedRow ? StrobeRow(chunk, source, destination)
                                    : KeepRow(chunk, source, destination);
            break;
        }
    }

    void Done(KImage** destination) override
    {
        mask.reset();
        KEffectThreads::Done(destination);
    }

    int field; // 0 one, 1 two, 2 and 3 by time
    float smart;
    bool selectionToAlpha;
    float blur, contract, gamma;
    KRange levels;
    TimeAdjust time;

private:
    /// 0 when rows 0, 2, 4 ... are taken away, else 1. The names of the fields count from the top, rows from
    /// the bottom.
    int StrobedRow() const
    {
        float const present = time.At(data.time) + 0.0001F;
        bool const isSecondHalf = present - std::floor(present) >= 0.5F;
        switch (data.bottomUp ? field ^ 1 : field) {
        case 0: return 0;
        case 1: return 1;
        case 2: return isSecondHalf ? 0 : 1;
        default: return isSecondHalf ? 1 : 0;
        }
    }

    /// The present pixel with its motion as alpha.
    void MaskRow(int y)
    {
        KImage const *const before = GetImage(1), *const after = GetImage(2);
        PixPtr in(GetImage(0)->FImage(), 0, y), out(mask->FImage(), 0, y);
        PixPtr inBefore((before ? before : GetImage(0))->FImage(), 0, y);
        PixPtr inAfter((after ? after : GetImage(0))->FImage(), 0, y);
        Pixel pixel, earlier, later;
        for (int x = 0; x < width; ++x) {
            pixel >>= in;
            earlier >>= inBefore;
            later >>= inAfter;
            // Without a neighbour everything counts as moving; one that is missing differs in nothing.
            pixel.alpha =
                before || after ? std::max(Difference(pixel, earlier), Difference(pixel, later)) : 65535U;
            out >>= pixel;
        }
    }

    void RefineMask()
    {
        if (blur > 0.0F) {
            std::unique_ptr<KImage> soft(
                mask->BlurOf(blur, blur, data.quick ? kBlurSoften : kBlurGaussian, kAlphaChannel, 1.0, 1.0));
            if (soft) mask = std::move(soft);
        }
        if (contract != 0.0F || gamma != 1.0F || low != 0 || high != 65535)
            mask->Levels(contract, gamma, low, high, kChannelAlpha, kChannelAlpha);
    }

    int LimitedRow(int y) const { return std::clamp(y, 0, height - 1); }

    void StrobeRow(int y, KImage* source, KImage* destination) const
    {
        int const below = LimitedRow(y - 1), above = LimitedRow(y + 1);
        Image* const motion = mask->FImage();
        PixPtr motionBelow(motion, 0, below), motionHere(motion, 0, y), motionAbove(motion, 0, above);
        PixPtr inBelow(source->FImage(), 0, below), in(source->FImage(), 0, y),
            inAbove(source->FImage(), 0, above);
        PixPtr out(destination->FImage(), 0, y);
        Pixel m, pixel, pixelBelow, pixelAbove;
        for (int x = 0; x < width; ++x) {
            std::uint32_t moved = 0;
            for (PixPtr* each : {&motionBelow, &motionHere, &motionAbove}) {
                m >>= *each;
                moved = std::max(moved, m.alpha);
            }
            pixelBelow >>= inBelow;
            pixel >>= in;
            pixelAbove >>= inAbove;
            for (int w = 0; w < 4; ++w) {
                std::uint32_t const mean = (pixelBelow.word[w] + pixelAbove.word[w]) >> 1;
                pixel.word[w] = ScaledProduct(moved, mean) + ScaledProduct(65535U - moved, pixel.word[w]);
            }
            if (selectionToAlpha) pixel.alpha = moved;
            out >>= pixel;
        }
    }

    void KeepRow(int y, KImage* source, KImage* destination) const
    {
        PixPtr in(source->FImage(), 0, y), out(destination->FImage(), 0, y);
        Pixel pixel;
        for (int x = 0; x < width; ++x) {
            pixel >>= in;
            if (selectionToAlpha) pixel.alpha = 0;
            out >>= pixel;
        }
    }

    int strobedRow = 0;
    int low = 0, high = 65535;
    std::unique_ptr<KImage> mask;
};

OMBRELUNE_TOOL(BF_SmartFieldStrobe, BF_ThreadedOperator, KEffectSmartFieldStrobe, .isTimeVariant = true);

} // namespace ombrelune
