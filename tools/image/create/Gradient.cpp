// Gradient: a linear or radial gradient or the cone of a light, merged with the image, added or subtracted.

#include <algorithm>
#include <cmath>
#include <numbers>
#include <type_traits>

#include "framework/Registration.h"
#include "image/ColorVectors.h"

namespace ombrelune {

namespace {

constexpr float kLeast = 1e-5F; // what is divided by

/// What a gradient ends at, and how it is combined, in the words of a record.
struct Shade {
    Float4 start, end; // colours by word
    float offset;
};

Float4 WordsOf(Pixel const& p)
{
    return __builtin_convertvector(reinterpret_cast<Int4>(LoadUInt4(p.word)), Float4);
}
Float4 WordsOf(FltPixel const& p) { return LoadFloat4(p.word); }

/// Integers are limited before they are truncated.
void SetWords(Pixel& p, Float4 v)
{
    Float4 const zero{};
    Float4 const limited = Smaller(Select(v > zero, v, zero), zero + 65535.0F);
    Store(reinterpret_cast<UInt4>(__builtin_convertvector(limited, Int4)), p.word);
}
void SetWords(FltPixel& p, Float4 v) { Store(v, p.word); }

} // namespace

class KEffectGradient : public KEffectPosition {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(
            kind, "Gra", "Gradient",
            "Creation of gradients: linear, radial and spotlight shapes can be created an combined with "
            "the background image");
    }

    KEffectGradient()
    {
        // clang-format off
        parameters.AddChapter("Gradient");
        parameters.AddButtons(&type,    kLinear, "Type",    "cTyp"_id, KF_AffectInputs, {"Linear", "Radial", "Light"});
        parameters.AddButtons(&combine, kMerge,  "Combine", "cCom"_id, KF_AffectInputs, {"Merge", "Add", "Subtract"});
        parameters.AddSlider(&amount, 1.0F, "Negative                   signed                   full", "sCom"_id, 0, 0.0, 1.0);
        parameters.AddPoint(&start, {0.25F, 0.5F}, "Start", "oSta"_id, KF_Preview, KPoint_Aspect);
        parameters.AddPoint(&end,   {0.75F, 0.5F}, "End",   "oEnd"_id, KF_Preview | KF_PreviewFollow, KPoint_Aspect);
        parameters.AddSlider(&startOffset, 0.0F, "Start offset", "sStO"_id, 0, 0.0, 1.0);
        parameters.AddSlider(&midpoint,    0.5F, "Midpoint",     "GrMi"_id, 0, 0.0, 1.0);
        parameters.AddCheckbox(&isRelative, false, "End relative to start position", "cRel"_id, 0);
        parameters.AddSlider(&lightZ,        0.5F,  "Light Z distance",         "sLiD"_id, 0, 0.0, 1.0);
        parameters.AddSlider(&lightCone,     30.0F, "Light cone angle",         "sLiC"_id, 0, 0.0, 180.0);
        parameters.AddSlider(&lightFade,     0.0F,  "Light fade with distance", "sLiF"_id, 0, 0.0, 1.0);
        parameters.AddSlider(&lightFadeTurn, 0.0F,  "Light fade with angle",    "sLiA"_id, 0, 0.0, 1.0);

        parameters.AddChapter("Colors");
        parameters.AddColor (&startColor, {1.0F, 1.0F, 1.0F, 1.0F}, "Start Color", "CSRd"_id, 0);
        parameters.AddSlider(&startTransparency, 0.0F, "Start Transparency", "sStT"_id, 0, 0.0, 1.0);
        parameters.AddColor (&endColor,   {0.0F, 0.0F, 0.0F, 0.0F}, "End Color",   "CERd"_id, 0);
        parameters.AddSlider(&endTransparency,   0.0F, "End Transparency",   "sEnT"_id, 0, 0.0, 1.0);
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        if (id == "cCom"_id) messages->Show("sCom"_id, value.intValue > kMerge);
        if (id == "cTyp"_id)
            for (std::uint32_t each : {"sLiD"_id, "sLiC"_id, "sLiF"_id, "sLiA"_id})
                messages->Show(each, value.intValue > kRadial);
        return messages;
    }

