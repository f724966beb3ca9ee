#include "image/KFft.h"

#include <algorithm>
#include <bit>

namespace ombrelune {

KFft::KFft(int points, long value) : value_(value)
{
    int const stages = std::bit_width(static_cast<unsigned>(std::max(points, 1) - 1));
    std::size_t const count = std::size_t{1} << stages;
    rootOfCount_ = std::sqrt(static_cast<double>(count));
    data_.resize(count);
    reversed_.resize(count);
    for (std::size_t i = 1; i < count; ++i)
        reversed_[i] = (reversed_[i / 2] | static_cast<int>(i % 2 ? count : 0)) / 2;

    double const pi = std::asin(1.0) * 2.0;
    for (int stage = 1; stage <= stages; ++stage) {
        std::size_t const half = std::size_t{1} << (stage - 1);
        std::vector<KComplex>& factors = twiddles_.emplace_back(half);
        for (std::size_t k = 0; k < half; ++k) {
            double const angle = -pi * static_cast<double>(k) / static_cast<double>(half);
            factors[k] = {std::cos(angle), std::sin(angle)};
        }
    }
}

void KFft::CopyIn(double const* data, int n)
{
    if (n > GetCount()) return;
    for (int i = 0; i < GetCount(); ++i) PutAt(i, i < n ? data[i] : 0.0);
}

void KFft::Transform()
{
    for (std::vector<KComplex> const& factors : twiddles_) {
        std::size_t const half = factors.size();
        for (std::size_t start = 0; start < data_.size(); start += 2 * half)
            for (std::size_t k = 0; k < half; ++k) {
                KComplex& even = data_[start + k];
                KComplex& odd = data_[start + half + k];
                KComplex turned = odd;
                turned *= factors[k];
                odd = even;
                odd -= turned;
                even += turned;
            }
    }
}

} // namespace ombrelune
