// Transform: moves, scales and turns a picture in its frame.

#include "host/builtin/PictureOperator.h"

namespace ombrelune {

namespace {

class Transform : public PictureOperator {
public:
    Transform(Registry const* registry, ScriptVal const& settings, TagList const& tags)
        : PictureOperator(registry, settings, tags)
    {
        AddControlPageTagList("Transform", {});
        center = AddPoint("Center", "Center");
        pivot = AddPoint("Pivot", "Pivot");
        size = AddNumber("Size", "Size", CLSID_InputControl_Slider, 1.0,
                         {{Attr_MinHard, 0.0}, {Attr_MaxSoft, 5.0}});
        aspect = AddNumber("Aspect", "Aspect", CLSID_InputControl_Slider, 1.0,
                           {{Attr_MinHard, 0.0}, {Attr_MaxSoft, 2.0}});
        angle = AddNumber("Angle", "Angle", CLSID_InputControl_Screw, 0.0,
                          {{Attr_MinSoft, -180.0}, {Attr_MaxSoft, 180.0}});
        edges = AddChoice("Edges", "Edges", CLSID_InputControl_MultiButton, kEdgeBlack,
                          {"Black", "Wrap", "Duplicate"});
        AddPicture("Input", 1, true);
    }
    unsigned SizeOf() const override { return sizeof(Transform); }

    void Process(Request* request) override
    {
        Ref<Image> const image = MainPicture(request);
        if (!image) return;
        Point const &to = PointOf(center, request), &about = PointOf(pivot, request);
        double const height = request->Number(*size), width = height * request->Number(*aspect);
        double const degrees = request->Number(*angle);
        bool const isSame =
            to.x == about.x && to.y == about.y && width == 1.0 && height == 1.0 && degrees == 0.0;
        Give(request, isSame ? image
                             : image->TransformOf(to.x, to.y, about.x, about.y, width, height, degrees,
                                                  static_cast<EdgeModes>(ChoiceOf(edges, request))));
    }

private:
    Input *center, *pivot, *size, *aspect, *angle, *edges;
};

Registry const transformRegistry(ClassRegistry(), "Transform",
                                 BuiltinTags<Transform>("Transform", "Moves, scales and turns a picture"));

} // namespace

} // namespace ombrelune
