// The look ahead: keys of results, found from values and files without rendering a picture.

#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include "host/graph/RendererState.h"

namespace ombrelune {

namespace {

/// Values that CheckRequest may look at. All else stands for itself by the key of what makes it.
bool IsSmall(FuID type)
{
    return type == CLSID_DataType_Number || type == CLSID_DataType_Point || type == CLSID_DataType_Text ||
           type == CLSID_DataType_FuID || type == CLSID_DataType_LookUpTable;
}

void AddValue(ResultKeyBuilder& key, Parameter const* value)
{
    key.Add(value ? 1.0 : 0.0);
    if (value) key.Add(value->Identity());
}

void AddFile(ResultKeyBuilder& key, std::string const& path)
{
    struct stat status = {};
    stat(path.c_str(), &status);
    key.Add(path)
        .Add(static_cast<std::uint64_t>(status.st_size))
        .Add(static_cast<std::uint64_t>(status.st_mtim.tv_sec))
        .Add(static_cast<std::uint64_t>(status.st_mtim.tv_nsec));
}

} // namespace

Renderer::Keyed Renderer::KeyOf(Visit const& visit)
{
    std::pair<Operator const*, double> const asked(&visit.op, visit.time);
    {
        std::lock_guard guard(visit.frame.lock);
        if (auto found = visit.frame.keys.find(asked); found != visit.frame.keys.end()) return found->second;
    }
    Keyed keyed = MakeKey(visit);
    std::lock_guard guard(visit.frame.lock);
    return visit.frame.keys.insert_or_assign(asked, std::move(keyed)).first->second;
}

Renderer::Keyed Renderer::MakeKey(Visit const& visit)
{
    Operator& op = visit.op;
    if (auto problem = FeedsItself(visit)) return {.problem = std::move(problem)};
    if (op.passThrough) {
        Input const* const in = op.MainInput(1);
        if (!in || !in->Source()) return {};
        Keyed passed = KeyOf(visit.To(*in->Source()->Owner(), visit.time));
        passed.key = ResultKeyBuilder().Add(passed.key).Add(static_cast<double>(in->Source()->Index())).Key();
        return passed;
    }
    ResultKeyBuilder key;
    key.Add(static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(&op)))
        .Add(static_cast<double>(quality_.proxy))
        .Add(quality_.quick ? 1.0 : 0.0)
        .Add(static_cast<double>(quality_.missing));

    Request request(op, visit.time, quality_);
    Keyed keyed;
    auto const addLevel = [&](int level) {
        for (auto const& input : op.Inputs()) {
            bool const due = level == 0 ? input->Priority() >= 0 : input->Priority() == level;
            if (due && !keyed.problem) keyed.problem = AddSlots(key, keyed.varies, request, *input, visit);
        }
    };
    addLevel(0);
    for (int level : LateLevels(op)) {
        request.priority_ = level;
        if (!keyed.problem) Check(request);
        addLevel(level);
    }
    if (keyed.problem) return keyed;

    auto const* source = dynamic_cast<SourceOperator const*>(&op);
    if (op.KeepsHistory() && jobFrames_.empty()) key.Add(++looks_);
    if (op.Registration()->Tags().GetBool(Reg_TimeVariant, false) || op.KeepsHistory() ||
        (source && source->WantsFields(request))) {
        key.Add(visit.time);
        keyed.varies = true;
    }
    if (SourceFile const file = op.FileToRead(request); !file.path.empty()) {
        AddFile(key, file.path);
        keyed.varies = keyed.varies || file.isOfSequence;
        bool const isRead = !visit.mayMiss || access(file.path.c_str(), F_OK) == 0;
        if (visit.frame.plan && isRead) visit.frame.plan->reads.push_back(file.path);
    }
    if (std::string const path = op.FileToWrite(request); !path.empty()) {
        key.Add(path);
        if (visit.frame.plan) visit.frame.plan->writes.push_back(path);
    }
    if (visit.frame.plan) {
        std::lock_guard guard(StateOf(op).busy);
        op.PreCalcProcess(&request);
    }
    keyed.key = key.Key();
    return keyed;
}

std::optional<Problem> Renderer::AddSlots(ResultKeyBuilder& key, bool& varies, Request& request, Input& input,
                                          Visit const& visit)
{
    auto& slots = request.slots_[static_cast<std::size_t>(input.Index())];
    if (slots.empty()) request.SlotOf(input, 0);
    key.Add(std::uint64_t{slots.size()});
    for (auto& slot : slots) {
        if (slot.given) {
            AddValue(key, slot.value.Get());
            continue;
        }
        Output const* const source = input.Source();
        if (source && !IsSmall(input.DataType())) {
            Visit to = visit.To(*source->Owner(), slot.time);
            to.mayMiss = to.mayMiss || &slot != &slots.front();
            Keyed fed = KeyOf(to);
            if (fed.problem) return fed.problem;
            key.Add(fed.key).Add(static_cast<double>(source->Index()));
            varies = varies || fed.varies;
            continue;
        }
        RenderResult fetched = Fetch(input, slot.time, visit);
        if (fetched.problem) return fetched.problem;
        slot.value = std::move(fetched.value);
        AddValue(key, slot.value.Get());
        varies = varies || source || input.Expression(); // what is connected moves, as a rule
    }
    return std::nullopt;
}

} // namespace ombrelune
