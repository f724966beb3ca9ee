// Seamless Loop: plays a stretch of frames over and over, and dissolves its end into the frames that come
// before its beginning. With a dissolve of D frames it begins at the source's frame D.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>

#include "framework/Registration.h"
#include "image/PixelMath.h"

namespace ombrelune {

class KEffectSeamlessLoop : public KEffectPixel {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "SLL", "Seamless Loop", "Create seamlessly looping sequences easily");
    }

    KEffectSeamlessLoop()
    {
        ImagesInitialise(2);
        unsigned const flags = KF_AffectInputs | KF_Internal | KF_SoftMax;
        // clang-format off
        parameters.AddChapter("Seamless Loop");
        parameters.AddScrewInt(&loopLength,     100, "Loop length",     "TiLL"_id, flags, 1, 1000);
        parameters.AddScrewInt(&dissolveLength, 25,  "Dissolve length", "TiDL"_id, flags, 0, 100);
        parameters.AddButtons (&fadeType, 0, "Fade type", "FaTy"_id, 0, {"Linear", "Smooth"});
        parameters.AddLabel   ("This loop will require XXXX frames.",                 "LaRe"_id, KF_Internal);
        parameters.AddLabel   ("The first frame will be frame XXXX of the source.",   "LaFi"_id, KF_Internal);
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        if (id == "TiLL"_id) knownLoop = value.intValue, hasLoop = true;
        if (id == "TiDL"_id) knownDissolve = value.intValue, hasDissolve = true;
        if (hasLoop && hasDissolve && knownLoop < knownDissolve) {
            messages->SetValue("TiDL"_id, static_cast<float>(knownLoop));
            knownDissolve = knownLoop;
        }
        return messages;
    }

    int GetInputTimes(unsigned input, float now, float* times) override
    {
        if (input != 0) return KEffectPixel::GetInputTimes(input, now, times);
        if (!times) return 2;
        int const dissolve = Dissolve();
        float at = now;
        if (loopLength > 0) at = static_cast<float>(InLoop(TruncateToInt(std::floor(now + 0.0001F))));
        auto const length = static_cast<float>(loopLength), d = static_cast<float>(dissolve);
        times[0] = at + d;
        times[1] = at < length - d || length < d ? kNoFrame : at + d - length;
        return 2;
    }

    bool Init(KImage* source) override
    {
        KEffectPixel::Init(source);
        head = GetImage(1);
        if (!source || !head) return false;
        int frame = TruncateToInt(data.time + 1.1920929e-07F);
        if (loopLength != 0) frame = InLoop(frame);
        int const dissolve = Dissolve();
        if (frame <= loopLength - dissolve) return false;
        weight = static_cast<float>(frame + dissolve - loopLength) / static_cast<float>(dissolve);
        if (fadeType == 1) weight = static_cast<float>(0.5 - std::cos(weight * std::numbers::pi) * 0.5);
        rest = 1.0F - weight;
        integerWeight = static_cast<std::uint32_t>(static_cast<int>(weight * 65536.0F));
        integerRest = 65536U - integerWeight;
        commonWidth = std::min(source->Width(), head->Width());
        commonHeight = std::min(source->Height(), head->Height());
        return true;
    }

    Pixel F(int x, int y, KImage* source) override { return Dissolved<Pixel>(x, y, source); }
    FltPixel FFlt(int x, int y, KImage* source) override { return Dissolved<FltPixel>(x, y, source); }

    int loopLength, dissolveLength; // frames
    int fadeType;                   // 0 linear, 1 smooth

private:
    int Dissolve() const { return std::min(loopLength, dissolveLength); }
    /// Place of a frame in the loop, which also runs before time 0.
    int InLoop(int frame) const
    {
        int const place = frame % loopLength;
        return place < 0 ? place + loopLength : place;
    }

    std::uint32_t Mixed(std::uint32_t a, std::uint32_t b) const
    {
        return (integerRest * a + integerWeight * b) >> 16;
    }
    float Mixed(float a, float b) const { return rest * a + weight * b; }

    template <class Record> Record Dissolved(int x, int y, KImage* source) const
    {
        Record pixel, other;
        source->GetPixel(x, y, pixel);
        if (x >= commonWidth || y >= commonHeight) return pixel;
        head->GetPixel(x, y, other);
        for (int w = 0; w < 4; ++w) pixel.word[w] = Mixed(pixel.word[w], other.word[w]);
        return pixel;
    }

    KImage* head = nullptr; // frame that the end dissolves into
    float weight = 0.0F, rest = 1.0F;
    std::uint32_t integerWeight = 0, integerRest = 65536; // of 65536
    int commonWidth = 0, commonHeight = 0;

    // What the controls said last.
    int knownLoop = 0, knownDissolve = 0;
    bool hasLoop = false, hasDissolve = false;
};

OMBRELUNE_TOOL(BF_SeamlessLoop, BF_ThreadedOperator, KEffectSeamlessLoop, .isTimeVariant = true);

} // namespace ombrelune
