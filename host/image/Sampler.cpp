#include "host/image/Sampler.h"

#include <algorithm>

#include "host/image/EdgeIndex.h"
#include "host/image/PixPtr.h"

namespace ombrelune {

template <class Record, EdgeModes Edges>
void BilinearSampler<Record, Edges>::Outer(int x, int y, Record& record) const
{
    int const column = x >> 16, row = y >> 16;
    int const columns[2] = {EdgeIndex<Edges>(column, image_.Width()),
                            EdgeIndex<Edges>(column + 1, image_.Width())};
    int const rows[2] = {EdgeIndex<Edges>(row, image_.Height()), EdgeIndex<Edges>(row + 1, image_.Height())};

    // Neighbours without weight are not read and count as black: what they hold cannot matter.
    Record neighbours[4];
    bool inside = false;
    PixPtr cursor(const_cast<Image*>(&image_)); // reads only
    for (int i = 0; i < 4; ++i) {
        Record& neighbour = neighbours[i];
        int const px = columns[i & 1], py = rows[i >> 1];
        bool const hasWeight = (!(i & 1) || (x & 0xffff)) && (!(i >> 1) || (y & 0xffff));
        if (hasWeight && px >= 0 && py >= 0) {
            cursor.GetPixel(px, py, neighbour);
            inside = true;
        } else {
            std::fill_n(neighbour.word, 4, Word{});
            neighbour.DropAux();
        }
    }

    Fraction const fx = ToFraction(x), fy = ToFraction(y);
    for (int i = 0; i < 4; ++i)
        record.word[i] = Blend(neighbours[0].word[i], neighbours[1].word[i], neighbours[2].word[i],
                               neighbours[3].word[i], fx, fy);
    if (!inside) return;
    record.DropAux();
    float const u = static_cast<float>(x & 0xffff) / 65536.0F, v = static_cast<float>(y & 0xffff) / 65536.0F;
    for (int channel : image_.AuxChannels()) {
        float const low = neighbours[0].Aux(channel) * (1.0F - u) + neighbours[1].Aux(channel) * u;
        float const high = neighbours[2].Aux(channel) * (1.0F - u) + neighbours[3].Aux(channel) * u;
        record.SetAux(channel, low * (1.0F - v) + high * v);
    }
}

template class BilinearSampler<Pixel, kEdgeBlack>;
template class BilinearSampler<Pixel, kEdgeWrap>;
template class BilinearSampler<Pixel, kEdgeDuplicate>;
template class BilinearSampler<FltPixel, kEdgeBlack>;
template class BilinearSampler<FltPixel, kEdgeWrap>;
template class BilinearSampler<FltPixel, kEdgeDuplicate>;

void Image::SamplePixelB(int x, int y, Pixel& record) const
{
    BilinearSampler<Pixel, kEdgeBlack> (*this)(x, y, record);
}

void Image::SamplePixelW(int x, int y, Pixel& record) const
{
    BilinearSampler<Pixel, kEdgeWrap> (*this)(x, y, record);
}

void Image::SamplePixelD(int x, int y, Pixel& record) const
{
    BilinearSampler<Pixel, kEdgeDuplicate> (*this)(x, y, record);
}

void Image::SamplePixelB(int x, int y, FltPixel& record) const
{
    BilinearSampler<FltPixel, kEdgeBlack> (*this)(x, y, record);
}

void Image::SamplePixelW(int x, int y, FltPixel& record) const
{
    BilinearSampler<FltPixel, kEdgeWrap> (*this)(x, y, record);
}

void Image::SamplePixelD(int x, int y, FltPixel& record) const
{
    BilinearSampler<FltPixel, kEdgeDuplicate> (*this)(x, y, record);
}

} // namespace ombrelune
