// Deflicker: brings the brightness of a frame to that of a reference, either as a whole, by the mean colours
// of the pictures or of a rectangle, or place by place, by what is left of the pictures when they are
// blurred.

#include <algorithm>
#include <cmath>
#include <memory>
#include <type_traits>
#include <vector>

#include "framework/Registration.h"
#include "host/value/Parallel.h"
#include "image/PixelMath.h"
#include "image/RowLoop.h"
#include "tools/time/FrameSizes.h"

namespace ombrelune {

namespace {

constexpr int kMostFrames = 64; // on each side
constexpr int kSlots = 1 + 2 * kMostFrames;

enum Reference { kFixedTime, kTimeSteps, kMeanOfFrames, kExternal };

constexpr int kEveryChannel = 15;

inline std::uint32_t Corrected(std::uint32_t source, std::uint32_t blurred, std::uint32_t reference)
{
    return LimitTo16(static_cast<int>(source) - static_cast<int>(blurred) + static_cast<int>(reference));
}
inline float Corrected(float source, float blurred, float reference) { return source - blurred + reference; }

} // namespace

class KEffectDeflicker : public KEffectPixel {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "Dfl", "Deflicker"); }

    KEffectDeflicker()
    {
        ImagesInitialise(kSlots);
        unsigned const affects = KF_AffectInputs, hidden = KF_Hidden, soft = KF_SoftMin | KF_SoftMax;
        unsigned const rectWidth = KF_Preview | KF_PreviewRectWidth,
                       rectHeight = KF_Preview | KF_PreviewRectHeight;
        // clang-format off
        parameters.AddChapter("Deflicker");
        parameters.AddButtons  (&reference, 0, "Reference", "Refe"_id, affects, {"Fixed Time", "Time Steps", "Average", "External"});
        parameters.AddSlider   (&referenceTime, 0.0F,  "Reference Time", "ReTi"_id, soft, 0.0, 10.0);
        parameters.AddScrew    (&timeStep,      25.0F, "Time Step",      "TiSt"_id, hidden | KF_SoftMax, 2.0, 25.0);
        parameters.AddSliderInt(&before, 4, "Frames before", "FrBe"_id, hidden, 0, kMostFrames);
        parameters.AddSliderInt(&after,  4, "Frames After",  "FrAf"_id, hidden, 0, kMostFrames);
        parameters.AddButtons  (&type,    0, "Type",     "Type"_id, affects, {"Global", "Zoned"});
        parameters.AddButtons  (&basedOn, 0, "Based On", "Base"_id, affects, {"All", "Rectangle"});
        parameters.AddPoint    (&referenceArea.centre, {0.5F, 0.5F}, "Rectangle Reference",        "RReC"_id, KF_Preview, KPoint_Normal);
        parameters.AddScrew    (&referenceArea.width,  0.5F,         "Rectangle Reference Width",  "RReW"_id, rectWidth,  0.0, 1.0);
        parameters.AddScrew    (&referenceArea.height, 0.5F,         "Rectangle Reference Height", "RReH"_id, rectHeight, 0.0, 1.0);
        parameters.AddCheckbox (&lockArea, true, "Lock Correcting to Reference Rectangle", "BasL"_id, affects);
        parameters.AddPoint    (&correctingArea.centre, {0.5F, 0.5F}, "Rectangle Correcting Center", "RCoC"_id, KF_Preview, KPoint_Normal);
        parameters.AddScrew    (&correctingArea.width,  0.5F,         "Rectangle Correcting Width",  "RCoW"_id, rectWidth,  0.0, 1.0);
        parameters.AddScrew    (&correctingArea.height, 0.5F,         "Rectangle Correcting Height", "RCoH"_id, rectHeight, 0.0, 1.0);
        parameters.AddButtons  (&operation, 1, "Operation", "Oper"_id, 0, {"Add", "Multiply"});
        parameters.AddSlider   (&detail, 1.0F, "Detail", "Deta"_id, KF_SoftMax, 0.01, 10.0);
        parameters.AddImage    (&referenceImage, "Reference image", 2, KF_MainInput);
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        int const v = value.intValue;
        auto const showAreas = [&](bool shown) {
            for (std::uint32_t each : {"RReC"_id, "RReW"_id, "RReH"_id, "BasL"_id})
                messages->Show(each, shown);
        };
        auto const showCorrecting = [&](bool shown) {
            for (std::uint32_t each : {"RCoC"_id, "RCoW"_id, "RCoH"_id}) messages->Show(each, shown);
        };
        switch (id) {
        case "Refe"_id:
            messages->Show("ReTi"_id, v <= kTimeSteps);
            messages->Show("TiSt"_id, v == kTimeSteps);
            messages->Show("FrBe"_id, v == kMeanOfFrames);
            messages->Show("FrAf"_id, v == kMeanOfFrames);
            break;
        case "Type"_id:
            knownType = v;
            messages->Show("Base"_id, v == 0);
            messages->Show("Oper"_id, v == 0);
            showAreas(v == 0 && knownBase != 0);
            showCorrecting(v == 0 && knownBase != 0 && !knownLock);
            messages->Show("Deta"_id, v == 1);
            break;
        case "Base"_id:
            knownBase = v;
            showAreas(v == 1);
            messages->Show("Oper"_id, v == 1);
            showCorrecting(v == 1 && !knownLock);
            break;
        case "BasL"_id:
            knownLock = v != 0;
            showCorrecting(knownType == 0 && knownBase != 0 && !knownLock);
            break;
        }
        return messages;
    }

    /// Slot 0 is the frame to correct, the others are the reference.
    int GetInputTimes(unsigned input, float now, float* times) override
    {
        if (input != 0) return KEffectPixel::GetInputTimes(input, now, times);
        if (!times) return kSlots;
        std::fill_n(times, kSlots, kNoFrame);
        times[0] = now;
        switch (reference) {
        case kFixedTime: times[1] = referenceTime; break;
        case kTimeSteps:
            times[1] = now - SinceStep(now);
            times[2] = times[1] + timeStep;
            break;
        case kMeanOfFrames:
            for (int i = 0; i < After(); ++i) times[1 + i] = now + static_cast<float>(i) + 1.0F;
            for (int i = 0; i < Before(); ++i) times[1 + After() + i] = now - static_cast<float>(i) - 1.0F;
            break;
        default: break;
        }
        return kSlots;
    }

    bool Init(KImage* source) override
    {
        isReady = KEffectPixel::Init(source) && GetImage(0) && CollectFrames();
        if (isReady && type == 1) blurredSource.reset(Blurred(*GetImage(0)));
        return isReady;
    }

    // The engine writes the reference into the destination, and Done makes the result of it.
    Pixel F(int x, int y, KImage*) override { return ReferenceAt<Pixel>(x, y); }
    FltPixel FFlt(int x, int y, KImage*) override { return ReferenceAt<FltPixel>(x, y); }

    void Done(KImage** destination) override
    {
        // After a failed Init the destination is the picture itself, which stays.
        if (isReady && *destination) {
            if (type == 1) CorrectZones(**destination);
            else CorrectGlobally(**destination);
        }
        isReady = false;
        blurredSource.reset();
        frames.clear();
        fitted.reset();
        KEffectPixel::Done(destination);
    }

    struct Area {
        KVector2 centre;
        float width, height; // parts of the size
    };

    int reference; // Reference
    float referenceTime, timeStep;
    int before, after; // frames
    int type;          // 0 global, 1 zoned
    int basedOn;       // 0 all, 1 rectangle
    Area referenceArea;
    bool lockArea;
    Area correctingArea;
    int operation; // 0 add, 1 multiply
    float detail;
    KImage* referenceImage;

