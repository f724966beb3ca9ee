#include "host/builtin/PictureOperator.h"

#include <cstring>

#include "host/value/Parallel.h"

namespace ombrelune {

PictureOperator::PictureOperator(Registry const* registry, ScriptVal const& settings, TagList const& tags)
    : BuiltinOperator(registry, settings, tags)
{
    AddIdentityInput();
    output = AddPictureOutput();
}

Ref<Image> PictureOperator::MainPicture(Request* request)
{
    Input const* const input = MainInput(1);
    Ref<Image> image = PictureOf(input, request);
    if (!image) request->FailWithoutPicture(*input);
    return image;
}

void PictureOperator::CopyAux(Image const& from, Image& to)
{
    if (from.IsPlain()) return;
    auto const bytes =
        sizeof(float) * static_cast<std::size_t>(from.AuxFloats()) * static_cast<std::size_t>(from.Width());
    ParallelFor(from.Height(), [&](int y) { std::memcpy(to.AuxRow(y), from.AuxRow(y), bytes); });
}

void PictureOperator::Give(Request* request, Ref<Image> image)
{
    if (!image) return request->Fail(Name() + ": no memory for a picture of this size");
    output->Set(request, image.Release(), nullptr);
}

} // namespace ombrelune
