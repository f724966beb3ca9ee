// Loader: a picture file, or the frame of a sequence that the time asks for.

#include <algorithm>
#include <cmath>
#include <filesystem>

#include <fmt/format.h>

#include "host/builtin/BuiltinOperator.h"
#include "host/graph/FusionDoc.h"
#include "host/io/PicturePath.h"
#include "host/io/Pictures.h"

namespace ombrelune {

namespace {

class Loader : public BuiltinOperator<Operator> {
public:
    Loader(Registry const* registry, ScriptVal const& settings, TagList const& tags)
        : BuiltinOperator(registry, settings, tags)
    {
        AddControlPageTagList("File", {});
        filename = AddFile();
        AddControlPageTagList("Sequence", {});
        offset = AddFrames("Offset", "Offset", 0.0, true);
        step = AddFrames("Step", "Step", 1.0, false);
        trim = AddCheckbox("Trim", "Trim", false);
        trimIn = AddFrames("Trim In", "TrimIn", 0.0, true);
        trimOut = AddFrames("Trim Out", "TrimOut", 0.0, true);
        loop = AddCheckbox("Loop", "Loop", false);
        output = AddPictureOutput();
    }
    unsigned SizeOf() const override { return sizeof(Loader); }

    bool ChecksRequests() const override { return false; }
    SourceFile FileToRead(Request const& request) const override
    {
        return {Find(request).path, IsPattern(TextOf(filename, request))};
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

    Input* AddFrames(char const* label, char const* id, double value, bool isInteger)
    {
        return AddNumber(label, id, CLSID_InputControl_Screw, value,
                         {{Attr_IntegerValue, isInteger}, {Attr_MinHard, -1e6}, {Attr_MaxHard, 1e6}});
    }

    Found Find(Request const& request) const
    {
        std::string const name = TextOf(filename, request);
        if (name.empty()) return {"", ".Filename is empty: name a picture file"};
        if (auto problem = CheckPattern(name)) return {"", ".Filename: " + problem->text};
        std::string const pattern = ResolvePath(Document(), name);
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
