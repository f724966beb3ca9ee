#pragma once

#include <cmath>
#include <initializer_list>
#include <string>

#include "host/builtin/Builtin.h"
#include "host/image/Image.h"

namespace ombrelune {

/// What the host's own operators share, be they filters or sources: declaring inputs and reading them.
template <class Base> class BuiltinOperator : public Base {
protected:
    using Base::Base;

    Input* AddPicture(char const* name, int mainNumber, bool isRequired)
    {
        return this->AddInputTagList(name, name,
                                     {{Attr_DataType, CLSID_DataType_Image},
                                      {Attr_MainNumber, mainNumber},
                                      {Attr_Priority, -1},
                                      {Attr_Required, isRequired}});
    }
    Output* AddPictureOutput()
    {
        return this->AddOutputTagList("Output", "Output",
                                      {{Attr_DataType, CLSID_DataType_Image}, {Attr_MainNumber, 1}});
    }
    /// @param range  hard and soft ends, Attr_IntegerValue and what else belongs to a number
    Input* AddNumber(char const* label, char const* id, FuID control, double value, TagList const& range)
    {
        TagList tags{
            {Attr_DataType, CLSID_DataType_Number}, {Attr_InputControl, control}, {Attr_Default, value}};
        return this->AddInputTagList(label, id, tags.Merge(range));
    }
    Input* AddChoice(char const* label, char const* id, FuID control, int value,
                     std::initializer_list<char const*> names)
    {
        TagList range{{Attr_MinHard, 0.0}, {Attr_MaxHard, static_cast<double>(names.size()) - 1.0}};
        for (char const* name : names) range.Add({Attr_ListEntry, name});
        return AddNumber(label, id, control, value, range);
    }
    Input* AddCheckbox(char const* label, char const* id, bool value)
    {
        return AddNumber(label, id, CLSID_InputControl_Checkbox, value,
                         {{Attr_MinHard, 0.0}, {Attr_MaxHard, 1.0}});
    }
    Input* AddPoint(char const* label, char const* id)
    {
        return this->AddInputTagList(label, id,
                                     {{Attr_DataType, CLSID_DataType_Point},
                                      {Attr_InputControl, CLSID_InputControl_Offset},
                                      {Attr_PreviewControl, CLSID_PreviewControl_Crosshair},
                                      {Attr_DefaultX, 0.5},
                                      {Attr_DefaultY, 0.5}});
    }
    Input* AddText(char const* label, char const* id, char const* value, int lines)
    {
        return this->AddInputTagList(label, id,
                                     {{Attr_DataType, CLSID_DataType_Text},
                                      {Attr_InputControl, CLSID_InputControl_TextEdit},
                                      {Attr_TextLines, lines},
                                      {Attr_DefaultText, value}});
    }
    Input* AddFile()
    {
        return this->AddInputTagList(
            "Filename", "Filename",
            {{Attr_DataType, CLSID_DataType_Text}, {Attr_InputControl, CLSID_InputControl_File}});
    }
    /// Red, green, blue and alpha, each `value` but the alpha 1, with one swatch whose label the first
    /// carries. Several colours of an operator end in numbers: "Red 1" with the id "Red1".
    void AddColor(Input* (&channels)[4], std::string const& suffix, double value)
    {
        static constexpr char const* names[] = {"Red", "Green", "Blue", "Alpha"};
        for (int channel = 0; channel < 4; ++channel) {
            std::string const id = names[channel] + suffix,
                              label = suffix.empty() ? id : names[channel] + (" " + suffix);
            channels[channel] =
                AddNumber(label.c_str(), id.c_str(), CLSID_InputControl_Color, channel == 3 ? 1.0 : value,
                          {{Attr_GroupNumber, 1},
                           {Attr_GroupChannel, channel},
                           {Attr_MinSoft, 0.0},
                           {Attr_MaxSoft, 1.0}});
        }
        channels[0]->SetAttrsTagList({{Attr_ControlName, "Color"}});
    }

    static int ChoiceOf(Input const* input, Request* request)
    {
        return static_cast<int>(std::lround(request->Number(*input)));
    }
    static bool FlagOf(Input const* input, Request* request) { return request->Number(*input) > 0.5; }
    static Point const& PointOf(Input const* input, Request* request)
    {
        return dynamic_cast<Point const&>(*input->GetValue(request, 0));
    }
    /// Empty when there is no text.
    static std::string TextOf(Input const* input, Request const& request)
    {
        auto const* text = dynamic_cast<Text const*>(request.InputData(*input, 0));
        return text ? text->value : "";
    }
    /// Null when nothing is connected or what is connected gave nothing.
    static Ref<Image> PictureOf(Input const* input, Request* request)
    {
        return Ref<Image>::Share(dynamic_cast<Image*>(input->GetValue(request, 0)));
    }
};

} // namespace ombrelune
