#pragma once

#include <string>

namespace ombrelune {

/// Small text; an empty one reads as a null pointer.
class KString {
public:
    KString() = default;
    KString(char const* text) { Set(text); }

    /// Null when empty. Valid until the next change.
    char const* Text() const { return text_.empty() ? nullptr : text_.c_str(); }
    std::string const& String() const { return text_; }
    int Size() const { return static_cast<int>(text_.size()); }
    bool operator==(KString const&) const = default;

    void Set(char const* text) { text_ = text ? text : ""; }
    void Clear() { text_.clear(); }
    void Copy(KString const& other) { text_ = other.text_; }
    void Add(KString const& other) { text_ += other.text_; }
    void Add(char const* text) { text_ += text ? text : ""; }

    /// Becomes "base7", or with `space` "base 7".
    char const* Numbered(char const* base, int n, bool space);
    /// Becomes the two texts joined.
    char const* Concatenate(char const* a, char const* b);
    /// Becomes the source's letters, digits and underscores up to its first "(": an identifier.
    char const* Scriptify(KString const& source);

private:
    std::string text_;
};

} // namespace ombrelune
