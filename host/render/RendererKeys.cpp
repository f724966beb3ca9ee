// The look ahead: keys of results, found from values and files without rendering a picture.

#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include "host/render/RendererState.h"

namespace ombrelune {

bool Renderer::IsSmall(FuID type)
{
    return type == CLSID_DataType_Number || type == CLSID_DataType_Point || type == CLSID_DataType_Text ||
           type == CLSID_DataType_FuID || type == CLSID_DataType_LookUpTable;
}

namespace {

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
try {
    Operator& op = visit.op;
    if (auto problem = WhyNot(visit)) return {.problem = std::move(problem)};
    if (auto problem = FeedsItself(visit)) return {.problem = std::move(problem)};
    OperatorState const& state = *visit.state;
    if (state.passThrough) {
        Input const* const in = op.MainInput(1);
        Output const* const from = in ? state.Of(*in).source : nullptr;
        if (!from) return {};
        Keyed passed = KeyOf(visit.To(*from->Owner(), visit.time));
        passed.key = ResultKeyBuilder().Add(passed.key).Add(static_cast<double>(from->Index())).Key();
        return passed;
    }
    RenderQuality const& quality = visit.frame.quality;
    ResultKeyBuilder key;
    key.Add(op.Serial())
        .Add(static_cast<double>(quality.proxy))
        .Add(quality.quick ? 1.0 : 0.0)
        .Add(static_cast<double>(quality.missing));

    Request request(visit.state, visit.time, quality);
    Keyed keyed;
    auto const addLevel = [&](int level) {
        for (auto const& input : op.Inputs()) {
            int const priority = state.Of(*input).priority;
            bool const due = level == 0 ? priority >= 0 : priority == level;
            if (due && !keyed.problem) keyed.problem = AddSlots(key, keyed.varies, request, *input, visit);
        }
    };
    addLevel(0);
    for (int level : state.lateLevels) {
        request.priority_ = level;
        if (!keyed.problem && !Check(request, visit.frame))
            keyed.problem = Problem{.text = op.Name() + " is at work", .isStop = true, .mayPass = true};
        addLevel(level);
    }
    if (keyed.problem) return keyed;

    auto const* source = dynamic_cast<SourceOperator const*>(&op);
    // History is that of what was looked at, or that of a job, which an edit begins anew.
    if (state.keepsHistory) key.Add(jobFrames_.empty() ? ++looks_ : visit.frame.snapshot->Version());
    if (op.Registration()->Tags().GetBool(Reg_TimeVariant, false) || state.keepsHistory ||
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
        BusyOperator const busy(op);
        op.PreCalcProcess(&request);
    }
    keyed.key = key.Key();
    return keyed;
} catch (...) {
    return {.problem = ProblemOfException(&visit.op, visit.op.Name())};
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
        InputState const& state = visit.Of(input);
        Output const* const source = state.source;
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
        varies = varies || source || state.expression; // what is connected moves, as a rule
    }
    return std::nullopt;
}

} // namespace ombrelune
