#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "host/graph/Input.h"
#include "host/graph/OperatorState.h"
#include "host/graph/Output.h"
#include "host/graph/Registry.h"
#include "host/graph/Request.h"

namespace ombrelune {

class FusionDoc;
class Image;

/// What a render job tells every operator before its first frame.
struct RenderMessage {
    double start = 0.0, end = 0.0;
    RenderQuality quality;
};

/// File that an operator reads.
struct SourceFile {
    std::string path = {};     ///< empty for none
    bool isOfSequence = false; ///< another frame reads another file
};

/// A node of a document. A class of operators derives from this and is registered with a function that makes
/// one. Whoever calls one of its functions that work for a request or answer a change holds it by a
/// BusyOperator; functions that are const may be called at any time.
class Operator : public std::enable_shared_from_this<Operator> {
public:
    Operator(Registry const* registry, ScriptVal const& settings, TagList const& tags);
    virtual ~Operator();
    Operator(Operator const&) = delete;
    Operator& operator=(Operator const&) = delete;

    virtual unsigned SizeOf() const { return sizeof(Operator); }

    /// Called while a request is gathered, once for each priority below 0: the place to ask for other frames.
    /// May be called more than once for a request, and always once more right before Process.
    virtual void CheckRequest(Request*) {}
    /// False when CheckRequest leaves every request as it is, so that a look ahead need not wait for Process
    /// to end.
    virtual bool ChecksRequests() const { return true; }
    /// Makes the results of a gathered request. An operator works on one request at a time.
    virtual void Process(Request*) {}
    /// True when results depend on the frames that were processed before, as an after-image does. The
    /// renderer then takes the frames of the job in order, from the first. Must not ask the inputs for more
    /// than the state tells.
    virtual bool KeepsHistory(OperatorState const&) const { return false; }
    /// File that Process will read for a request; its date and size count as part of what feeds the operator.
    virtual SourceFile FileToRead(Request const&) const { return {}; }
    /// File that Process will write for a request.
    virtual std::string FileToWrite(Request const&) const { return {}; }
    /// A pass that tells what a request would need, before anything is computed.
    virtual void PreCalcProcess(Request*) {}
    /// An input was changed by the user or by the operator itself. Inputs that it sets are told of after it.
    virtual void NotifyChanged(Input*, Parameter*, double /*time*/, TagList*) {}
    virtual void OnStartRender(RenderMessage*) {}

    /// New input. An id that is taken gets "_1", "_2" and so on, in order of declaration.
    Input* AddInputTagList(FuID name, FuID id, TagList const& tags);
    Output* AddOutputTagList(FuID name, FuID id, TagList const& tags);
    /// Opens a page for the inputs that follow; Page_Label overrules the label.
    void AddControlPageTagList(char const* label, TagList const& tags);
    /// Opens a group of inputs; the bool tells whether it starts closed. Returns the input that stands for
    /// the group, 1 while it is open.
    Input* BeginControlNest(std::string const& name, FuID id, bool closed);
    void EndControlNest();
    /// Lets the operator be passed through: it then hands its first main input to its first output.
    void AddIdentityInput() { hasIdentity_ = true; }
    bool HasIdentity() const { return hasIdentity_; }

    FusionDoc* Document() const { return document_; }
    Registry const* Registration() const { return registry_; }
    std::string const& Name() const { return name_; }
    std::vector<std::unique_ptr<Input>> const& Inputs() const { return inputs_; }
    std::vector<std::unique_ptr<Output>> const& Outputs() const { return outputs_; }
    /// A number that no other operator of the process has or had.
    std::uint64_t Serial() const { return serial_; }
    /// What it is now.
    OperatorState State() const;
    void SetPassThrough(bool passThrough);
    bool PassesThrough() const;
    /// Null when there is none.
    Input* FindInput(FuID id) const;
    Output* FindOutput(FuID id) const;
    /// Input or output of that main number; null when there is none.
    Input* MainInput(int number) const;
    Output* MainOutput(int number) const;

    /// Functions for the registrations of operators: they keep the list that AllOperators gives.
    static void RegInit(Registry const*);
    static void RegCleanup(Registry const*);
    /// Registered classes that can be made, in order of registration.
    static std::vector<Registry const*> AllOperators();

    int line = 0; ///< where the document declares it, 0 when it was made by the program

    /// Whose frames the members of an operator with history stem from; for renderers. Held over several
    /// frames, and while what feeds the operator is made.
    struct History {
        std::mutex lock;
        std::uint64_t job = 0;      ///< serial of the job, 0 for none
        std::optional<double> time; ///< its last frame
    };
    History history;

private:
    friend class BusyOperator;
    friend class FusionDoc;
    friend class Input;
    friend class Snapshot;

    /// The document's lock, or one for all operators that stand alone.
    std::mutex& EditLock() const;
    /// Tells the document that the state is not what it was; under the lock.
    void Edited();
    OperatorState StateUnderLock() const;

    Registry const* registry_;
    FusionDoc* document_;
    std::string name_;
    std::string page_;
    std::vector<std::string> nests_;
    std::vector<std::unique_ptr<Input>> inputs_;
    std::vector<std::unique_ptr<Output>> outputs_;
    bool hasIdentity_ = false;
    std::uint64_t const serial_;

    // Under the lock of edits.
    bool passThrough_ = false;
    bool isEdited_ = false; ///< since the document's last snapshot

    std::optional<std::size_t> place_; ///< in the snapshots of its document; fixed once it has one

    std::mutex busyLock_;
    std::condition_variable_any freed_;
    bool isBusy_ = false;
};

/// An operator whose work is cut into chunks for the worker threads.
class ThreadedOperator : public Operator {
public:
    using Operator::Operator;
    unsigned SizeOf() const override { return sizeof(ThreadedOperator); }

    virtual void ProcessChunk(Request*, int /*chunk*/) {}
    /// Runs ProcessChunk for chunks 0 to chunks - 1 on the worker threads and returns when all are done.
    void DoMultiProcess(Request* request, int chunks);
};

/// An operator that makes pictures from nothing. It has the inputs Width, Height and Process Mode, which
/// stand at the document's frame format, and the image output.
class SourceOperator : public ThreadedOperator {
public:
    SourceOperator(Registry const* registry, ScriptVal const& settings, TagList const& tags);
    unsigned SizeOf() const override { return sizeof(SourceOperator); }

    /// Reads how the frame is wanted into the members below.
    void CheckRequest(Request* request) override;

    bool WantsFields(Request const& request) const;
    /// A picture of the size that the inputs tell, at the proxy and for the field that are wanted; its pixels
    /// are undefined. Null when memory is out.
    Ref<Image> NewFrame(Request const& request) const;

    int fieldCount = 0;  ///< 0 for full frames, 2 for fields
    int fieldNumber = 0; ///< 0 the rows 0, 2, 4 ... from the bottom, 1 the rows between
    int proxyScale = 1;
    double xAspect = 1.0, yAspect = 1.0;

    Input* widthInput = nullptr;
    Input* heightInput = nullptr;
    Input* processModeInput = nullptr;
    Output* imageOutput = nullptr;
};

/// An operator that makes a mask of the document's frame size: one level all over, which derived classes
/// shape.
class MaskOperator : public ThreadedOperator {
public:
    MaskOperator(Registry const* registry, ScriptVal const& settings, TagList const& tags);
    unsigned SizeOf() const override { return sizeof(MaskOperator); }

    void Process(Request* request) override;

    Input* levelInput = nullptr;
    Output* maskOutput = nullptr;
};

} // namespace ombrelune
