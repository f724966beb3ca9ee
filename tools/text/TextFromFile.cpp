// From file: one line of a text file, or of a text, chosen by the frame.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "framework/Registration.h"
#include "image/PixelMath.h"

namespace ombrelune {

namespace {

/// The lines of a text, one after the other. The search for the end of a line starts one character late, so
/// an empty line does not end one but becomes the beginning of the next.
class LineWalk {
public:
    explicit LineWalk(FuStringT<char> const& text) : text_(text), end_(text.find('\n')) {}

    FuStringT<char> Line() const { return text_.substr(start_, end_ - start_); }
    /// False at the last line, which stays.
    bool Next()
    {
        if (end_ == std::string::npos) return false;
        start_ = end_ + 1;
        end_ = text_.find('\n', end_ + 2);
        return true;
    }

private:
    FuStringT<char> const& text_;
    std::size_t start_ = 0, end_;
};

/// A file byte by byte, empty when it cannot be opened.
FuStringT<char> ContentsOf(FuStringT<char> const& filename)
{
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> const file(std::fopen(filename.c_str(), "r"),
                                                               &std::fclose);
    FuStringT<char> text;
    if (!file) return text;
    char block[1 << 16];
    while (std::size_t const count = std::fread(block, 1, sizeof block, file.get()))
        text.append(block, count);
    return text;
}

} // namespace

class KEffectTextFromFile : public KEffectText {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "FrFl", "From file", "Retrieve text from file");
    }

    KEffectTextFromFile()
    {
        // clang-format off
        parameters.AddChapter("From File");
        parameters.AddButtons  (&source,   0,  "Source",   "Sour"_id, KF_AffectInputs, {"File", "Textbox"});
        parameters.AddFilename (&filename, "", "Filename", "FiNa"_id, 0, "Text file (*.txt)|*.txt");
        parameters.AddText     (&text,     "", "Text",     "Text"_id, 0, 30);
        parameters.AddList     (&format,   1,  "Format",   "FiFo"_id, KF_AffectInputs,
                                {"Each line a frame", "Startframe and text", "Line on frame..."});
        parameters.AddSliderInt(&holdFrames, 1,  "Hold frames", "Hold"_id, KF_SoftMax, 1, 25);
        parameters.AddCheckbox (&loop,     false, "Loop",    "Loop"_id, 0);
        parameters.AddSliderInt(&line,     0,  "Line",     "Line"_id, KF_SoftMax, 0, 100);
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        int const v = value.intValue;
        switch (id) {
        case "Sour"_id:
            messages->Show("FiNa"_id, v == 0);
            messages->Show("Text"_id, v == 1);
            break;
        case "FiFo"_id:
            messages->Show("Hold"_id, v == 0);
            messages->Show("Loop"_id, v == 0);
            messages->Show("Line"_id, v == 2);
            break;
        }
        return messages;
    }

    static int GetLineCount(FuStringT<char> const& all)
    {
        return all.empty() ? 0 : 1 + static_cast<int>(std::count(all.begin(), all.end(), '\n'));
    }
    static FuStringT<char> GetLine(FuStringT<char> const& all, int n)
    {
        LineWalk walk(all);
        for (int i = 0; i < n && walk.Next(); ++i) {
        }
        return walk.Line();
    }

    void ProcessData() override
    {
        int const frame = TruncateToInt(data.time);
        FuStringT<char> const all = source == 0 ? ContentsOf(filename) : source == 1 ? text : "";
        int const count = GetLineCount(all);
        result.clear();
        switch (format) {
        case 0: {
            int index = frame / std::max(holdFrames, 1);
            if (loop && count > 0) index %= count;
            if (index < count) result = GetLine(all, index);
            break;
        }
        case 1: result = TextAt(all, frame); break;
        case 2:
            if (line >= 0 && line < count) result = GetLine(all, line);
            break;
        }
        for (std::size_t at = 0; (at = result.find("\\n", at)) != std::string::npos; at += 2)
            result.replace(at, 2, "\r\n");
    }

    int source; // 0 file, 1 the text
    FuStringT<char> filename, text;
    int format; // 0 each line a frame, 1 start frame and text, 2 one line
    int holdFrames;
    bool loop;
    int line;

private:
    /// Text of the last line whose start frame is reached; lines are in order of their frames.
    static FuStringT<char> TextAt(FuStringT<char> const& all, int frame)
    {
        FuStringT<char> found;
        int start = -1;
        LineWalk walk(all);
        do {
            if (start >= frame) break;
            FuStringT<char> each = walk.Line();
            each.erase(0, std::min(each.find_first_not_of(" \t\r\n\v\f"), each.size()));
            if (each.empty()) continue;
            std::size_t const separator = each.find_first_of(" \t");
            start = std::atoi(each.substr(0, separator).c_str());
            if (separator != std::string::npos && start <= frame) found = each.substr(separator + 1);
        } while (walk.Next());
        return found;
    }
};

OMBRELUNE_TOOL(BF_TextFromFile, BF_ThreadedOperator, KEffectTextFromFile, .outputType = CLSID_DataType_Text,
               .isTimeVariant = true);

} // namespace ombrelune
