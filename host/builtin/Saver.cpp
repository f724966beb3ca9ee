// Saver: writes its picture to a file, or to the frame of a sequence, and hands it on.

#include <cmath>

#include <fmt/format.h>

#include "host/builtin/BuiltinOperator.h"
#include "host/graph/FusionDoc.h"
#include "host/io/PicturePath.h"
#include "host/io/Pictures.h"

namespace ombrelune {

namespace {

class Saver : public BuiltinOperator<Operator> {
public:
    Saver(Registry const* registry, ScriptVal const& settings, TagList const& tags)
        : BuiltinOperator(registry, settings, tags)
    {
        AddIdentityInput();
        AddControlPageTagList("File", {});
        filename = AddFile();
        picture = AddPicture("Input", 1, true);
        output = AddPictureOutput();
    }
    unsigned SizeOf() const override { return sizeof(Saver); }

    bool ChecksRequests() const override { return false; }
    std::string FileToWrite(Request const& request) const override
    {
        std::string const pattern = TextOf(filename, request);
        if (pattern.empty()) return {};
        auto const frame = static_cast<int>(std::floor(request.GetTime()));
        return PathOfFrame(ResolvePath(Document(), pattern), frame);
    }

    void Process(Request* request) override
    {
        std::string const pattern = TextOf(filename, *request);
        if (pattern.empty()) return request->Fail(Name() + ".Filename is empty: name the file to write");
        if (auto problem = CheckPattern(pattern))
            return request->Fail(Name() + ".Filename: " + problem->text);
        Ref<Image> image = PictureOf(picture, request);
        if (!image) return request->FailWithoutPicture(*picture);

        if (auto problem = WritePicture(*image, FileToWrite(*request)))
            return request->FailFile(Name() + ": " + problem->Format());
        output->Set(request, image.Release(), nullptr);
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
