// Kaleidoscope: fills the plane with mirrored copies of a triangle of the picture, or folds its angles and
// distances.

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include "framework/Registration.h"
#include "image/KMatrix3.h"

namespace ombrelune {

namespace {

/// A length to fold by; its inverse stands by, since divisions are what a fold would cost.
struct Part {
    float size = 0.0F, inverse = 0.0F;

    Part() = default;
    explicit Part(float s) : size(s), inverse(1.0F / s) {}

    /// Brings v into 0 to size by whole steps.
    /// @return  how many sizes below v that is, a whole number
    float Fold(float& v) const
    {
        float const count = std::floor(v * inverse);
        v -= count * size;
        return count;
    }
};

bool IsOdd(float count) { return count - 2.0F * std::floor(count * 0.5F) == 1.0F; }

/// Folds, with every other part mirrored on request.
float Folded(float v, Part const& part, bool pingPong)
{
    float const count = part.Fold(v);
    return pingPong && IsOdd(count) ? part.size - v : v;
}

} // namespace

class KEffectKaleidoscope : public KEffectWarp {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "Kal", "Kaleidoscope"); }

    KEffectKaleidoscope()
    {
        unsigned const turning = KF_Preview | KF_PreviewCentered;
        // clang-format off
        parameters.AddChapter("Kaleidoscope");
        parameters.AddButtons (&type, 0, "Type", "Type"_id, KF_AffectInputs, {"Classic", "Fancy"});
        parameters.AddSlider  (&radius, 0.25F, "Radius", "Leng"_id, KF_SoftMax, 0.0, 1.0);
        parameters.AddPoint   (&center, {0.5F, 0.5F}, "Center", "Cent"_id, KF_Preview, KPoint_Aspect);
        parameters.AddAngle   (&angle,      0.0F, "Angle",      "Angl"_id, turning, KAngle_Radians);
        parameters.AddAngle   (&viewAngle, 45.0F, "View angle", "AngE"_id, turning | KF_Hidden, KAngle_Radians);
        parameters.AddSlider  (&size, 1.0F, "Size", "Size"_id, KF_SoftMax, 0.0, 2.0);
        parameters.AddCheckbox(&anglePingPong,  true, "Ping-Pong along angle",  "AnPP"_id, KF_Hidden);
        parameters.AddCheckbox(&radiusPingPong, true, "Ping-Pong along radius", "RaPP"_id, KF_Hidden);

        parameters.AddChapter("Source");
        parameters.AddPoint   (&sourceCenter, {0.5F, 0.5F}, "Source center", "SoCe"_id, KF_Preview, KPoint_Aspect);
        parameters.AddAngle   (&sourceAngle, 0.0F, "Source angle", "SoAn"_id, turning, KAngle_Radians);
        parameters.AddSlider  (&sourceSize,  1.0F, "Source size",  "SoSi"_id, KF_SoftMax, 0.0, 2.0);
        // clang-format on
        rotation60.Rotate(1.0471976F);
        rotation120.Rotate(2.0943952F);
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        if (id == "Type"_id)
            for (std::uint32_t fancy : {"AngE"_id, "AnPP"_id, "RaPP"_id})
                messages->Show(fancy, value.intValue > 0);
        return messages;
    }

    bool Init(KImage* source) override
    {
        side = Part(std::abs(radius));
        view = Part(viewAngle == 0.0F ? 0.0F : std::max(std::abs(viewAngle), kLeastView));
        if (type == 1) MakeTurns();
        isTiled = side.size > 0.0F;
        rise = Part(side.size * kCosine);
        input = KMatrix3().Move(-center.x, -center.y).Rotate(-angle);
        if (size > 0.0F) input.Scale(1.0F / size);
        output = KMatrix3();
        if (sourceSize > 0.0F) output.Scale(1.0F / sourceSize);
        output.Rotate(-sourceAngle);
        output.Move(sourceCenter.x, sourceCenter.y);
        return KEffectWarp::Init(source);
    }

    bool F(KVector2& source, KVector2 const& destination) override
    {
        KVector2 p = AffineProduct(input, destination);
        if (type == 1) p = Fancy(p);
        else if (isTiled) p = Classic(p);
        source = AffineProduct(output, p);
        return true;
    }

    int type; // 0 classic, 1 fancy
    float radius;
    KVector2 center;
    float angle, viewAngle;
    float size;
    bool anglePingPong, radiusPingPong;
    KVector2 sourceCenter;
    float sourceAngle;
    float sourceSize;

