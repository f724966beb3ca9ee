#include "host/io/pictures/HeaderSizes.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string_view>

namespace ombrelune {

namespace {

constexpr std::streamoff kUnknown = -1; // the file ends before, which the library tells well enough

/// A number of four bytes, the lowest first unless the highest is.
std::streamoff ReadSize(std::istream& file, bool highestFirst = false)
{
    std::array<unsigned char, 4> bytes{};
    if (!file.read(reinterpret_cast<char*>(bytes.data()), bytes.size())) return kUnknown;
    std::uint32_t size = 0;
    for (std::size_t i = 0; i < 4; ++i) size = size << 8 | bytes[highestFirst ? i : 3 - i];
    return size;
}

bool HasTooMuchUserData(std::istream& file, std::streamoff end)
{
    bool const highestFirst = file.get() == 'S'; // of "SDPX"
    file.seekg(32);
    std::streamoff const size = ReadSize(file, highestFirst);
    return size != 0xFFFFFFFF && size > end; // all bits mean that none was told
}

/// Up to and with the byte of 0; false at the end of the file.
bool SkipName(std::istream& file, bool& isEmpty)
{
    isEmpty = file.peek() == 0;
    for (int c = file.get(); c != 0; c = file.get())
        if (!file) return false;
    return true;
}

/// Headers are lists of name, type, size and bytes, up to an empty name; parts follow each other up to an
/// empty list.
bool HasTooLongAttribute(std::istream& file, std::streamoff end)
{
    constexpr std::streamoff kManyParts = 0x1000;
    file.seekg(4);
    bool const hasMany = (ReadSize(file) & kManyParts) != 0;
    for (bool isFirst = true, isEmpty = false; SkipName(file, isEmpty); isFirst = isEmpty) {
        if (isEmpty) {
            if (isFirst || !hasMany) return false;
            continue;
        }
        bool isTypeEmpty = false;
        if (!SkipName(file, isTypeEmpty)) return false;
        std::streamoff const size = ReadSize(file);
        if (size == kUnknown) return false;
        if (size > end - file.tellg()) return true;
        file.seekg(size, std::ios::cur);
    }
    return false;
}

/// Chunks are a length, a name of four letters, bytes and a checksum; the header ends where pixels (IDAT)
/// begin.
bool HasTooLongChunk(std::istream& file, std::streamoff end)
{
    file.seekg(8);
    for (;;) {
        std::streamoff const size = ReadSize(file, true);
        std::array<char, 4> name{};
        if (!file.read(name.data(), name.size()) || std::string_view(name.data(), 4) == "IDAT") return false;
        if (size > end - file.tellg()) return true;
        file.seekg(size + 4, std::ios::cur);
    }
}

} // namespace

bool AnnouncesMoreThanItHolds(std::string const& path, PictureFormat format)
{
    std::error_code error;
    auto const end = static_cast<std::streamoff>(std::filesystem::file_size(path, error));
    std::ifstream file(path, std::ios::binary);
    if (error || !file) return false;
    switch (format) {
    case PictureFormat::kDpx: return HasTooMuchUserData(file, end);
    case PictureFormat::kExr: return HasTooLongAttribute(file, end);
    case PictureFormat::kPng: return HasTooLongChunk(file, end);
    default: return false;
    }
}

} // namespace ombrelune
