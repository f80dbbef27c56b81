#include "Benchmarks/Kernels/Kernels.h"
#include "Maths/Transform.h"

#include <array>
#include <cmath>

// Products along a chain: each is needed for the next.

namespace {

constexpr int factors = 1000;

Transform step()
{
    return {Matrix3::rotationMatrix({1.0, 2.0, 3.0}, 0.01), {0.1, 0.2, 0.3}, 1.0};
}

using PlainMatrix = std::array<std::array<double, 4>, 4>;

PlainMatrix plain(Matrix const& matrix)
{
    PlainMatrix result;
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            result[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)] = matrix(row, column);
    return result;
}

PlainMatrix productPlainly(PlainMatrix const& a, PlainMatrix const& b)
{
    PlainMatrix result{};
    for (std::size_t row = 0; row < 4; ++row)
        for (std::size_t column = 0; column < 4; ++column)
            for (std::size_t i = 0; i < 4; ++i)
                result[row][column] += a[row][i] * b[i][column];
    return result;
}

PlainMatrix chainPlainly(PlainMatrix const& factor)
{
    PlainMatrix product = plain(Matrix());
    for (int i = 0; i < factors; ++i)
        product = productPlainly(product, factor);
    return product;
}

bool isRight(PlainMatrix const& chain)
{
    PlainMatrix const expected = chainPlainly(plain(step().getMatrix()));
    constexpr double tolerance = 1e-9;
    for (std::size_t row = 0; row < 4; ++row)
        for (std::size_t column = 0; column < 4; ++column)
            if (std::abs(chain[row][column] - expected[row][column]) > tolerance)
                return false;
    return true;
}

void matrixProducts(benchmark::State& state)
{
    Matrix const factor = step().getMatrix();
    Matrix chain;
    for (auto _ : state) {
        chain = Matrix();
        for (int i = 0; i < factors; ++i)
            chain = chain * factor;
        benchmark::DoNotOptimize(chain);
    }
    require(state, isRight(plain(chain)));
    countItems(state, factors);
}
BENCHMARK(matrixProducts);

void transformProducts(benchmark::State& state)
{
    Transform const factor = step();
    Transform chain;
    for (auto _ : state) {
        chain = Transform();
        for (int i = 0; i < factors; ++i)
            chain = chain * factor;
        benchmark::DoNotOptimize(chain);
    }
    require(state, isRight(plain(chain.getMatrix())));
    countItems(state, factors);
}
BENCHMARK(transformProducts);

void plainMatrixProducts(benchmark::State& state)
{
    PlainMatrix const factor = plain(step().getMatrix());
    PlainMatrix chain{};
    for (auto _ : state) {
        chain = chainPlainly(factor);
        benchmark::DoNotOptimize(chain);
    }
    require(state, isRight(chain));
    countItems(state, factors);
}
BENCHMARK(plainMatrixProducts);

} // namespace
