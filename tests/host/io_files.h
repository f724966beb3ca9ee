#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

// Picture files made byte by byte, so that what a reader should see is known without a writer.

namespace ombrelune::testing_files {

/// A folder for one test, removed afterwards.
class TemporaryFolder {
public:
    TemporaryFolder()
        : path_(std::filesystem::temp_directory_path() /
                ("ombrelune-" + std::to_string(getpid()) + "-" +
                 testing::UnitTest::GetInstance()->current_test_info()->name()))
    {
        std::filesystem::create_directories(path_);
    }
    ~TemporaryFolder() { std::filesystem::remove_all(path_); }

    std::string operator/(std::string const& name) const { return (path_ / name).string(); }
    std::vector<std::string> Names() const
    {
        std::vector<std::string> names;
        for (auto const& entry : std::filesystem::directory_iterator(path_))
            names.push_back(entry.path().filename().string());
        return names;
    }

private:
    std::filesystem::path path_;
};

inline void Save(std::string const& path, std::string const& bytes)
{
    std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

inline std::string Load(std::string const& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

template <class T> std::string Little(T value)
{
    std::string bytes(sizeof value, '\0');
    std::memcpy(bytes.data(), &value, sizeof value);
    return bytes;
}
template <class T> std::string Big(T value)
{
    std::string const bytes = Little(value);
    return {bytes.rbegin(), bytes.rend()};
}
template <class T> std::string LittleAll(std::vector<T> const& values)
{
    std::string bytes;
    for (T value : values) bytes += Little(value);
    return bytes;
}

inline std::string PngChunk(std::string const& typeAndData)
{
    std::uint32_t crc = 0xffffffff;
    for (char c : typeAndData) {
        crc ^= static_cast<unsigned char>(c);
        for (int bit = 0; bit < 8; ++bit) crc = crc & 1 ? crc >> 1 ^ 0xedb88320 : crc >> 1;
    }
    return Big(static_cast<std::uint32_t>(typeAndData.size() - 4)) + typeAndData + Big(~crc);
}

/// @param colourType  0 grey, 2 RGB, 4 grey and alpha, 6 RGBA
/// @param rows        each row's samples as stored, from the top; unfiltered and uncompressed
inline std::string Png(std::uint32_t width, std::uint32_t height, int bits, int colourType,
                       std::vector<std::string> const& rows)
{
    std::string raw;
    for (std::string const& row : rows) raw += '\0' + row;
    std::uint32_t a = 1, b = 0;
    for (char c : raw) {
        a = (a + static_cast<unsigned char>(c)) % 65521;
        b = (b + a) % 65521;
    }
    auto const size = static_cast<std::uint16_t>(raw.size());
    std::string const stored = std::string("\x78\x01\x01") + Little(size) +
                               Little(static_cast<std::uint16_t>(~size)) + raw + Big(b << 16 | a);
    return std::string("\x89PNG\r\n\x1a\n") +
           PngChunk("IHDR" + Big(width) + Big(height) + static_cast<char>(bits) +
                    static_cast<char>(colourType) + std::string(3, '\0')) +
           PngChunk("IDAT" + stored) + PngChunk("IEND");
}

struct TiffTag {
    std::uint16_t tag;
    std::uint16_t value;
};

/// Uncompressed little-endian TIFF of one strip. Further tags must have numbers above 279, in order.
inline std::string Tiff(std::uint16_t width, std::uint16_t height, std::uint16_t channels, std::uint16_t bits,
                        std::string const& pixels, std::vector<TiffTag> const& further = {})
{
    struct Entry {
        std::uint16_t tag, type;
        std::uint32_t count, value;
    };
    auto const photometric = static_cast<std::uint32_t>(channels >= 3 ? 2 : 1);
    std::vector<Entry> entries = {{256, 3, 1, width},
                                  {257, 3, 1, height},
                                  {258, 3, channels, 0},
                                  {259, 3, 1, 1},
                                  {262, 3, 1, photometric},
                                  {273, 4, 1, 0},
                                  {277, 3, 1, channels},
                                  {278, 3, 1, height},
                                  {279, 4, 1, static_cast<std::uint32_t>(pixels.size())}};
    for (TiffTag const& tag : further) {
        Entry const entry = {tag.tag, 3, 1, tag.value};
        entries.insert(tag.tag == 274 ? entries.begin() + 6 : entries.end(), entry);
    }
    auto const afterDirectory = static_cast<std::uint32_t>(8 + 2 + 12 * entries.size() + 4);
    for (Entry& entry : entries) {
        if (entry.tag == 258) entry.value = channels > 2 ? afterDirectory : bits * 0x10001U;
        if (entry.tag == 273) entry.value = afterDirectory + 2U * channels;
    }
    std::string file = "II*" + std::string(1, '\0') + Little(std::uint32_t{8}) +
                       Little(static_cast<std::uint16_t>(entries.size()));
    for (Entry const& e : entries) file += Little(e.tag) + Little(e.type) + Little(e.count) + Little(e.value);
    file += Little(std::uint32_t{0}) + LittleAll(std::vector<std::uint16_t>(channels, bits));
    return file + pixels;
}

struct Window {
    int left, top, right, bottom; // all inside
};
struct ExrChannel {
    std::string name;
    float base; // sample at x, y of the data window is base + x + 10 y
};

/// Uncompressed OpenEXR of float channels, which must be in alphabetical order.
inline std::string Exr(Window data, Window display, std::vector<ExrChannel> const& channels,
                       float aspect = 1.0F)
{
    auto const attribute = [](std::string const& name, std::string const& type, std::string const& value) {
        return name + '\0' + type + '\0' + Little(static_cast<std::int32_t>(value.size())) + value;
    };
    auto const box = [](Window w) {
        return Little(w.left) + Little(w.top) + Little(w.right) + Little(w.bottom);
    };
    std::string list;
    for (ExrChannel const& channel : channels)
        list += channel.name + '\0' + Little(2) + std::string(4, '\0') + Little(1) + Little(1);
    std::string file = Little(20000630) + Little(2) + attribute("channels", "chlist", list + '\0') +
                       attribute("compression", "compression", std::string(1, '\0')) +
                       attribute("dataWindow", "box2i", box(data)) +
                       attribute("displayWindow", "box2i", box(display)) +
                       attribute("lineOrder", "lineOrder", std::string(1, '\0')) +
                       attribute("pixelAspectRatio", "float", Little(aspect)) +
                       attribute("screenWindowCenter", "v2f", Little(0.0F) + Little(0.0F)) +
                       attribute("screenWindowWidth", "float", Little(1.0F)) + '\0';
    int const width = data.right - data.left + 1, height = data.bottom - data.top + 1;
    auto const rowBytes = static_cast<std::size_t>(width) * channels.size() * 4;
    std::size_t const rowsBegin = file.size() + 8 * static_cast<std::size_t>(height);
    for (int y = 0; y < height; ++y)
        file += Little(static_cast<std::uint64_t>(rowsBegin + static_cast<std::size_t>(y) * (rowBytes + 8)));
    for (int y = 0; y < height; ++y) {
        file += Little(data.top + y) + Little(static_cast<std::int32_t>(rowBytes));
        for (ExrChannel const& channel : channels)
            for (int x = 0; x < width; ++x)
                file += Little(channel.base + static_cast<float>(x) + 10.0F * static_cast<float>(y));
    }
    return file;
}

/// Big-endian DPX with three samples in a word, the first in the highest bits.
/// @param channels  3 RGB, 4 RGBA
inline std::string TenBitDpx(std::uint32_t width, std::uint32_t height, int channels,
                             std::vector<std::uint32_t> const& samples)
{
    std::string header(2048, '\0');
    auto const put = [&](std::size_t offset, std::string const& bytes) {
        header.replace(offset, bytes.size(), bytes);
    };
    put(0, "SDPX");
    put(4, Big(std::uint32_t{2048}));
    put(8, "V1.0");
    put(770, Big(std::uint16_t{1})); // one element
    put(772, Big(width) + Big(height));
    put(800, {static_cast<char>(channels == 3 ? 50 : 51), 0, 0, 10});
    put(804, Big(std::uint16_t{1}) + Big(std::uint16_t{0}) + Big(std::uint32_t{2048}));
    std::size_t const rowSamples = width * static_cast<std::size_t>(channels);
    std::string words;
    for (std::size_t row = 0; row < samples.size(); row += rowSamples)
        for (std::size_t i = row; i < row + rowSamples; i += 3) {
            std::uint32_t word = 0;
            for (std::size_t k = i; k < std::min(i + 3, row + rowSamples); ++k)
                word |= samples[k] << (22 - 10 * (k - i));
            words += Big(word);
        }
    put(16, Big(static_cast<std::uint32_t>(2048 + words.size())));
    return header + words;
}

} // namespace ombrelune::testing_files
