#include "host/io/tiff/Tiff.h"

namespace ombrelune {

namespace {

std::FILE* StreamOf(thandle_t handle) { return static_cast<std::FILE*>(handle); }

tmsize_t Read(thandle_t handle, void* bytes, tmsize_t size)
{
    return static_cast<tmsize_t>(std::fread(bytes, 1, static_cast<std::size_t>(size), StreamOf(handle)));
}

tmsize_t Write(thandle_t handle, void* bytes, tmsize_t size)
{
    return static_cast<tmsize_t>(std::fwrite(bytes, 1, static_cast<std::size_t>(size), StreamOf(handle)));
}

toff_t Seek(thandle_t handle, toff_t offset, int whence)
{
    if (fseeko(StreamOf(handle), static_cast<off_t>(offset), whence) != 0) return static_cast<toff_t>(-1);
    return static_cast<toff_t>(ftello(StreamOf(handle)));
}

int Close(thandle_t) { return 0; }

toff_t Size(thandle_t handle)
{
    off_t const here = ftello(StreamOf(handle));
    fseeko(StreamOf(handle), 0, SEEK_END);
    off_t const size = ftello(StreamOf(handle));
    fseeko(StreamOf(handle), here, SEEK_SET);
    return static_cast<toff_t>(size);
}

int Silent(TIFF*, void*, char const*, char const*, va_list) { return 1; }

} // namespace

TiffFile OpenTiff(std::FILE* stream, char const* mode)
{
    TIFFOpenOptions* const options = TIFFOpenOptionsAlloc();
    TIFFOpenOptionsSetErrorHandlerExtR(options, Silent, nullptr);
    TIFFOpenOptionsSetWarningHandlerExtR(options, Silent, nullptr);
    TiffFile file(TIFFClientOpenExt("picture", mode, stream, Read, Write, Seek, Close, Size, nullptr, nullptr,
                                    options));
    TIFFOpenOptionsFree(options);
    return file;
}

} // namespace ombrelune
