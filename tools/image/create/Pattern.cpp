// Pattern: grids, triangles and honeycombs of lines, with one or two fill colours.

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numbers>

#include "framework/Registration.h"
#include "image/ColorVectors.h"
#include "image/KMatrix4.h"

namespace ombrelune {

namespace {

constexpr double kTurn = std::numbers::pi / 6.0; // 30 degrees

/// Truncated; limited where an int would end, far beyond any picture.
int Whole(float v) { return static_cast<int>(v > -1e9F ? std::min(v, 1e9F) : -1e9F); }

/// The size of what lies behind the point.
Float4 Fractions(Float4 v) { return Absolute(v - WholePart(v)); }

bool IsEven(int n) { return (n & 1) == 0; }

} // namespace

class KEffectPattern : public KEffectPosition {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "Pat", "Pattern",
                      "Creation of a wild collection of patterns (assuming you think grids are wild)");
    }
    static char const* Category() { return "Ombrelune\\Image Create"; }

    KEffectPattern()
    {
        unsigned const turns = KF_Preview | KF_PreviewCentered | KF_PreviewFollow;
        // clang-format off
        parameters.AddChapter("Pattern");
        parameters.AddButtons(&type, kGrid, "Type", "Type"_id, 0, {"Triangles", "Grid", "Honeycomb"});
        parameters.AddPoint (&center, {0.5F, 0.5F}, "Center", "Cent"_id, KF_Preview, KPoint_Aspect);
        parameters.AddSlider(&size, 0.1F, "Size", "Size"_id, KF_SoftMax, 0.0, 1.0);
        parameters.AddAngle (&angleX, 0.0F, "Rotation X", "AngX"_id, KF_HiddenToo, KAngle_Radians);
        parameters.AddAngle (&angleY, 0.0F, "Rotation Y", "AngY"_id, KF_HiddenToo, KAngle_Radians);
        parameters.AddAngle (&angleZ, 0.0F, "Rotation",   "AngZ"_id, turns,        KAngle_Radians);
        parameters.AddSlider(&aspect,    1.0F, "Aspect",    "Aspt"_id, KF_SoftMax, 0.001, 5.0);
        parameters.AddSlider(&thickness, 0.1F, "Thickness", "Thic"_id, KF_SoftMax, 0.0, 1.0);
        parameters.AddScrew (&offset,    0.0F, "Offset",    "Offs"_id, KF_SoftMin | KF_SoftMax, 0.0, 1.0);
        parameters.AddColor (&color, {1.0F, 1.0F, 1.0F, 1.0F}, "Color", "Colo"_id, 0);
        parameters.AddButtons(&repeat, 0, "Repeat", "Rept"_id, KF_AffectInputs, {"Ad infinitum", "Numbered"});
        parameters.AddSliderInt(&count, 2, "Count", "RepC"_id, KF_SoftMax, 1, 16);
        parameters.AddButtons(&fill, 0, "Fill", "Fill"_id, KF_AffectInputs, {"Solid", "Checkers"});
        parameters.AddColor (&fill1, {0.2F, 0.4F, 0.6F, 1.0F}, "Color Fill 1", "Cl00"_id, 0);
        parameters.AddColor (&fill2, {0.2F, 0.6F, 0.4F, 1.0F}, "Color Fill 2", "Cl10"_id, 0);
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        bool const isOn = value.intValue > 0;
        if (id == "Fill"_id) ShowColor(*messages, "Cl10"_id, isOn);
        if (id == "Rept"_id) messages->Show("RepC"_id, isOn);
        return messages;
    }

    bool GetFlag(KProcessFlag flag) override { return flag == KPF_Source; }

    bool Init(KImage* source) override
    {
        half = thickness / 2.0F;
        float const scale = 1.0F / std::max(size, 1e-6F);
        matrix.Identity();
        matrix.Scale(scale, scale * aspect, 1.0F);
        matrix.Rotate(angleX, angleY, angleZ, 0);
        matrix.Move(-center.x, -center.y, 0.0F);

        auto const cosine = static_cast<float>(std::cos(kTurn)), sine = static_cast<float>(std::sin(kTurn));
        auto const cross = static_cast<float>(1.0 / (2.0 * std::sin(kTurn) / std::cos(kTurn)));
        directionsX = Float4{0.0F, cosine, -cosine, 0.0F};
        directionsY = Float4{-1.0F, sine, sine, -1.0F};
        for (int i = 0; i < 3; ++i)
            crosses[i] = cross * KVector2(directionsX[i], directionsY[i]).Ortho(false);
        KColor const colors[kParts] = {{0.0F, 0.0F, 0.0F, 0.0F}, color, fill1, fill2};
        for (int part = 0; part < kParts; ++part) {
            PixelFromColor(integers[part], colors[part]);
            PixelFromColor(floats[part], colors[part]);
        }
        return KEffectPosition::Init(source);
    }

    Pixel F(Pixel& source, KVector2& position) override { return Painted(source, position, integers); }
    FltPixel F(FltPixel& source, KVector2& position) override { return Painted(source, position, floats); }

    int type;
    KVector2 center;
    float size; // of a cell, in widths of the picture
    float angleX, angleY, angleZ;
    float aspect, thickness, offset;
    KColor color;
    int repeat; // 0 for ever, 1 numbered
    int count;
    int fill; // 0 solid, 1 checkers
    KColor fill1, fill2;

