#pragma once

#include <cmath>
#include <vector>

namespace ombrelune {

struct KComplex {
    double real = 0.0, imaginary = 0.0;

    KComplex& operator*=(KComplex const& c)
    {
        return *this = {real * c.real - imaginary * c.imaginary, real * c.imaginary + imaginary * c.real};
    }
    KComplex& operator+=(KComplex const& c) { return *this = {real + c.real, imaginary + c.imaginary}; }
    KComplex& operator-=(KComplex const& c) { return *this = {real - c.real, imaginary - c.imaginary}; }
    double Mod() const { return std::sqrt(real * real + imaginary * imaginary); }
};

/// Small Fourier transform of real values.
/// Method: J. Cooley, J. Tukey, An Algorithm for the Machine Calculation of Complex Fourier Series, 1965.
class KFft {
public:
    /// A number of points that is no power of two is raised to the next one. The value is the caller's own.
    explicit KFft(int points, long value = 0);

    int GetCount() const { return static_cast<int>(data_.size()); }
    long GetValue() const { return value_; }

    /// The first n values, and 0 for the rest; does nothing when there are more values than points.
    void CopyIn(double const* data, int n);
    void PutAt(int i, double v)
    {
        data_[static_cast<std::size_t>(reversed_[static_cast<std::size_t>(i)])] = {v, 0.0};
    }
    /// Turns the values that were put in into the spectrum, in place.
    void Transform();
    /// Amplitude of frequency i, scaled so that the sum of squares is that of the values.
    double GetIntensity(int i) const { return data_[static_cast<std::size_t>(i)].Mod() / rootOfCount_; }

private:
    long value_;
    double rootOfCount_;
    std::vector<int> reversed_; // numbers with their bits in reverse
    std::vector<KComplex> data_;
    std::vector<std::vector<KComplex>> twiddles_; // of each stage
};

} // namespace ombrelune
