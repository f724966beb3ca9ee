#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/graph/Registry.h"
#include "host/image/Image.h"
#include "host/value/Problem.h"

namespace ombrelune::app {

/// A flow that shows what a tool does, rendered at the time that it was left at.
struct Example {
    std::string caption; ///< from the comment that opens the flow
    std::string flow;    ///< its text
    /// What the flow's first Saver would write, else the tool's own picture; null when there is none.
    Ref<Image> picture;
    std::vector<std::pair<std::string, std::string>> values; ///< numbers and texts of the tool, by output
    /// Arguments of the command that makes the same picture without the flow; empty when none would.
    std::vector<std::string> command;
};

struct ExampleReading {
    std::optional<Example> example;
    std::vector<Problem> problems;
};

/// @param path  of the flow; files in the command are told from the folder that holds the flow's own, so that
///              they start with "examples/"
/// @param name  of the file that the command writes, without its extension
ExampleReading ReadExample(std::string const& path, Registry const& tool, std::string const& name);

} // namespace ombrelune::app
