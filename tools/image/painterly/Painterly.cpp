// Painterly: under a brush around each pixel the luminances are counted; the pixel takes the mean colour of
// one step of them.
//
// Method: the running histogram of T. Huang, G. Yang and G. Tang, "A fast two-dimensional median filtering
// algorithm" (1979), for brushes of any shape: a step along the row costs the edges of the brush alone.

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <optional>
#include <vector>

#include "framework/Registration.h"
#include "host/value/Parallel.h"
#include "image/KColor32.h"
#include "image/KOffsets.h"

namespace ombrelune {

class KEffectPainterly : public KEffectThreads {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "Pty", "Painterly", "Painterly effects");
    }

    KEffectPainterly()
    {
        // clang-format off
        parameters.AddChapter("Painterly");
        parameters.AddSliderInt(&steps, 256, "Luminance Steps", "Step"_id, KF_SoftMax, 2, 512);
        parameters.AddButtons  (&mode, kPeak, "Mode", "Mode"_id, 0, {"Peak", "Minimum", "Maximum"});
        parameters.AddButtons  (&type, kSquare, "Type", "Type"_id, KF_AffectInputs, {"Square", "Circle", "Custom"});
        parameters.AddSlider   (&radius, 5.0F, "Radius", "Radi"_id, KF_SoftMax, 0.0,   20.0);
        parameters.AddSlider   (&aspect, 1.0F, "Aspect", "Aspe"_id, KF_SoftMax, 1e-05, 5.0);
        parameters.AddImage    (&brush, "Brush", 2, KF_MainInput);
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        if (id == "Type"_id)
            for (std::uint32_t each : {"Radi"_id, "Aspe"_id}) messages->Show(each, value.intValue < kCustom);
        return messages;
    }

    int ThreadCount(int) override { return height; }

    bool Init(KImage* source) override
    {
        if (!KEffectThreads::Init(source)) return false;
        stepCount = std::clamp(steps, 2, kMostSteps);
        std::unique_ptr<KImage> const made = type == kCustom && brush ? SmallBrush() : MakeBrush(*source);
        if (!made) return false;
        kernel.emplace(made.get(), 0, true, 0);
        edges.emplace(made.get(), 0, true, 1);
        TakePoints(*source);
        return true;
    }

    void F(int, int y, KImage* source, KImage* destination) override
    {
        Histogram histogram(stepCount);
        for (KOffset const& entry : kernel->entries)
            histogram.Add(RowAt(y + entry.y)[std::clamp(entry.x - 1, 0, width - 1)]);
        // What leaves the brush with a step along the row, and what enters it.
        std::vector<Edge> leaving, entering;
        for (KOffset const& entry : edges->entries)
            (entry.flag ? leaving : entering).push_back({RowAt(y + entry.y), entry.x});
        for (int x = 0; x < width; ++x) {
            for (Edge const& edge : entering) histogram.Add(edge.row[std::clamp(x + edge.x, 0, width - 1)]);
            for (Edge const& edge : leaving) histogram.Remove(edge.row[std::clamp(x + edge.x, 0, width - 1)]);
            Pixel pixel;
            source->GetPixel(x, y, pixel);
            histogram.Paint(mode, pixel);
            destination->SetPixel(x, y, pixel);
        }
    }

    void Done(KImage** destination) override
    {
        points = {};
        kernel.reset();
        edges.reset();
        KEffectThreads::Done(destination);
    }

    int steps;
    int mode;     // 0 peak, 1 minimum, 2 maximum
    int type;     // 0 square, 1 circle, 2 custom
    float radius; // 720ths of the width
    float aspect;
    KImage* brush;

