#include "Benchmarks/Kernels/Kernels.h"
#include "OpenGLRenderer/DiagnosticImage.h"
#include "Utilities/Image_base.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

// Pictures of 512 by 512 pixels: tinted, and compared with one another.

namespace {

constexpr int side = Diagnostic::testImageSide;
constexpr std::size_t pixels = std::size_t{side} * side;

constexpr std::array<int, 3> first{255, 208, 112};
constexpr std::array<int, 3> second{156, 32, 24};

void fill(std::span<unsigned char> bytes)
{
    std::uint32_t value = 1;
    for (unsigned char& byte : bytes) {
        value = value * 1664525U + 1013904223U; // Numerical Recipes' generator
        byte = static_cast<unsigned char>(value >> 24U);
    }
}

Image_base noise()
{
    Image_base image(side, side, Image_base::RGBA);
    fill(image.edit());
    return image;
}

void tintPlainly(unsigned char const* from, unsigned char* to)
{
    for (std::size_t i = 0; i < pixels; ++i, from += 4, to += 4) {
        int const lightness = (77 * from[0] + 150 * from[1] + 29 * from[2]) / 256;
        for (std::size_t k = 0; k < 3; ++k)
            to[k] = static_cast<unsigned char>((first[k] * (255 - lightness) + second[k] * lightness + 127) /
                                               255);
        to[3] = from[3];
    }
}

/// By the definition, in floating point.
bool isTinted(unsigned char const* tinted, unsigned char const* source)
{
    for (std::size_t i = 0; i < 4 * pixels; i += 4) {
        double const lightness =
            std::floor((77 * source[i] + 150 * source[i + 1] + 29 * source[i + 2]) / 256.0);
        for (std::size_t k = 0; k < 3; ++k)
            if (tinted[i + k] != std::lround(first[k] + (second[k] - first[k]) * lightness / 255.0))
                return false;
        if (tinted[i + 3] != source[i + 3])
            return false;
    }
    return true;
}

void colorizing(benchmark::State& state)
{
    Image_base const source = noise();
    Image_base tinted(side, side, Image_base::RGBA);
    auto const byte = [](int value) { return static_cast<unsigned char>(value); };
    for (auto _ : state) {
        tinted.colorizeFrom(&source, byte(first[0]), byte(first[1]), byte(first[2]), byte(second[0]),
                            byte(second[1]), byte(second[2]));
        benchmark::ClobberMemory();
    }
    require(state, isTinted(tinted.getData(), source.getData()));
    countItems(state, pixels);
}
BENCHMARK(colorizing)->Unit(benchmark::kMicrosecond);

void plainColorizing(benchmark::State& state)
{
    Image_base const source = noise();
    std::vector<unsigned char> tinted(4 * pixels);
    for (auto _ : state) {
        tintPlainly(source.getData(), tinted.data());
        benchmark::ClobberMemory();
    }
    require(state, isTinted(tinted.data(), source.getData()));
    countItems(state, pixels);
}
BENCHMARK(plainColorizing)->Unit(benchmark::kMicrosecond);

using Picture = std::vector<unsigned char>;

Picture picture()
{
    Picture bytes(4 * pixels);
    fill(bytes);
    return bytes;
}

/// So many pixels differ by far, all others by little.
Picture altered(Picture bytes, std::size_t mismatches)
{
    for (std::size_t i = 0; i < pixels; ++i)
        bytes[4 * i] = static_cast<unsigned char>(bytes[4 * i] ^ (i < mismatches ? 128U : 1U));
    return bytes;
}

constexpr std::size_t justEqual = 2621; // less than one in a hundred

bool samePlainly(Picture const& a, Picture const& b)
{
    std::size_t mismatches = 0;
    for (std::size_t i = 0; i < a.size(); i += 4) {
        int distance = 0;
        for (std::size_t k = 0; k < 4; ++k)
            distance += (a[i + k] - b[i + k]) * (a[i + k] - b[i + k]);
        mismatches += distance > 100 ? 1 : 0;
    }
    return 100 * mismatches < pixels;
}

template <typename Compare>
void compare(benchmark::State& state, Compare same)
{
    Picture const one = picture();
    Picture const equal = altered(one, justEqual);
    bool answer = false;
    for (auto _ : state) {
        answer = same(one, equal);
        benchmark::DoNotOptimize(answer);
    }
    require(state, answer && !same(one, altered(one, justEqual + 1)));
    countItems(state, pixels);
}

void imageComparison(benchmark::State& state)
{
    compare(state, [](Picture const& a, Picture const& b) { return Diagnostic::areTestImagesSame(a, b); });
}
BENCHMARK(imageComparison)->Unit(benchmark::kMicrosecond);

void plainImageComparison(benchmark::State& state)
{
    compare(state, samePlainly);
}
BENCHMARK(plainImageComparison)->Unit(benchmark::kMicrosecond);

} // namespace