private:
    int After() const { return std::clamp(after, 0, kMostFrames); }
    int Before() const { return std::clamp(before, 0, kMostFrames); }

    /// How far a time lies behind the last of the steps, which lead through the reference time.
    float SinceStep(float now) const
    {
        float first = referenceTime;
        // The first step at or before 0.
        if (first > 0.0F) first -= std::ceil(first / timeStep) * timeStep;
        return std::fmod(now - first, timeStep);
    }

    /// Frames of the reference and the weight of the later one; false when there is none.
    bool CollectFrames()
    {
        FitFrames(*this);
        frames.clear();
        laterWeight = 0.0F;
        auto const add = [this](KImage* image) {
            if (image) frames.push_back(image);
        };
        switch (reference) {
        case kFixedTime: add(GetImage(1)); break;
        case kTimeSteps:
            add(GetImage(1));
            add(GetImage(2));
            if (frames.size() == 2) laterWeight = SinceStep(data.time) / timeStep;
            break;
        case kMeanOfFrames:
            for (int i = 1; i <= After() + Before(); ++i) add(GetImage(i));
            break;
        default:
            if (referenceImage && (referenceImage->Width() != width || referenceImage->Height() != height))
                fitted.reset(referenceImage->ResizeOf(width, height));
            add(fitted ? fitted.get() : referenceImage);
            break;
        }
        return !frames.empty();
    }

    template <class Record> Record ReferenceAt(int x, int y) const
    {
        using Word = std::remove_reference_t<decltype(Record().word[0])>;
        Record pixel, other;
        frames[0]->GetPixel(x, y, pixel);
        if (reference == kTimeSteps && frames.size() == 2) {
            frames[1]->GetPixel(x, y, other);
            for (int w = 0; w < 4; ++w)
                pixel.word[w] = static_cast<Word>((1.0F - laterWeight) * static_cast<float>(pixel.word[w]) +
                                                  laterWeight * static_cast<float>(other.word[w]));
        } else if (frames.size() > 1) {
            for (std::size_t i = 1; i < frames.size(); ++i) {
                frames[i]->GetPixel(x, y, other);
                for (int w = 0; w < 4; ++w) pixel.word[w] += other.word[w];
            }
            for (Word& word : pixel.word) word /= static_cast<Word>(frames.size());
        }
        return pixel;
    }

    KColor Mean(KImage const& image, Area const& area) const
    {
        return image.GetSamples(0, basedOn, area.centre, area.width, area.height);
    }

    void CorrectGlobally(KImage& destination) const
    {
        KColor const own = Mean(*GetImage(0), lockArea ? referenceArea : correctingArea);
        KColor wanted = Mean(destination, referenceArea);
        destination.CopyFrom(GetImage(0));
        if (operation == 0) {
            wanted -= own;
            destination.Add(wanted);
        } else {
            wanted /= own;
            destination.Multiply(wanted);
        }
    }

    KImage* Blurred(KImage const& image) const
    {
        double const size = 100.0 / std::max(detail, 0.0001F);
        return image.BlurOf(size, size, kBlurGaussian, kEveryChannel, 1.0, 1.0);
    }

    void CorrectZones(KImage& destination) const
    {
        std::unique_ptr<KImage> const blurredReference(Blurred(destination));
        if (!blurredSource || !blurredReference) return;
        if (data.depth == 2) CorrectZones<FltPixel>(destination, *blurredReference);
        else CorrectZones<Pixel>(destination, *blurredReference);
    }
    template <class Record> void CorrectZones(KImage& destination, KImage const& blurredReference) const
    {
        auto const row = [](int count, auto in, auto blurred, auto wanted, auto out) {
            Record pixel, b, r;
            for (int x = 0; x < count; ++x) {
                pixel >>= in;
                b >>= blurred;
                r >>= wanted;
                for (int w = 0; w < 4; ++w) pixel.word[w] = Corrected(pixel.word[w], b.word[w], r.word[w]);
                out >>= pixel;
            }
        };
        ParallelFor(destination.Height(), [&](int y) {
            VisitRow<Record>(y, row, GetImage(0)->FImage(), blurredSource->FImage(),
                             blurredReference.FImage(), destination.FImage());
        });
    }

    bool isReady = false;
    std::vector<KImage const*> frames; // of the reference
    float laterWeight = 0.0F;          // of the second of two steps
    std::unique_ptr<KImage> fitted;    // reference image of another size
    std::unique_ptr<KImage> blurredSource;

    // What the controls said last.
    int knownType = 0, knownBase = 0;
    bool knownLock = true;
};

OMBRELUNE_TOOL(BF_Deflicker, BF_ThreadedOperator, KEffectDeflicker, .isTimeVariant = true);

} // namespace ombrelune
