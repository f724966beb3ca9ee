// A document that is edited, called off and rendered twice at once, on operators that watch who enters them.

#include <array>
#include <atomic>
#include <chrono>
#include <thread>

#include <gtest/gtest.h>

#include "host/render/Renderer.h"
#include "host/value/Parallel.h"

namespace ombrelune {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

double ValueOf(Parameter const* value)
{
    auto const* number = dynamic_cast<Number const*>(value);
    return number ? number->value : -1e9;
}

struct Sum : Number {
    using Number::Number;
    FuID DataType() const override { return "Sum"; }
};

/// Adds A, B and what is connected. Holds what it works on in members, as tools do, so that a second visitor
/// would be seen.
class Watched : public ThreadedOperator {
public:
    Watched(Registry const* registry, ScriptVal const& settings, TagList const& tags)
        : ThreadedOperator(registry, settings, tags)
    {
        AddIdentityInput();
        a = AddInputTagList("A", "A", {{Attr_DataType, CLSID_DataType_Number}});
        b = AddInputTagList("B", "B", {{Attr_DataType, CLSID_DataType_Number}});
        for (int i = 0; i < 2; ++i)
            in[i] = AddInputTagList("In", "In",
                                    {{Attr_DataType, FuID("Sum")},
                                     {Attr_MainNumber, i + 1},
                                     {Attr_Priority, -1},
                                     {Attr_Required, false}});
        output = AddOutputTagList("Output", "Output", {{Attr_DataType, FuID("Sum")}, {Attr_MainNumber, 1}});
    }
    static Operator* New(Registry const* registry, ScriptVal const& settings, TagList const& tags)
    {
        return new Watched(registry, settings, tags);
    }

    bool ChecksRequests() const override { return checks; }
    void CheckRequest(Request* request) override
    {
        Alone const alone(*this);
        member = request->Quality().proxy;
    }
    void Process(Request* request) override
    {
        Alone const alone(*this);
        ++made;
        EXPECT_EQ(member, request->Quality().proxy) << "the request that was checked last";
        double const first = ValueOf(a->GetValue(request, 0));
        EXPECT_EQ(first, -ValueOf(b->GetValue(request, 0))) << "both of one edit, or none";
        member = -1;
        if (work) work(*this, request);
        double sum = first + request->Quality().proxy;
        for (Input* each : in)
            if (Parameter const* value = each->GetValue(request, 0)) sum += ValueOf(value);
        output->Set(request, new Sum(sum), nullptr);
    }
    void ProcessChunk(Request*, int) override
    {
        ++chunks;
        std::this_thread::sleep_for(1ms);
    }
    void NotifyChanged(Input* input, Parameter* value, double, TagList*) override
    {
        Alone const alone(*this);
        ++told;
        if (answer) answer(*this, input, value);
    }

    struct Alone {
        explicit Alone(Watched& entered) : op(entered) { EXPECT_EQ(op.inside.fetch_add(1), 0) << op.Name(); }
        ~Alone() { op.inside.fetch_sub(1); }
        Watched& op;
    };

