// Mirror: reflects one side of a line onto the other, or the whole picture at it.

#include "framework/Registration.h"
#include "image/KMatrix3.h"

namespace ombrelune {

class KEffectMirror : public KEffectWarp {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "Mir", "Mirror"); }

    KEffectMirror()
    {
        // clang-format off
        parameters.AddChapter("Mirror");
        parameters.AddCheckbox(&mirrorsAll, false, "Mirror all", "MAll"_id, 0);
        parameters.AddPoint(&left,  {0.25F, 0.5F}, "Mirror Left",  "MirL"_id, KF_Preview, KPoint_Aspect);
        parameters.AddPoint(&right, {0.75F, 0.5F}, "Mirror Right", "MirR"_id, KF_Preview | KF_PreviewFollow, KPoint_Aspect);
        // clang-format on
    }

    bool Init(KImage* source) override
    {
        float length;
        float const a = left.AngleLength(right, length); // 0 where the points meet: a level mirror
        matrix =
            KMatrix3().Move(-left.x, -left.y).Rotate(a).Scale(1.0F, -1.0F).Rotate(-a).Move(left.x, left.y);
        normal = (right - left).Ortho(false);
        return KEffectWarp::Init(source);
    }

    bool F(KVector2& source, KVector2 const& destination) override
    {
        bool const isUnchanged = !mirrorsAll && (destination - left) * normal <= 0.0F;
        source = isUnchanged ? destination : AffineProduct(matrix, destination);
        return true;
    }

    bool mirrorsAll;
    KVector2 left, right;

private:
    KMatrix3 matrix;
    KVector2 normal; // to the left of the way from left to right, the side that shows the other
};

OMBRELUNE_TOOL(BF_Mirror, BF_ThreadedOperator, KEffectMirror);

} // namespace ombrelune
