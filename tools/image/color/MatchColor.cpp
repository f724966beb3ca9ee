// Match Color: bends each channel so that one, two or three given colours become what they should be; alpha
// is kept.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

#include "framework/Registration.h"
#include "host/value/Parallel.h"
#include "image/ColorVectors.h"
#include "image/Power.h"

namespace ombrelune {

class KEffectMatchColor : public KEffectColor {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "MaC", "Match Color", "Color matching");
    }

    KEffectMatchColor()
    {
        static constexpr char const* headings[] = {"Shadows match", "Midtones match", "Highlights match"};
        parameters.AddChapter("Match Color");
        parameters.AddButtons(&colorCount, 2, "Number of colors", "CoNu"_id, KF_AffectInputs,
                              {"Single", "Low and High", "Low, Mid && High"});
        for (unsigned i = 0; i < 3; ++i) {
            float const level = static_cast<float>(i) * 0.5F;
            KColor const grey(level, level, level, 0.0F);
            parameters.AddButtons(&rows[i].match, 0, headings[i], "CTy0"_id + i, 0,
                                  {"Full color", "Color tint", "Luminance"});
            parameters.AddColor(&rows[i].source, grey, "What it is", SourceId(i), 0);
            parameters.AddColor(&rows[i].target, grey, "What it should be", TargetId(i), 0);
        }
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        if (id == "CoNu"_id) {
            for (unsigned row : {1U, 2U}) {
                bool const visible = value.intValue > (row == 1 ? 1 : 0);
                for (std::uint32_t target : {"CTy0"_id + row, SourceId(row), TargetId(row)})
                    messages->Show(target, visible);
            }
        }
        return messages;
    }

    bool Init(KImage* image) override
    {
        Colors is[3], should[3];
        for (int i = 0; i < 3; ++i) {
            KColor const target = Matched(rows[i]);
            is[i] = {rows[i].source.red, rows[i].source.green, rows[i].source.blue};
            should[i] = {target.red, target.green, target.blue};
        }
        for (int c = 0; c < 3; ++c)
            curves[c] = MakeCurve({is[0][c], is[1][c], is[2][c]}, {should[0][c], should[1][c], should[2][c]});
        // Three look-ups cost an integer pixel less than three powers.
        if (data.depth == 1) FillTables();
        return KEffectColor::Init(image);
    }

    void Done(KImage** destination) override
    {
        for (auto& table : tables) table = {};
        KEffectColor::Done(destination);
    }

    KColor32 F(KColor32 const& c) override
    {
        return {tables[0][Row(c.red)], tables[1][Row(c.green)], tables[2][Row(c.blue)], c.alpha};
    }
    KColor F(KColor const& c) override
    {
        return {Bent(curves[0], c.red), Bent(curves[1], c.green), Bent(curves[2], c.blue), c.alpha};
    }

    static constexpr bool kOwnSpan = true;
    void Span(KColor32* colors, int count) override
    {
        std::uint16_t const* const columns[] = {tables[0].data(), tables[1].data(), tables[2].data()};
        for (int i = 0; i < count; ++i) {
            KColor32& c = colors[i];
            c = {columns[0][Row(c.red)], columns[1][Row(c.green)], columns[2][Row(c.blue)], c.alpha};
        }
    }
    void Span(KColor* colors, int count) override
    {
        auto const four = [this](FourColors<Float4>& c) {
            c = {Bent(curves[0], c.red), Bent(curves[1], c.green), Bent(curves[2], c.blue), c.alpha};
        };
        ForFours(colors, count, four, [this](KColor const& c) { return KEffectMatchColor::F(c); });
    }

    struct Match {
        int match; // 0 full color, 1 color tint, 2 luminance
        KColor source, target;
    };

    int colorCount; // 0 single, 1 low and high, 2 low, mid and high
    Match rows[3];

private:
    using Colors = std::array<float, 3>;

    /// One channel's way from what it is to what it should be.
    struct Curve {
        float source, target;         // of the low colour
        float sourceSpan, targetSpan; // from the low to the high colour
        float gain = 1.0F, gamma = 1.0F;
        bool isCurved;

        /// @param power  callable as power(base, gamma)
        template <class F, class Power> F At(F const& v, Power const& power) const
        {
            F const x = v - source, straight = target + x * gain;
            if (!isCurved) return straight;
            F const ratio = x / sourceSpan;
            F const curved = target + (gamma == 1.0F ? ratio : power(ratio, gamma)) * targetSpan;
            return Select(x > F{}, curved, straight);
        }
    };

    // The letter before the last tells source from target, the last one the row.
    static constexpr std::uint32_t SourceId(unsigned row) { return "CSR0"_id + row; }
    static constexpr std::uint32_t TargetId(unsigned row) { return "CDR0"_id + row; }

    static KColor Matched(Match const& row)
    {
        float const d = row.target.Lightness() - row.source.Lightness();
        KColor const shift(d, d, d, 0.0F);
        if (row.match == 1) return row.target - shift;
        if (row.match == 2) return row.source + shift;
        return row.target;
    }

    /// A low and high colour that are equal in a channel tell nothing about its contrast: gain and gamma
    /// stay 1.
    Curve MakeCurve(Colors const& is, Colors const& should) const
    {
        Curve curve;
        curve.source = is[0];
        curve.target = should[0];
        curve.sourceSpan = is[2] - is[0];
        curve.targetSpan = should[2] - should[0];
        curve.isCurved = colorCount == 2 && curve.sourceSpan != 0.0F;
        if (colorCount > 0 && curve.sourceSpan != 0.0F) curve.gain = curve.targetSpan / curve.sourceSpan;

        float const isMiddle = (is[1] - is[0]) / curve.sourceSpan;
        float const shouldMiddle = (should[1] - should[0]) / curve.targetSpan;
        bool const isBetween =
            isMiddle > 0.0F && isMiddle < 1.0F && shouldMiddle > 0.0F && shouldMiddle < 1.0F;
        // Powers need a source that rises; one that falls is taken as straight.
        if (isBetween && curve.sourceSpan > 0.0F) curve.gamma = std::log(shouldMiddle) / std::log(isMiddle);
        return curve;
    }

    template <class F> static F Bent(Curve const& curve, F const& v)
    {
        return curve.At(v, [](F const& base, float gamma) { return Power(base, gamma); });
    }

    static std::size_t Row(int word) { return static_cast<std::size_t>(std::clamp(word, 0, 65535)); }

    void FillTables()
    {
        constexpr int kPart = 1024;
        for (auto& table : tables) table.resize(65536);
        auto const power = [](float base, float gamma) { return std::pow(base, gamma); };
        ParallelFor(65536 / kPart, [&](int part) {
            for (int i = part * kPart; i < (part + 1) * kPart; ++i)
                for (int c = 0; c < 3; ++c) {
                    double const v = curves[c].At(static_cast<float>(i / 65536.0), power) * 65536.0;
                    tables[c][static_cast<std::size_t>(i)] =
                        static_cast<std::uint16_t>(std::clamp(v, 0.0, 65535.0));
                }
        });
    }

    Curve curves[3];
    std::vector<std::uint16_t> tables[3]; // of red, green, blue; apart, so that a core's cache holds them
};

OMBRELUNE_TOOL(BF_MatchColor, BF_ThreadedOperator, KEffectMatchColor);

} // namespace ombrelune
