#pragma once

#include <string>
#include <utility>
#include <vector>

#include "host/graph/RenderResult.h"
#include "host/value/ScriptVal.h"

struct lua_State;

namespace ombrelune {

class FusionDoc;

/// A piece of Lua 5.4 that computes a value from the time and from what it reads of a flow, and nothing else.
///
/// It sees time, comp, the functions of math by their bare names too, the plain functions of strings, a few
/// of the basic ones, Point(x, y) and the tools it was given. It keeps nothing from one run to the next, and
/// whatever could differ between processes is left out: random numbers, addresses, the order of pairs. Its
/// steps and memory are bounded, and so are the bytes that a run allocates in all, the length of each text
/// and the time that a run computes, since a long operation on texts is a single step. Works for one thread
/// at a time.
class LuaSandbox {
public:
    /// A tool that the text names, with its members as numbers for the reader.
    struct Tool {
        std::string name;
        std::vector<std::pair<std::string, int>> members;
    };
    /// Where the values of tools come from.
    class Reader {
    public:
        virtual ~Reader() = default;
        /// A number, point, text or identifier, or a problem.
        virtual RenderResult Read(int member, double time) = 0;
    };
    struct Outcome {
        ScriptVal value = {};                ///< a point is a table of numbers
        std::string mistake = {};            ///< of the text itself; empty when all is well
        std::optional<Problem> problem = {}; ///< what the reader ran into
    };

    static constexpr double kMostSeconds = 2.0; ///< of the thread's own time, without that of what is read
    static constexpr std::size_t kMostText = std::size_t{64} << 10; ///< bytes of a text
    static constexpr int kMostSteps = 1'000'000;
    static constexpr std::size_t kMostMemory = std::size_t{1} << 20;   ///< bytes at a time
    static constexpr std::size_t kMostTraffic = std::size_t{64} << 20; ///< bytes in one run

    /// Compiles an expression, or statements behind a ':', which end with a return.
    LuaSandbox(std::string const& text, std::vector<Tool> const& tools, FusionDoc const* document);
    ~LuaSandbox();
    LuaSandbox(LuaSandbox const&) = delete;
    LuaSandbox& operator=(LuaSandbox const&) = delete;

    /// What is wrong with the text; empty when it compiled.
    std::string const& Mistake() const { return mistake_; }
    /// The global names that mean something, tools among them.
    std::vector<std::string> Names() const;
    /// Bytes that it holds.
    std::size_t Memory() const { return memory_; }

    Outcome Run(double time, Reader& reader);

private:
    struct Calls; // the functions that Lua calls
    std::string TakeMessage(int status);

    lua_State* lua_ = nullptr;
    std::string mistake_;
    std::size_t memory_ = 0, traffic_ = 0;
    bool textTooLong_ = false;
    int steps_ = 0;
    double end_ = 0.0; ///< when a run has to be done, on the clock of the thread
    // While it runs. What is read is held here: Lua leaves functions by jumps that skip destructors.
    Reader* reader_ = nullptr;
    double time_ = 0.0;
    RenderResult read_;
};

} // namespace ombrelune
