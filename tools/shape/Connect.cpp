// Connect: draws a line or a spline through up to 32 points on the image.

#include <algorithm>
#include <vector>

#include "framework/Registration.h"
#include "shapes/FlatShape.h"
#include "shapes/KEffectImageShape.h"

namespace ombrelune {

class KEffectConnect : public KEffectImageShape {
public:
    static constexpr int kMostPoints = 32;

    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "Con", "Connect", "Connect points with lines or splines");
    }

    KEffectConnect()
    {
        // clang-format off
        parameters.AddChapter("Connect");
        parameters.AddButtons  (&type, 0, "Type", "Type"_id, KF_AffectInputs, {"Linear", "Catmull-Rom"});
        parameters.AddSliderInt(&subdivision, 4, "Subdivision", "Subd"_id, KF_SoftMax, 1, 16);
        parameters.AddSliderInt(&count, 4, "Number Of Points", "NumP"_id, KF_AffectInputs, 2, kMostPoints);
        parameters.AddCheckbox (&close, false, "Close", "Clos"_id, 0);
        // clang-format on
        KString label;
        for (int i = 0; i < kMostPoints; ++i) {
            int const column = i % 9, row = i / 9;
            KVector2 const place(static_cast<float>(column) * 0.1F + 0.1F,
                                 static_cast<float>(row) * 0.1F + 0.1F);
            parameters.AddPoint(&points[i], place, label.Numbered("Point", i + 1, true),
                                "Pos0"_id + static_cast<std::uint32_t>(i), KF_Preview, KPoint_Aspect);
        }
        ParametersAdd();
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        KMessageList* messages = KEffectImageShape::AffectInputs(id, value);
        if (id == "Type"_id) messages->Show("Subd"_id, value.intValue == 1);
        if (id == "NumP"_id)
            for (int i = 0; i < kMostPoints; ++i)
                messages->Show("Pos0"_id + static_cast<std::uint32_t>(i), value.intValue > i);
        return messages;
    }

    KShapeGroup* FShape() override
    {
        auto shape = std::make_unique<KShape>();
        shape->MoveTo(points[0]);
        if (type == 1 && count >= 3) AddSpline(*shape);
        else
            for (int i = 1; i < count; ++i) shape->LineTo(points[i]);
        if (close) shape->Close();
        auto list = std::make_unique<KShapeList>();
        list->AddLast(shape.release());
        return new KShapeGroup(list.release(), false);
    }

    int type; // 0 linear, 1 Catmull-Rom, which needs three points
    int subdivision;
    int count;
    bool close;
    KVector2 points[kMostPoints];

private:
    /// Through all points, as straight pieces. An open one goes on at its ends by one step along the tangent
    /// of the parabola through the three points there.
    void AddSpline(KShape& shape) const
    {
        KVector2 const* const p = points;
        int const n = count;
        auto const beyond = [](KVector2 const& a, KVector2 const& b, KVector2 const& c) {
            return 0.5F * (5.0F * a - 4.0F * b + c);
        };
        std::vector<KVector2> padded(p, p + n);
        padded.insert(padded.begin(), close ? p[n - 1] : beyond(p[0], p[1], p[2]));
        padded.push_back(close ? p[0] : beyond(p[n - 1], p[n - 2], p[n - 3]));
        if (close) padded.push_back(p[1]);
        int const steps = std::min(subdivision, kMostSteps);
        for (auto from = padded.begin(); from + 3 < padded.end(); ++from)
            for (int k = 0; k < steps; ++k)
                shape.LineTo(from[0].CatmullRom(from[1], from[2], from[3],
                                                static_cast<float>(k) / static_cast<float>(steps)));
        if (!close) shape.LineTo(p[n - 1]);
    }
};

OMBRELUNE_TOOL(BF_Connect, BF_ThreadedOperator, KEffectConnect);

} // namespace ombrelune
