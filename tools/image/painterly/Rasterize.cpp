// Rasterize: a turned grid of marks whose size, angle and aspect follow the picture, as a half-tone.

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "framework/Registration.h"
#include "host/value/Parallel.h"
#include "image/KRandomStream.h"

namespace ombrelune {

class KEffectRasterize : public KEffectThreads {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "Ras", "Rasterize", "Half-tone style rasterize");
    }

    KEffectRasterize()
    {
        // clang-format off
        parameters.AddChapter("Raster");
        parameters.AddSliderSeed(&seed, "Random Seed", "SEED"_id, 0);
        parameters.AddButtonsChannel(&channel, 4, "Channel", "cCha"_id, 0);
        parameters.AddPoint (&center, {0.5F, 0.5F}, "Center", "Cent"_id, KF_Preview | KF_MainInput, KPoint_Normal);
        parameters.AddSlider(&size,   0.01F, "Size",   "sSiz"_id, KF_SoftMax, 0.0001, 0.1);
        parameters.AddAngle (&angle,  0.0F,  "Angle",  "Angl"_id, KF_Preview | KF_MainInput | KF_PreviewCentered | KF_PreviewFollow, KAngle_Radians);
        parameters.AddSlider(&aspect, 1.0F,  "Aspect", "sAsp"_id, KF_SoftMax, 0.001, 5.0);
        parameters.AddSlider(&gridX,  2.0F,  "Grid Size X", "sGrX"_id, KF_SoftMax, 0.0, 5.0);
        parameters.AddSlider(&gridY,  2.0F,  "Grid Size Y", "sGrY"_id, KF_SoftMax, 0.0, 5.0);
        parameters.AddChapter("Shape");
        parameters.AddButtons(&shape, 0, "Type", "cSha"_id, 0, {"Circle", "Square", "Diamond", "Shape"});
        parameters.GroupStart("Shape Position", "posi"_id, 0);
        parameters.AddSlider  (&jitterX, 0.0F, "Jitter position X", "JPoX"_id, KF_SoftMax, 0.0, 1.0);
        parameters.AddSlider  (&jitterY, 0.0F, "Jitter position Y", "JPoY"_id, KF_SoftMax, 0.0, 1.0);
        parameters.AddCheckbox(&samplesGrid, true, "Jitter position after sampling.", "JPoA"_id, 0);
        parameters.GroupEnd();
        parameters.GroupStart("Shape Size", "size"_id, 0);
        parameters.AddSlider(&black.size, 0.0F, "Size black", "sSSB"_id, KF_SoftMax, 0.0, 5.0);
        parameters.AddSlider(&white.size, 1.0F, "Size white", "sSSW"_id, KF_SoftMax, 0.0, 5.0);
        parameters.GroupEnd();
        parameters.GroupStart("Shape Angle", "angl"_id, 0);
        parameters.AddCheckbox (&horizontal, true, "Keep shape horizontal", "cSHo"_id, KF_AffectInputs);
        parameters.AddCheckbox (&locksAngle, true, "Lock black/white angle.", "cAnS"_id, KF_AffectInputs | KF_Hidden);
        parameters.AddAngle    (&black.angle, 0.0F, "Angle black", "cAnB"_id, KF_Preview | KF_PreviewCentered, KAngle_Radians);
        parameters.AddAngle    (&white.angle, 0.0F, "Angle white", "cAnW"_id, KF_Preview | KF_PreviewCentered, KAngle_Radians);
        parameters.AddAngle    (&jitterAngle, 0.0F, "jitter angle", "JAng"_id, 0, KAngle_Radians);
        parameters.AddSliderInt(&jitterSteps, 0, "Jitter angle step", "JAnS"_id, KF_SoftMax, 0, 8);
        parameters.GroupEnd();
        parameters.GroupStart("Shape Aspect", "aspe"_id, 0);
        parameters.AddCheckbox(&locksAspect, true, "Lock black/white aspect.", "cAsS"_id, KF_AffectInputs);
        parameters.AddSlider  (&black.aspect, 1.0F, "Aspect black", "cAsB"_id, KF_SoftMax, 0.0, 5.0);
        parameters.AddSlider  (&white.aspect, 1.0F, "Aspect white", "cAsW"_id, KF_SoftMax, 0.0, 5.0);
        parameters.GroupEnd();
        parameters.AddChapter("Color");
        parameters.AddButtons (&colorSource, 0, "Shape color", "cShC"_id, KF_AffectInputs, {"Solid", "Image", "External"});
        parameters.AddColor   (&color, {1.0F, 1.0F, 1.0F, 1.0F}, "Shape Color", "ShCo"_id, 0);
        parameters.AddButtons (&overlap, 0, "Overlap", "cOve"_id, 0, {"Maximum", "Add", "Multiply", "Screen"});
        parameters.AddStandard(&superSample, 1, KPS_SuperSample, 0);
        parameters.AddImage   (&external, "External shape", 2, KF_MainInput);
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        bool const isOpen = value.intValue == 0;
        if (id == "cAnS"_id) {
            messages->Show("cAnW"_id, isOpen);
            messages->SetName("cAnB"_id, isOpen ? "Angle black" : "Angle");
        }
        if (id == "cAsS"_id) {
            messages->Show("cAsW"_id, isOpen);
            messages->SetName("cAsB"_id, isOpen ? "Aspect black" : "Aspect");
        }
        if (id == "cSHo"_id) {
            messages->Show("cAnS"_id, isOpen);
            messages->Show("cAnB"_id, isOpen);
            if (!isOpen) messages->Show("cAnW"_id, false);
        }
        if (id == "cShC"_id) messages->Show("ShCo"_id, isOpen);
        return messages;
    }

    bool Init(KImage* source) override
    {
        if (!KEffectThreads::Init(source) || size == 0.0F) return false;
        float const ratio = frameAspect * aspect;
        float const whiteAspect = locksAspect ? black.aspect : white.aspect;
        sizeBlack = {black.size * size, black.aspect * black.size * size * ratio};
        sizeWhite = {white.size * size, whiteAspect * white.size * size * ratio};
        angleBlack = black.angle + angle;
        angleWhite = locksAngle ? angleBlack : white.angle + angle;
        step = {size * 2.0F, size * 2.0F * ratio};
        return true;
    }

    int StepCount() override { return 2; }

    /// Step 0 clears; step 1 goes through the grid by some rows at a time, which bounds the memory: first the
    /// marks of each row, then bands of the picture, each of which draws all marks in the same order.
    void F(int stage, int, KImage* source, KImage* destination) override
    {
        if (stage == 0) return destination->Clear();
        int const firstRow = GridIndex(gridY * -0.5F / step.y);
        int const rowCount = std::min(2 * kMostSteps, TruncateToInt(gridY / step.y));
        int const columns = GridIndex(gridX * 0.5F / step.x) - GridIndex(gridX * -0.5F / step.x) + 1;
        int const batch = std::max(1, kMarksAtATime / columns);
        // Marks beyond this many samples of each pixel are left out.
        double left = 4096.0 * width * height;
        for (int row = 0; row < rowCount && left > 0.0; row += batch) {
            std::vector<std::vector<Mark>> marks(static_cast<std::size_t>(std::min(batch, rowCount - row)));
            ParallelFor(static_cast<int>(marks.size()), [&](int i) {
                auto& line = marks[static_cast<std::size_t>(i)];
                if (data.depth == 2) MakeRow<FltPixel>(firstRow + row + i, *source, line);
                else MakeRow<Pixel>(firstRow + row + i, *source, line);
            });
            for (auto& line : marks) {
                auto const end = std::find_if(line.begin(), line.end(), [&](Mark const& mark) {
                    left -= Work(mark);
                    return left <= 0.0;
                });
                line.erase(end, line.end());
            }
            DrawMarks(marks, *destination);
        }
    }

    /// What a mark has on black and on white.
    struct Extreme {
        float size, angle, aspect;
    };

    int seed;
    int channel;
    KVector2 center; // parts of the picture
    float size;      // widths of the picture
    float angle;     // radians
    float aspect;
    float gridX, gridY; // parts of the picture
    int shape;          // 0 circle, 1 square, 2 diamond, 3 the external picture
    float jitterX, jitterY;
    bool samplesGrid; // and not the place that jitter gives
    Extreme black, white;
    bool horizontal, locksAngle, locksAspect;
    float jitterAngle;
    int jitterSteps;
    int colorSource; // 0 solid, 1 image, 2 external
    KColor color;
    int overlap; // as KImage::DrawDot
    int superSample;
    KImage* external;

