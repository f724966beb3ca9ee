#pragma once

#include <concepts>
#include <type_traits>

#include "framework/KEffectColor.h"
#include "framework/KEffectThreads.h"
#include "framework/KEffectWarp.h"
#include "framework/RowForms.h"

namespace ombrelune {

// KRowForm<Effect> is the effect with its row operation instantiated for the concrete class: the loop calls
// the effect's own F by its qualified name, so the compiler can inline it. Same bytes as the virtual form. An
// effect that overrides the row operation itself is left as it is.

template <class Effect> class KRowForm : public Effect {};

template <class Effect>
concept HasOwnSpan = requires
{
    requires Effect::kOwnSpan;
};

template <std::derived_from<KEffectColor> Effect>
requires(!HasOwnSpan<Effect>) class KRowForm<Effect> : public Effect {
public:
    void Span(KColor32* colors, int count) override
    {
        for (int i = 0; i < count; ++i) colors[i] = this->Effect::F(colors[i]);
    }
    void Span(KColor* colors, int count) override
    {
        for (int i = 0; i < count; ++i) colors[i] = this->Effect::F(colors[i]);
    }
};

/// The effect whose row operation goes through the virtual F, to hold the other form against.
template <class Effect> class KPlainForm : public Effect {};

template <std::derived_from<KEffectColor> Effect>
requires HasOwnSpan<Effect>
class KPlainForm<Effect> : public Effect {
public:
    void Span(KColor32* colors, int count) override { KEffectColor::Span(colors, count); }
    void Span(KColor* colors, int count) override { KEffectColor::Span(colors, count); }
};

template <class Effect>
concept HasOwnRow = requires
{
    requires Effect::kOwnRow;
};

template <std::derived_from<KEffectPixel> Effect>
requires(!HasOwnRow<Effect>) class KRowForm<Effect> : public Effect {
public:
    void Row(KPixelRow const& row) override
    {
        if (row.data->depth == 2)
            PixelRow<FltPixel>(
                row, [this](int x, int y, KImage* source) { return this->Effect::FFlt(x, y, source); });
        else
            PixelRow<Pixel>(row,
                            [this](int x, int y, KImage* source) { return this->Effect::F(x, y, source); });
    }
};

template <std::derived_from<KEffectPixel> Effect>
requires HasOwnRow<Effect>
class KPlainForm<Effect> : public Effect {
public:
    void Row(KPixelRow const& row) override { KEffectPixel::Row(row); }
};

template <std::derived_from<KEffectPosition> Effect> class KRowForm<Effect> : public Effect {
public:
    void Row(KPositionRow const& row) override
    {
        auto const call = [this](auto& source, KVector2& position) {
            return this->Effect::F(source, position);
        };
        if (row.data->depth == 2) PositionRow<FltPixel>(row, call);
        else PositionRow<Pixel>(row, call);
    }
};

template <std::derived_from<KEffectWarp> Effect> class KRowForm<Effect> : public Effect {
public:
    void Span(KVector2* sources, bool* found, KVector2 const* destinations, int count) override
    {
        for (int i = 0; i < count; ++i) {
            sources[i] = destinations[i];
            found[i] = this->Effect::F(sources[i], destinations[i]);
        }
    }
};

} // namespace ombrelune
