#include "framework/Shells.h"

#include "framework/Registration.h"

namespace ombrelune {

namespace {

Registry const threadedShell(ClassRegistry(), "Brassfennel.BF_ThreadedOperator",
                             ShellTags("ThreadedOperator"));
Registry const sourceShell(ClassRegistry(), "Brassfennel.BF_SourceOperator", ShellTags("SourceOperator"));
Registry const maskShell(ClassRegistry(), "Brassfennel.BF_MaskOperator", ShellTags("MaskOperator"));

} // namespace

void BF_ThreadedOperator::Initialise(KEffect* toolEffect)
{
    AddIdentityInput();
    AddEffectInputs(this, toolEffect);
}

void BF_ThreadedOperator::Process(Request* request) { ProcessDo(this, request, true); }

void BF_ThreadedOperator::PreCalcProcess(Request* request)
{
    shapeTool ? KTool::PreCalcProcess(request) : ThreadedOperator::PreCalcProcess(request);
}

void BF_ThreadedOperator::OnStartRender(RenderMessage* message)
{
    StartProcess();
    ThreadedOperator::OnStartRender(message);
}

void BF_SourceOperator::Initialise(KEffect* toolEffect)
{
    AddIdentityInput();
    KTool::imageOutput = SourceOperator::imageOutput;
    KTool::widthInput = SourceOperator::widthInput;
    KTool::heightInput = SourceOperator::heightInput;
    AddEffectInputs(this, toolEffect);
}

void BF_SourceOperator::Process(Request* request)
{
    KTool::fieldCount = SourceOperator::fieldCount;
    KTool::fieldNumber = SourceOperator::fieldNumber;
    KTool::xAspect = static_cast<float>(SourceOperator::xAspect);
    KTool::yAspect = static_cast<float>(SourceOperator::yAspect);
    scale = static_cast<float>(proxyScale);
    ProcessDo(this, request, true);
}

void BF_SourceOperator::OnStartRender(RenderMessage* message)
{
    StartProcess();
    SourceOperator::OnStartRender(message);
}

void BF_MaskOperator::Initialise(KEffect* toolEffect)
{
    AddIdentityInput();
    AddEffectInputs(this, toolEffect);
}

} // namespace ombrelune