private:
    static constexpr int kMostSteps = 4096; // of the grid to either side of its centre
    static constexpr int kMarksAtATime = 65536;
    static constexpr int kBand = 32; // rows

    struct Mark {
        KVector2 center, size;
        float angle;
        KColor color;
    };

    static int GridIndex(float steps) { return std::clamp(TruncateToInt(steps), -kMostSteps, kMostSteps); }

    /// How far a mark reaches from its centre, however it is turned.
    KVector2 Reach(Mark const& mark) const
    {
        if (horizontal) return mark.size;
        float const longer = 1.5F * std::max(mark.size.x, mark.size.y);
        return {longer, longer};
    }

    /// Rough number of samples that it takes; at least 1.
    double Work(Mark const& mark) const
    {
        KVector2 const reach = Reach(mark);
        double const across = std::min(2.0 * reach.x * width + 2.0, 1.0 * width);
        double const up = std::min(2.0 * reach.y * height + 2.0, 1.0 * height);
        return std::max(1.0, across * up * superSample * superSample);
    }

    /// The marks of a row of the grid that reach into the picture, by a random stream of the row's own.
    template <class Record> void MakeRow(int row, KImage const& source, std::vector<Mark>& marks) const
    {
        KRandomStream random(static_cast<unsigned>(row + seed));
        float const sine = std::sin(angle), cosine = std::cos(angle);
        float const down = step.y * static_cast<float>(row);
        int const last = GridIndex(gridX * 0.5F / step.x);
        for (int i = GridIndex(gridX * -0.5F / step.x); i <= last; ++i) {
            float const along = step.x * static_cast<float>(i);
            KVector2 const grid(center.x + along * cosine + down * sine / frameAspect,
                                center.y + down * cosine - along * sine * frameAspect);
            float const jx = (random.Random(1.0F) - 0.5F) * jitterX * step.x;
            float const jy = (random.Random(1.0F) - 0.5F) * jitterY * step.y;
            float const turn = TurnOf(random);
            Mark mark;
            mark.center = grid + KVector2(jx, jy);
            if (!IsNear(mark.center.x, sizeWhite.x) || !IsNear(mark.center.y, sizeWhite.y)) continue;
            KVector2 const& place = samplesGrid ? grid : mark.center;
            Record pixel;
            source.GetPixelD(TruncateToInt(place.x * static_cast<float>(width - 1)),
                             TruncateToInt(place.y * static_cast<float>(height - 1)), pixel);
            float const v = PixelGetChannel(pixel, channel);
            mark.size = sizeBlack + v * (sizeWhite - sizeBlack);
            mark.angle = turn - (angleBlack + (angleWhite - angleBlack) * v);
            mark.color = colorSource == 1 ? KColor(pixel) : color;
            if (mark.size.x > 0.0F && mark.size.y > 0.0F) marks.push_back(mark);
        }
    }

    float TurnOf(KRandomStream& random) const
    {
        if (jitterSteps <= 0) return (random.Random(1.0F) - 0.5F) * 2.0F * jitterAngle;
        auto const drawn = static_cast<float>(random.Next() % (static_cast<long>(jitterSteps) + 1));
        return -jitterAngle + drawn * 2.0F * jitterAngle / static_cast<float>(jitterSteps);
    }

    static bool IsNear(float place, float margin) { return place >= -margin && place <= margin + 1.0F; }

    void DrawMarks(std::vector<std::vector<Mark>> const& marks, KImage& destination) const
    {
        ParallelFor((height + kBand - 1) / kBand, [&](int band) {
            KImageRows const rows{band * kBand, std::min((band + 1) * kBand, height)};
            for (auto const& line : marks)
                for (Mark const& mark : line)
                    destination.DrawDot(mark.center, mark.size, mark.angle, horizontal, superSample, shape,
                                        colorSource, overlap, mark.color, external, &rows);
        });
    }

    KVector2 sizeBlack, sizeWhite, step; // parts of the picture
    float angleBlack = 0.0F, angleWhite = 0.0F;
};

OMBRELUNE_TOOL(BF_Rasterize, BF_ThreadedOperator, KEffectRasterize);

} // namespace ombrelune
