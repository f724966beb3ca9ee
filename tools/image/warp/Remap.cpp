// Remap: turns a picture of a mirror ball into one of longitude and latitude, or back with a rotation.

#include <algorithm>
#include <cmath>
#include <numbers>

#include "framework/Registration.h"
#include "image/KMatrix4.h"

namespace ombrelune {

namespace {

enum RemapType { kProbe = 0, kSpherical = 1 };

constexpr float kPi = std::numbers::pi_v<float>;

/// Longitude and latitude, each -1 to 1, of a place on the ball; false beside it.
bool SphericalOfProbe(KVector2 const& q, KMatrix4 const& rotation, KVector2& out)
{
    float length;
    float const a = q.AngleLength(length);
    if (!(length <= 1.0F)) return false;
    float const b = 2.0F * std::asin(length);
    KVector3 const v = rotation * KVector3(std::sin(b) * std::cos(a), std::sin(b) * std::sin(a), std::cos(b));
    float const x = -KVector2(v.x, v.z).Angle() / kPi + 0.5F;
    out.x = x >= 1.0F ? x - 2.0F : x;
    out.y = 2.0F * std::asin(std::clamp(v.y, -1.0F, 1.0F)) / kPi;
    return true;
}

/// Place on the ball, within a radius of 1, of a longitude and latitude.
KVector2 ProbeOfSpherical(KVector2 const& q)
{
    float const y = std::sin(q.y * kPi / 2.0F), ring = std::sqrt(1.0F - y * y);
    float const longitude = -kPi * (q.x - 0.5F + 2.0F * std::ceil((1.5F - q.x) / 2.0F));
    float const x = ring * std::cos(longitude), z = ring * std::sin(longitude);
    float const a = KVector2(x, y).Angle(), b = std::acos(std::clamp(z, -1.0F, 1.0F));
    KVector2 out;
    out.SetByAngle(a, std::sin(b / 2.0F));
    return out;
}

} // namespace

class KEffectRemap : public KEffectWarp {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "RMp", "Remap"); }

    KEffectRemap()
    {
        // clang-format off
        parameters.AddChapter("Shuffle");
        parameters.AddButtons(&input,  kProbe,     "Type Input",  "Inpu"_id, KF_AffectInputs, {"Probe", "Spherical"});
        parameters.AddButtons(&output, kSpherical, "Type Output", "Outp"_id, KF_AffectInputs, {"Probe", "Spherical"});
        parameters.AddButtons(&rotationOrder, 0, "Rotation Order", "RotO"_id, KF_Hidden,
                              {"XYZ", "XZY", "YXZ", "YZX", "ZXY", "ZYX"});
        parameters.AddAngle(&angleX, 0.0F, "Angle X", "AngX"_id, KF_Hidden, KAngle_Radians);
        parameters.AddAngle(&angleY, 0.0F, "Angle Y", "AngY"_id, KF_Hidden, KAngle_Radians);
        parameters.AddAngle(&angleZ, 0.0F, "Angle Z", "AngZ"_id, KF_Hidden, KAngle_Radians);
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        if (id == "Inpu"_id) shownInput = value.intValue;
        else if (id == "Outp"_id) shownOutput = value.intValue;
        else return messages;
        bool const turns = shownInput == kSpherical && shownOutput == kProbe;
        for (std::uint32_t target : {"RotO"_id, "AngX"_id, "AngY"_id, "AngZ"_id})
            messages->Show(target, turns);
        return messages;
    }

    bool Init(KImage* source) override
    {
        rotation = KMatrix4().Rotate(angleX, angleY, angleZ, rotationOrder);
        return KEffectWarp::Init(source);
    }

    bool F(KVector2& source, KVector2 const& destination) override
    {
        source = destination;
        if (input == output) return true;
        KVector2 const q(2.0F * (destination.x - 0.5F), 2.0F * (frameAspect * destination.y - 0.5F));
        KVector2 p;
        if (input == kProbe) p = ProbeOfSpherical(q);
        else if (!SphericalOfProbe(q, rotation, p)) return false;
        source = {p.x / 2.0F + 0.5F, (p.y / 2.0F + 0.5F) / frameAspect};
        return true;
    }

    int input, output; // RemapType
    int rotationOrder; // as KMatrix4::Rotate
    float angleX, angleY, angleZ;

private:
    int shownInput = kProbe, shownOutput = kSpherical; // what AffectInputs was told last
    KMatrix4 rotation;
};

OMBRELUNE_TOOL(BF_Remap, BF_ThreadedOperator, KEffectRemap);

} // namespace ombrelune
