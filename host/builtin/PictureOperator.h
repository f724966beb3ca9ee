#pragma once

#include <initializer_list>

#include "host/builtin/Builtin.h"
#include "host/image/Image.h"

namespace ombrelune {

/// An operator of the host that makes a picture of pictures; it can be passed through. Holds what such
/// operators share: declaring inputs and reading them.
class PictureOperator : public Operator {
public:
    PictureOperator(Registry const* registry, ScriptVal const& settings, TagList const& tags);

protected:
    Input* AddPicture(char const* name, int mainNumber, bool isRequired);
    /// @param range  hard and soft ends, Attr_IntegerValue and what else belongs to a number
    Input* AddNumber(char const* label, char const* id, FuID control, double value, TagList const& range);
    Input* AddChoice(char const* label, char const* id, FuID control, int value,
                     std::initializer_list<char const*> names);
    Input* AddCheckbox(char const* label, char const* id, bool value);
    Input* AddPoint(char const* label, char const* id);

    static int ChoiceOf(Input const* input, Request* request);
    static bool FlagOf(Input const* input, Request* request) { return request->Number(*input) > 0.5; }
    static Point const& PointOf(Input const* input, Request* request);
    /// Null when nothing is connected or what is connected gave nothing.
    static Ref<Image> PictureOf(Input const* input, Request* request);
    /// The picture of the main input; null after a report.
    Ref<Image> MainPicture(Request* request);

    /// The auxiliary channels of a picture into another of its size and channels.
    static void CopyAux(Image const& from, Image& to);

    /// Hands the picture over, or reports that there was no memory for it.
    void Give(Request* request, Ref<Image> image);

    Output* output;
};

} // namespace ombrelune
