// Segment Transform: cuts the picture into the cells of a grid, or of rings and sectors, and turns and scales
// each about its own centre.

#include <cmath>

#include "framework/Registration.h"
#include "image/KMatrix4.h"

namespace ombrelune {

namespace {

/// A size to divide by; its sign stays.
float NotZero(float size) { return size == 0.0F ? 1e-07F : size; }

float Rounded(float v) { return std::floor(v + 0.5F); }

} // namespace

class KEffectSegmentTransform : public KEffectWarp {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "SXf", "Segment Transform"); }

    KEffectSegmentTransform()
    {
        unsigned const soft = KF_SoftMin | KF_SoftMax;
        // clang-format off
        parameters.AddChapter("Segment Transform");
        parameters.AddButtons (&type, 0, "Type", "Type"_id, 0, {"Grid", "Radial"});
        parameters.AddPoint   (&center, {0.5F, 0.5F}, "Center", "Cent"_id, KF_Preview, KPoint_Aspect);
        parameters.AddCheckbox(&locksSize, true, "Lock Segment Size X/Y", "SSiL"_id, KF_AffectInputs);
        parameters.AddSlider  (&sizeX, 0.1F, "Segment Size X", "SSiX"_id, soft,             0.0001, 0.5);
        parameters.AddSlider  (&sizeY, 0.1F, "Segment Size Y", "SSiY"_id, soft | KF_Hidden, 0.0001, 0.5);

        parameters.GroupStart("Transformation", "tran"_id, 0);
        parameters.AddAngle   (&angle, 0.0F, "Angle", "Angl"_id, KF_Preview | KF_PreviewCentered, KAngle_Radians);
        parameters.AddCheckbox(&locksScale, true, "Lock Scale X/Y", "ScaL"_id, KF_AffectInputs);
        parameters.AddSlider  (&scaleX, 1.0F, "Scale X", "ScaX"_id, soft,             0.0001, 5.0);
        parameters.AddSlider  (&scaleY, 1.0F, "Scale Y", "ScaY"_id, soft | KF_Hidden, 0.0001, 5.0);
        parameters.GroupEnd();
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        if (id == "SSiL"_id) messages->Show("SSiY"_id, value.intValue == 0);
        if (id == "ScaL"_id) messages->Show("ScaY"_id, value.intValue == 0);
        return messages;
    }

    bool Init(KImage* source) override
    {
        cell = {NotZero(sizeX), NotZero(locksSize ? sizeX : sizeY)};
        within = KMatrix4().RotZ(angle).Scale(1.0F / NotZero(scaleX),
                                              1.0F / NotZero(locksScale ? scaleX : scaleY), 1.0F);
        return KEffectWarp::Init(source);
    }

    bool F(KVector2& source, KVector2 const& destination) override
    {
        KVector2 p = destination - center;
        if (type == 0) {
            KVector2 const c = CellOf(p.x, p.y);
            p = within * (p - c) + c;
        } else {
            float length;
            float const a = p.AngleLength(length);
            if (length > 0.0F) {
                // Rings are cut along the first axis and sectors along the second, but angles are measured
                // from the first and distances from the second.
                KVector2 const c = CellOf(length, a), polar = within * (KVector2(a, length) - c) + c;
                p.SetByAngle(polar.x, polar.y);
            }
        }
        source = p + center;
        return true;
    }

    int type; // 0 grid, 1 radial
    KVector2 center;
    bool locksSize;
    float sizeX, sizeY;
    float angle;
    bool locksScale;
    float scaleX, scaleY;

private:
    /// Centre of the cell around a place.
    KVector2 CellOf(float x, float y) const
    {
        return {cell.x * Rounded(x / cell.x), cell.y * Rounded(y / cell.y)};
    }

    KVector2 cell;   // its size
    KMatrix4 within; // from a cell's output to its source
};

OMBRELUNE_TOOL(BF_SegmentTransform, BF_ThreadedOperator, KEffectSegmentTransform);

} // namespace ombrelune