private:
    enum Type { kTriangles, kGrid, kHoneycomb };

    /// What a place belongs to.
    enum Part { kNone, kLine, kFill1, kFill2, kParts };

    template <class Record>
    Record Painted(Record const& source, KVector2 const& position, Record const (&colors)[kParts]) const
    {
        KVector2 const p = matrix * position;
        Part const part = type == kTriangles ? OfTriangles(p) : type == kGrid ? OfGrid(p) : OfHoneycomb(p);
        Record result = source;
        for (int c = 0; c < 4; ++c) result.word[c] = colors[part].word[c];
        return result;
    }

    static void ShowColor(KMessageList& messages, std::uint32_t id, bool isShown)
    {
        for (std::uint32_t below : {0U, 11U, 16U, 17U}) messages.Show(id - below, isShown);
    }

    // Up to four distances at a time: those of a place along both axes or along the three directions.

    Float4 Moved(Float4 const& v) const { return Select(v <= 0.0F, v + offset, v - offset); }
    Int4 AreLines(Float4 const& fractions) const { return (fractions <= half) | (fractions >= 1.0F - half); }
    static bool IsAny(Int4 lanes) { return !IsZero(reinterpret_cast<UInt4>(lanes)); }
    /// Whether a numbered pattern has ended before one of these places.
    bool IsBeyond(Float4 const& v) const
    {
        return repeat == 1 && IsAny(WholePart(v) >= static_cast<float>(count));
    }

    Part OfGrid(KVector2 const& p) const
    {
        Float4 const v{p.x, p.y, p.x, p.y};
        if (IsBeyond(Absolute(v))) return kNone;
        Float4 const r = Moved(v);
        if (IsAny(AreLines(Fractions(r)))) return kLine;
        if (fill == 0) return kFill1;
        int const n = Whole(r[0]) + Whole(r[1]) + (r[0] < 0.0F ? 1 : 0) + (r[1] < 0.0F ? 1 : 0);
        return IsEven(n) ? kFill2 : kFill1;
    }

    Part OfTriangles(KVector2 const& p) const
    {
        Float4 const q = p.x * directionsX + p.y * directionsY - 1.0F / 3.0F;
        if (IsBeyond(-q)) return kNone;
        Float4 const r = Moved(q);
        if (IsAny(AreLines(Fractions(r)))) return kLine;
        if (fill == 0) return kFill1;
        int n = 0;
        for (int i = 0; i < 3; ++i) n += std::abs(Whole(r[i])) + (r[i] < 0.0F ? 1 : 0);
        return IsEven(n) ? kFill2 : kFill1;
    }

    Part OfHoneycomb(KVector2 const& p) const
    {
        Float4 const s = p.x * directionsX + p.y * directionsY;
        if (IsBeyond(Absolute(s))) return kNone;
        Int4 const lines = AreLines(Fractions(Moved(s)));
        if (!IsAny(lines)) return kFill1;
        // Every third stretch of a line is a side of a cell; lines take turns.
        for (int i = 0; i < 3; ++i) {
            float const u = std::abs(p * crosses[i]) + (IsEven(Whole(std::abs(s[i]) + 0.5F)) ? 2.0F : 0.5F);
            if (lines[i] != 0 && Whole(u) % 3 == 0) return kLine;
        }
        return kFill1;
    }

    float half = 0.0F;
    KMatrix4 matrix;                 // from places to cells
    Float4 directionsX, directionsY; // the last lane is the first again
    KVector2 crosses[3];
    Pixel integers[kParts];
    FltPixel floats[kParts];
};

OMBRELUNE_TOOL(BF_Pattern, BF_SourceOperator, KEffectPattern);

} // namespace ombrelune
