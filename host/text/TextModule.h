#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace ombrelune {

enum class TextAlign { kStart, kCenter, kEnd }; ///< left or top, centre, right or bottom

/// A text and how it stands on a picture. Lengths are pixels of a square grid, y runs upwards.
struct TextBlock {
    std::string text;
    std::string family, style; ///< as the font calls them: "DejaVu Sans", "Bold Oblique"
    double size;               ///< of the em
    double x, y;               ///< place that the block is aligned to
    TextAlign horizontal, vertical;
    double lineSpacing;    ///< 1 is the font's own
    double characterExtra; ///< added between characters
};

/// Part of the pixel grid, rows counted from the bottom, and how it lies on the square grid of the block:
/// square x = pixel x, square y = yOrigin + pixel y * yStep.
struct TextGrid {
    int width, height;
    double yOrigin, yStep;
};

/// How much of each pixel the text covers, 0 to 255, in rows from the bottom, and what was drawn otherwise
/// than asked.
struct TextCoverage {
    int x = 0, y = 0, width = 0, height = 0; ///< box of the text on the grid; 0 by 0 when nothing shows
    std::vector<std::uint8_t> coverage;
    std::string usedFamily, usedStyle; ///< empty where what was asked for was there
    std::string problem;               ///< why nothing could be drawn
};

/// Drawing of text, in a shared object of its own that is loaded on first use: libombrelune-text.so brings in
/// Pango and Cairo. Outlines are filled without hinting, with grey levels, at places of any fraction of a
/// pixel, so that the same block gives the same bytes always and a text can move smoothly.
struct TextModule {
    TextCoverage (*draw)(TextBlock const& block, TextGrid const& grid);
};

inline constexpr char const* kTextModuleFile = "libombrelune-text.so";
inline constexpr char const* kTextModuleEntry = "OmbreluneText"; ///< TextModule const* (*)()

} // namespace ombrelune
