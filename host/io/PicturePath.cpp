#include "host/io/PicturePath.h"

#include <algorithm>

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

} // namespace ombrelune
