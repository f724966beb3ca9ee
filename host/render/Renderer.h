#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <stop_token>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/graph/FusionDoc.h"
#include "host/graph/RenderResult.h"
#include "host/render/ResultCache.h"
#include "host/value/MachineMemory.h"

namespace ombrelune {

/// What one operator did so far.
struct OperatorWork {
    Operator const* op;
    double seconds; ///< spent in Process
    int processed;  ///< requests that were processed
    int reused;     ///< and those that a kept result answered
};

/// An operator begins to process a request, or has ended.
struct OperatorEvent {
    Operator const& op;
    double time;
    std::optional<double> milliseconds; ///< that it took, once it has ended
};

/// Pulls results out of a document: asking an output for a time makes a request, whose inputs are gathered by
/// priority and in their slots before the operator processes it.
///
/// Every result has a key: the operator, the quality, and what feeds it (values of inputs, keys of the
/// results that pictures come from, date and size of a file), with the time where the operator is declared
/// time-variant. Keys are found before anything is rendered, so results are shared between requests, times
/// and frames, and kept within a budget of memory.
///
/// Thread-safe: frames may be asked for at the same time, in several qualities, and by several renderers of
/// one document. The document may be edited meanwhile: each question is answered by the snapshot that was
/// taken when it was asked.
class Renderer {
public:
    /// @param quality  of questions that do not tell theirs
    /// @param memory   budget in bytes of the results that are kept
    Renderer(FusionDoc& document, RenderQuality quality, std::size_t memory = MachineMemory() / 4);
    ~Renderer();

    /// Tells every operator that a job over these frames begins; they are in ascending order.
    void Start(std::vector<double> frames);
    /// Value of an output at a time. Once a stop is requested it returns as soon as a chunk of work is done,
    /// with a problem that is a stop; nothing that was called off is kept.
    RenderResult Evaluate(Output& output, double time) { return Evaluate(output, time, quality_); }
    RenderResult Evaluate(Output& output, double time, RenderQuality const& quality,
                          std::stop_token const& stop = {});
    /// Processes an operator for what it does rather than what it gives, such as writing a file.
    std::optional<Problem> Run(Operator& op, double time, std::stop_token const& stop = {});

    /// Key of what Evaluate would give, without waiting for anybody or rendering a picture. None when only
    /// that would tell: a tool at work that asks for other frames, a number that stems from a picture.
    std::optional<ResultKey> KeyAt(Output& output, double time, RenderQuality const& quality);
    /// Whether Evaluate would find a result of that key that holds a value.
    bool IsKept(ResultKey const& key) { return cache_.Has(key); }

    /// Called on the threads that render, several at a time; set before anything is asked.
    void Listen(std::function<void(OperatorEvent const&)> listener) { listener_ = std::move(listener); }
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
    /// Operators of the document that were asked for anything, in the order in which they were made.
    std::vector<OperatorWork> Work() const;

private:
    struct Frame;
    struct Visit;
    struct Keyed;
    struct State;
    struct Pending;
    class Scope;

    State& StateOf(Operator const& op);
    /// Of values that CheckRequest may look at. All else stands for itself by the key of what makes it.
    static bool IsSmall(FuID type);
    /// Nothing but small values goes in and comes out.
    static bool IsLight(Operator const& op);
    static std::optional<Problem> WhyNot(Visit const& visit);
    Keyed KeyOf(Visit const& visit);
    Keyed MakeKey(Visit const& visit);
    std::optional<Problem> AddSlots(ResultKeyBuilder& key, bool& varies, Request& request, Input& input,
                                    Visit const& visit);
    SharedResults Render(Visit const& visit);
    Results Make(Visit const& visit);
    Results MakeInOrder(Visit const& visit);
    Results MakeFrame(Visit const& visit);
    Results MakeField(Visit const& visit, int fieldCount, int fieldNumber);
    bool Check(Request& request, Frame const& frame);
    void Process(Request& request, Frame const& frame);
    void Gather(Request& request, int priority, Visit const& visit);
    RenderResult Fetch(Input& input, double time, Visit const& visit);
    RenderResult ValueOf(Input& input, double time, Visit const& visit);
    SharedResults PassThrough(Visit const& visit);
    std::optional<Problem> FeedsItself(Visit const& visit) const;
    /// Why the exception that is being handled ended the work at a place.
    Problem ProblemOfException(Operator const* op, std::string const& place) const;

    FusionDoc& document_;
    RenderQuality quality_;
    RenderMessage message_;
    std::vector<double> jobFrames_;
    std::uint64_t job_ = 0; ///< number of the job, of all that this process ever began
    ResultCache cache_;
    std::atomic<std::uint64_t> looks_ = 0; ///< results with history that were asked for outside a job
    std::function<void(OperatorEvent const&)> listener_;

    mutable std::mutex lock_; // of all below
    std::set<std::string> warned_;
    std::vector<Problem> warnings_;                                    ///< not taken yet
    std::unordered_map<std::uint64_t, std::unique_ptr<State>> states_; ///< by serials of operators
    std::unordered_map<ResultKey, std::shared_ptr<Pending>, ResultKeyHash> underWay_;
};

} // namespace ombrelune
