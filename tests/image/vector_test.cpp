#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "image/KVector2.h"
#include "image/KVector3.h"
#include "image/KVector4.h"

namespace ombrelune {
namespace {

constexpr float kPi = std::numbers::pi_v<float>;

TEST(KVector2, AZeroVectorHasNoDirectionAndKeepsItsDigits)
{
    KVector2 const zero;
    EXPECT_EQ(zero.Normalize(), zero);
    KVector2 v;
    v.SetLength(2.0F);
    EXPECT_EQ(v, KVector2(2, 0));
    float length = -1.0F;
    EXPECT_EQ(zero.AngleLength(length), 0.0F);
    EXPECT_EQ(length, 0.0F);
}

TEST(KVector2, LengthAndAngleRebuildTheVector)
{
    for (KVector2 const v : {KVector2(3, 4), KVector2(-3, 4), KVector2(-3, -4), KVector2(3, -4)}) {
        float length;
        float const angle = v.AngleLength(length);
        EXPECT_EQ(length, 5.0F);
        EXPECT_FLOAT_EQ(angle, std::atan2(v.y, v.x));
        KVector2 rebuilt;
        rebuilt.SetByAngle(angle, length);
        EXPECT_LT(rebuilt.Distance(v), 1e-5F);
    }
    EXPECT_FLOAT_EQ(KVector2(-1, 0).Angle(), -kPi) << "y is not above 0";
    EXPECT_FLOAT_EQ(KVector2(1, 1).Angle(KVector2(1, 3)), kPi / 2);
}

TEST(KVector2, TurnsAndAreasCountToTheLeft)
{
    KVector2 const o(1, 1), a(3, 1), b(1, 2);
    EXPECT_TRUE(o.Orientation(a, b));
    EXPECT_FALSE(o.Orientation(b, a));
    EXPECT_FALSE(o.Orientation(a, a));
    EXPECT_EQ((a - o) ^ (b - o), 2.0F);
    EXPECT_EQ(KVector2(2, 0).Ortho(false), KVector2(0, 2));
    EXPECT_EQ(KVector2(2, 0).Ortho(true), KVector2(0, 1));
}

TEST(KVector2, OffsetLiesToTheRightOfTheWay)
{
    KVector2 const here(5, 5);
    EXPECT_EQ(here.Offset({0, 5}, {9, 5}, 2), KVector2(5, 3)) << "straight on";
    EXPECT_EQ(here.Normal({0, 5}, {9, 5}, false), KVector2(0, 2));
    // A left turn from east to north: the outer mitre is one step on and one to the right.
    KVector2 const corner = here.Offset({0, 5}, {5, 9}, 1);
    EXPECT_NEAR(corner.x, 6.0F, 1e-6F);
    EXPECT_NEAR(corner.y, 4.0F, 1e-6F);
    EXPECT_EQ(here.Offset({0, 5}, {0, 5}, 1), here) << "a way that turns back";
}

TEST(KVector2, LinesMeetOnBothUnlessParallel)
{
    KVector2 const here(0, 0), a(2, 2);
    KVector2 out;
    ASSERT_TRUE(here.Intersect(a, {0, 2}, {2, 0}, out, true));
    EXPECT_EQ(out, KVector2(1, 1));
    EXPECT_FALSE(here.Intersect(a, {1, 0}, {2, 1}, out, false)) << "parallel";
    // The crossing at (4, 4) lies beyond a, the one at a itself is not strictly between.
    EXPECT_TRUE(here.Intersect(a, {4, 0}, {4, 1}, out, false));
    EXPECT_EQ(out, KVector2(4, 4));
    EXPECT_FALSE(here.Intersect(a, {4, 0}, {4, 1}, out, true));
    EXPECT_FALSE(here.Intersect(a, {2, 0}, {2, 1}, out, true));
}

TEST(CatmullRom, PassesThroughItsInnerPointsAndKeepsLinesStraight)
{
    KVector2 const p0(0, 1), p1(2, 3), p2(5, -1), p3(6, 6);
    EXPECT_EQ(p0.CatmullRom(p1, p2, p3, 0), p1);
    EXPECT_EQ(p0.CatmullRom(p1, p2, p3, 1), p2);
    // At half way the weights are -1/16, 9/16, 9/16, -1/16.
    EXPECT_EQ(p0.CatmullRom(p1, p2, p3, 0.5F),
              KVector2((-0 + 18 + 45 - 6) / 16.0F, (-1 + 27 - 9 - 6) / 16.0F));
    KVector3 const step(1, 2, 4);
    EXPECT_EQ(KVector3().CatmullRom(step, 2.0F * step, 3.0F * step, 0.25F), 1.25F * step);
}

} // namespace
} // namespace ombrelune
