// Files that effects read by themselves: where they lie, and what is at fault with them.

#include "framework/KTool.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

#include <fmt/format.h>

#include "host/graph/FusionDoc.h"

namespace ombrelune {

namespace fs = std::filesystem;

namespace {

constexpr std::uintmax_t kHugeText = 64U << 20;

/// Empty when nothing is.
std::string FaultOfText(std::string const& path)
{
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> const file(std::fopen(path.c_str(), "rb"), &std::fclose);
    if (!file) return std::generic_category().message(errno) + "; the text is empty";
    std::array<char, 4096> start{};
    std::size_t const length = std::fread(start.data(), 1, start.size(), file.get());
    if (std::find(start.begin(), start.begin() + length, '\0') != start.begin() + length)
        return "holds zero bytes; is it a text file?";
    std::error_code error;
    if (auto const size = fs::file_size(path, error); !error && size > kHugeText)
        return fmt::format("is {} MiB long and read whole for every frame", size >> 20);
    return {};
}

} // namespace

std::string KTool::ResolvedFile(std::string const& name) const
{
    return name.empty() ? name : ResolvePath(inputHost ? inputHost->Document() : nullptr, name);
}

Input* KTool::FileInput(Request const& request) const
{
    for (KInput const* entry : inputs.Each<KInput>()) {
        if (entry->parameter->control != KCT_Filename || !entry->input ||
            !request.State().Of(*entry->input).isVisible)
            continue;
        auto const* name = dynamic_cast<Text const*>(request.InputData(*entry->input, 0));
        if (name && !name->value.empty()) return entry->input;
    }
    return nullptr;
}

std::string KTool::FileToRead(Request const& request) const
{
    Input const* const input = FileInput(request);
    return input ? ResolvedFile(dynamic_cast<Text const&>(*request.InputData(*input, 0)).value) : "";
}

bool KTool::CheckFile(Request* request) const
{
    Input const* const input = FileInput(*request);
    if (!input) return true;
    std::string const path = FileToRead(*request);
    auto const told = [&](std::string_view what) {
        return fmt::format("{}.{}: {}: {}", request->Op().Name(), input->Id().Text(), path, what);
    };
    std::error_code error;
    auto const type = fs::status(path, error).type();
    if (type != fs::file_type::regular && type != fs::file_type::not_found && type != fs::file_type::none) {
        // Reading a pipe or a device may never end.
        request->FailFile(told("is no regular file; name a text file"));
        return false;
    }
    if (std::string const fault = FaultOfText(path); !fault.empty()) request->Warn(told(fault));
    return true;
}

} // namespace ombrelune
