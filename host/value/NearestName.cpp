#include "host/value/NearestName.h"

#include <algorithm>
#include <array>

namespace ombrelune {

namespace {

constexpr std::size_t kLongest = 128; // nobody mistypes more than this, and the distance costs the square

std::string Lower(std::string_view text)
{
    std::string lower(text);
    for (char& c : lower)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return lower;
}

/// Insertions, removals, replacements and swaps of neighbours that turn one text into the other.
std::size_t TypingErrors(std::string_view a, std::string_view b)
{
    // before[j], above[j], row[j]: errors between the first i - 2, i - 1, i letters of a and j of b.
    std::array<std::size_t, kLongest + 1> before{}, above{}, row{};
    for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        before = above;
        above = row;
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            bool const same = a[i - 1] == b[j - 1];
            row[j] = std::min({above[j] + 1, row[j - 1] + 1, above[j - 1] + (same ? 0 : 1)});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                row[j] = std::min(row[j], before[j - 2] + 1);
        }
    }
    return row[b.size()];
}

} // namespace

std::string NearestName(std::string_view name, std::vector<std::string> const& candidates)
{
    if (name.empty() || name.size() > kLongest) return {};
    std::string const wanted = Lower(name);
    std::size_t least = std::max<std::size_t>(1, name.size() / 4) + 1;
    std::string nearest;
    for (std::string const& candidate : candidates) {
        std::size_t const longer = std::max(candidate.size(), name.size());
        if (longer > kLongest || longer - std::min(candidate.size(), name.size()) >= least) continue;
        std::size_t const errors = TypingErrors(wanted, Lower(candidate));
        if (errors >= least) continue;
        least = errors;
        nearest = candidate;
    }
    return nearest;
}

std::string DidYouMean(std::string_view name, std::vector<std::string> const& candidates)
{
    std::string const near = NearestName(name, candidates);
    return near.empty() ? "" : "; did you mean '" + near + "'?";
}

} // namespace ombrelune
