#include <gtest/gtest.h>

#include <cstdlib>
#include <vector>

#include "image/KList.h"
#include "image/KMath.h"
#include "image/KRandom.h"
#include "image/KRange.h"
#include "image/KString.h"
#include "image/KTween.h"
#include "image/KVector3.h"
#include "image/SafeDelete.h"

namespace ombrelune {
namespace {

TEST(KRange, SoftEndsRampAcrossTheEnds)
{
    KRange const wide(2, 6);
    float const values[] = {0.9F, 1, 1.5F, 2, 2.5F, 3, 4, 5, 5.5F, 6, 6.5F, 7};
    float const members[] = {0, 0, 0.25F, 0.5F, 0.75F, 1, 1, 1, 0.75F, 0.5F, 0.25F, 0};
    for (int i = 0; i < 12; ++i) EXPECT_FLOAT_EQ(wide.IsIn(values[i], 2.0F), members[i]) << values[i];
    EXPECT_EQ(wide.IsIn(6.0F, 0.0F), 1.0F);
    EXPECT_EQ(wide.IsIn(6.1F, 0.0F), 0.0F);
}

TEST(KRange, RampsWiderThanTheRangeMeetInItsCentre)
{
    KRange const narrow(2, 3); // with a softness of 4 the ramps start at 0 and end at 5
    EXPECT_EQ(narrow.IsIn(0.0F, 4.0F), 0.0F);
    EXPECT_FLOAT_EQ(narrow.IsIn(2.0F, 4.0F), 0.5F);
    EXPECT_FLOAT_EQ(narrow.IsIn(2.5F, 4.0F), 0.625F);
    EXPECT_FLOAT_EQ(narrow.IsIn(3.0F, 4.0F), 0.5F);
}

TEST(KRange, InnerRangeFallsOffToTheEnds)
{
    KRange const range(10, 20), inner(0.4F, 0.5F);
    EXPECT_FLOAT_EQ(range.IsIn(12, inner, true), 0.5F);
    EXPECT_FLOAT_EQ(range.IsIn(14.5F, inner, true), 1.0F);
    EXPECT_FLOAT_EQ(range.IsIn(19, inner, true), 0.2F);
    EXPECT_EQ(range.IsIn(12, inner, false), 0.0F);
    EXPECT_EQ(range.IsIn(14.5F, inner, false), 1.0F);
    EXPECT_EQ(range.IsIn(99, {0, 1}, true), 1.0F);
    KRange limited(-3, 9);
    limited.Limit(0, 1);
    EXPECT_EQ(limited.low, 0.0F);
    EXPECT_EQ(limited.high, 1.0F);
}

TEST(KRandom, IsTheStreamOfTheCLibrary)
{
    srandom(5);
    std::vector<long> stream(10);
    for (long& value : stream) value = random();

    KRandomSeed(5); // throws away the first five
    for (int i = 5; i < 7; ++i) EXPECT_EQ(Krand(), stream[i]);
    EXPECT_EQ(KRandom(3.0F), 3.0F * (static_cast<float>(stream[7]) / 2147483648.0F));
    EXPECT_EQ(KRandom(-2.0F, 2.0F), -2.0F + 4.0F * (static_cast<float>(stream[8]) / 2147483648.0F));
    EXPECT_EQ(KRandomInt(1000), stream[9] % 1000);
    EXPECT_EQ(KRandomInt(0), 0);
}

TEST(KRandom, SeedsDiscardTheirRestBy97)
{
    for (unsigned seed : {200U, 97U, 0U, 4294967295U}) {
        int const discard = seed == 200U ? 6 : 0;
        srandom(seed);
        for (int i = 0; i < discard; ++i) random();
        long const expected = random();
        KRandomSeed(seed);
        EXPECT_EQ(Krand(), expected) << seed;
    }
    float const first = KRandomTimeSeed(12.55F, 3); // 3 + 125.5 truncated is 128, of which 31 are thrown away
    srandom(128);
    for (int i = 0; i < 31; ++i) random();
    EXPECT_EQ(first, static_cast<float>(static_cast<double>(random()) / 2147483648.0));
    KRandomTimeSeed(-1e30F, 3);
}

TEST(KString, JoinsAndNumbers)
{
    KString text;
    EXPECT_STREQ(text.Numbered("Seed", 12, true), "Seed 12");
    EXPECT_STREQ(text.Numbered("Seed", -1, false), "Seed-1");
    EXPECT_STREQ(text.Concatenate(text.Text(), text.Text()), "Seed-1Seed-1");
    text.Set("a");
    text.Add(text);
    text.Add("b");
    EXPECT_STREQ(text.Text(), "aab");
}

TEST(KString, ScriptifyMakesAnIdentifierOfALabel)
{
    KString id;
    EXPECT_STREQ(id.Scriptify("A b(c)"), "Ab");
    EXPECT_STREQ(id.Scriptify("Low, Mid && High_2"), "LowMidHigh_2");
    EXPECT_STREQ(id.Scriptify("Gr\xc3\xb6\xc3\x9f"
                              "e 50%"),
                 "Gre50");
    EXPECT_EQ(id.Scriptify("(all)"), nullptr);
}

struct Item : KListItem {
    explicit Item(int n, int* counter = nullptr) : number(n), deleted(counter) {}
    ~Item() override
    {
        if (deleted) ++*deleted;
    }
    int number;
    int* deleted;
};

std::vector<int> Numbers(KList const& list)
{
    std::vector<int> numbers;
    for (Item* item : list.Each<Item>()) numbers.push_back(item->number);
    std::vector<int> backwards;
    for (KListItem* i = list.Last(); i; i = i->Previous())
        backwards.insert(backwards.begin(), static_cast<Item*>(i)->number);
    EXPECT_EQ(numbers, backwards);
    EXPECT_EQ(list.Count(), static_cast<int>(numbers.size()));
    return numbers;
}

TEST(KList, RemovingHandsTheItemToTheCaller)
{
    int deleted = 0;
    {
        KList list;
        for (int i = 0; i < 5; ++i) list.AddLast(new Item(i, &deleted));
        KListItem* removed[] = {list.RemoveFirst(), list.RemoveLast(), list.RemoveNode(list.Nth(1))};
        EXPECT_EQ(Numbers(list), (std::vector<int>{1, 3}));
        EXPECT_EQ(list.Search(removed[2]), ~0U);
        EXPECT_EQ(list.RemoveNode(removed[2]), nullptr) << "in no list";
        for (KListItem* item : removed) delete item;
        EXPECT_EQ(deleted, 3);
        KListItem const copy = *list.First();
        EXPECT_EQ(copy.Next(), nullptr);
    }
    EXPECT_EQ(deleted, 5);

    KList single;
    Item item(7);
    single.AddFirst(&item);
    EXPECT_EQ(single.RemoveNode(&item), &item);
    EXPECT_EQ(single.RemoveFirst(), nullptr);
    EXPECT_EQ(single.RemoveLast(), nullptr);
}

} // namespace
} // namespace ombrelune
