// Bend: lays the picture on a ring, given by three points or by centre and radius, or on a straight band.

#include <cmath>
#include <numbers>

#include "framework/Registration.h"
#include "image/KMatrix3.h"
#include "tools/image/warp/Sizes.h"

namespace ombrelune {

namespace {

constexpr float kPi = std::numbers::pi_v<float>, kTurn = 2.0F * kPi;

/// Whether three points give no circle.
bool AreCollinear(KVector2 const& s, KVector2 const& m, KVector2 const& e)
{
    if (s == m || s == e || m == e) return true;
    KVector2 const a = s - m, b = s - e;
    return (a.y == 0.0F && b.y == 0.0F) || std::abs(a.x / a.y - b.x / b.y) < 1e-05F;
}

/// The centre of the circle through three points, where two perpendicular bisectors cross; false when they
/// are parallel.
bool FindCenter(KVector2 const& s, KVector2 const& m, KVector2 const& e, KVector2& center)
{
    KVector2 const a = 0.5F * (s + m), b = 0.5F * (s + e);
    return a.Intersect(a + (m - s).Ortho(false), b, b + (e - s).Ortho(false), center, false);
}

} // namespace

class KEffectBend : public KEffectWarp {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "Bnd", "Bend"); }

    KEffectBend()
    {
        unsigned const turning = KF_Preview | KF_PreviewCentered | KF_Hidden,
                       follow = KF_Preview | KF_PreviewFollow;
        // clang-format off
        parameters.AddChapter("Bend");
        parameters.AddButtons(&type, 0, "Type", "BeTy"_id, KF_AffectInputs, {"Three points", "Center and radius"});
        parameters.AddPoint (&start,    {0.0F, 0.5F}, "Start",    "BeSt"_id, KF_Preview, KPoint_Aspect);
        parameters.AddAngle (&startAngle, 180.0F, "Start Angle", "BeAS"_id, turning, KAngle_Radians);
        parameters.AddAngle (&endAngle,     0.0F, "End Angle",   "BeAE"_id, turning, KAngle_Radians);
        parameters.AddPoint (&midpoint, {0.5F, 0.5F}, "Midpoint", "BeMi"_id, KF_Preview, KPoint_Aspect);
        parameters.AddPoint (&end,      {1.0F, 0.5F}, "End",      "BeEn"_id, KF_Preview, KPoint_Aspect);
        parameters.AddSlider(&radius,          0.5F, "Radius",           "BeRa"_id, KF_SoftMax, 0.0, 1.0);
        parameters.AddSlider(&scaleHorizontal, 1.0F, "Scale Horizontal", "BeSH"_id, KF_SoftMax, 0.0, 1.0);
        parameters.AddSlider(&scaleVertical,   1.0F, "Scale Vertical",   "BeSV"_id, KF_SoftMax, 0.0, 1.0);
        parameters.AddPoint (&sourceStart, {0.0F, 0.5F}, "Source Start", "SoSt"_id, KF_Preview, KPoint_Aspect);
        parameters.AddPoint (&sourceEnd,   {1.0F, 0.5F}, "Source End",   "SoEn"_id, follow,     KPoint_Aspect);
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        if (id == "BeTy"_id) {
            bool const isRing = value.intValue > 0;
            for (std::uint32_t point : {"BeMi"_id, "BeEn"_id}) messages->Show(point, !isRing);
            for (std::uint32_t turn : {"BeAS"_id, "BeAE"_id}) messages->Show(turn, isRing);
        }
        return messages;
    }

    bool Init(KImage* source) override
    {
        if (!KEffectWarp::Init(source)) return false;
        pictureHeight = 1.0F / frameAspect;
        spanWidth = AboveZero(scaleHorizontal);
        spanHeight = AboveZero(scaleVertical);
        isStraight = false;
        if (type == 1) SetRing(start, radius, -startAngle, -endAngle, -startAngle < -endAngle);
        else if (AreCollinear(start, midpoint, end) || !FindCenter(start, midpoint, end, origin)) SetBand();
        else {
            bool const turnsLeft = start.Orientation(midpoint, end);
            float const a0 = origin.Angle(start);
            float a1 = origin.Angle(end);
            if (turnsLeft && a1 < a0) a1 += kTurn;
            if (!turnsLeft && a1 > a0) a1 -= kTurn;
            SetRing(origin, origin.Distance(midpoint), a0, a1, turnsLeft);
        }
        float length;
        float const angle = sourceStart.AngleLength(sourceEnd, length);
        toSource = KMatrix3()
                       .Move(-sourceStart.x, -sourceStart.y)
                       .Rotate(angle)
                       .Scale(1.0F / AboveZero(length))
                       .Move(0.0F, 0.5F / frameAspect)
                       .Inverse();
        return true;
    }

    bool F(KVector2& source, KVector2 const& destination) override
    {
        KVector2 p;
        if (isStraight) {
            KVector2 const d = destination - origin;
            p = {d * along, d * across};
        } else {
            float distance;
            float a = origin.AngleLength(destination, distance) - centerAngle;
            if (a > kPi) a -= kTurn;
            else if (a < -kPi) a += kTurn;
            p = {a / span + 0.5F, (distance - inner) / spanHeight};
            if (isFlipped) p.y = pictureHeight - p.y;
        }
        source = AffineProduct(toSource, p);
        return true;
    }

    int type;                      // 0 three points, 1 centre and radius
    KVector2 start, midpoint, end; // the start is the centre of type 1
    float startAngle, endAngle;
    float radius;
    float scaleHorizontal, scaleVertical;
    KVector2 sourceStart, sourceEnd;

private:
    /// The straight band from start to end, as wide as the way between them.
    void SetBand()
    {
        isStraight = true;
        KVector2 const to = end == start ? end + KVector2(1e-06F, 0.0F) : end;
        KVector2 const u = to - start, n = u.Ortho(true);
        origin = 0.5F * (to + start - spanWidth * u - spanHeight * pictureHeight * n);
        along = 1.0F / (u.Length() * spanWidth) * u.Normalize();
        across = 1.0F / spanHeight * n;
    }

    void SetRing(KVector2 const& center, float ringRadius, float a0, float a1, bool flipped)
    {
        origin = center;
        isFlipped = flipped;
        inner = ringRadius - spanHeight * pictureHeight / 2.0F;
        span = (a1 - a0) * spanWidth;
        if (span == 0.0F) span = 1e-07F;
        // Within half a turn, so that F needs one step to bring a difference of angles there.
        centerAngle = std::remainder((a0 + a1) / 2.0F, kTurn);
    }

    float pictureHeight = 1.0F;
    float spanWidth = 1.0F, spanHeight = 1.0F;
    bool isStraight = false, isFlipped = false;
    KVector2 origin;        // lower left corner of the band, or centre of the ring
    KVector2 along, across; // of the band, so that dot products give places in the picture
    float centerAngle = 0.0F, span = 1.0F, inner = 0.0F;
    KMatrix3 toSource; // from the whole picture to the part along the source points
};

OMBRELUNE_TOOL(BF_Bend, BF_ThreadedOperator, KEffectBend);

} // namespace ombrelune
