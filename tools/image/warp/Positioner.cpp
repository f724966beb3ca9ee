// Positioner: takes up to four points of the picture to where they belong: moves, turns, slants, or sets it
// into a perspective.

#include <algorithm>
#include <cmath>
#include <memory>

#include "framework/PixelConversion.h"
#include "framework/Registration.h"
#include "image/KMatrix3.h"

namespace ombrelune {

class KEffectPositioner : public KEffectPixel {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "Pos", "Positioner"); }

    KEffectPositioner()
    {
        static constexpr KVector2 quarters[] = {
            {0.25F, 0.25F}, {0.75F, 0.25F}, {0.75F, 0.75F}, {0.25F, 0.75F}};
        // clang-format off
        parameters.AddChapter("Positioner");
        parameters.AddButtons(&type, kPoints - 1, "Type of positioner", "PoTy"_id, KF_AffectInputs, {"One point ", "Two point", "Three point", "Four point"});
        for (std::uint32_t i = 0; i < kPoints; ++i) {
            KString text;
            auto const label = [&](char const* name) { return text.Numbered(name, static_cast<int>(i) + 1, true); };
            parameters.AddPoint(&from[i], quarters[i], label("Source"),      kSource + i, KF_Preview, KPoint_Aspect);
            parameters.AddPoint(&to[i],   quarters[i], label("Destination"), kDestination + i, KF_Preview, KPoint_Aspect);
        }
        parameters.AddImage(&map, "Map (optional)", 2, KF_MainInput);
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        if (id != "PoTy"_id) return messages;
        for (std::uint32_t i = 0; i < kPoints; ++i)
            for (std::uint32_t each : {kSource, kDestination})
                messages->Show(each + i, static_cast<int>(i) <= value.intValue);
        return messages;
    }

    bool Init(KImage* source) override
    {
        if (!KEffectPixel::Init(source)) return false;
        int const points = std::clamp(type, 0, static_cast<int>(kPoints) - 1) + 1;
        if (std::equal(from, from + points, to)) return false;
        toSource = BackFor(points);
        if (map) amount.reset(map->ResizeOf(width, height));
        source->PrepareAreaSampling();
        return true;
    }

    Pixel F(int x, int y, KImage* source) override { return RoundedPixel(FFlt(x, y, source)); }
    FltPixel FFlt(int x, int y, KImage* source) override
    {
        float part = 1.0F;
        FltPixel result;
        if (amount) {
            amount->GetPixel(x, y, result);
            part = std::clamp(PixelGetChannel(result, 4), 0.0F, 1.0F);
        }
        source->GetPixel(x, y, result);
        if (!(part > 0.0F)) return result;
        float px[4], py[4];
        int n = 0;
        for (float const dx : {-0.5F, 0.5F}) {
            for (float const dy : {-0.5F, 0.5F}) {
                float const cx = static_cast<float>(x) + dx, cy = static_cast<float>(y) + dy;
                KVector2 const at = Moved(cx, cy);
                px[n] = cx + part * (at.x - cx);
                py[n++] = cy + part * (at.y - cy);
            }
        }
        source->GetSampleArea(px[0], py[0], px[1], py[1], px[2], py[2], px[3], py[3], result, kEdgeBlack);
        return result;
    }

    void Done(KImage** destination) override
    {
        amount.reset();
        KEffectPixel::Done(destination);
    }

    static constexpr std::uint32_t kPoints = 4;

    int type; // points that count, less one
    KVector2 from[kPoints], to[kPoints];
    KImage* map = nullptr;

private:
    static constexpr std::uint32_t kSource = "PoS0"_id, kDestination = "PoD0"_id;

    /// From places of the result to places of the source, by the first so many points, or by fewer where
    /// those tell nothing: points in a row, or on top of each other.
    KMatrix3 BackFor(int points) const
    {
        KMatrix3 m;
        if (points == 4 && IsCornered(from) && IsCornered(to) && m.MapQuadQuad(to, from) >= 0 && IsFinite(m))
            return m;
        if (points >= 3 && IsTriangle(from) && IsTriangle(to))
            return Frame(to[0], to[1] - to[0], to[2] - to[0]).Inverse() *
                   Frame(from[0], from[1] - from[0], from[2] - from[0]);
        if (points >= 2 && IsApart(from) && IsApart(to)) {
            KVector2 const a = to[1] - to[0], b = from[1] - from[0];
            return Frame(to[0], a, a.Ortho(false)).Inverse() * Frame(from[0], b, b.Ortho(false));
        }
        return KMatrix3().Move(from[0].x - to[0].x, from[0].y - to[0].y);
    }

    /// Takes (1, 0) and (0, 1) to two ways from a point.
    static KMatrix3 Frame(KVector2 const& at, KVector2 const& x, KVector2 const& y)
    {
        return {x.x, x.y, 0, y.x, y.y, 0, at.x, at.y, 1};
    }
    static bool IsApart(KVector2 const* p) { return p[0].Distance(p[1]) > 1e-3F; }
    static bool IsTriangle(KVector2 const* p) { return IsTriangle(p[0], p[1], p[2]); }
    static bool IsTriangle(KVector2 const& a, KVector2 const& b, KVector2 const& c)
    {
        return std::abs((b - a) ^ (c - a)) > 1e-6F;
    }
    /// No three corners in a row.
    static bool IsCornered(KVector2 const* p)
    {
        return IsTriangle(p[0], p[1], p[2]) && IsTriangle(p[1], p[2], p[3]) && IsTriangle(p[2], p[3], p[0]) &&
               IsTriangle(p[3], p[0], p[1]);
    }
    static bool IsFinite(KMatrix3 const& m)
    {
        return std::all_of(std::begin(m.m), std::end(m.m), [](float v) { return std::isfinite(v); });
    }

    KVector2 Moved(float x, float y) const
    {
        float const across = static_cast<float>(width), rows = across * pixelAspect;
        KVector2 const place = toSource * KVector2((x + 0.5F) / across, (y + 0.5F) / rows);
        return {place.x * across - 0.5F, place.y * rows - 0.5F};
    }

    KMatrix3 toSource;
    std::unique_ptr<KImage> amount; // at the source's size
};

OMBRELUNE_TOOL(BF_Positioner, BF_ThreadedOperator, KEffectPositioner);

} // namespace ombrelune