private:
    /// The place in the triangle (0, 0), (side, 0), (side / 2, rise) that shows at p.
    KVector2 Classic(KVector2 p) const
    {
        if (IsOdd(rise.Fold(p.y))) p.y = rise.size - p.y;
        // A row of rhombs, made upright; each is a triangle and its mirror image, turned on from the one
        // before. Going one to the right turns back, hence the sign.
        float const slant = p.y * (0.5F / kCosine);
        p.x -= slant;
        float const k = -side.Fold(p.x);
        float const m = k - 3.0F * std::floor((k + 0.5F) * (1.0F / 3.0F));
        bool const isUp = (side.size - p.x) * kCosine < p.y;
        p.x += slant;

        if (m == 0.0F) {
            if (!isUp) return p;
            p = AffineProduct(rotation60, {p.x - side.size, p.y});
            return {side.size - p.x, p.y};
        }
        if (m == 1.0F) {
            p = AffineProduct(rotation120, {p.x - side.size, p.y});
            return {p.x, isUp ? -p.y : p.y};
        }
        if (isUp) return {p.x - side.size / 2.0F, rise.size - p.y};
        p = AffineProduct(rotation60, p);
        return {side.size - p.x, -p.y};
    }

    KVector2 Fancy(KVector2 const& p) const
    {
        float length;
        float a = p.AngleLength(length);
        float const folded = isTiled ? Folded(length, side, radiusPingPong) : length;
        if (!(view.size > 0.0F)) return {folded, 0.0F};
        if (length == 0.0F) return {};
        // Folding the angle by whole views is a turn by one of the directions, or a mirroring at one.
        float const count = view.Fold(a);
        bool const isMirrored = anglePingPong && IsOdd(count);
        float const last = static_cast<float>(turns.size() - 2);
        auto const index = static_cast<std::size_t>(std::min(std::max(0.0F, count - firstTurn), last));
        KVector2 const u = (folded / length) * p, turn = turns[isMirrored ? index + 1 : index];
        float const across = turn.x * u.y - turn.y * u.x;
        return {turn.x * u.x + turn.y * u.y, isMirrored ? -across : across};
    }

    /// The directions at whole views over all angles that a place can have, -1 to 1 turn.
    void MakeTurns()
    {
        turns.clear();
        if (!(view.size > 0.0F)) return;
        constexpr float kTurn = 2.0F * std::numbers::pi_v<float>;
        firstTurn = std::floor(-kTurn * view.inverse) - 1.0F;
        for (float count = firstTurn; count * view.size <= kTurn + 2.0F * view.size; ++count)
            turns.push_back({std::cos(count * view.size), std::sin(count * view.size)});
    }

    static constexpr float kLeastView = 1e-4F;   // radians, below what pixels show
    static constexpr float kCosine = 0.8660254F; // of 30 degrees

    KMatrix3 rotation60, rotation120;
    Part side, rise; // base and height of a triangle
    Part view;
    std::vector<KVector2> turns; // cosine and sine of whole numbers of views, from the first on
    float firstTurn = 0.0F;
    bool isTiled = false;
    KMatrix3 input, output;
};

OMBRELUNE_TOOL(BF_Kaleidoscope, BF_ThreadedOperator, KEffectKaleidoscope);

} // namespace ombrelune
