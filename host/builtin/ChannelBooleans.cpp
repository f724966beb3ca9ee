// Channel Booleans: each channel of the background is replaced by, or reckoned with, a channel of either
// picture.

#include <array>

#include "host/builtin/PictureOperator.h"
#include "host/image/Place.h"
#include "host/image/StoredPixel.h"
#include "host/image/StoredType.h"
#include "host/value/Parallel.h"

namespace ombrelune {

namespace {

enum Operation { kCopy, kAdd, kSubtract, kMultiply, kDivide, kMaximum, kMinimum, kDifference, kInvert };

/// The operand of a channel by the number of its button; 0 leaves the channel alone.
constexpr int kLeave = 0;

/// What the buttons stand for, as the words of foreground, background and a black and a white: blue, green,
/// red, alpha of each picture.
constexpr int kWordOfButton[] = {0, 2, 1, 0, 3, 6, 5, 4, 7, 8, 9};
constexpr int kWords = 10;

template <class Stored> Float4 Reckon(Operation operation, Float4 back, Float4 operand)
{
    constexpr float one = kUnit<Stored>;
    switch (operation) {
    case kCopy: return operand;
    case kAdd: return back + operand;
    case kSubtract: return back - operand;
    case kMultiply: return back * operand * (1.0F / one);
    case kDivide: return operand == 0.0F ? Float4{} : back / operand * one;
    case kMaximum: return back > operand ? back : operand;
    case kMinimum: return back < operand ? back : operand;
    case kDifference: return back > operand ? back - operand : operand - back;
    case kInvert: return one - operand;
    }
    return back;
}

struct Choice {
    Operation operation;
    std::array<int, 4> buttons; // blue, green, red, alpha
};

template <class Back, class Fore>
void Combine(Image const& background, Placed const& foreground, Choice const& choice, Image& result)
{
    Int4 isLeft{};
    for (int i = 0; i < 4; ++i) isLeft[i] = choice.buttons[static_cast<std::size_t>(i)] == kLeave ? -1 : 0;
    ParallelFor(background.Height(), [&](int y) {
        auto const* back = reinterpret_cast<Back const*>(background.MainRow(y));
        auto* out = reinterpret_cast<Back*>(result.MainRow(y));
        int const row = y - foreground.y;
        bool const hasRow = foreground.image && row >= 0 && row < foreground.image->Height();
        auto const* fore = hasRow ? reinterpret_cast<Fore const*>(foreground.image->MainRow(row)) : nullptr;
        float words[kWords] = {};
        words[kWords - 1] = kUnit<Back>;
        for (int x = 0; x < background.Width(); ++x, back += 4, out += 4) {
            int const column = x - foreground.x;
            bool const hasPixel = hasRow && column >= 0 && column < foreground.image->Width();
            Float4 const b = LoadPixel(back);
            Store(hasPixel ? LoadPixelIn<Back>(fore + std::ptrdiff_t{4} * column) : Float4{}, words);
            Store(b, words + 4);
            Float4 operand{};
            for (int i = 0; i < 4; ++i)
                operand[i] = words[kWordOfButton[choice.buttons[static_cast<std::size_t>(i)]]];
            StorePixel(isLeft ? b : Reckon<Back>(choice.operation, b, operand), out);
        }
    });
}

class ChannelBooleans : public PictureOperator {
public:
    ChannelBooleans(Registry const* registry, ScriptVal const& settings, TagList const& tags)
        : PictureOperator(registry, settings, tags)
    {
        AddControlPageTagList("Channels", {});
        operation = AddChoice(
            "Operation", "Operation", CLSID_InputControl_Combo, kCopy,
            {"Copy", "Add", "Subtract", "Multiply", "Divide", "Maximum", "Minimum", "Difference", "Invert"});
        struct Target {
            char const *label, *id;
        };
        static constexpr Target targets[] = {
            {"To Red", "ToRed"}, {"To Green", "ToGreen"}, {"To Blue", "ToBlue"}, {"To Alpha", "ToAlpha"}};
        for (int i = 0; i < 4; ++i)
            to[i] = AddChoice(targets[i].label, targets[i].id, CLSID_InputControl_Combo, i + 1,
                              {"Leave", "Red FG", "Green FG", "Blue FG", "Alpha FG", "Red BG", "Green BG",
                               "Blue BG", "Alpha BG", "Black", "White"});
        AddPicture("Background", 1, true);
        foreground = AddPicture("Foreground", 2, false);
    }
    unsigned SizeOf() const override { return sizeof(ChannelBooleans); }

    void Process(Request* request) override
    {
        Ref<Image> const back = MainPicture(request);
        if (!back) return;
        Ref<Image> fore = PictureOf(foreground, request);
        if (!fore) fore = back; // so that the channels of one picture can be exchanged
        auto const placed = PlaceImage(fore, {}, back->Width(), back->Height());
        Ref<Image> result = back->CopyOfImage(true);
        if (!result || !placed) return Give(request, nullptr);
        Choice const choice{static_cast<Operation>(ChoiceOf(operation, request)),
                            {ChoiceOf(to[2], request), ChoiceOf(to[1], request), ChoiceOf(to[0], request),
                             ChoiceOf(to[3], request)}};
        WithStoredType(back->Depth(), [&]<class Back>(std::type_identity<Back>) {
            WithStoredType(fore->Depth(), [&]<class Fore>(std::type_identity<Fore>) {
                Combine<Back, Fore>(*back, *placed, choice, *result);
            });
        });
        CopyAux(*back, *result);
        Give(request, std::move(result));
    }

private:
    Input *operation, *to[4], *foreground;
};

Registry const channelBooleansRegistry(
    ClassRegistry(), "ChannelBooleans",
    BuiltinTags<ChannelBooleans>("Channel Booleans", "Copies, adds, multiplies and swaps channels"));

} // namespace

} // namespace ombrelune