private:
    enum Mode { kPeak, kMinimum, kMaximum };
    enum Type { kSquare, kCircle, kCustom };
    // Beyond these the work for a pixel would have no bound.
    static constexpr int kMostSteps = 4096;
    static constexpr float kLargestRadius = 512.0F; // pixels
    static constexpr int kLargestBrush = 257;       // pixels to a side, of any pattern

    /// A pixel as the brush counts it: many times, so its step of luminance is found once.
    struct Point {
        std::array<std::uint16_t, 3> word;
        std::uint16_t bin;
    };
    /// Pixel of the brush's edge.
    struct Edge {
        Point const* row;
        int x; ///< from the middle
    };

    /// How many pixels there are of each step of luminance, and the sums of their colours.
    class Histogram {
    public:
        explicit Histogram(int count)
            : counts_(static_cast<std::size_t>(count)), sums_(static_cast<std::size_t>(count))
        {}

        void Add(Point const& point)
        {
            ++counts_[point.bin];
            for (std::size_t c = 0; c < 3; ++c) sums_[point.bin].word[c] += point.word[c];
        }
        void Remove(Point const& point)
        {
            --counts_[point.bin];
            for (std::size_t c = 0; c < 3; ++c) sums_[point.bin].word[c] -= point.word[c];
        }

        void Paint(int which, Pixel& pixel) const
        {
            auto const isUsed = [](int count) { return count > 0; };
            auto chosen = counts_.begin();
            if (which == kMinimum) chosen = std::find_if(counts_.begin(), counts_.end(), isUsed);
            else if (which == kMaximum) {
                auto const last = std::find_if(counts_.rbegin(), counts_.rend(), isUsed);
                chosen = last == counts_.rend() ? counts_.end() : last.base() - 1;
            } else {
                // The largest number first: that goes by lanes.
                int most = 0;
                for (int const count : counts_) most = std::max(most, count);
                chosen = std::find(counts_.begin(), counts_.end(), most);
            }
            if (chosen == counts_.end() || *chosen <= 0) return;
            Sum const& sum = sums_[static_cast<std::size_t>(chosen - counts_.begin())];
            for (int c = 0; c < 3; ++c) pixel.word[c] = LimitTo16(static_cast<int>(sum.word[c] / *chosen));
        }

    private:
        struct Sum {
            std::int64_t word[3] = {};
        };
        std::vector<int> counts_;
        std::vector<Sum> sums_;
    };

    void TakePoints(KImage const& source)
    {
        points.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
        ParallelFor(height, [&](int y) {
            PixPtr in(source.FImage(), 0, y);
            Pixel pixel;
            for (int x = 0; x < width; ++x) {
                pixel >>= in;
                Point& point = points[Index(x, y)];
                for (std::size_t c = 0; c < 3; ++c) point.word[c] = static_cast<std::uint16_t>(pixel.word[c]);
                point.bin = static_cast<std::uint16_t>(std::int64_t{KColor32(pixel).Luminance()} * stepCount /
                                                       0x10000);
            }
        });
    }
    std::size_t Index(int x, int y) const
    {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x);
    }
    /// The edge pixels repeat.
    Point const* RowAt(int y) const { return &points[Index(0, std::clamp(y, 0, height - 1))]; }

    /// White within the brush. Null when memory is out.
    std::unique_ptr<KImage> MakeBrush(KImage const& source) const
    {
        // Beyond the size of the picture a brush would hold more of its border alone.
        float const largest = std::min(kLargestRadius, static_cast<float>(std::max(width, height)));
        float const rx = std::min(largest, radius * static_cast<float>(width) / 720.0F);
        float const ry = std::min(largest, rx * pixelAspect * aspect);
        auto const side = [](float r) { return std::max(3, 2 * TruncateToInt(std::ceil(r)) + 1); };
        std::unique_ptr<KImage> made(source.LikeOf(side(rx), side(ry), 1.0F, 1.0F));
        if (!made) return nullptr;
        made->Clear();
        Pixel white;
        for (auto& word : white.word) word = 65535;
        KVector2i const middle{made->Width() / 2, made->Height() / 2};
        for (int y = 0; y < made->Height(); ++y)
            for (int x = 0; x < made->Width(); ++x) {
                auto const dx = static_cast<float>(x - middle.x), dy = static_cast<float>(y - middle.y);
                if (IsInside(dx, dy, rx, ry)) made->SetPixel(x, y, white);
            }
        return made;
    }

    bool IsInside(float dx, float dy, float rx, float ry) const
    {
        if (type != kCircle) return std::abs(dx) <= rx && std::abs(dy) <= ry;
        // The middle belongs to a brush without a size, too.
        auto const part = [](float d, float r) { return d == 0.0F ? 0.0F : d / r; };
        float const u = part(dx, rx), v = part(dy, ry);
        return u * u + v * v <= 1.0F;
    }

    std::unique_ptr<KImage> SmallBrush() const
    {
        int const longer = std::max(brush->Width(), brush->Height());
        if (longer <= kLargestBrush) return std::unique_ptr<KImage>(brush->CopyOf());
        auto const side = [=](int size) { return std::max(1, size * kLargestBrush / longer); };
        return std::unique_ptr<KImage>(brush->ResizeOf(side(brush->Width()), side(brush->Height())));
    }

    int stepCount = 2;
    std::optional<KOffsets> kernel, edges;
    std::vector<Point> points; // of the whole picture
};

OMBRELUNE_TOOL(BF_Painterly, BF_ThreadedOperator, KEffectPainterly);

} // namespace ombrelune
