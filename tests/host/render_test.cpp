// The renderer on small operators that count what they do: what is made once and shared, what is made again,
// in which order, and that none of it can be seen in the results.

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <functional>
#include <thread>

#include <gtest/gtest.h>
#include <sys/resource.h>

#include "host/render/Renderer.h"
#include "host/value/Parallel.h"

namespace ombrelune {
namespace {

/// Adds up its three inputs, which stand for pictures, by a function of the time.
class Adder : public Operator {
public:
    Adder(Registry const* registry, ScriptVal const& settings, TagList const& tags)
        : Operator(registry, settings, tags)
    {
        scale =
            AddInputTagList("Scale", "Scale", {{Attr_DataType, CLSID_DataType_Number}, {Attr_Default, 1.0}});
        for (int i = 0; i < 2; ++i)
            in[i] = AddInputTagList(
                "In", "In", {{Attr_DataType, FuID("Sum")}, {Attr_MainNumber, i + 1}, {Attr_Priority, -1}});
        output = AddOutputTagList("Output", "Output", {{Attr_DataType, FuID("Sum")}, {Attr_MainNumber, 1}});
    }
    static Operator* New(Registry const* registry, ScriptVal const& settings, TagList const& tags)
    {
        return new Adder(registry, settings, tags);
    }

    void OnStartRender(RenderMessage*) override { past = 0.0; }
    bool KeepsHistory(OperatorState const&) const override { return history; }
    SourceFile FileToRead(Request const&) const override { return {file}; }
    void CheckRequest(Request* request) override
    {
        for (std::size_t i = 0; i < times.size(); ++i)
            request->SetInputTime(in[0], times[i] + request->GetTime(), static_cast<int>(i));
    }
    void Process(Request* request) override
    {
        EXPECT_EQ(inside.fetch_add(1), 0) << Name() << " works on one request at a time";
        ++made;
        double sum =
            dynamic_cast<Number const&>(*scale->GetValue(request, 0)).value * value(request->GetTime());
        for (Input* each : in)
            for (int slot = 0; slot < 4; ++slot)
                if (auto const* number = dynamic_cast<Number const*>(each->GetValue(request, slot)))
                    sum += number->value * (1.0 + slot);
        if (history) sum = past = sum + past / 2.0;
        if (busy) std::this_thread::sleep_for(std::chrono::milliseconds(2));
        inside.fetch_sub(1);
        output->Set(request, new Sum(sum), nullptr);
    }

    /// A number that is as heavy as a picture.
    struct Sum : Number {
        using Number::Number;
        FuID DataType() const override { return "Sum"; }
        std::size_t MemoryBytes() const override { return 1 << 20; }
    };

