// Loader: a picture file, or the frame of a sequence that the time asks for.

#include <cmath>

#include "host/builtin/Builtin.h"
#include "host/graph/FusionDoc.h"
#include "host/io/PicturePath.h"
#include "host/io/Pictures.h"

namespace ombrelune {

namespace {

class Loader : public Operator {
public:
    Loader(Registry const* registry, ScriptVal const& settings, TagList const& tags)
        : Operator(registry, settings, tags)
    {
        AddControlPageTagList("File", {});
        filename = AddInputTagList(
            "Filename", "Filename",
            {{Attr_DataType, CLSID_DataType_Text}, {Attr_InputControl, CLSID_InputControl_File}});
        output = AddOutputTagList("Output", "Output",
                                  {{Attr_DataType, CLSID_DataType_Image}, {Attr_MainNumber, 1}});
    }
    unsigned SizeOf() const override { return sizeof(Loader); }

    void Process(Request* request) override
    {
        std::string const& pattern = dynamic_cast<Text const&>(*filename->GetValue(request, 0)).value;
        if (pattern.empty()) return request->Fail(Name() + ".Filename is empty: name a picture file");
        if (auto problem = CheckPattern(pattern))
            return request->Fail(Name() + ".Filename: " + problem->text);

        auto const frame = static_cast<int>(std::floor(request->GetTime()));
        std::string const path = PathOfFrame(ResolvePath(Document(), pattern), frame);
        ReadResult read = ReadPicture(path, {.proxy = request->Quality().proxy});
        if (read.problem) return request->FailFile(Name() + ": " + read.problem->Format());
        output->Set(request, read.image.Release(), nullptr);
    }

private:
    Input* filename;
    Output* output;
};

Registry const loaderRegistry(ClassRegistry(), "Loader",
                              BuiltinTags<Loader>("Loader", "Reads a picture file or a sequence"));

} // namespace

} // namespace ombrelune
