#include "image/KString.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace ombrelune {

char const* KString::Numbered(char const* base, int n, bool space)
{
    Set(base);
    if (space) text_ += ' ';
    text_ += std::to_string(n);
    return Text();
}

char const* KString::Concatenate(char const* a, char const* b)
{
    std::string joined = a ? a : "";
    joined += b ? b : "";
    text_ = std::move(joined);
    return Text();
}

char const* KString::Scriptify(KString const& source)
{
    constexpr std::string_view allowed = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_";
    std::string_view const name = std::string_view(source.text_).substr(0, source.text_.find('('));
    std::string id;
    std::copy_if(name.begin(), name.end(), std::back_inserter(id),
                 [&](char c) { return allowed.find(c) != std::string_view::npos; });
    text_ = std::move(id);
    return Text();
}

} // namespace ombrelune
