#include "host/image/Sampler.h"

#include <algorithm>

#include "host/image/EdgeIndex.h"
#include "host/image/PixPtr.h"

namespace ombrelune {

template <class Record, EdgeModes Edges>
void BilinearSampler<Record, Edges>::Outer(int x, int y, Record& record) const
{
    int const column = x >> 16, row = y >> 16;
    if constexpr (Edges == kEdgeBlack) {
        // All four neighbours lie outside; as often as not for pictures that are turned or made smaller.
        if (column < -1 || column >= image_.Width() || row < -1 || row >= image_.Height()) {
            for (auto& word : record.word) word = 0;
            return;
        }
    }
    int const columns[2] = {EdgeIndex<Edges>(column, image_.Width()),
                            EdgeIndex<Edges>(column + 1, image_.Width())};
    int const rows[2] = {EdgeIndex<Edges>(row, image_.Height()), EdgeIndex<Edges>(row + 1, image_.Height())};

    // Neighbours without weight are not read and count as black: what they hold cannot matter.
    Stored colour[2][8] = {};
    float const u = static_cast<float>(x & 0xffff) / 65536.0F, v = static_cast<float>(y & 0xffff) / 65536.0F;
    std::vector<int> const& channels = image_.AuxChannels();
    float aux[kChannelLast + 1] = {};
    bool inside = false;
    PixPtr cursor(const_cast<Image*>(&image_)); // reads only
    for (int j = 0; j < 2; ++j) {
        for (int i = 0; i < 2; ++i) {
            float const weight = (i ? u : 1.0F - u) * (j ? v : 1.0F - v);
            if (weight == 0.0F || columns[i] < 0 || rows[j] < 0) continue;
            Record neighbour;
            cursor.GetPixel(columns[i], rows[j], neighbour);
            std::copy_n(neighbour.word, 4, colour[j] + 4 * i);
            for (int channel : channels) aux[channel] += weight * neighbour.Aux(channel);
            inside = true;
        }
    }
    Blend(colour[0], colour[1], x, y, record.word);
    if (!inside) return;
    record.DropAux();
    for (int channel : channels) record.SetAux(channel, aux[channel]);
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
