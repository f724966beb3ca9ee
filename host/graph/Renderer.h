#pragma once

#include <atomic>
#include <memory>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/graph/FusionDoc.h"
#include "host/graph/RenderResult.h"
#include "host/graph/ResultCache.h"
#include "host/graph/TaskPool.h"
#include "host/value/MachineMemory.h"

namespace ombrelune {

/// What one operator did so far.
struct OperatorWork {
    Operator const* op;
    double seconds; ///< spent in Process
    int processed;  ///< requests that were processed
    int reused;     ///< and those that a kept result answered
};

/// Pulls results out of a document: asking an output for a time makes a request, whose inputs are gathered by
/// priority and in their slots before the operator processes it.
///
/// Every result has a key: the operator, the quality, and what feeds it (values of inputs, keys of the
/// results that pictures come from, date and size of a file), with the time where the operator is declared
/// time-variant. Keys are found before anything is rendered, so results are shared between requests, times
/// and frames, and kept within a budget of memory. Thread-safe: frames may be asked for at the same time.
class Renderer {
public:
    /// @param memory  budget in bytes of the results that are kept
    Renderer(FusionDoc& document, RenderQuality quality, std::size_t memory = MachineMemory() / 4);
    ~Renderer();

    /// Tells every operator that a job over these frames begins; they are in ascending order.
    void Start(std::vector<double> frames);
    /// Value of an output at a time.
    RenderResult Evaluate(Output& output, double time);
    /// Processes an operator for what it does rather than what it gives, such as writing a file.
    std::optional<Problem> Run(Operator& op, double time);
    /// Lets go what only this frame needed.
    void FinishFrame(double frame);

    /// What Run would do: files that would be read and written, by the operator and all that feeds it. Runs
    /// the pre-calculation pass of each; no picture is touched.
    struct Plan {
        std::vector<std::string> reads, writes;
        std::optional<Problem> problem;
    };
    Plan PlanOf(Operator& op, double time);

    /// What operators were told to warn of since the last call.
    std::vector<Problem> TakeWarnings();

    /// True when some operator depends on the frames before, so that frames cannot be rendered side by side.
    bool KeepsHistory() const;
    /// Operators that were asked for anything, in order of the document.
    std::vector<OperatorWork> Work() const;

private:
    struct Frame;
    struct Visit;
    struct Keyed;
    struct State;
    struct Pending;
    class Scope;

    State& StateOf(Operator& op);
    Keyed KeyOf(Visit const& visit);
    Keyed MakeKey(Visit const& visit);
    std::optional<Problem> AddSlots(ResultKeyBuilder& key, bool& varies, Request& request, Input& input,
                                    Visit const& visit);
    SharedResults Render(Visit const& visit);
    Results Make(Visit const& visit);
    Results MakeInOrder(Visit const& visit);
    Results MakeFrame(Visit const& visit);
    Results MakeField(Visit const& visit, int fieldCount, int fieldNumber);
    void Check(Request& request);
    void Process(Request& request);
    void Gather(Request& request, int priority, Visit const& visit);
    RenderResult Fetch(Input& input, double time, Visit const& visit);
    RenderResult ValueOf(Input& input, double time, Visit const& visit);
    SharedResults PassThrough(Visit const& visit);
    std::optional<Problem> FeedsItself(Visit const& visit) const;

    FusionDoc& document_;
    RenderQuality quality_;
    RenderMessage message_;
    std::vector<double> jobFrames_;
    ResultCache cache_;
    TaskPool pool_;
    std::atomic<std::uint64_t> looks_ = 0; ///< results with history that were asked for outside a job

    mutable std::mutex lock_; // of all below
    std::set<std::string> warned_;
    std::vector<Problem> warnings_; ///< not taken yet
    std::unordered_map<Operator const*, std::unique_ptr<State>> states_;
    std::unordered_map<ResultKey, std::shared_ptr<Pending>, ResultKeyHash> underWay_;
};

} // namespace ombrelune
