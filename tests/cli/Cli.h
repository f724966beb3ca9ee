#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "host/image/PixPtr.h"
#include "host/io/Pictures.h"

namespace ombrelune {

namespace fs = std::filesystem;

inline std::string Slurp(fs::path const& path)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

/// A command that must not work: its status, and a part of what it says.
struct Mistake {
    char const* arguments;
    int status;
    char const* says;
};

/// The built program in a folder of its own that is empty at the start and gone at the end.
class Cli : public testing::Test {
protected:
    struct Ended {
        int status;
        std::string out, errors;
    };

    Cli() : folder(fs::temp_directory_path() / ("ombrelune_cli_" + std::to_string(getpid())))
    {
        fs::remove_all(folder);
        fs::create_directories(folder);
    }
    ~Cli() override { fs::remove_all(folder); }

    /// Runs the program in the test's folder; the arguments are a line for the shell.
    Ended Run(std::string const& arguments) const { return Shell("\"$OMBRELUNE\" " + arguments); }
    /// Runs a line of the shell there, for which $OMBRELUNE is the program.
    Ended Shell(std::string const& commands) const
    {
        std::string const line = "cd '" + folder.string() + "' && OMBRELUNE='" OMBRELUNE_PROGRAM "' && { " +
                                 commands + "; } >stdout.txt 2>stderr.txt";
        int const status = std::system(line.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, Slurp(folder / "stdout.txt"),
                Slurp(folder / "stderr.txt")};
    }

    void ExpectMistake(std::string const& arguments, Mistake const& mistake) const
    {
        SCOPED_TRACE(arguments);
        Ended const ended = Run(arguments);
        EXPECT_EQ(ended.status, mistake.status);
        EXPECT_NE(ended.errors.find(mistake.says), std::string::npos) << ended.errors;
    }

    void Write(char const* name, std::string const& text) const { std::ofstream(folder / name) << text; }

    /// A small picture of a smooth ramp.
    void WriteRamp(char const* name, int depth, int width = 64, int height = 32) const
    {
        Ref<Image> image = NewImageTagList({{Img_Width, width}, {Img_Height, height}, {Img_Depth, depth}});
        for (int y = 0; y < height; ++y) {
            PixPtr row(image.Get(), 0, y);
            for (int x = 0; x < width; ++x) {
                FltPixel pixel;
                pixel.red = static_cast<float>(x) / static_cast<float>(width - 1);
                pixel.green = static_cast<float>(y) / static_cast<float>(height - 1);
                pixel.blue = 0.25F;
                pixel.alpha = 1.0F;
                row >>= pixel;
            }
        }
        auto const problem = WritePicture(*image, (folder / name).string());
        ASSERT_FALSE(problem) << problem->Format();
    }

    FltPixel PixelOf(char const* name, int x, int y) const
    {
        ReadResult read = ReadPicture((folder / name).string());
        EXPECT_FALSE(read.problem) << read.problem->Format();
        FltPixel pixel;
        PixPtr(read.image.Get(), x, y).GetPixel(pixel);
        return pixel;
    }

    std::vector<std::string> Files(fs::path const& below) const
    {
        std::vector<std::string> names;
        for (auto const& entry : fs::directory_iterator(folder / below))
            names.push_back(entry.path().filename());
        std::sort(names.begin(), names.end());
        return names;
    }

    fs::path folder;
};

} // namespace ombrelune
