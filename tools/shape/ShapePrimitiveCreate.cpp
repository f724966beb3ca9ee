// Shape Primitive: a cross, polygon, rectangle or star round the origin.

#include "framework/Registration.h"
#include "shapes/KEffectShapeCreate.h"

namespace ombrelune {

namespace {

enum PrimitiveType { kTypeCross = 0, kTypePolygon = 1, kTypeRectangle = 2, kTypeStar = 3 };

} // namespace

class KEffectShapePrimitiveCreate : public KEffectShapeCreate {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "sPriC", "sPrimitive Create", "Shape Primitive Create");
    }

    KEffectShapePrimitiveCreate()
    {
        unsigned const soft = KF_SoftMin | KF_SoftMax;
        // clang-format off
        parameters.AddChapter("Shape Primitive Create");
        parameters.AddList     (&type, 0, "Type", "Type"_id, KF_AffectInputs, {"Cross", "Polygon", "Rectangle", "Star"});
        parameters.AddSlider   (&size.x, 0.5F,  "Size X", "SizX"_id, soft, 0.0, 1.0);
        parameters.AddSlider   (&size.y, 0.25F, "Size Y", "SizY"_id, soft, 0.0, 1.0);
        parameters.AddSliderInt(&steps, 4, "Steps", "Step"_id, KF_SoftMax, 3, 16);
        parameters.AddAngle    (&angle, 0.5F, "Angle Start", "Angl"_id, soft, KAngle_Radians);
        // clang-format on
        ParametersAddTransform();
        ParametersAddShading();
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        KMessageList* messages = KEffectShapeCreate::AffectInputs(id, value);
        if (id != "Type"_id) return messages;
        messages->Show("Step"_id, value.intValue == kTypePolygon || value.intValue == kTypeStar);
        messages->Show("Angl"_id, value.intValue != kTypeRectangle);
        return messages;
    }

    KShapeGroup* FShape() override
    {
        auto shape = std::make_unique<KShape>();
        shape->AddShape(Preset(), size, steps, angle);
        auto list = std::make_unique<KShapeList>();
        list->AddLast(shape.release());
        // Crosses and stars reach as far up as they reach to the side.
        bool const isSquare = type == kTypeCross || type == kTypeStar;
        auto const inverse = [](float v) { return v == 0.0F ? 1.0F : 1.0F / v; };
        list->mapping.Move(0.5F, 0.5F, 0.0F)
            .Scale(inverse(size.x), inverse(isSquare ? size.x : size.y), 1.0F);
        return new KShapeGroup(list.release(), false);
    }

    int type; // PrimitiveType
    KVector2 size;
    int steps;
    float angle; // radians

private:
    ShapePresetType Preset() const
    {
        switch (type) {
        case kTypeCross: return kPresetCross;
        case kTypePolygon: return kPresetPolygon;
        case kTypeStar: return kPresetStar;
        default: return kPresetRectangle;
        }
    }
};

OMBRELUNE_TOOL(BF_ShapePrimitiveCreate, BF_ThreadedOperator, KEffectShapePrimitiveCreate,
               .outputType = KShapeParameter::kClassId);

} // namespace ombrelune
