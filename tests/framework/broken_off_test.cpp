// A tool that breaks a frame off, at each of its stages, and one whose frame nobody wants any more.

#include <atomic>
#include <chrono>
#include <new>
#include <thread>

#include <gtest/gtest.h>

#include "framework/Registration.h"
#include "host/image/BufferPool.h"
#include "host/render/Renderer.h"
#include "tests/framework/ToolUnderTest.h"

namespace ombrelune {
namespace {

enum class Stage { kNone, kInit, kPixel, kDone, kData };

struct KEffectTestWeak : KEffectPixel {
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "TWe", "Test Weak"); }
    bool GetFlag(KProcessFlag flag) override { return flag == KPF_Source || KEffectPixel::GetFlag(flag); }
    void FailAt(Stage stage)
    {
        if (fails == stage) throw std::bad_alloc();
    }
    bool Init(KImage* source) override
    {
        bool const goesOn = KEffectPixel::Init(source);
        FailAt(Stage::kInit);
        return goesOn;
    }
    Pixel F(int x, int y, KImage*) override
    {
        ++pixels;
        if (x == 5 && y == 7) FailAt(Stage::kPixel);
        Pixel pixel;
        pixel.Clear();
        // 4K of this take a minute.
        for (int i = 0; i < work; ++i) pixel.red = pixel.red * 1664525U + static_cast<std::uint32_t>(x + i);
        pixel.red %= 65536;
        return pixel;
    }
    void Done(KImage** destination) override
    {
        KEffectPixel::Done(destination);
        FailAt(Stage::kDone);
    }
    void ProcessData() override { FailAt(Stage::kData); }
    inline static Stage fails = Stage::kNone;
    inline static int work = 0;
    inline static std::atomic<int> pixels = 0;
};

OMBRELUNE_TOOL(BF_TestWeak, BF_SourceOperator, KEffectTestWeak);

TEST(BrokenOff, EveryStageMayThrowAndTheNextFrameIsFine)
{
    FusionDoc document;
    document.format.width = 16, document.format.height = 9;
    Operator& op = *document.AddOperator(*ClassRegistry().Find("Brassfennel.BF_TestWeak"), "Weak1");
    std::size_t const before = BuffersInUse().now;
    for (double threading : {0.0, 1.0}) {
        op.FindInput("Domultithreading")->SetValueQuietly(MakeRef<Number>(threading));
        for (Stage stage : {Stage::kInit, Stage::kPixel, Stage::kDone, Stage::kData}) {
            Renderer renderer(document, {});
            KEffectTestWeak::fails = stage;
            RenderResult result = renderer.Evaluate(*op.FindOutput("Output"), 0);
            KEffectTestWeak::fails = Stage::kNone;
            ASSERT_TRUE(result.problem) << static_cast<int>(stage);
            EXPECT_EQ(result.problem->text, "Weak1: there is not enough memory");
            result = {};
            EXPECT_EQ(BuffersInUse().now, before) << static_cast<int>(stage) << " leaves no picture behind";
            EXPECT_FALSE(renderer.Evaluate(*op.FindOutput("Output"), 0).problem);
        }
    }
}

TEST(BrokenOff, A4kFrameThatIsCalledOffReturnsAtOnce)
{
    using Clock = std::chrono::steady_clock;
    FusionDoc document;
    document.format.width = 3840, document.format.height = 2160;
    Operator& op = *document.AddOperator(*ClassRegistry().Find("Brassfennel.BF_TestWeak"), "Weak1");
    Renderer renderer(document, {});
    KEffectTestWeak::work = 2000;
    for (double threading : {0.0, 1.0}) {
        op.FindInput("Domultithreading")->SetValueQuietly(MakeRef<Number>(threading));
        KEffectTestWeak::pixels = 0;
        std::stop_source stop;
        RenderResult result;
        std::thread render(
            [&] { result = renderer.Evaluate(*op.FindOutput("Output"), 0, {}, stop.get_token()); });
        while (KEffectTestWeak::pixels < 8000) std::this_thread::yield();
        auto const asked = Clock::now();
        stop.request_stop();
        render.join();
        std::chrono::duration<double, std::milli> const took = Clock::now() - asked;
        RecordProperty(threading > 0.5 ? "milliseconds, threads" : "milliseconds",
                       std::to_string(took.count()));
        EXPECT_LT(took.count(), 50.0 + 50.0) << "50 on a machine of its own";
        ASSERT_TRUE(result.problem);
        EXPECT_TRUE(result.problem->isStop);
    }
    KEffectTestWeak::work = 0;
}

} // namespace
} // namespace ombrelune
