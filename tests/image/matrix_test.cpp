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

} // namespace
} // namespace ombrelune
