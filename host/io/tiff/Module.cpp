#include "host/io/PictureModule.h"
#include "host/io/tiff/Tiff.h"

extern "C" ombrelune::PictureModule const* OmbrelunePictures()
{
    static constexpr ombrelune::PictureModule module = {
        [](std::string const& path, ombrelune::PictureFormat) { return ombrelune::ReadTiff(path); },
        [](std::string const& path, ombrelune::PictureFormat) { return ombrelune::ReadsTiffHeader(path); },
        [](ombrelune::Image const& image, ombrelune::PictureFormat, std::FILE* stream,
           ombrelune::WriteOptions const& options) { return ombrelune::WriteTiff(image, stream, options); }};
    return &module;
}
