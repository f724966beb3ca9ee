#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "host/graph/Operator.h"
#include "host/value/FrameFormat.h"

namespace ombrelune {

/// What a group of a flow shows: inputs and outputs of tools inside it, by the names that they have outside.
struct ShownByGroup {
    std::map<std::string, Input*> inputs;
    std::map<std::string, Output*> outputs;
};

/// A document: the operators of a flow, their order, the frame format and the time that the user looks at.
///
/// Inputs may be set and connected on any thread while others render; who adds or removes operators, or goes
/// through them, is one thread at a time. File and format are settled before anything is rendered.
class FusionDoc {
public:
    FusionDoc() = default;
    FusionDoc(FusionDoc const&) = delete;
    FusionDoc& operator=(FusionDoc const&) = delete;

    double GetCurrentTime() const { return currentTime; }

    /// Makes an operator of a registered class. The name must be free and the class one that can be made.
    Operator* AddOperator(Registry const& registry, std::string const& name, ScriptVal const& settings = {});
    /// Null when there is none.
    Operator* FindOperator(std::string_view name) const;
    /// In the order in which they were added.
    std::vector<std::shared_ptr<Operator>> const& Operators() const { return operators_; }
    /// Takes an operator away, with what is connected to it; expressions that read it fail from then on.
    /// Renders that have begun still see it. Gives it to the caller, who may have to keep it for those that
    /// are about to ask for its outputs. Null when the document does not have it.
    std::shared_ptr<Operator> RemoveOperator(Operator& op);

    /// What renders read: all operators as they are now. Costs nothing while nothing is edited, and a few
    /// nanoseconds an operator after an edit.
    std::shared_ptr<Snapshot const> TakeSnapshot();

    /// While one lives, snapshots show what was there before it, so that edits that belong together are seen
    /// together.
    class Edits {
    public:
        explicit Edits(FusionDoc& document);
        ~Edits();
        Edits(Edits const&) = delete;
        Edits& operator=(Edits const&) = delete;

    private:
        FusionDoc& document_;
    };

    /// What went wrong when operators were told of changes, since the last call.
    std::vector<Problem> TakeProblems();
    void Report(Problem problem);

    std::string file; ///< path of the flow, empty when it was made by the program
    FrameFormat format;
    double globalStart = 0.0, globalEnd = 0.0;
    double renderStart = 0.0, renderEnd = 0.0;
    double currentTime = 0.0;
    std::map<std::string, ShownByGroup, std::less<>> groups; ///< outermost groups of the flow

private:
    friend class Operator;

    std::vector<std::shared_ptr<Operator>> operators_;

    mutable std::mutex lock_;       // of all below and of what can change in operators
    std::vector<Operator*> places_; ///< null where one was removed
    std::vector<std::size_t> freePlaces_;
    std::vector<std::size_t> edited_; ///< places that the published snapshot shows as they were
    std::shared_ptr<Snapshot const> published_;
    int openEdits_ = 0;
    std::vector<Problem> problems_;
};

/// A path as the document means it: relative ones start at the folder of the flow, or at the working folder
/// when there is no flow.
std::string ResolvePath(FusionDoc const* document, std::string const& path);

/// Frame format of the document; the standard one without a document.
FrameFormat const& FormatOf(FusionDoc const* document);

} // namespace ombrelune
