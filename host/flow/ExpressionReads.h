#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "host/graph/Operator.h"

namespace ombrelune {

/// What a name in an expression stands for, or why it stands for nothing; empty when that is told already.
using Readable = std::variant<Input*, Output*, std::string>;

/// The tools that an expression can name.
class ToolNames {
public:
    virtual ~ToolNames() = default;
    virtual std::vector<std::string> All() const = 0;
    virtual bool Has(std::string const& tool) const = 0;
    /// Input or output of a tool that is there.
    virtual Readable Member(std::string const& tool, std::string const& member) const = 0;
};

/// What an expression reads of a flow.
struct ExpressionReads {
    struct Read {
        std::string tool, member;
        std::variant<Input*, Output*> target;
    };
    std::vector<Read> reads;           ///< each once
    std::vector<std::string> mistakes; ///< names that stand for nothing, each with what was meant
};

/// Finds what an expression reads: Tool.Member, Tool["Member"] and Tool:GetValue("Member", time). A tool's
/// name stands in these forms only, so that all that is read is known before anything runs.
/// @param text   compiles as an expression
/// @param known  global names that are not tools
ExpressionReads FindReads(std::string_view text, std::vector<std::string> const& known,
                          ToolNames const& tools);

} // namespace ombrelune
