// SVGLoader: the shapes of an SVG file, with its colours and strokes.

#include <filesystem>
#include <fstream>
#include <sstream>

#include <fmt/format.h>

#include "host/builtin/BuiltinOperator.h"
#include "host/graph/FusionDoc.h"
#include "host/io/PicturePath.h"
#include "shapes/KShapeParameter.h"
#include "shapes/svg/SvgReader.h"

namespace ombrelune {

namespace {

constexpr std::uintmax_t kLargest = 64 << 20; // bytes

class SVGLoader : public BuiltinOperator<Operator> {
public:
    SVGLoader(Registry const* registry, ScriptVal const& settings, TagList const& tags)
        : BuiltinOperator(registry, settings, tags)
    {
        AddControlPageTagList("File", {});
        filename = AddFile();
        flatten = AddCheckbox("Flatten Curves", "FlattenCurves", false);
        precision = AddNumber("Curve Precision", "CurvePrecision", CLSID_InputControl_Slider, 16.0,
                              {{Attr_IntegerValue, true}, {Attr_MinHard, 2.0}, {Attr_MaxHard, 64.0}});
        output = AddOutputTagList("Output", "Output",
                                  {{Attr_DataType, FuID(KShapeParameter::kClassId)}, {Attr_MainNumber, 1}});
    }
    unsigned SizeOf() const override { return sizeof(SVGLoader); }

    bool ChecksRequests() const override { return false; }
    SourceFile FileToRead(Request const& request) const override { return {PathOf(request), false}; }

    void Process(Request* request) override
    {
        std::string const path = PathOf(*request);
        if (path.empty()) return request->Fail(Name() + ".Filename is empty: name an SVG file");
        auto const fail = [&](Problem problem) {
            problem.file = path;
            request->FailFile(Name() + ": " + problem.Format());
        };
        std::error_code error;
        auto const size = std::filesystem::file_size(path, error);
        if (error) return fail({.text = error.message()});
        if (size > kLargest) return fail({.text = "larger than 64 MB"});
        std::ostringstream text;
        text << std::ifstream(path, std::ios::binary).rdbuf();
        SvgShapes shapes = ReadSvg(text.str());
        if (shapes.problem) return fail(*shapes.problem);
        if (!shapes.leftOut.empty())
            request->Warn(fmt::format("{}: {}: {} left out: only paths and basic shapes are read", Name(),
                                      path, shapes.leftOut));
        if (FlagOf(flatten, request))
            shapes.group.reset(shapes.group->FlattenOf(static_cast<int>(request->Number(*precision))));
        output->Set(request, new KShapeParameter(shapes.group.release(), false), nullptr);
    }

private:
    std::string PathOf(Request const& request) const
    {
        std::string const name = TextOf(filename, request);
        return name.empty() ? "" : ResolvePath(Document(), name);
    }

    Input *filename, *flatten, *precision;
    Output* output;
};

Registry const svgLoaderRegistry(ClassRegistry(), "SVGLoader",
                                 BuiltinTags<SVGLoader>("SVGLoader", "Reads the shapes of an SVG file"));

} // namespace

} // namespace ombrelune
