#pragma once

#include "host/builtin/BuiltinOperator.h"

namespace ombrelune {

/// An operator of the host that makes a picture of pictures; it can be passed through.
class PictureOperator : public BuiltinOperator<Operator> {
public:
    PictureOperator(Registry const* registry, ScriptVal const& settings, TagList const& tags);

protected:
    /// The picture of the main input; null after a report.
    Ref<Image> MainPicture(Request* request);

    /// The auxiliary channels of a picture into another of its size and channels.
    static void CopyAux(Image const& from, Image& to);

    /// Hands the picture over, or reports that there was no memory for it.
    void Give(Request* request, Ref<Image> image);

    Output* output;
};

} // namespace ombrelune
