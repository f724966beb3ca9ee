#pragma once

#include "framework/KTool.h"
#include "host/graph/FusionDoc.h"

namespace ombrelune {

/// What every shell does: an operator class of the host joined with the bridge, to which it forwards.
template <class Host> class KShell : public Host, public KTool {
public:
    using Host::Host;

    void CheckRequest(Request* request) override
    {
        Host::CheckRequest(request);
        PreProcess(request);
    }
    bool ChecksRequests() const override
    {
        return preProcessNeeded; // the host's own bases only remember how a frame is wanted
    }
    bool KeepsHistory(OperatorState const& state) const override { return MayLeaveTrails(state); }
    SourceFile FileToRead(Request const& request) const override
    {
        return {.path = KTool::FileToRead(request)};
    }
    void NotifyChanged(Input* input, Parameter* value, double time, TagList* tags) override
    {
        FusionDoc const* const document = this->Document();
        Notify(input, value, document ? static_cast<float>(document->GetCurrentTime()) : 0.0F);
        Host::NotifyChanged(input, value, time, tags);
    }
    void ProcessChunk(Request*, int chunk) override
    {
        if (engine) engine->DoThread(chunk, currentStep);
    }
};

/// Shell of the tools with a main input of their own, and of those that give numbers, texts, shapes or
/// regions.
class BF_ThreadedOperator : public KShell<ThreadedOperator> {
public:
    using KShell::KShell;
    unsigned SizeOf() const override { return sizeof(BF_ThreadedOperator); }

    void Process(Request* request) override;
    void PreCalcProcess(Request* request) override;
    void OnStartRender(RenderMessage* message) override;

protected:
    /// Called by the tool's constructor once its effect exists.
    void Initialise(KEffect* toolEffect);
};

/// Shell of the generators: size, fields and the image output are the host base's.
class BF_SourceOperator : public KShell<SourceOperator> {
public:
    using KShell::KShell;
    unsigned SizeOf() const override { return sizeof(BF_SourceOperator); }

    void Process(Request* request) override;
    void OnStartRender(RenderMessage* message) override;

protected:
    void Initialise(KEffect* toolEffect);
};

/// Shell of tools that make masks. The host base does the rendering.
class BF_MaskOperator : public KShell<MaskOperator> {
public:
    using KShell::KShell;
    unsigned SizeOf() const override { return sizeof(BF_MaskOperator); }

protected:
    void Initialise(KEffect* toolEffect);
};

} // namespace ombrelune
