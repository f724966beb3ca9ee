#pragma once

#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/graph/Input.h"
#include "host/graph/OperatorState.h"
#include "host/graph/Output.h"
#include "host/value/Problem.h"

namespace ombrelune {

/// What stands in for a frame that a sequence does not have.
enum class MissingFrame {
    kError, ///< nothing: the frame fails
    kHold,  ///< the last one before it, or else the first one after it
    kBlack,
};

/// How a frame is wanted.
struct RenderQuality {
    int proxy = 1;      ///< pictures are made smaller by this factor
    bool quick = false; ///< interactive: tools may take cheaper roads
    MissingFrame missing = MissingFrame::kError;

    bool operator==(RenderQuality const&) const = default;
};

/// One operator's work at one time: what its inputs gave, what it hands over. Lives on one thread of the
/// renderer.
class Request {
public:
    static constexpr int kBeforeImages = -1; ///< GetPri() while inputs of priority -1 are not there yet
    static constexpr int kComplete = std::numeric_limits<int>::min();

    Request(std::shared_ptr<OperatorState const> state, double time, RenderQuality const& quality);

    Operator& Op() const { return *state_->op; }
    /// The operator as this request sees it; what its inputs have now may differ already.
    OperatorState const& State() const { return *state_; }
    double GetTime() const { return time_; }
    /// The priority that is about to be fetched; kComplete while the operator processes.
    int GetPri() const { return priority_; }
    bool IsQuick() const { return quality_.quick; }
    RenderQuality const& Quality() const { return quality_; }
    /// 0 for full frames, else 2; FieldNumber() is 0 or 1 then.
    int FieldCount() const { return fieldCount_; }
    int FieldNumber() const { return fieldNumber_; }

    /// Gives a slot its value, so that nothing is fetched for it; null leaves the slot empty. Shares the
    /// value.
    void SetInputData(Input* input, Parameter* value, int slot);
    /// Fetches the input at another time into the slot.
    void SetInputTime(Input* input, double time, int slot);

    Parameter* InputData(Input const& input, int slot) const;
    /// The number of an input; 0 while there is none.
    double Number(Input const& input, int slot = 0) const;
    Parameter* Result(Output const& output) const { return results_[output.Index()].Get(); }

    /// Reports that the frame cannot be made; the first report counts. FailFile lays it to a file.
    void Fail(std::string text);
    void FailFile(std::string text);
    /// For want of a picture at an input that needs one; says whose it would have been.
    void FailWithoutPicture(Input const& input);
    /// A frame that a sequence does not have: a tool that asked for it beside its own goes on without it.
    void FailGap(std::string text, bool isFile);
    std::optional<Problem> const& Failure() const { return failure_; }
    /// Tells what was done otherwise than asked; the frame goes on. Each text is told once in a job.
    void Warn(std::string text) { warnings_.push_back(std::move(text)); }

private:
    friend class Output;
    friend class Renderer;

    struct Slot {
        Ref<Parameter> value;
        double time = 0.0;
        bool given = false;
    };
    Slot& SlotOf(Input const& input, int slot);

    std::shared_ptr<OperatorState const> state_;
    double time_;
    RenderQuality quality_;
    int priority_ = 0;
    int fieldCount_ = 0, fieldNumber_ = 0;
    std::vector<std::vector<Slot>> slots_; // by input index
    std::vector<Ref<Parameter>> results_;  // by output index
    std::optional<Problem> failure_;
    std::vector<std::string> warnings_;
};

} // namespace ombrelune
