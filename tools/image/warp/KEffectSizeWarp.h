#pragma once

#include "framework/KEffectWarp.h"
#include "image/KMatrix3.h"
#include "tools/image/warp/Sizes.h"

namespace ombrelune {

/// Base of the tools that move, turn and scale the whole picture: the inputs that they share, and the matrix
/// from the output to the source.
class KEffectSizeWarp : public KEffectWarp {
public:
    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        if (id == "SizT"_id) {
            bool const isAspect = value.intValue > 0;
            messages->SetName("SizX"_id, isAspect ? "Size" : "Size X");
            messages->SetName("SizY"_id, isAspect ? "Aspect" : "Size Y");
        }
        return messages;
    }

    bool F(KVector2& source, KVector2 const& destination) override
    {
        source = AffineProduct(matrix, destination);
        return true;
    }

    KVector2 center; // what the picture moves by
    float angle;
    int sizeType; // 0 size X and size Y, 1 size and aspect
    float sizeX, sizeY;

protected:
    void AddMove()
    {
        parameters.AddPoint(&center, {0.5F, 0.5F}, "Center", "Cent"_id, KF_Preview, KPoint_CenteredAspect);
        parameters.AddAngle(&angle, 0.0F, "Axis angle", "Angl"_id, KF_Preview | KF_PreviewCentered,
                            KAngle_Radians);
    }
    void AddSizes()
    {
        parameters.AddButtons(&sizeType, 0, "Size Type", "SizT"_id, KF_AffectInputs,
                              {"Size X and Size Y", "Size and Aspect"});
        parameters.AddSlider(&sizeX, 1.0F, "Size X", "SizX"_id, KF_SoftMax, 0.0, 5.0);
        parameters.AddSlider(&sizeY, 1.0F, "Size Y", "SizY"_id, KF_SoftMax, 0.0, 5.0);
    }

    /// Turned and scaled about the pivot, then moved; the other way round, as for sources.
    KMatrix3 MatrixAbout(KVector2 const& pivot) const
    {
        float const scaledY = sizeType == 1 ? sizeX * sizeY : sizeY;
        return KMatrix3()
            .Move(-center.x, -center.y)
            .Move(-pivot.x, -pivot.y)
            .Rotate(-angle)
            .Scale(1.0F / AboveZero(sizeX), 1.0F / AboveZero(scaledY))
            .Move(pivot.x, pivot.y);
    }

    KMatrix3 matrix;
};

} // namespace ombrelune
