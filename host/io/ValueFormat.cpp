#include "host/io/ValueFormat.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <vector>

#include <fmt/format.h>

#include "host/io/AtomicFile.h"

namespace ombrelune {

namespace {

std::vector<ValueFormatRegistration const*>& Registrations()
{
    static std::vector<ValueFormatRegistration const*> all;
    return all;
}

std::string ExtensionOf(std::string_view path)
{
    std::string extension = std::filesystem::path(path).extension().string();
    if (!extension.empty()) extension.erase(0, 1);
    for (char& c : extension) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return extension;
}

} // namespace

ValueFormatRegistration::ValueFormatRegistration(ValueFormat format) : format_(std::move(format))
{
    Registrations().push_back(this);
}

ValueFormatRegistration::~ValueFormatRegistration() { std::erase(Registrations(), this); }

ValueFormat const* FindValueFormat(FuID dataType, std::string_view path)
{
    std::string const extension = ExtensionOf(path);
    for (ValueFormatRegistration const* entry : Registrations())
        if (entry->Format().dataType == dataType && entry->Format().extension == extension)
            return &entry->Format();
    return nullptr;
}

std::string ValueFileNames(FuID dataType)
{
    std::string names;
    for (ValueFormatRegistration const* entry : Registrations())
        if (entry->Format().dataType == dataType)
            names += fmt::format("{}name.{}", names.empty() ? "" : " or ", entry->Format().extension);
    return names;
}

std::optional<Problem> WriteValue(Parameter const& value, FrameFormat const& frame, std::string const& path)
{
    ValueFormat const* format = FindValueFormat(value.DataType(), path);
    if (!format)
        return Problem{.file = path, .text = fmt::format("write {}", ValueFileNames(value.DataType()))};
    std::string bytes;
    if (auto problem = format->write(value, frame, bytes)) {
        problem->file = path;
        return problem;
    }
    AtomicFile file(path);
    if (auto problem = file.Open()) return problem;
    std::fwrite(bytes.data(), 1, bytes.size(), file.Stream());
    return file.Commit();
}

} // namespace ombrelune
