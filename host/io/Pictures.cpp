#include "host/io/Pictures.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

#include <fmt/format.h>

#include "host/io/AtomicFile.h"
#include "host/io/PictureModule.h"
#include "host/value/LoadModule.h"
#include "host/value/NearestName.h"

namespace ombrelune {

namespace fs = std::filesystem;

namespace {

struct Loaded {
    PictureModule const* module = nullptr;
    std::optional<Problem> problem;
};

Loaded Load(char const* name)
{
    ModuleEntry entry = LoadModule(name, kPictureModuleEntry, "the picture library");
    if (entry.problem) return {nullptr, std::move(entry.problem)};
    return {reinterpret_cast<PictureModule const* (*)()>(entry.function)(), {}};
}

Loaded const& Module()
{
    static Loaded const loaded = Load(kPictureModuleFile);
    return loaded;
}

/// The quick way for a format; null where there is none.
PictureModule const* QuickModule(PictureFormat format)
{
    if (format != PictureFormat::kTiff) return nullptr;
    static Loaded const loaded = Load(kTiffModuleFile);
    return loaded.module;
}

ReadResult ReadFull(std::string const& path, PictureFormat format)
{
    if (PictureModule const* const quick = QuickModule(format)) {
        ReadResult result = quick->read(path, format);
        if (result.image || result.problem) return result;
    }
    Loaded const& loaded = Module();
    return loaded.problem ? ReadResult{nullptr, loaded.problem} : loaded.module->read(path, format);
}

/// What went wrong, empty when nothing did.
std::string WriteFull(Image const& image, PictureFormat format, std::FILE* stream,
                      WriteOptions const& options)
{
    if (PictureModule const* const quick = QuickModule(format))
        if (auto wrong = quick->write(image, format, stream, options)) return *wrong;
    Loaded const& loaded = Module();
    return loaded.problem
               ? loaded.problem->Format()
               : loaded.module->write(image, format, stream, options).value_or("cannot be written");
}

/// ", did you mean 'x'?" for a file that is not there but has a near neighbour.
std::string NearestFile(fs::path const& path)
{
    std::vector<std::string> names;
    std::error_code error;
    fs::path const folder = path.has_parent_path() ? path.parent_path() : ".";
    for (fs::directory_iterator it(folder, error), end; !error && it != end && names.size() < 10000;
         it.increment(error))
        names.push_back(it->path().filename().string());
    std::sort(names.begin(), names.end());
    std::string const nearest = NearestName(path.filename().string(), names);
    return nearest.empty() ? "" : fmt::format("; did you mean {}?", Quoted(nearest));
}

struct Recognised {
    PictureFormat format = {};
    std::optional<Problem> problem;
};

/// Kind of a file that is there to be read; finds what is plainly wrong before the library sees it.
Recognised Recognise(std::string const& path)
{
    auto const wrong = [&](std::string text) { return Recognised{{}, Problem{path, 0, std::move(text)}}; };
    if (path.find('\0') != std::string::npos) return wrong("a file name cannot hold a zero byte");
    std::error_code error;
    auto const status = fs::status(path, error);
    if (!fs::exists(status)) {
        if (status.type() != fs::file_type::not_found) return wrong("cannot be read: " + error.message());
        return wrong("there is no such file" + NearestFile(path));
    }
    if (fs::is_directory(status)) return wrong("is a folder; give the name of a picture");
    if (!fs::is_regular_file(status)) return wrong("is no regular file");

    std::unique_ptr<std::FILE, int (*)(std::FILE*)> const file(std::fopen(path.c_str(), "rb"), &std::fclose);
    if (!file) return wrong("cannot be read: " + std::generic_category().message(errno));
    std::array<char, 8> start{};
    std::size_t const length = std::fread(start.data(), 1, start.size(), file.get());
    if (length == 0) return wrong("is empty; was it cut off, or is it still being written?");
    auto const format = FormatOfBytes({start.data(), length});
    if (!format) return wrong(fmt::format("is no picture of a known kind ({})", KnownFormats()));
    return {*format, {}};
}

ReadResult MakeProxy(std::string const& path, Image const& full, int proxy)
{
    Ref<Image> small =
        full.ResizeOfImage(std::max(1, full.Width() / proxy), std::max(1, full.Height() / proxy));
    if (!small) return {nullptr, Problem{path, 0, "there is not enough memory for the proxy"}};
    small->attributes.Set({Img_OriginalWidth, full.Width()}).Set({Img_OriginalHeight, full.Height()});
    return {std::move(small), {}};
}

} // namespace

ReadResult ReadPicture(std::string const& path, ReadOptions const& options)
{
    Recognised const recognised = Recognise(path);
    if (recognised.problem) return {nullptr, recognised.problem};
    ReadResult result = ReadFull(path, recognised.format);
    if (result.image && options.proxy > 1) return MakeProxy(path, *result.image, options.proxy);
    return result;
}

std::optional<Problem> CheckExtension(std::string const& path)
{
    if (FormatOfPath(path)) return std::nullopt;
    std::string const extension = fs::path(path).extension().string();
    return Problem{path, 0,
                   fmt::format("{}; known are {}",
                               extension.empty() ? "the name has no extension"
                                                 : "unknown extension " + Quoted(extension),
                               KnownExtensions())};
}

bool IsWrittenFile(std::string const& path)
{
    std::error_code error;
    if (!fs::is_regular_file(path, error) || fs::file_size(path, error) == 0) return false;
    auto const format = FormatOfPath(path);
    if (!format) return true;
    Recognised const recognised = Recognise(path);
    if (recognised.problem || recognised.format != *format) return false;
    if (PictureModule const* const quick = QuickModule(*format))
        if (auto const reads = quick->readsHeader(path, *format)) return *reads;
    Loaded const& loaded = Module();
    return loaded.module && loaded.module->readsHeader(path, *format).value_or(false);
}

std::optional<Problem> WritePicture(Image const& image, std::string const& path, WriteOptions const& options)
{
    if (auto problem = CheckExtension(path)) return problem;
    auto const format = FormatOfPath(path);
    AtomicFile file(path);
    if (auto problem = file.Open()) return problem;
    std::string const wrong = WriteFull(image, *format, file.Stream(), options);
    // A full disk makes the library fail in its own words; the file's own state is the better message.
    if (!wrong.empty() && !std::ferror(file.Stream())) return Problem{path, 0, wrong};
    return file.Commit();
}

} // namespace ombrelune
