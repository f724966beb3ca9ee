#include "host/io/PictureFormat.h"

#include <filesystem>

namespace ombrelune {

namespace {

using namespace std::string_view_literals;

struct Extension {
    std::string_view text;
    PictureFormat format;
};
constexpr Extension kExtensions[] = {
    {".png", PictureFormat::kPng},  {".tif", PictureFormat::kTiff},  {".tiff", PictureFormat::kTiff},
    {".jpg", PictureFormat::kJpeg}, {".jpeg", PictureFormat::kJpeg}, {".exr", PictureFormat::kExr},
    {".dpx", PictureFormat::kDpx},
};

struct Signature {
    std::string_view bytes;
    PictureFormat format;
};
constexpr Signature kSignatures[] = {
    {"\x89PNG\r\n\x1a\n"sv, PictureFormat::kPng},
    {"II*\0"sv, PictureFormat::kTiff},
    {"MM\0*"sv, PictureFormat::kTiff},
    {"II+\0"sv, PictureFormat::kTiff},
    {"MM\0+"sv, PictureFormat::kTiff},
    {"\xff\xd8\xff"sv, PictureFormat::kJpeg},
    {"\x76\x2f\x31\x01"sv, PictureFormat::kExr},
    {"SDPX"sv, PictureFormat::kDpx},
    {"XPDS"sv, PictureFormat::kDpx},
};

// By PictureFormat.
constexpr char const* kLabels[] = {"PNG", "TIFF", "JPEG", "OpenEXR", "DPX"};
constexpr char const* kLibraryNames[] = {"png", "tiff", "jpeg", "openexr", "dpx"};

} // namespace

char const* FormatLabel(PictureFormat format) { return kLabels[static_cast<int>(format)]; }

char const* LibraryName(PictureFormat format) { return kLibraryNames[static_cast<int>(format)]; }

std::optional<PictureFormat> FormatOfBytes(std::string_view start)
{
    for (Signature const& signature : kSignatures)
        if (start.substr(0, signature.bytes.size()) == signature.bytes) return signature.format;
    return {};
}

std::optional<PictureFormat> FormatOfPath(std::string_view path)
{
    std::string extension = std::filesystem::path(path).extension().string();
    for (char& c : extension)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    for (Extension const& known : kExtensions)
        if (extension == known.text) return known.format;
    return {};
}

std::string KnownExtensions()
{
    std::string list;
    for (Extension const& known : kExtensions) list.append(list.empty() ? "" : ", ").append(known.text);
    return list;
}

std::string KnownFormats()
{
    std::string list;
    for (char const* label : kLabels) list.append(list.empty() ? "" : ", ").append(label);
    return list;
}

} // namespace ombrelune