    bool Init(KImage* source) override
    {
        last = isRelative ? end + start : end;
        axis = last - start;
        lengthSquared = axis * axis;
        length = std::sqrt(lengthSquared);
        if (type == kLight) length = lengthSquared = lightCone * std::numbers::pi_v<float> / 180.0F;
        divisor = std::max(length, kLeast);
        rise = 1.0F / std::max(1.0F - startOffset, kLeast);
        lightReach = std::sqrt(std::max(axis * axis + lightZ * lightZ, kLeast));
        fadeEnd = lightFade > kLeast ? 1.0F / lightFade - 1.0F : 0.0F;

        scale = amount <= 0.5F ? 2.0F * amount + 1.0F : 3.0F - 2.0F * amount;
        Pixel from, to;
        FltPixel fromFlt, toFlt;
        PixelFromColor(from, startColor);
        PixelFromColor(to, endColor);
        PixelFromColor(fromFlt, startColor);
        PixelFromColor(toFlt, endColor);
        integers = {WordsOf(from), WordsOf(to),
                    static_cast<float>(static_cast<int>((1.0F - amount) * 65535.0))};
        floats = {WordsOf(fromFlt), WordsOf(toFlt), 1.0F - amount};
        return KEffectPosition::Init(source);
    }

    Pixel F(Pixel& source, KVector2& position) override { return Combined(source, position, integers); }
    FltPixel F(FltPixel& source, KVector2& position) override { return Combined(source, position, floats); }

    int type, combine;
    float amount; // 1 adds the colour, 0.5 makes grey neutral at double gain, 0 takes 1 off first
    KVector2 start, end;
    float startOffset, midpoint;
    bool isRelative;
    float lightZ, lightCone, lightFade, lightFadeTurn; // the cone in degrees
    KColor startColor, endColor;
    float startTransparency, endTransparency;

private:
    enum Type { kLinear, kRadial, kLight };
    enum Combine { kMerge, kAdd, kSubtract };

    template <class Record>
    Record Combined(Record& source, KVector2 const& position, Shade const& shade) const
    {
        float const w = StartPart(position), rest = 1.0F - w;
        float const transparency = w * startTransparency + rest * endTransparency;
        float const k = 1.0F - transparency;
        float const gain = combine == kSubtract ? -scale * k : scale * k;
        Float4 const color = w * shade.start + rest * shade.end, old = WordsOf(source);
        Record result = source;
        SetWords(result,
                 combine == kMerge ? transparency * old + k * color : old + gain * (color - shade.offset));
        return result;
    }

    /// How much of the start colour a place has.
    float StartPart(KVector2 const& p) const
    {
        KVector2 const fromStart = p - start;
        float distance = 0.0F; // of a light
        float v;
        if (type == kLinear) v = axis * fromStart;
        else if (type == kRadial) v = fromStart * fromStart;
        else v = LightAngle(p, distance);

        if (v > lengthSquared) return 0.0F;
        if (v < 0.0F) return 1.0F;
        float const r = type == kLinear   ? (length == 0.0F ? 1000000.0F : v / length)
                        : type == kRadial ? std::sqrt(v)
                                          : v;
        float w = (1.0F - r / divisor) * rise;
        if (w > 1.0F) w = 1.0F;
        else if (midpoint != 0.5F) w = (2.0F * midpoint - 1.0F) * w * w + 2.0F * (1.0F - midpoint) * w;
        if (type == kLight) w = Faded(w, distance);
        return std::max(0.0F, w);
    }

    /// Angle between the way from the light to a place and the axis; the light stands above the end and
    /// points at the start.
    float LightAngle(KVector2 const& p, float& distance) const
    {
        KVector2 const fromEnd = p - last;
        distance = std::sqrt(std::max(fromEnd * fromEnd + lightZ * lightZ, kLeast));
        float const c = (lightZ * lightZ - axis * fromEnd) / (lightReach * distance);
        return std::acos(std::min(std::max(c, -1.0F), 1.0F));
    }

    float Faded(float w, float distance) const
    {
        if (lightFade > kLeast) w = distance <= fadeEnd ? w * (1.0F - distance / fadeEnd) : 0.0F;
        if (lightFadeTurn != 0.0F) w *= lightFadeTurn * (lightZ / distance - 1.0F) + 1.0F;
        return w;
    }

    KVector2 last, axis;
    float lengthSquared = 0.0F, length = 0.0F, divisor = 1.0F; // of a light the cone in radians
    float rise = 1.0F, lightReach = 1.0F, fadeEnd = 0.0F, scale = 1.0F;
    Shade integers, floats;
};

OMBRELUNE_TOOL(BF_Gradient, BF_ThreadedOperator, KEffectGradient);

} // namespace ombrelune
