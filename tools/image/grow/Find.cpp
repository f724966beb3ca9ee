// Find: finds rectangles of a fixed size by their outlines. Gives a map: red and green for the lines that
// were found, blue for the rectangles.

#include <algorithm>
#include <atomic>
#include <cmath>
#include <vector>

#include "framework/Registration.h"
#include "image/RowLoop.h"

namespace ombrelune {

class KEffectFind : public KEffectThreads {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "Fnd", "Find"); }

    KEffectFind()
    {
        // clang-format off
        parameters.AddChapter("Find");
        parameters.AddSliderInt(&sizeX,     6, "Size Horizontal",     "SiHo"_id, KF_SoftMax, 2, 20);
        parameters.AddSliderInt(&sizeY,     4, "Size Vertical",       "SiVe"_id, KF_SoftMax, 2, 20);
        parameters.AddSliderInt(&softnessX, 0, "Softness Horizontal", "SoHo"_id, KF_SoftMax, 0, 5);
        parameters.AddSliderInt(&softnessY, 1, "Softness Vertical",   "SoVe"_id, KF_SoftMax, 0, 5);
        parameters.AddButtonsChannel(&channel, 4, "Channel", "Chan"_id, 0);
        parameters.AddSlider(&border,    0.1F, "Threshold Border",   "ThBo"_id, 0, 0.0, 1.0);
        parameters.AddSlider(&internal,  0.1F, "Threshold Internal", "ThIn"_id, 0, 0.0, 1.0);
        parameters.AddSlider(&precision, 0.9F, "Precision",          "Prec"_id, 0, 0.0, 1.0);
        parameters.AddButtons(&result, 0, "Result", "Resu"_id, 0, {"Analytic", "Clean"});
        // clang-format on
    }

    bool Init(KImage* source) override
    {
        if (!KEffectThreads::Init(source)) return false;
        std::size_t const pixels = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
        values.resize(pixels);
        marks.assign(pixels, 0);
        return true;
    }

    // The channel by rows, lines along rows, lines along columns, rectangles.
    int StepCount() override { return 4; }
    int ThreadCount(int step) override { return step == 2 ? width : height; }
    void F(int step, int chunk, KImage* source, KImage*) override
    {
        switch (step) {
        case 0: ReadRow(source, chunk); break;
        case 1: FindRow(chunk); break;
        case 2: FindColumn(chunk); break;
        default: FindRectangles(chunk); break;
        }
    }

    void Done(KImage** destination) override
    {
        Image* const image = (*destination)->FImage();
        ParallelFor(height, [&](int y) {
            VisitRow<FltPixel>(
                y,
                [&](int count, auto out) {
                    FltPixel pixel;
                    pixel.DropAux();
                    pixel.alpha = 0.0F;
                    for (int x = 0; x < count; ++x) {
                        unsigned const mark = marks[At(x, y)];
                        pixel.red = mark & kRed ? 1.0F : 0.0F;
                        pixel.green = mark & kGreen ? 1.0F : 0.0F;
                        pixel.blue = mark & kInside ? 1.0F : mark & kAround ? 0.5F : 0.0F;
                        out >>= pixel;
                    }
                },
                image);
        });
        marks = {};
        values = {};
        KEffectThreads::Done(destination);
    }

    int sizeX, sizeY, softnessX, softnessY; // pixels
    int channel;
    float border;
    float internal; // on the panel alone
    float precision;
    int result; // on the panel alone

private:
    // What was found of a pixel. A bit each, since rows and columns mark pixels of their neighbours.
    enum Mark : std::uint8_t { kRed = 1, kGreen = 2, kAround = 4, kInside = 8 };

    std::size_t At(int x, int y) const
    {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x);
    }
    void Set(int x, int y, Mark mark)
    {
        std::atomic_ref(marks[At(x, y)]).fetch_or(mark, std::memory_order_relaxed);
    }

    void ReadRow(KImage* source, int y)
    {
        auto const row = [&](int count, auto in) {
            FltPixel p;
            for (int x = 0; x < count; ++x) {
                p >>= in;
                values[At(x, y)] =
                    channel < 4
                        ? PixelGetChannel(p, channel)
                        : (std::max({p.red, p.green, p.blue}) + std::min({p.red, p.green, p.blue})) / 2.0F;
            }
        };
        VisitRow<FltPixel>(y, row, source->FImage());
    }

    /// Whether both outer values, a and d, differ from their inner neighbours, and in the same sense.
    bool IsEdge(float a, float b, float c, float d) const
    {
        return std::abs(a - b) > border && std::abs(d - c) > border && (a - b) * (d - c) > 0.0F;
    }

    void FindRow(int y)
    {
        if (y >= height - (sizeY + 2 * softnessY + 1)) return;
        int const low = y + 1 + softnessY, high = y + softnessY + sizeY, last = y + 2 * softnessY + sizeY + 1;
        for (int x = 0; x < width; ++x) {
            if (!IsEdge(values[At(x, y)], values[At(x, low)], values[At(x, high)], values[At(x, last)]))
                continue;
            Set(x, low, kRed);
            Set(x, high, kGreen);
        }
    }

    void FindColumn(int x)
    {
        if (x >= width - (sizeX + 2 * softnessX + 1)) return;
        int const left = x + 1 + softnessX, right = x + softnessX + sizeX,
                  last = x + 2 * softnessX + sizeX + 1;
        for (int y = 0; y < height; ++y) {
            if (!IsEdge(values[At(x, y)], values[At(left, y)], values[At(right, y)], values[At(last, y)]))
                continue;
            Set(left, y, kRed);
            Set(right, y, kGreen);
        }
    }

    bool Has(int x, int y, Mark mark)
    {
        return (std::atomic_ref(marks[At(x, y)]).load(std::memory_order_relaxed) & mark) != 0;
    }

    void FindRectangles(int y)
    {
        if (y >= height - (sizeY + 2 * softnessY + 1)) return;
        int const top = y + sizeY - 1;
        float const wanted = precision * static_cast<float>(2 * sizeX + 2 * sizeY - 4);
        auto const lines = [&](int x) { return (Has(x, y, kRed) ? 1 : 0) + (Has(x, top, kGreen) ? 1 : 0); };
        int along = 0; // over the last sizeX columns
        for (int x = 0; x < std::min(sizeX, width); ++x) along += lines(x);
        for (int x = sizeX; x < width; ++x) {
            along += lines(x) - lines(x - sizeX);
            int sides = 0;
            for (int row = y + 1; row < top; ++row)
                sides += (Has(x - sizeX + 1, row, kRed) ? 1 : 0) + (Has(x, row, kGreen) ? 1 : 0);
            if (static_cast<float>(along + sides) > wanted) Found(x, y);
        }
    }

    /// Marks the rectangle whose lower right corner is x, y, and what the softness adds around it.
    void Found(int x, int y)
    {
        auto const mark = [&](int softX, int softY, Mark inside) {
            for (int row = std::max(y - softY, 0); row < std::min(y + sizeY + softY, height); ++row)
                for (int column = std::max(x - sizeX + 1 - softX, 0); column < std::min(x + 1 + softX, width);
                     ++column)
                    Set(column, row, inside);
        };
        mark(softnessX, softnessY, kAround);
        mark(0, 0, kInside);
    }

    std::vector<float> values;       // of the channel, row by row
    std::vector<std::uint8_t> marks; // sums of Mark
};

OMBRELUNE_TOOL(BF_Find, BF_ThreadedOperator, KEffectFind);

} // namespace ombrelune