    Input *a, *b, *in[2];
    Output* output;
    bool checks = false;
    int member = 0, made = 0, told = 0;
    std::atomic<int> inside = 0, chunks = 0;
    std::function<void(Watched&, Request*)> work;
    std::function<void(Watched&, Input*, Parameter*)> answer;
};

Registry const watchedRegistry(ClassRegistry(), "Test.Watched",
                               {{Reg_InitFunction, Operator::RegInit},
                                {Reg_CleanupFunction, Operator::RegCleanup},
                                {Reg_NewFunction, Watched::New}});

struct RenderEdit : testing::Test {
    Watched& Add(char const* name, Watched* first = nullptr, Watched* second = nullptr)
    {
        auto& op = static_cast<Watched&>(*document.AddOperator(watchedRegistry, name));
        if (first) op.in[0]->ConnectTo(first->output);
        if (second) op.in[1]->ConnectTo(second->output);
        return op;
    }
    static double Value(RenderResult const& result)
    {
        EXPECT_FALSE(result.problem) << result.problem->Format();
        return ValueOf(result.value.Get());
    }
    void Set(Watched& op, double value)
    {
        FusionDoc::Edits const together(document);
        op.a->SetSource(MakeRef<Number>(value).Get(), 0.0, nullptr);
        op.b->SetSource(MakeRef<Number>(-value).Get(), 0.0, nullptr);
    }
    FusionDoc document;
};

TEST_F(RenderEdit, SizesAndRenderersShareOperatorsWithoutMeetingInThem)
{
    Watched& left = Add("Left");
    Watched& right = Add("Right");
    Watched& both = Add("Both", &left, &right);
    left.checks = both.checks = true;
    Renderer one(document, {}, 0), other(document, {.proxy = 2}, 0);
    auto const work = [&](Renderer& renderer, int proxy) {
        for (int i = 0; i < 300; ++i) // each operator gives its proxy, and there are three
            ASSERT_EQ(Value(renderer.Evaluate(*both.output, i, {.proxy = proxy})), 3.0 * proxy);
    };
    std::vector<std::thread> threads;
    for (int proxy : {1, 2}) {
        threads.emplace_back([&, proxy] { work(one, proxy); });
        threads.emplace_back([&, proxy] { work(other, proxy); });
    }
    for (auto& thread : threads) thread.join();

    Renderer kept(document, {}, 1 << 20);
    both.made = 0;
    for (int round = 0; round < 2; ++round)
        for (int proxy : {1, 4})
            EXPECT_EQ(Value(kept.Evaluate(*both.output, 0, {.proxy = proxy})), 3.0 * proxy);
    EXPECT_EQ(both.made, 2) << "one cache serves all qualities";
}

TEST_F(RenderEdit, EveryRenderSeesOneVersionWhileInputsAreSetConnectedAndTakenAway)
{
    Watched& source = Add("Source");
    Watched& middle = Add("Middle", &source);
    Watched& last = Add("Last", &middle, &source);
    last.checks = true;
    Renderer renderer(document, {}, 1 << 20);
    std::atomic<bool> done = false;
    std::vector<std::thread> threads;
    for (int i = 0; i < 2; ++i)
        threads.emplace_back([&] {
            while (!done) {
                double const value = Value(renderer.Evaluate(*last.output, 0));
                // Source twice, with a side branch of 5 or without, and three or four operators' proxies.
                double const whole = value - (value >= 1e6 ? 1e6 + 1.0 : 0.0) - 4.0;
                ASSERT_EQ(static_cast<long>(whole) % 2, 0) << value;
            }
        });
    for (int i = 0; i < 3000; ++i) {
        Set(source, i);
        if (i % 10 == 0) {
            Watched& side = Add("Side");
            Set(side, 1e6);
            middle.in[1]->ConnectTo(side.output);
            source.SetPassThrough(false);
            middle.in[0]->SetAttrsTagList({{Attr_ControlName, "Label " + std::to_string(i)}});
            EXPECT_EQ(document.RemoveOperator(side).get(), &side);
            EXPECT_FALSE(middle.in[1]->Source());
        }
    }
    done = true;
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(Value(renderer.Evaluate(*last.output, 0)), 2 * 2999.0 + 4.0);
    EXPECT_EQ(document.Operators().size(), 3U);
}

TEST_F(RenderEdit, ADragMakesOnlyWhatFollowsAgain)
{
    std::vector<Watched*> row{&Add("First")};
    while (row.size() < 10) row.push_back(&Add("Next", row.back()));
    Renderer renderer(document, {}, 1 << 20);
    for (int step = 0; step < 20; ++step) {
        Set(*row[7], step);
        EXPECT_EQ(Value(renderer.Evaluate(*row.back()->output, 0)), 10.0 + step);
    }
    EXPECT_EQ(row[6]->made, 1);
    EXPECT_EQ(row[7]->made, 20);
    EXPECT_EQ(row[9]->made, 20);

    std::shared_ptr<Operator> const removed = document.RemoveOperator(*row[5]);
    EXPECT_EQ(Value(renderer.Evaluate(*row.back()->output, 0)), 4.0 + 19) << "what follows it";
    RenderResult const gone = renderer.Evaluate(*row[5]->output, 0);
    ASSERT_TRUE(gone.problem);
    EXPECT_NE(gone.problem->text.find("no longer in the document"), std::string::npos);
}

TEST_F(RenderEdit, WhatIsCalledOffEndsSoonIsNotKeptAndOthersTryAgain)
{
    Watched& slow = Add("Slow");
    Watched& behind = Add("Behind", &slow);
    slow.work = [](Watched& op, Request* request) { op.DoMultiProcess(request, 400); };
    for (int threads : {1, 2}) {
        SetThreadCount(threads);
        slow.chunks = 0;
        Renderer renderer(document, {}, 1 << 20);
        std::stop_source stop;
        RenderResult first, second, third;
        Clock::time_point ended;
        std::thread maker([&] {
            first = renderer.Evaluate(*behind.output, 0, {}, stop.get_token());
            ended = Clock::now();
        });
        while (slow.chunks < 5) std::this_thread::yield();
        std::thread waiter([&] { second = renderer.Evaluate(*behind.output, 0, {}); });
        std::stop_source impatience;
        std::thread impatient(
            [&] { third = renderer.Evaluate(*slow.output, 0, {}, impatience.get_token()); });
        std::this_thread::sleep_for(20ms);
        auto asked = Clock::now();
        impatience.request_stop();
        impatient.join();
        EXPECT_LT(Clock::now() - asked, 100ms) << "who only waits goes while the other goes on";
        asked = Clock::now();
        stop.request_stop();
        maker.join();
        EXPECT_LT(ended - asked, 100ms);
        waiter.join();
        ASSERT_TRUE(first.problem && third.problem);
        EXPECT_TRUE(first.problem->isStop && third.problem->isStop);
        EXPECT_EQ(Value(second), 2.0);
        EXPECT_GE(slow.chunks, 400 + 5) << "it was begun anew";
        EXPECT_LT(slow.chunks, 800);
    }
    SetThreadCount(0);
}

TEST_F(RenderEdit, AnExceptionFailsItsFrameAndNoOther)
{
    Watched& weak = Add("Weak");
    Watched& behind = Add("Behind", &weak);
    Renderer renderer(document, {}, 1 << 20);
    struct NoTable : std::bad_alloc {
        char const* what() const noexcept override { return "a table of 12 GiB"; }
    };
    using Throw = void (*)(int);
    std::array<std::pair<Throw, char const*>, 4> const cases{
        {{[](int) { throw std::bad_alloc(); }, "Weak: there is not enough memory"},
         {[](int) { throw NoTable(); }, "Weak: there is not enough memory: a table of 12 GiB"},
         {[](int) { throw std::runtime_error("no pattern"); }, "Weak: failed: no pattern"},
         {[](int) { throw 5; }, "Weak: failed, and does not say why"}}};
    for (auto const& [fail, text] : cases) {
        for (bool inLoop : {false, true}) {
            weak.work = [&, body = fail](Watched&, Request*) {
                inLoop ? ParallelFor(100,
                                     [&](int i) {
                                         if (i == 70) body(i);
                                     })
                       : body(0);
            };
            RenderResult const result = renderer.Evaluate(*behind.output, 0);
            ASSERT_TRUE(result.problem);
            EXPECT_EQ(result.problem->text, text);
        }
    }
    weak.work = nullptr;
    EXPECT_EQ(Value(renderer.Evaluate(*behind.output, 0)), 2.0) << "the failure was not kept";
}

TEST_F(RenderEdit, InputsThatSetEachOtherAreCutAndNamed)
{
    Watched& first = Add("First");
    Watched& second = Add("Second");
    auto const answerWith = [](Input* target) {
        return [target](Watched&, Input* input, Parameter* value) {
            if (input->Id() == FuID("A"))
                target->SetSource(MakeRef<Number>(ValueOf(value) + 1.0).Get(), 0.0, nullptr);
        };
    };
    first.answer = answerWith(second.a);
    second.answer = answerWith(second.b);
    first.a->SetSource(MakeRef<Number>(1.0).Get(), 0.0, nullptr);
    EXPECT_EQ(ValueOf(second.b->Value().Get()), 3.0) << "changes that end are told of all";
    EXPECT_EQ(first.told + second.told, 3);
    EXPECT_TRUE(document.TakeProblems().empty());

    second.answer = answerWith(first.a);
    first.a->SetSource(MakeRef<Number>(1.0).Get(), 0.0, nullptr);
    auto const problems = document.TakeProblems();
    ASSERT_EQ(problems.size(), 1U);
    EXPECT_NE(problems[0].text.find("First.A, Second.A"), std::string::npos) << problems[0].text;

    // A tool that sets an input of its own while it works is told when it has ended.
    first.answer = nullptr;
    first.told = 0;
    first.work = [](Watched& op, Request*) {
        op.b->SetSource(MakeRef<Number>(0.0).Get(), 0.0, nullptr);
        EXPECT_EQ(op.told, 0);
    };
    first.a->SetValueQuietly(MakeRef<Number>(0.0));
    first.b->SetValueQuietly(MakeRef<Number>(0.0));
    Renderer renderer(document, {}, 0);
    EXPECT_EQ(Value(renderer.Evaluate(*first.output, 0)), 1.0);
    EXPECT_EQ(first.told, 1);
}

TEST_F(RenderEdit, KeysAndWorkAreToldWithoutWaitingForAToolAtWork)
{
    Watched& slow = Add("Slow");
    Watched& behind = Add("Behind", &slow);
    Renderer renderer(document, {}, 1 << 20);
    std::vector<std::string> events;
    renderer.Listen([&](OperatorEvent const& event) {
        events.push_back(event.op.Name() + (event.milliseconds ? " ended" : " began"));
    });
    Set(behind, 0.0);
    auto const key = renderer.KeyAt(*behind.output, 0, {});
    ASSERT_TRUE(key);
    EXPECT_FALSE(renderer.IsKept(*key));
    EXPECT_NE(key, renderer.KeyAt(*behind.output, 0, {.proxy = 2}));
    std::atomic<bool> isIn = false, mayGo = false;
    slow.work = [&](Watched&, Request*) {
        isIn = true;
        while (!mayGo) std::this_thread::yield();
    };
    std::thread render([&] { EXPECT_EQ(Value(renderer.Evaluate(*behind.output, 0)), 2.0); });
    while (!isIn) std::this_thread::yield();
    EXPECT_EQ(renderer.KeyAt(*behind.output, 0, {}), key);
    EXPECT_FALSE(renderer.IsKept(*key));
    slow.checks = true;
    EXPECT_EQ(renderer.KeyAt(*behind.output, 0, {}), std::nullopt) << "what it would ask for is not known";
    slow.checks = false;
    mayGo = true;
    render.join();
    EXPECT_TRUE(renderer.IsKept(*key));
    EXPECT_EQ(events, (std::vector<std::string>{"Slow began", "Slow ended", "Behind began", "Behind ended"}));

    // A result goes by what made it and not by where the maker lay in memory.
    Set(behind, 1.0);
    EXPECT_NE(renderer.KeyAt(*behind.output, 0, {}), key);
    Set(behind, 0.0);
    EXPECT_EQ(renderer.KeyAt(*behind.output, 0, {}), key);
    behind.SetPassThrough(true);
    auto const through = renderer.KeyAt(*behind.output, 0, {});
    ASSERT_TRUE(through);
    EXPECT_EQ(through, renderer.KeyAt(*slow.output, 0, {}));
    EXPECT_TRUE(renderer.IsKept(*through));
    document.RemoveOperator(slow);
    EXPECT_NE(renderer.KeyAt(*Add("Slow").output, 0, {}), through);
}

} // namespace
} // namespace ombrelune