    Input* scale;
    Input* in[2];
    Output* output;
    std::function<double(double)> value = [](double) { return 0.0; };
    std::vector<double> times; ///< asked of the first input, from the request's own
    std::string file;
    bool history = false, busy = false;
    double past = 0.0;
    std::atomic<int> made = 0, inside = 0;
};

TagList AdderTags(bool varies)
{
    TagList tags{{Reg_InitFunction, Operator::RegInit},
                 {Reg_CleanupFunction, Operator::RegCleanup},
                 {Reg_NewFunction, Adder::New}};
    if (varies) tags.Add({Reg_TimeVariant, 1});
    return tags;
}
Registry const steadyRegistry(ClassRegistry(), "Test.Steady", AdderTags(false));
Registry const movingRegistry(ClassRegistry(), "Test.Moving", AdderTags(true));

struct RendererTest : testing::Test {
    Adder& Add(Registry const& registry, char const* name, Adder* first = nullptr, Adder* second = nullptr)
    {
        auto& op = static_cast<Adder&>(*document.AddOperator(registry, name));
        if (first) op.in[0]->ConnectTo(first->output);
        if (second) op.in[1]->ConnectTo(second->output);
        return op;
    }
    static double Value(Renderer& renderer, Adder& op, double time)
    {
        RenderResult const result = renderer.Evaluate(*op.output, time);
        EXPECT_FALSE(result.problem) << result.problem->Format();
        return result.problem ? -1e9 : dynamic_cast<Number const&>(*result.value).value;
    }
    FusionDoc document;
};

constexpr std::size_t kPlenty = std::size_t{1} << 30;

TEST_F(RendererTest, WhatNothingMovesIsMadeOnceForAllFrames)
{
    Adder& still = Add(steadyRegistry, "Still");
    Adder& moving = Add(movingRegistry, "Moving");
    Adder& onStill = Add(steadyRegistry, "OnStill", &still);
    Adder& both = Add(steadyRegistry, "Both", &onStill, &moving);
    still.value = [](double) { return 5.0; };
    moving.value = [](double time) { return time; };
    Renderer renderer(document, {}, kPlenty);
    renderer.Start({1, 2, 3});
    for (double frame : {1.0, 2.0, 3.0}) {
        EXPECT_EQ(Value(renderer, both, frame), 5.0 + frame);
        renderer.FinishFrame(frame);
    }
    EXPECT_EQ(still.made, 1);
    EXPECT_EQ(onStill.made, 1);
    EXPECT_EQ(moving.made, 3);
    EXPECT_EQ(both.made, 3);

    still.scale->SetValueQuietly(MakeRef<Number>(2.0));
    EXPECT_EQ(Value(renderer, both, 3.0), 13.0) << "a changed value changes the keys of all that it feeds";
    still.scale->SetValueQuietly(MakeRef<Number>(1.0));
    EXPECT_EQ(Value(renderer, both, 1.0), 6.0);
    EXPECT_EQ(still.made, 2) << "and the old value finds the old result";
}

TEST_F(RendererTest, ManyTimesAskOnlyForWhatIsNew)
{
    Adder& source = Add(movingRegistry, "Source");
    Adder& average = Add(steadyRegistry, "Average", &source);
    source.value = [](double time) { return time * time; };
    average.times = {-1, 0, 1, 2};
    Renderer renderer(document, {}, kPlenty);
    std::vector<double> frames;
    for (int i = 0; i < 10; ++i) frames.push_back(i);
    renderer.Start(frames);
    for (double t : frames) {
        EXPECT_EQ(Value(renderer, average, t),
                  (t - 1) * (t - 1) + 2 * t * t + 3 * (t + 1) * (t + 1) + 4 * (t + 2) * (t + 2));
        renderer.FinishFrame(t);
    }
    EXPECT_EQ(source.made, 13) << "times -1 to 11, each once";
}

TEST_F(RendererTest, ABudgetChangesTheWorkAndNotTheResult)
{
    Adder& source = Add(movingRegistry, "Source");
    Adder& left = Add(steadyRegistry, "Left", &source);
    Adder& right = Add(steadyRegistry, "Right", &source);
    Adder& sum = Add(steadyRegistry, "Sum", &left, &right);
    source.value = [](double time) { return time + 0.5; };
    left.value = [](double) { return 10.0; };
    for (std::size_t budget : {std::size_t{0}, std::size_t{3} << 20, kPlenty}) {
        Renderer renderer(document, {}, budget);
        renderer.Start({1, 2});
        EXPECT_EQ(Value(renderer, sum, 1.0), 13.0);
        EXPECT_EQ(Value(renderer, sum, 2.0), 15.0);
    }
    source.made = sum.made = 0;
    Renderer renderer(document, {}, 0);
    RenderResult const held = renderer.Evaluate(*sum.output, 1.0);
    Value(renderer, sum, 1.0);
    EXPECT_EQ(sum.made, 1) << "what somebody holds is found without a budget";
    {
        Renderer wide(document, {}, kPlenty);
        source.made = 0;
        Value(wide, sum, 1.0);
        EXPECT_EQ(source.made, 1) << "two that read one share it";
    }
}

TEST_F(RendererTest, AFrameLeavesNothingBehindThatNoOtherNeeds)
{
    Adder& moving = Add(movingRegistry, "Moving");
    Renderer renderer(document, {}, kPlenty);
    renderer.Start({1, 2});
    Value(renderer, moving, 1.0);
    renderer.FinishFrame(1.0);
    Value(renderer, moving, 1.0);
    EXPECT_EQ(moving.made, 2);
    Add(steadyRegistry, "Late", &moving).times = {-1};
    Adder& late = static_cast<Adder&>(*document.FindOperator("Late"));
    Value(renderer, late, 3.0); // asks for 2
    renderer.FinishFrame(3.0);
    Value(renderer, late, 3.0);
    EXPECT_EQ(moving.made, 3) << "a tool that is read across frames keeps its results";
}

TEST_F(RendererTest, AFileThatChangedIsReadAgain)
{
    auto const path = std::filesystem::temp_directory_path() / ("renderer_" + std::to_string(getpid()));
    std::ofstream(path) << "one";
    Adder& reader = Add(steadyRegistry, "Reader");
    Adder& behind = Add(steadyRegistry, "Behind", &reader);
    reader.file = path.string();
    Renderer renderer(document, {}, kPlenty);
    Value(renderer, behind, 0.0);
    Value(renderer, behind, 1.0);
    EXPECT_EQ(behind.made, 1);
    std::ofstream(path) << "longer";
    Value(renderer, behind, 1.0);
    EXPECT_EQ(behind.made, 2);

    Renderer::Plan const plan = renderer.PlanOf(behind, 0.0);
    EXPECT_EQ(plan.reads, std::vector{path.string()});
    EXPECT_EQ(reader.made, 2) << "a plan renders nothing";
    std::filesystem::remove(path);
}

/// Sum of the frames up to this one, each halved once for each that follows.
double Trail(std::vector<double> const& frames, double time)
{
    double past = 0.0;
    for (double frame : frames)
        if (frame <= time) past = frame + past / 2.0;
    return past;
}

TEST_F(RendererTest, HistoryRunsThroughTheFramesOfTheJobInWhateverOrderTheyAreAsked)
{
    Adder& source = Add(movingRegistry, "Source");
    Adder& trail = Add(steadyRegistry, "Trail", &source);
    source.value = [](double time) { return time; };
    trail.history = true;
    std::vector<double> const frames{2, 3, 5, 8};
    for (std::vector<double> order : {std::vector<double>{2, 3, 5, 8}, {8, 2, 5, 3}, {5, 5, 8}, {3, 2, 3}}) {
        for (std::size_t budget : {std::size_t{0}, kPlenty}) {
            Renderer renderer(document, {}, budget);
            renderer.Start(frames);
            for (double time : order) EXPECT_EQ(Value(renderer, trail, time), Trail(frames, time)) << time;
        }
    }
    Renderer renderer(document, {}, kPlenty);
    renderer.Start(frames);
    trail.made = 0;
    for (double time : frames) {
        Value(renderer, trail, time);
        renderer.FinishFrame(time);
    }
    EXPECT_EQ(trail.made, 4) << "in order nothing is done twice";
}

TEST_F(RendererTest, ThreadsChangeNothing)
{
    // A ladder: each rung reads both sides of the one before, at this time and others.
    Adder* left = &Add(movingRegistry, "Left0");
    Adder* right = &Add(movingRegistry, "Right0");
    left->value = [](double time) { return time; };
    right->value = [](double time) { return 1.0 / (time + 2.0); };
    std::vector<Adder*> all{left, right};
    for (int rung = 1; rung < 6; ++rung) {
        Adder* const nextLeft = &Add(steadyRegistry, ("Left" + std::to_string(rung)).c_str(), left, right);
        Adder* const nextRight = &Add(steadyRegistry, ("Right" + std::to_string(rung)).c_str(), right, left);
        nextLeft->times = {0, 1};
        left = nextLeft, right = nextRight;
        all.insert(all.end(), {left, right});
    }
    all[4]->history = true;
    for (Adder* op : all) op->busy = true;
    std::vector<double> const frames{0, 1, 2, 3};
    auto const render = [&](int threads, std::size_t budget) {
        SetThreadCount(threads);
        std::vector<double> values(frames.size());
        Renderer renderer(document, {}, budget);
        renderer.Start(frames);
        std::vector<std::thread> workers;
        for (std::size_t i = 0; i < frames.size(); ++i) {
            auto const work = [&, i] {
                values[i] = Value(renderer, *left, frames[i]);
                renderer.FinishFrame(frames[i]);
            };
            if (threads > 1) workers.emplace_back(work);
            else work();
        }
        for (std::thread& worker : workers) worker.join();
        SetThreadCount(0);
        return values;
    };
    std::vector<double> const alone = render(1, kPlenty);
    EXPECT_EQ(render(4, kPlenty), alone);
    EXPECT_EQ(render(8, std::size_t{2} << 20), alone);
}

TEST_F(RendererTest, ALongRowOfToolsIsRefusedBeforeTheStackIs)
{
    // Sanitizers make stack frames several times larger.
    rlimit stack{};
    getrlimit(RLIMIT_STACK, &stack);
    rlimit const large{std::min<rlim_t>(64 << 20, stack.rlim_max), stack.rlim_max};
    setrlimit(RLIMIT_STACK, &large);
    Adder* last = &Add(steadyRegistry, "First");
    for (int i = 0; i < 1500; ++i) last = &Add(steadyRegistry, ("T" + std::to_string(i)).c_str(), last);
    Renderer renderer(document, {}, kPlenty);
    EXPECT_EQ(Value(renderer, *last, 0.0), 0.0);
    for (int i = 1500; i < 2500; ++i) last = &Add(steadyRegistry, ("T" + std::to_string(i)).c_str(), last);
    RenderResult const result = renderer.Evaluate(*last->output, 0.0);
    ASSERT_TRUE(result.problem);
    EXPECT_NE(result.problem->text.find("more than 2000 tools in a row"), std::string::npos);
}

} // namespace
} // namespace ombrelune
