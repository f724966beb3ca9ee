#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/graph/FusionDoc.h"
#include "host/value/Problem.h"
#include "host/value/ScriptVal.h"

namespace ombrelune {

/// A document read from a flow, with everything that is wrong with it. The document is there only when there
/// is no problem; a warning tells what was read otherwise than written.
struct FlowReading {
    std::unique_ptr<FusionDoc> document;
    std::vector<Problem> problems; ///< every one that was found, by line
    std::vector<Problem> warnings;
};

/// Text of a flow file, or why it cannot be read.
struct FlowText {
    std::string text = {};
    std::optional<Problem> problem = {};
};
FlowText ReadFlowFile(std::string const& path);

/// Reads a flow file: Composition { ... } or a bare table with Tools.
FlowReading ReadFlow(std::string const& path);

/// The same for the text of a flow.
FlowReading ReadFlowText(std::string_view text, std::string const& file);

/// Builds the document of a parsed flow. The file is for messages and relative paths.
FlowReading BuildDocument(ScriptVal const& flow, std::string const& file);

} // namespace ombrelune
