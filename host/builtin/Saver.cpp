// Saver: writes its picture to a file, or to the frame of a sequence, and hands it on.

#include <cmath>

#include <fmt/format.h>

#include "host/builtin/Builtin.h"
#include "host/graph/FusionDoc.h"
#include "host/io/PicturePath.h"
#include "host/io/Pictures.h"

namespace ombrelune {

namespace {

class Saver : public Operator {
public:
    Saver(Registry const* registry, ScriptVal const& settings, TagList const& tags)
        : Operator(registry, settings, tags)
    {
        AddIdentityInput();
        AddControlPageTagList("File", {});
        filename = AddInputTagList(
            "Filename", "Filename",
            {{Attr_DataType, CLSID_DataType_Text}, {Attr_InputControl, CLSID_InputControl_File}});
        picture = AddInputTagList(
            "Input", "Input",
            {{Attr_DataType, CLSID_DataType_Image}, {Attr_MainNumber, 1}, {Attr_Priority, -1}});
        output = AddOutputTagList("Output", "Output",
                                  {{Attr_DataType, CLSID_DataType_Image}, {Attr_MainNumber, 1}});
    }
    unsigned SizeOf() const override { return sizeof(Saver); }

    bool ChecksRequests() const override { return false; }
    std::string FileToWrite(Request const& request) const override
    {
        auto const* pattern = dynamic_cast<Text const*>(request.InputData(*filename, 0));
        if (!pattern || pattern->value.empty()) return {};
        auto const frame = static_cast<int>(std::floor(request.GetTime()));
        return PathOfFrame(ResolvePath(Document(), pattern->value), frame);
    }

    void Process(Request* request) override
    {
        std::string const& pattern = dynamic_cast<Text const&>(*filename->GetValue(request, 0)).value;
        if (pattern.empty()) return request->Fail(Name() + ".Filename is empty: name the file to write");
        if (auto problem = CheckPattern(pattern))
            return request->Fail(Name() + ".Filename: " + problem->text);
        auto* const image = dynamic_cast<Image*>(picture->GetValue(request, 0));
        if (!image) return request->FailWithoutPicture(*picture);

        if (auto problem = WritePicture(*image, FileToWrite(*request)))
            return request->FailFile(Name() + ": " + problem->Format());
        output->Set(request, Ref<Image>::Share(image).Release(), nullptr);
    }

private:
    Input *filename, *picture;
    Output* output;
};

// Each frame is written, be it the same picture.
Registry const saverRegistry(ClassRegistry(), "Saver",
                             BuiltinTags<Saver>("Saver", "Writes a picture file or a sequence",
                                                Varies::kWithTime));

} // namespace

} // namespace ombrelune
