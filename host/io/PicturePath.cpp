#include "host/io/PicturePath.h"

#include <algorithm>
#include <charconv>
#include <filesystem>

#include <fmt/format.h>

namespace ombrelune {

namespace {

constexpr std::size_t kWidest = 20;

struct Field {
    std::size_t begin, length, width;
};

/// Length and width of the "%d", "%04d" that stands at a place, if one does.
std::optional<Field> PercentField(std::string_view path, std::size_t begin)
{
    std::size_t at = begin + 1, width = 0;
    if (at < path.size() && path[at] == '0')
        for (++at; at < path.size() && path[at] >= '0' && path[at] <= '9'; ++at)
            width = std::min<std::size_t>(width * 10 + static_cast<std::size_t>(path[at] - '0'), 1000);
    if (at >= path.size() || path[at] != 'd') return {};
    return Field{begin, at + 1 - begin, width};
}

/// First field from a place on. One lone '#' counts, with width 1, so that it can be refused.
std::optional<Field> NextField(std::string_view path, std::size_t from)
{
    for (std::size_t i = from; i < path.size(); ++i) {
        if (path[i] == '#') {
            std::size_t const length = std::min(path.find_first_not_of('#', i), path.size()) - i;
            return Field{i, length, length};
        }
        if (path[i] == '%')
            if (auto field = PercentField(path, i)) return field;
    }
    return {};
}

/// Frame whose path this is.
std::optional<int> FrameOfPath(std::string_view pattern, Field const& field, std::string_view path)
{
    std::size_t end = field.begin + (path.substr(field.begin, 1) == "-" ? 1 : 0);
    while (end < path.size() && path[end] >= '0' && path[end] <= '9') ++end;
    // What follows the field may start with a digit, so the longest number need not be the right one.
    for (; end > field.begin; --end) {
        int frame = 0;
        auto const [stop, error] = std::from_chars(path.data() + field.begin, path.data() + end, frame);
        if (error == std::errc{} && stop == path.data() + end && PathOfFrame(pattern, frame) == path)
            return frame;
    }
    return {};
}

bool IsLoneHash(std::string_view path, Field const& field)
{
    return field.length == 1 && path[field.begin] == '#';
}

} // namespace

bool IsPattern(std::string_view path)
{
    for (auto field = NextField(path, 0); field; field = NextField(path, field->begin + field->length))
        if (!IsLoneHash(path, *field)) return true;
    return false;
}

std::optional<Problem> CheckPattern(std::string const& path)
{
    std::size_t const folders = path.rfind('/') == std::string::npos ? 0 : path.rfind('/') + 1;
    for (auto field = NextField(path, 0); field; field = NextField(path, field->begin + field->length)) {
        // A folder may well be called "take #2"; nobody can be asked to rename it.
        if (IsLoneHash(path, *field) && field->begin >= folders)
            return Problem{path, 0, "one '#' alone is no frame number; write '####' or '%04d'"};
        if (field->width > kWidest)
            return Problem{path, 0, fmt::format("a frame number has at most {} digits", kWidest)};
    }
    return {};
}

std::string PathOfFrame(std::string_view path, int frame)
{
    std::string expanded;
    std::size_t done = 0;
    for (auto field = NextField(path, 0); field; field = NextField(path, field->begin + field->length)) {
        if (IsLoneHash(path, *field)) continue;
        expanded += path.substr(done, field->begin - done);
        expanded += fmt::format("{:0{}d}", frame, std::min(field->width, kWidest));
        done = field->begin + field->length;
    }
    return expanded.append(path.substr(done));
}

std::vector<int> FramesOnDisk(std::string const& pattern)
{
    auto field = NextField(pattern, 0);
    while (field && IsLoneHash(pattern, *field)) field = NextField(pattern, field->begin + field->length);
    std::filesystem::path const folder = std::filesystem::path(pattern).parent_path();
    std::vector<int> frames;
    if (!field || field->begin < folder.native().size()) return frames;

    std::error_code error;
    std::filesystem::directory_iterator const files(folder.empty() ? "." : folder, error);
    if (error) return frames;
    for (auto it = begin(files); it != end(files); it.increment(error)) {
        std::string const path = (folder / it->path().filename()).string();
        if (path.size() <= field->begin) continue;
        if (auto const frame = FrameOfPath(pattern, *field, path)) frames.push_back(*frame);
        if (error) break;
    }
    std::sort(frames.begin(), frames.end());
    return frames;
}

} // namespace ombrelune
