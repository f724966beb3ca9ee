#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/value/Problem.h"

namespace ombrelune {

struct FrameRange {
    std::vector<int> frames; ///< ascending, each once
    std::optional<Problem> problem;
};

/// Reads frames: single ones and ranges, separated by commas: "5", "1-10", "1-10x2,30,-5--1".
FrameRange ParseFrames(std::string_view text);

/// The whole numbers from start to end, at most kMostFrames.
FrameRange FramesBetween(double start, double end);

inline constexpr int kMostFrames = 1'000'000;

} // namespace ombrelune
