#pragma once

#include <cmath>
#include <memory>

#include "framework/KParameter.h"

namespace ombrelune {

enum KMessageType {
    KMsg_Visibility = 1, ///< an int value above 0 shows the target input, else it is hidden
    KMsg_Name = 2,       ///< the target's label becomes the value's text
    KMsg_Value = 3,      ///< the target's value at the current time becomes the float, or the point
};

/// What an effect wants done to one of its inputs.
class KMessage : public KListItem {
public:
    KMessage(KMessageType messageType, std::uint32_t targetId, float number)
        : type(messageType), target(targetId)
    {
        value.floatValue = number;
        value.intValue = static_cast<int>(number + 0.5F);
    }
    KMessage(KMessageType messageType, std::uint32_t targetId, char const* text)
        : type(messageType), target(targetId)
    {
        value.text.Set(text);
    }
    KMessage(KMessageType messageType, std::uint32_t targetId, KVector2 const& point)
        : type(messageType), target(targetId)
    {
        value.point = point;
    }

    KMessageType type;
    std::uint32_t target;
    KParameterValue value;
};

/// Made by AffectInputs, freed with its messages by the caller.
class KMessageList : public KList {
public:
    void Show(std::uint32_t target, bool visible)
    {
        AddLast(new KMessage(KMsg_Visibility, target, visible ? 1.0F : 0.0F));
    }
    void SetName(std::uint32_t target, char const* text) { AddLast(new KMessage(KMsg_Name, target, text)); }
    void SetValue(std::uint32_t target, float number) { AddLast(new KMessage(KMsg_Value, target, number)); }
    void SetPoint(std::uint32_t target, KVector2 const& point)
    {
        AddLast(new KMessage(KMsg_Value, target, point));
    }
};

} // namespace ombrelune
