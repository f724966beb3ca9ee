#include "host/graph/Operator.h"

#include <algorithm>
#include <atomic>
#include <functional>
#include <set>

#include "host/graph/FusionDoc.h"
#include "host/image/Image.h"
#include "host/value/Parallel.h"

namespace ombrelune {

namespace {

std::vector<Registry const*>& OperatorList()
{
    static auto& list = *new std::vector<Registry const*>; // never destroyed, as ClassRegistry
    return list;
}

template <class Items> auto FindById(Items const& items, FuID id)
{
    auto found = std::find_if(items.begin(), items.end(), [&](auto const& item) { return item->Id() == id; });
    return found == items.end() ? nullptr : found->get();
}

template <class Items> auto FindByNumber(Items const& items, int number)
{
    auto found = std::find_if(items.begin(), items.end(),
                              [&](auto const& item) { return item->MainNumber() == number; });
    return found == items.end() ? nullptr : found->get();
}

template <class Items> FuID FreeId(Items const& items, FuID id)
{
    FuID free = id;
    for (int n = 1; FindById(items, free); ++n) free = FuID(id.Text() + "_" + std::to_string(n));
    return free;
}

std::uint64_t NextSerial()
{
    static std::atomic<std::uint64_t> next{1};
    return next.fetch_add(1, std::memory_order_relaxed);
}

} // namespace

Operator::Operator(Registry const* registry, ScriptVal const&, TagList const& tags)
    : registry_(registry), document_(tags.GetPointer<FusionDoc>(Op_Document)), name_(tags.GetText(Op_Name)),
      page_("Controls"), serial_(NextSerial())
{}

Operator::~Operator() = default;

Input* Operator::AddInputTagList(FuID name, FuID id, TagList const& tags)
{
    auto const index = static_cast<int>(inputs_.size());
    inputs_.push_back(std::make_unique<Input>(this, index, name, FreeId(inputs_, id), tags));
    inputs_.back()->page_ = page_;
    if (!nests_.empty()) inputs_.back()->nest_ = nests_.back();
    return inputs_.back().get();
}

Output* Operator::AddOutputTagList(FuID name, FuID id, TagList const& tags)
{
    auto const index = static_cast<int>(outputs_.size());
    outputs_.push_back(std::make_unique<Output>(this, index, name, FreeId(outputs_, id), tags));
    return outputs_.back().get();
}

void Operator::AddControlPageTagList(char const* label, TagList const& tags)
{
    page_ = tags.GetText(Page_Label, label);
}

Input* Operator::BeginControlNest(std::string const& name, FuID id, bool closed)
{
    Input* const nest = AddInputTagList(name, id,
                                        {{Attr_DataType, CLSID_DataType_Number},
                                         {Attr_InputControl, CLSID_InputControl_Nest},
                                         {Attr_External, false},
                                         {Attr_Default, closed ? 0.0 : 1.0}});
    nests_.push_back(name);
    return nest;
}

void Operator::EndControlNest()
{
    if (!nests_.empty()) nests_.pop_back();
}

Input* Operator::FindInput(FuID id) const { return FindById(inputs_, id); }
Output* Operator::FindOutput(FuID id) const { return FindById(outputs_, id); }
Input* Operator::MainInput(int number) const { return FindByNumber(inputs_, number); }
Output* Operator::MainOutput(int number) const { return FindByNumber(outputs_, number); }

std::mutex& Operator::EditLock() const
{
    static std::mutex alone;
    return document_ ? document_->lock_ : alone;
}

void Operator::Edited()
{
    if (!document_ || !place_ || isEdited_) return;
    isEdited_ = true;
    document_->edited_.push_back(*place_);
}

OperatorState Operator::StateUnderLock() const
{
    OperatorState state;
    state.inputs.reserve(inputs_.size());
    std::set<int, std::greater<>> levels{Request::kBeforeImages};
    for (auto const& input : inputs_) {
        state.inputs.push_back(input->state_);
        if (input->state_.priority < 0) levels.insert(input->state_.priority);
    }
    state.lateLevels.assign(levels.begin(), levels.end());
    state.passThrough = passThrough_;
    state.keepsHistory = KeepsHistory(state);
    return state;
}

OperatorState Operator::State() const
{
    std::lock_guard guard(EditLock());
    return StateUnderLock();
}

void Operator::SetPassThrough(bool passThrough)
{
    std::lock_guard guard(EditLock());
    passThrough_ = passThrough;
    Edited();
}

bool Operator::PassesThrough() const
{
    std::lock_guard guard(EditLock());
    return passThrough_;
}

void Operator::RegInit(Registry const* registry)
{
    if (registry->NewFunction()) OperatorList().push_back(registry);
}

void Operator::RegCleanup(Registry const* registry) { std::erase(OperatorList(), registry); }

std::vector<Registry const*> Operator::AllOperators() { return OperatorList(); }

void ThreadedOperator::DoMultiProcess(Request* request, int chunks)
{
    ParallelFor(chunks, [&](int chunk) { ProcessChunk(request, chunk); });
}

SourceOperator::SourceOperator(Registry const* registry, ScriptVal const& settings, TagList const& tags)
    : ThreadedOperator(registry, settings, tags)
{
    FrameFormat const& format = FormatOf(Document());
    auto addSize = [this](char const* name, int size) {
        return AddInputTagList(name, name,
                               {{Attr_DataType, CLSID_DataType_Number},
                                {Attr_InputControl, CLSID_InputControl_Screw},
                                {Attr_IntegerValue, true},
                                {Attr_MinHard, 1.0},
                                {Attr_MaxHard, static_cast<double>(Image::kMaxSide)},
                                {Attr_Default, size}});
    };
    AddControlPageTagList("Image", {});
    widthInput = addSize("Width", format.width);
    heightInput = addSize("Height", format.height);
    processModeInput = AddInputTagList("Process Mode", "ProcessMode",
                                       {{Attr_DataType, CLSID_DataType_Number},
                                        {Attr_InputControl, CLSID_InputControl_MultiButton},
                                        {Attr_ListEntry, "Full frames"},
                                        {Attr_ListEntry, "Fields"},
                                        {Attr_MinHard, 0.0},
                                        {Attr_MaxHard, 1.0},
                                        {Attr_Default, 0.0}});
    imageOutput =
        AddOutputTagList("Output", "Output", {{Attr_DataType, CLSID_DataType_Image}, {Attr_MainNumber, 1}});
}

bool SourceOperator::WantsFields(Request const& request) const
{
    return request.Number(*processModeInput) > 0.5;
}

void SourceOperator::CheckRequest(Request* request)
{
    fieldCount = request->FieldCount();
    fieldNumber = request->FieldNumber();
    proxyScale = request->Quality().proxy;
    xAspect = FormatOf(Document()).xScale;
    yAspect = FormatOf(Document()).yScale;
}

Ref<Image> SourceOperator::NewFrame(Request const& request) const
{
    auto const full = [&](Input const* input) {
        return std::max(static_cast<int>(request.Number(*input)), 1);
    };
    int const w = full(widthInput), h = full(heightInput), rows = std::max(h / proxyScale, 1);
    // Of a field there is every second row.
    Ref<Image> image = NewImageTagList({{Img_Document, &FormatOf(Document())},
                                        {Img_Width, std::max(w / proxyScale, 1)},
                                        {Img_Height, fieldCount > 0 ? std::max(rows / 2, 1) : rows}});
    if (image && proxyScale > 1) image->attributes.Set({Img_OriginalWidth, w}).Set({Img_OriginalHeight, h});
    return image;
}

MaskOperator::MaskOperator(Registry const* registry, ScriptVal const& settings, TagList const& tags)
    : ThreadedOperator(registry, settings, tags)
{
    levelInput = AddInputTagList("Level", "Level",
                                 {{Attr_DataType, CLSID_DataType_Number},
                                  {Attr_InputControl, CLSID_InputControl_Slider},
                                  {Attr_MinHard, 0.0},
                                  {Attr_MaxHard, 1.0},
                                  {Attr_Default, 1.0}});
    maskOutput =
        AddOutputTagList("Mask", "Mask", {{Attr_DataType, CLSID_DataType_Mask}, {Attr_MainNumber, 1}});
}

void MaskOperator::Process(Request* request)
{
    FrameFormat const& format = FormatOf(Document());
    int const proxy = request->Quality().proxy;
    Ref<Image> mask = NewImageTagList({{Img_Document, &format},
                                       {Img_Width, std::max(format.width / proxy, 1)},
                                       {Img_Height, std::max(format.height / proxy, 1)}});
    if (!mask) return request->Fail("no memory for a mask of the frame's size");
    Pixel pixel;
    for (auto& word : pixel.word)
        word = static_cast<std::uint32_t>(request->Number(*levelInput) * 65535.0 + 0.5);
    mask->Fill(pixel);
    maskOutput->Set(request, mask.Release(), nullptr);
}

} // namespace ombrelune
