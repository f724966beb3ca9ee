#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "image/KMatrix3.h"
#include "image/KMatrix4.h"
#include "image/KTransformation.h"
#include "image/Quat.h"

namespace ombrelune {
namespace {

constexpr float kPi = std::numbers::pi_v<float>;

void ExpectNear(KVector2 const& a, KVector2 const& b)
{
    EXPECT_LT(a.Distance(b), 1e-5F) << a.x << ", " << a.y;
}
void ExpectNear(KVector3 const& a, KVector3 const& b)
{
    EXPECT_LT(a.Distance(b), 1e-5F) << a.x << ", " << a.y << ", " << a.z;
}
void ExpectIdentity(KMatrix4 const& m)
{
    for (int i = 0; i < 16; ++i) EXPECT_NEAR(m[i], i % 5 ? 0.0F : 1.0F, 1e-4F) << "element " << i;
}

KMatrix4 Awkward() { return {2, 1, 0, 3, -1, 3, 1, 0, 0, 1, 4, -2, 0.5F, 0, 1, 1}; }

TEST(KMatrix4, TheLastCallActsFirst)
{
    EXPECT_EQ(KMatrix4().Move(1, 2, 3).Scale(2, 3, 4) * KVector3(1, 1, 1), KVector3(3, 5, 7));
    EXPECT_EQ(KMatrix4().Scale(2, 3, 4).Move(1, 2, 3) * KVector3(1, 1, 1), KVector3(4, 9, 16));
    EXPECT_EQ(KMatrix4().Move(5, 6, 7) * KVector2(1, 1), KVector2(6, 7));
}

TEST(KMatrix4, QuarterTurnsFollowTheRightHand)
{
    float const q = kPi / 2;
    ExpectNear(KMatrix4().RotX(q) * KVector3(0, 1, 0), {0, 0, 1});
    ExpectNear(KMatrix4().RotY(q) * KVector3(0, 0, 1), {1, 0, 0});
    ExpectNear(KMatrix4().RotZ(q) * KVector3(1, 0, 0), {0, 1, 0});
    ExpectNear(KMatrix4().RotateAxis({0, 0, 1}, q) * KVector3(1, 0, 0), {0, 1, 0});
}

TEST(KMatrix4, RotationOrdersNameTheAxisThatActsFirst)
{
    char const* const orders[] = {"XYZ", "XZY", "YXZ", "YZX", "ZXY", "ZYX"};
    KVector3 const angles(0.3F, -0.7F, 1.1F), point(1, 2, 3);
    for (int order = 0; order < 6; ++order) {
        KVector3 expected = point;
        for (char const* axis = orders[order]; *axis; ++axis) {
            if (*axis == 'X') expected = KMatrix4().RotX(angles.x) * expected;
            if (*axis == 'Y') expected = KMatrix4().RotY(angles.y) * expected;
            if (*axis == 'Z') expected = KMatrix4().RotZ(angles.z) * expected;
        }
        ExpectNear(KMatrix4().Rotate(angles, order) * point, expected);
    }
    ExpectIdentity(KMatrix4().Rotate(angles, 6));
}

TEST(KMatrix4, AMatrixAndItsInverseCancel)
{
    ExpectIdentity(Awkward() * Awkward().Inverse());
    ExpectIdentity(Awkward().Inverse() * Awkward());
    // m adj(m) is the determinant times the identity.
    KMatrix4 product = Awkward() * Awkward().Adjoint();
    ExpectIdentity(product /= product[0]);
}

TEST(KMatrix4, RotateToZBringsAnyVectorToThePositiveZAxis)
{
    for (KVector3 const v :
         {KVector3(0, 0, 2), KVector3(0, 0, -2), KVector3(3, 0, 0), KVector3(1, -2, -0.5F)})
        ExpectNear(KMatrix4().RotateToZ(v) * v, {0, 0, v.Length()});
    ExpectIdentity(KMatrix4().RotateToZ({}));
}

TEST(KMatrix4, ShearAndProjectUseTheOldValues)
{
    KMatrix4 m = Awkward();
    m.Shear(10, 100, 1000);
    EXPECT_EQ(m[0], 2 - 1 * 10);
    EXPECT_EQ(m[1], 1 - 2 * 100);
    EXPECT_EQ(m[4], -1 - 3 * 10);
    EXPECT_EQ(m[5], 3 + 1 * 100);
    EXPECT_EQ(m[9], 1) << "the third row stays";
    m = Awkward();
    m.Project(2);
    EXPECT_EQ(m[3], 3 + 0 * 2);
    EXPECT_EQ(m[7], 0 + 1 * 2);
}

TEST(KMatrix4, MapQuadMeetsTheCorners)
{
    KMatrix4 m;
    ASSERT_TRUE(m.MapQuad(1, 1, 5, 2, 0, 4, 4, 7));
    auto const map = [&](float u, float v) {
        float const w = m[8] * u + m[9] * v + m[10];
        return KVector2((m[0] * u + m[1] * v + m[2]) / w, (m[4] * u + m[5] * v + m[6]) / w);
    };
    ExpectNear(map(0, 0), {1, 1});
    ExpectNear(map(1, 0), {5, 2});
    ExpectNear(map(0, 1), {0, 4});
    ExpectNear(map(1, 1), {4, 7});
    EXPECT_FALSE(m.MapQuad(0, 0, 1, 1, 2, 2, 3, 3));
}

// Frames along a bent curve stay orthonormal, follow it, and do not twist more than the tangents turn.
TEST(KMatrix4, ParallelTransportFramesFollowTheCurve)
{
    auto const point = [](int i) {
        float const t = static_cast<float>(i) * 0.2F;
        return KVector3(std::cos(t), std::sin(t), 0.3F * t);
    };
    KMatrix4 frame;
    frame.FirstFrame(point(0), point(1), point(2));
    for (int i = 1; i < 30; ++i) {
        KVector3 const t0 = point(i) - point(i - 1), t1 = point(i + 1) - point(i);
        KMatrix4 const previous = frame;
        frame.NextFrame(previous, point(i - 1), point(i), t0, t1);
        KVector3 axes[3];
        for (int c = 0; c < 3; ++c) axes[c] = {frame[c], frame[4 + c], frame[8 + c]};
        ExpectNear(axes[2], t1.Normalize());
        ExpectNear(axes[0] ^ axes[1], -axes[2]); // binormal = tangent x normal
        ExpectNear({frame[3], frame[7], frame[11]}, point(i));
        float const turn = std::acos(t0.Normalize() * t1.Normalize());
        KVector3 const oldNormal(previous[1], previous[5], previous[9]);
        EXPECT_LT(std::acos(std::min(oldNormal * axes[1], 1.0F)), turn + 1e-3F);
    }
    KMatrix4 last;
    last.LastFrame(frame, point(29), point(30));
    ExpectNear({last[3], last[7], last[11]}, point(30));
}

TEST(KMatrix4, AFrameOnAStraightLineStillStandsAcross)
{
    KMatrix4 frame;
    // Along x and along z the other two components are equal: y is taken, and z only where it is smaller.
    // n = tangent cross axis, b = tangent cross n.
    struct {
        KVector3 tangent, b, n;
    } const lines[] = {{{1, 0, 0}, {0, -1, 0}, {0, 0, 1}},
                       {{0, 0, 1}, {0, -1, 0}, {-1, 0, 0}},
                       {{0, 1, 0}, {-1, 0, 0}, {0, 0, -1}}};
    for (auto const& line : lines) {
        frame.FirstFrame({0, 0, 0}, 2.0F * line.tangent, 4.0F * line.tangent);
        ExpectNear({frame[0], frame[4], frame[8]}, line.b);
        ExpectNear({frame[1], frame[5], frame[9]}, line.n);
        ExpectNear({frame[2], frame[6], frame[10]}, line.tangent);
    }
}

TEST(KMatrix3, TheFirstCallActsFirstOnRowVectors)
{
    KMatrix3 m;
    m.Scale(2);
    m.Move(1, 0);
    EXPECT_EQ(m * KVector2(3, 4), KVector2(7, 8));
    EXPECT_EQ(m[6], 1.0F);
    KMatrix3 turn;
    turn.Rotate(kPi / 2);
    ExpectNear(turn * KVector2(1, 0), {0, -1}); // rows (c, -s), so a row vector turns to the right
    EXPECT_EQ(KMatrix3(1, 2, 3, 4, 5, 6, 7, 8, 9) * KVector3(1, 10, 100), KVector3(321, 654, 987));
}

TEST(KMatrix3, DividesByWUnlessItIsZero)
{
    KMatrix3 const m(1, 0, 1, 0, 1, 0, 0, 0, 0);
    EXPECT_EQ(m * KVector2(4, 6), KVector2(1, 1.5F));
    EXPECT_EQ(m * KVector2(0, 6), KVector2(0, 6));
}

TEST(KMatrix3, TheInverseOfASingularMatrixIsTheIdentity)
{
    KMatrix3 const m(2, 1, 0.5F, -1, 3, 0, 4, 0, 1);
    KMatrix3 const product = m * m.Inverse();
    for (int i = 0; i < 9; ++i) EXPECT_NEAR(product[i], i % 4 ? 0.0F : 1.0F, 1e-5F);
    KMatrix3 const identity = KMatrix3(1, 2, 3, 2, 4, 6, 0, 0, 1).Inverse();
    for (int i = 0; i < 9; ++i) EXPECT_EQ(identity[i], i % 4 ? 0.0F : 1.0F);
}

TEST(KMatrix3, TakesThePlaneOutOfAFourByFour)
{
    KMatrix3 m;
    m = KMatrix4(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15);
    float const expected[] = {0, 1, 3, 4, 5, 7, 12, 13, 15};
    for (int i = 0; i < 9; ++i) EXPECT_EQ(m[i], expected[i]);
}

TEST(KMatrix3, MappingsMeetAllFourCorners)
{
    KVector2 const square[] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
    KVector2 const parallelogram[] = {{1, 1}, {3, 2}, {4, 4}, {2, 3}};
    KVector2 const quad[] = {{0, 0}, {4, 1}, {5, 5}, {1, 3}};
    KVector2 const wide[] = {{2, 3}, {8, 3}, {8, 7}, {2, 7}}; // a horizontal edge first
    KVector2 const tall[] = {{2, 3}, {2, 7}, {8, 7}, {8, 3}}; // a vertical edge first
    KVector2 const small[] = {{0, 0}, {4e-5F, 1e-5F}, {5e-5F, 5e-5F}, {1e-5F, 3e-5F}};
    struct Case {
        KVector2 const *from, *to;
        int kind;
    };
    for (auto const& [from, to, kind] :
         {Case{square, parallelogram, 0}, Case{square, quad, 1}, Case{quad, wide, 1}, Case{quad, tall, 1},
          Case{parallelogram, wide, 0}, Case{parallelogram, quad, 1}, Case{small, quad, 1}}) {
        KMatrix3 m;
        EXPECT_EQ(m.MapPoly(from, to), kind);
        for (int i = 0; i < 4; ++i) EXPECT_LT((m * from[i]).Distance(to[i]), 1e-4F);
    }
    KMatrix3 m;
    KVector2 const line[] = {{0, 0}, {1, 1}, {2, 2}, {5, 5}};
    EXPECT_EQ(m.MapSquareQuad(line), -1);
    EXPECT_EQ(m.MapQuadQuad(quad, line), -1);
    EXPECT_EQ(m.MapQuadRect({1, 1}, {1, 5}, quad), -1);
}

TEST(KTransformation, ScalesThenTurnsThenMoves)
{
    KTransformation t;
    t.position = {10, 0, 0};
    t.rotation = {0, 0, kPi / 2};
    t.scale = {2, 5, 5};
    ExpectNear(t.GetMatrix() * KVector3(1, 1, 0), {8, 2, 0}); // locked: all axes by scale.x
    t.lock = false;
    ExpectNear(t.GetMatrix() * KVector3(1, 1, 0), {5, 2, 0});
    t.type = 0;
    t.centre = {0.75F, 1};
    t.aspect = 0.5F;
    ExpectNear(t.GetMatrix() * KVector3(), {0.25F, 0.25F, 0});
}

TEST(KTransformation, InterpolatesFromTheIdentity)
{
    KTransformation t;
    t.position = {4, 0, 8};
    t.rotation = {0, 0, kPi};
    t.scale = {3, 3, 3};
    ExpectIdentity(t.GetMatrixInterpolate(0));
    ExpectNear(t.GetMatrixInterpolate(0.5F) * KVector3(1, 0, 0), {2, 2, 4});
    ExpectNear(t.GetMatrixInterpolate(1) * KVector3(1, 0, 0), t.GetMatrix() * KVector3(1, 0, 0));
    KTransformation other;
    other.position = {0, 6, 0};
    other.scale = {5, 5, 5};
    // half of both: moved by (2, 0, 4) + (0, 3, 0), turned by a quarter, scaled by 2 times 3
    ExpectNear(t.GetMatrixInterpolateDouble(0.5F, 0.5F, other) * KVector3(1, 0, 0), {2, 9, 4});
}

TEST(Quat, AgreesWithTheRotationMatrices)
{
    KVector3 const axis = KVector3(1, -2, 0.5F).Normalize();
    Quat const a(axis, 0.8F), b({0, 0, 1}, 1.3F);
    float m[16];
    (a * b).RotationMatrix(m);
    KMatrix4 const expected = KMatrix4().RotateAxis(axis, 0.8F).RotZ(1.3F);
    for (int i = 0; i < 16; ++i) EXPECT_NEAR(m[i], expected[i], 1e-5F);

    KVector3 back;
    float c, s;
    a.Axis(back, c, s);
    ExpectNear(back, axis);
    EXPECT_NEAR(c, std::cos(0.8F), 1e-6F);
    EXPECT_NEAR(s, std::sin(0.8F), 1e-6F);

    // Conjugation by a turns the vector part as the rotation does.
    Quat const turned = Quat(1, 0, 0, 0) ^ a;
    ExpectNear({turned.x, turned.y, turned.z}, KMatrix4().RotateAxis(axis, 0.8F) * KVector3(1, 0, 0));
}

TEST(Quat, NormalizeLeavesWhatHasNoDirection)
{
    Quat q(0, 3, 0, 4);
    EXPECT_EQ(q.Normalize(), 5.0F);
    EXPECT_EQ(q.w, 0.8F);
    Quat tiny(1e-7F, 0, 0, 0);
    tiny.Normalize();
    EXPECT_EQ(tiny.x, 1e-7F);
}

} // namespace
} // namespace ombrelune
