#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>

#include "host/image/PixelCodec.h"
#include "host/value/Parallel.h"
#include "image/KImage.h"
#include "tests/image/kimage_helpers.h"

namespace ombrelune {
namespace {

using namespace test;

// Words of one pixel, blue, green, red, alpha, as the slow forms see them.
struct Ints {
    long long word[4];
};
struct Floats {
    float word[4];
};

long long Rounded(long long a, long long b) { return std::llround(static_cast<double>(a * b) / 65535.0); }
long long Limited(long long v) { return std::clamp(v, 0LL, 65535LL); }

KColor const kColor(0.25F, -0.5F, 2.0F, 0.75F);
int const kColorWords[] = {131070, -32767, 16383, 49151}; // of 16 bits and truncated; blue first
float const kColorFloats[] = {2.0F, -0.5F, 0.25F, 0.75F};

struct Operation {
    char const* name;
    std::function<void(KImage&, KImage&)> apply;
    // Null where an operation has one path for both depths.
    std::function<void(Ints&, Ints const&)> ints;
    std::function<void(Floats&, Floats const&)> floats;
};

template <class Words, class Change> std::function<void(Words&, Words const&)> Each(Change change)
{
    return [=](Words& a, Words const& b) {
        for (int i = 0; i < 4; ++i) a.word[i] = change(a.word[i], b.word[i], i);
    };
}

std::vector<Operation> Operations()
{
    using I = long long;
    return {
        {"Add image", [](KImage& a, KImage& b) { a.Add(&b); },
         Each<Ints>([](I a, I b, int) { return Limited(a + b); }),
         Each<Floats>([](float a, float b, int) { return a + b; })},
        {"Add colour", [](KImage& a, KImage&) { a.Add(kColor); },
         Each<Ints>([](I a, I, int i) { return Limited(a + kColorWords[i]); }),
         Each<Floats>([](float a, float, int i) { return a + kColorFloats[i]; })},
        {"Multiply colour", [](KImage& a, KImage&) { a.Multiply(kColor); }, Each<Ints>([](I a, I, int i) {
             return Limited(static_cast<I>(static_cast<float>(a) * kColorFloats[i]));
         }),
         Each<Floats>([](float a, float, int i) { return a * kColorFloats[i]; })},
        {"Multiply", [](KImage& a, KImage&) { a.Multiply(0.3F); },
         Each<Ints>([](I a, I, int) { return Rounded(a, 19660); }), // 0.3 x 65535.5
         Each<Floats>([](float a, float, int) { return a * 0.3F; })},
        {"Blend", [](KImage& a, KImage& b) { a.BlendWith(&b, 0.25F); },
         Each<Ints>([](I a, I b, int) { return Rounded(a, 65535 - 16383) + Rounded(b, 16383); }),
         Each<Floats>([](float a, float b, int) { return 0.75F * a + 0.25F * b; })},
        {"Mask", [](KImage& a, KImage& b) { a.ApplyMask(&b, false); },
         [](Ints& a, Ints const& b) {
             for (auto& w : a.word) w = Rounded(w, b.word[3]);
         },
         nullptr},
        {"Inverted mask", [](KImage& a, KImage& b) { a.ApplyMask(&b, true); },
         [](Ints& a, Ints const& b) {
             for (auto& w : a.word) w = Rounded(w, 65535 - b.word[3]);
         },
         nullptr},
        {"Divide", [](KImage& a, KImage&) { a.Divide(false); }, nullptr,
         [](Floats& a, Floats const&) {
             if (a.word[3] != 0)
                 for (int i = 0; i < 3; ++i) a.word[i] /= a.word[3];
         }},
        {"Divide to one", [](KImage& a, KImage&) { a.Divide(true); }, nullptr,
         [](Floats& a, Floats const&) {
             if (a.word[3] != 0)
                 for (int i = 0; i < 3; ++i) a.word[i] /= a.word[3];
             a.word[3] = 1;
         }},
        {"Merge over", [](KImage& a, KImage& b) { a.MergePixel(&b, 1.0, 0.0); },
         [](Ints& a, Ints const& b) {
             for (int i = 0; i < 4; ++i)
                 a.word[i] = Limited(Rounded(a.word[i], 65535 - b.word[3]) + b.word[i]);
         },
         [](Floats& a, Floats const& b) {
             for (int i = 0; i < 4; ++i) a.word[i] = a.word[i] * (1 - b.word[3]) + b.word[i];
         }},
        {"Merge under", [](KImage& a, KImage& b) { a.MergePixelUnder(&b, 1.0, 0.0); },
         [](Ints& a, Ints const& b) {
             Ints const top = a;
             for (int i = 0; i < 4; ++i)
                 a.word[i] = Limited(a.word[i] + Rounded(b.word[i], 65535 - top.word[3]));
         },
         [](Floats& a, Floats const& b) {
             Floats const top = a;
             for (int i = 0; i < 4; ++i) a.word[i] += b.word[i] * (1 - top.word[3]);
         }},
        {"Fill",
         [](KImage& a, KImage&) {
             a.Fill({1, 0.5F, 0.25F, 0}, false);
         },
         nullptr,
         [](Floats& a, Floats const&) {
             a = {{0.25F, 0.5F, 1, a.word[3]}};
         }},
    };
}

/// Noise with the corners of the number range in its first pixels.
Owned Awkward(int depth, unsigned seed, bool withVelocity)
{
    Owned image = withVelocity ? NoiseImage(19, 6, depth, seed, {kChannelVelocityX, kChannelVelocityY})
                               : NoiseImage(19, 6, depth, seed);
    float const corners[][4] = {{0, 0, 0, 0}, {1, 1, 1, 1}, {0.5F, 1, 0, 0}, {1, 0.25F, 0, 1}};
    for (int i = 0; i < 16; ++i) {
        auto p = At<FltPixel>(*image, i, 0);
        for (int w = 0; w < 4; ++w) p.word[w] = corners[seed == 1 ? i / 4 : i % 4][w];
        image->SetPixel(i, 0, p);
    }
    return image;
}

TEST(KImageArithmetic, FollowsTheSlowFormsPixelByPixel)
{
    for (Operation const& operation : Operations()) {
        for (bool withVelocity : {false, true}) {
            for (int depth : {kDepthInt16, kDepthFloat}) {
                Owned const a = Awkward(depth, 1, withVelocity), b = Awkward(depth, 2, withVelocity);
                Owned const before(a->CopyOf());
                operation.apply(*a, *b);
                for (int y = 0; y < 6; ++y) {
                    for (int x = 0; x < 19; ++x) {
                        auto const where = testing::Message() << operation.name << " at " << x << ", " << y;
                        auto const result = At<FltPixel>(*a, x, y), old = At<FltPixel>(*before, x, y);
                        for (int channel : a->FImage()->AuxChannels())
                            ASSERT_EQ(result.Aux(channel), old.Aux(channel)) << where;
                        auto const p = At<FltPixel>(*before, x, y), q = At<FltPixel>(*b, x, y);
                        auto const n = At<Pixel>(*before, x, y), m = At<Pixel>(*b, x, y);
                        Ints i{{n.blue, n.green, n.red, n.alpha}};
                        Floats f{{p.blue, p.green, p.red, p.alpha}};
                        bool const isInt = operation.ints && (depth == kDepthInt16 || !operation.floats);
                        if (isInt) operation.ints(i, {{m.blue, m.green, m.red, m.alpha}});
                        else operation.floats(f, {{q.blue, q.green, q.red, q.alpha}});
                        for (int w = 0; w < 4; ++w) {
                            if (depth == kDepthFloat && !isInt) {
                                ASSERT_EQ(result.word[w], f.word[w]) << where;
                                continue;
                            }
                            // What a float path leaves in an integer image is rounded on writing.
                            long long const stored = IntFromFloat(f.word[w]);
                            ASSERT_EQ(static_cast<long long>(At<Pixel>(*a, x, y).word[w]),
                                      isInt ? i.word[w] : stored)
                                << where;
                        }
                    }
                }
            }
        }
    }
}

TEST(KImageArithmetic, ThreadsDoNotMatter)
{
    for (Operation const& operation : Operations()) {
        for (int depth : kAllDepths) {
            Owned const a = NoiseImage(61, 83, depth, 3), b = NoiseImage(61, 83, depth, 4), c(a->CopyOf());
            SetThreadCount(1);
            operation.apply(*a, *b);
            SetThreadCount(3);
            operation.apply(*c, *b);
            EXPECT_TRUE(SameBytes(*a, *c)) << operation.name << " depth " << depth;
        }
    }
    SetThreadCount(0);
}

TEST(KImageCopy, ConvertsBetweenDepthsAndChannels)
{
    for (int from : kAllDepths) {
        for (int to : kAllDepths) {
            Owned const source = NoiseImage(13, 5, from, 5, {kChannelVelocityY});
            Owned const target = NoiseImage(13, 5, to, 6, {kChannelVelocityX, kChannelVelocityY});
            target->CopyFrom(source.get());
            // 8 bits lose the most; halves have 11 bits.
            float const step = std::min(from, to) == kDepthInt8 ? 1 / 255.0F : 1 / 2048.0F;
            for (int y = 0; y < 5; ++y) {
                for (int x = 0; x < 13; ++x) {
                    auto const p = At<FltPixel>(*source, x, y), q = At<FltPixel>(*target, x, y);
                    for (int i = 0; i < 4; ++i) ASSERT_NEAR(p.word[i], q.word[i], step / 2 + 1e-6F);
                    ASSERT_EQ(q.Aux(kChannelVelocityY), p.Aux(kChannelVelocityY));
                    ASSERT_EQ(q.Aux(kChannelVelocityX), 0.0F);
                }
            }
        }
    }
}

} // namespace
} // namespace ombrelune
