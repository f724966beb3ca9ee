// Contour: lines where a channel passes its threshold, or a level at either side of it.

#include <cmath>
#include <memory>

#include "framework/Registration.h"
#include "image/Saturate.h"

namespace ombrelune {

class KEffectContour : public KEffectPosition {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "Ctr", "Contour", "Draws a nice, anti-aliased contour around an image");
    }

    KEffectContour()
    {
        // clang-format off
        constexpr unsigned soft = KF_SoftMin | KF_SoftMax;
        parameters.AddChapter("Contour");
        parameters.AddCheckbox(&locksWidth, true, "Lock horizontal and vertical width", "CoWL"_id, KF_AffectInputs);
        parameters.AddSlider  (&across, 0.01F, "Width",          "CoWH"_id, KF_SoftMax, 0.0, 0.1);
        parameters.AddSlider  (&up,     0.01F, "Width Vertical", "CoWV"_id, KF_SoftMax, 0.0, 0.1);
        parameters.AddCheckbox(&locksThreshold, true, "Lock threshold for all channels", "CoTL"_id, KF_AffectInputs);
        parameters.AddScrew   (&thresholds[0], 0.5F, "Threshold",       "CoTR"_id, soft,             0.0, 1.0);
        parameters.AddScrew   (&thresholds[1], 0.5F, "Threshold Green", "CoTG"_id, soft | KF_Hidden, 0.0, 1.0);
        parameters.AddScrew   (&thresholds[2], 0.5F, "Threshold Blue",  "CoTB"_id, soft | KF_Hidden, 0.0, 1.0);
        parameters.AddScrew   (&thresholds[3], 0.5F, "Threshold Alpha", "CoTA"_id, soft | KF_Hidden, 0.0, 1.0);
        parameters.AddCheckbox(&locksLevels, true, "Lock levels for all channels", "CoLL"_id, KF_AffectInputs);
        parameters.AddSlider  (&levels[0], 5.0F, "Levels",       "CoLR"_id, KF_SoftMax,             0.0, 20.0);
        parameters.AddSlider  (&levels[1], 5.0F, "Levels Green", "CoLG"_id, KF_SoftMax | KF_Hidden, 0.0, 20.0);
        parameters.AddSlider  (&levels[2], 5.0F, "Levels Blue",  "CoLB"_id, KF_SoftMax | KF_Hidden, 0.0, 20.0);
        parameters.AddSlider  (&levels[3], 5.0F, "Levels Alpha", "CoLA"_id, KF_SoftMax | KF_Hidden, 0.0, 20.0);
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        bool const isOpen = value.intValue == 0;
        if (id == "CoWL"_id) {
            messages->SetName("CoWH"_id, isOpen ? "Width Horizontal" : "Width");
            messages->Show("CoWV"_id, isOpen);
        }
        if (id == "CoTL"_id) {
            messages->SetName("CoTR"_id, isOpen ? "Threshold Red" : "Threshold");
            for (std::uint32_t each : {"CoTG"_id, "CoTB"_id, "CoTA"_id}) messages->Show(each, isOpen);
        }
        if (id == "CoLL"_id) {
            messages->SetName("CoLR"_id, isOpen ? "Levels Red" : "Levels");
            for (std::uint32_t each : {"CoLG"_id, "CoLB"_id, "CoLA"_id}) messages->Show(each, isOpen);
        }
        return messages;
    }

    bool Init(KImage* source) override
    {
        if (!KEffectPosition::Init(source)) return false;
        static constexpr int words[] = {kChannelRed, kChannelGreen, kChannelBlue, kChannelAlpha};
        for (int c = 0; c < 4; ++c) {
            int const word = words[c];
            double const threshold = thresholds[locksThreshold ? 0 : c];
            float const step = SaturatedFloat(1.0 / levels[locksLevels ? 0 : c]);
            bands[word] = {threshold, step};
            bands16[word] = {TruncateToInt(threshold * 65535.0), TruncateToInt(step * 65535.0)};
        }
        float const vertical = locksWidth ? across : up;
        half = {across * 0.5F, vertical * 0.5F};
        softened.reset(source->BlurOf(across, vertical, 4, 0xF, 1.0, 1.0));
        return softened != nullptr;
    }

    Pixel F(Pixel& source, KVector2& position) override
    {
        Draw(source, position, bands16, 65535U);
        return source;
    }
    FltPixel F(FltPixel& source, KVector2& position) override
    {
        Draw(source, position, bands, 1.0F);
        return source;
    }

    void Done(KImage** destination) override
    {
        softened.reset();
        KEffectPosition::Done(destination);
    }

    bool locksWidth;
    float across, up; // widths of the picture
    bool locksThreshold;
    float thresholds[4]; // red, green, blue, alpha
    bool locksLevels;
    float levels[4];

private:
    /// A threshold and the distance of the levels from it, in the numbers of a depth.
    template <class Number> struct Bands {
        Number threshold{}, step{};

        /// Above 0 in every other band, so that it changes its sign at the threshold and between levels.
        bool IsHigh(Number v) const
        {
            Number const a = v < threshold ? threshold - v : v - threshold;
            // Whole numbers keep the truncation of a division; doubles are cut.
            double const q = step > 0 ? std::trunc(static_cast<double>(a) / static_cast<double>(step)) : 1.0;
            double const l = static_cast<double>(step), d = static_cast<double>(a);
            double band;
            switch (static_cast<int>(std::isfinite(q) ? std::fmod(q, 4.0) : 0.0)) {
            case 0: band = d - q * l; break;
            case 1: band = (3.0 - q) * l - d; break;
            case 2: band = (4.0 - q) * l - d; break;
            default: band = d - (q + 1.0) * l; break;
            }
            return (v < threshold ? -band : band) > 0.0;
        }
    };

    template <class Record, class Number, class Word>
    void Draw(Record& pixel, KVector2 const& p, Bands<Number> const* channels, Word full) const
    {
        auto const sample = [&](float x, float y) {
            Record taken;
            softened->SamplePixelD(x * static_cast<float>(width),
                                   y * static_cast<float>(height) * frameAspect, taken);
            return taken;
        };
        Record const above = sample(p.x, p.y - half.y), below = sample(p.x, p.y + half.y);
        Record const left = sample(p.x - half.x, p.y), right = sample(p.x + half.x, p.y);
        for (int c = 0; c < 4; ++c) {
            auto const isHigh = [&](Record const& taken) {
                return channels[c].IsHigh(static_cast<Number>(taken.word[c]));
            };
            pixel.word[c] = isHigh(above) != isHigh(below) || isHigh(left) != isHigh(right) ? full : Word{0};
        }
    }

    Bands<double> bands[4]; // in the order of a pixel's words
    Bands<std::int64_t> bands16[4];
    KVector2 half; // of a line
    std::unique_ptr<KImage> softened;
};

OMBRELUNE_TOOL(BF_Contour, BF_ThreadedOperator, KEffectContour);

} // namespace ombrelune
