// Loader: a picture file, or the frame of a sequence that the time asks for.

#include <algorithm>
#include <cmath>
#include <filesystem>

#include <fmt/format.h>

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
        AddControlPageTagList("Sequence", {});
        offset = AddNumber("Offset", 0.0, true);
        step = AddNumber("Step", 1.0, false);
        trim = AddCheckbox("Trim");
        trimIn = AddNumber("Trim In", 0.0, true);
        trimOut = AddNumber("Trim Out", 0.0, true);
        loop = AddCheckbox("Loop");
        output = AddOutputTagList("Output", "Output",
                                  {{Attr_DataType, CLSID_DataType_Image}, {Attr_MainNumber, 1}});
    }
    unsigned SizeOf() const override { return sizeof(Loader); }

    bool ChecksRequests() const override { return false; }
    SourceFile FileToRead(Request const& request) const override
    {
        auto const* pattern = dynamic_cast<Text const*>(request.InputData(*filename, 0));
        return {Find(request).path, pattern && IsPattern(pattern->value)};
    }

    void Process(Request* request) override
    {
        Found const found = Find(*request);
        if (!found.problem.empty())
            return found.isGap ? request->FailGap(Name() + found.problem, found.isFile)
                               : request->Fail(Name() + found.problem);
        if (found.path.empty()) return output->Set(request, Black(*request).Release(), nullptr);
        ReadResult read = ReadPicture(found.path, {.proxy = request->Quality().proxy});
        if (read.problem) return request->FailFile(Name() + ": " + read.problem->Format());
        output->Set(request, read.image.Release(), nullptr);
    }

private:
    /// What a request is answered with: a file, or a black frame without one, or a problem.
    struct Found {
        std::string path = {}, problem = {};
        bool isGap = false;  ///< the problem is a frame that the sequence does not have
        bool isFile = false; ///< and its file is not there
    };

    Input* AddNumber(char const* name, double value, bool isInteger)
    {
        return AddInputTagList(name, KeyName(name),
                               {{Attr_DataType, CLSID_DataType_Number},
                                {Attr_InputControl, CLSID_InputControl_Screw},
                                {Attr_IntegerValue, isInteger},
                                {Attr_MinHard, -1e6},
                                {Attr_MaxHard, 1e6},
                                {Attr_Default, value}});
    }
    Input* AddCheckbox(char const* name)
    {
        return AddInputTagList(name, KeyName(name),
                               {{Attr_DataType, CLSID_DataType_Number},
                                {Attr_InputControl, CLSID_InputControl_Checkbox},
                                {Attr_MinHard, 0.0},
                                {Attr_MaxHard, 1.0},
                                {Attr_Default, 0.0}});
    }
    static std::string KeyName(std::string name)
    {
        std::erase(name, ' ');
        return name;
    }

    Found Find(Request const& request) const
    {
        auto const* text = dynamic_cast<Text const*>(request.InputData(*filename, 0));
        if (!text || text->value.empty()) return {"", ".Filename is empty: name a picture file"};
        if (auto problem = CheckPattern(text->value)) return {"", ".Filename: " + problem->text};
        std::string const pattern = ResolvePath(Document(), text->value);
        if (!IsPattern(pattern)) return {pattern, ""};

        // The frame is made whole first, so that a negative step takes the same file for all of it.
        double const frame = std::floor(request.GetTime());
        auto number =
            static_cast<int>(std::floor(frame * request.Number(*step) + request.Number(*offset) + 1e-9));
        MissingFrame const missing = request.Quality().missing;
        if (request.Number(*trim) > 0.5) {
            auto const first = static_cast<int>(request.Number(*trimIn));
            auto const last = static_cast<int>(request.Number(*trimOut));
            if (first > last) return {"", fmt::format(": Trim In {} lies after Trim Out {}", first, last)};
            int const count = last - first + 1;
            bool const outside = number < first || number > last;
            if (request.Number(*loop) > 0.5) number = first + ((number - first) % count + count) % count;
            else if (outside && missing == MissingFrame::kBlack) return {};
            else if (outside && missing == MissingFrame::kHold) number = std::clamp(number, first, last);
            else if (outside)
                return {"",
                        fmt::format(" is trimmed to {}-{}: turn on Loop, or render with --missing hold "
                                    "or black",
                                    first, last),
                        true};
        }
        std::string const path = PathOfFrame(pattern, number);
        if (std::error_code error; std::filesystem::exists(path, error)) return {path, ""};
        // A sequence of which there is nothing is a wrong name, not a gap.
        std::vector<int> const there = FramesOnDisk(pattern);
        if (there.empty()) return {path, ""};
        if (missing == MissingFrame::kBlack) return {};
        if (missing == MissingFrame::kError)
            return {path,
                    fmt::format(": {}: there is no such file, but {} frames from {} to {}; --missing hold or "
                                "black renders over gaps",
                                path, there.size(), there.front(), there.back()),
                    true, true};
        auto const after = std::upper_bound(there.begin(), there.end(), number);
        return {PathOfFrame(pattern, after == there.begin() ? *after : *std::prev(after)), ""};
    }

    /// Transparent black in the document's format.
    Ref<Image> Black(Request const& request) const
    {
        FrameFormat const& format = FormatOf(Document());
        int const proxy = request.Quality().proxy;
        Ref<Image> image = NewImageTagList({{Img_Document, &format},
                                            {Img_Width, std::max(format.width / proxy, 1)},
                                            {Img_Height, std::max(format.height / proxy, 1)}});
        if (image) image->Clear();
        return image;
    }

    Input *filename, *offset, *step, *trim, *trimIn, *trimOut, *loop;
    Output* output;
};

Registry const loaderRegistry(ClassRegistry(), "Loader",
                              BuiltinTags<Loader>("Loader", "Reads a picture file or a sequence"));

} // namespace

} // namespace ombrelune
