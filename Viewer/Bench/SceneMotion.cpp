#include "Viewer/Bench/SceneMotion.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace sgview {

namespace {

constexpr double degree = std::numbers::pi / 180.0;
constexpr double leastWeight = 0.001; // both bones move every vertex

constexpr double stride = 0.1;
constexpr double stepTurn = 1.01 * degree;

/// Of all levels together 4 at most: no chain is so long that it comes too near to the camera.
double riseOf(int levels)
{
    constexpr double usual = 0.002;
    constexpr double most = 4.0;
    return std::min(usual, most / levels);
}

Transform stepTurned(int levels, double angle)
{
    return {turnAboutZ(angle), Vector3(stride, 0.0, riseOf(levels)), 1.0};
}

} // namespace

double gridTurn(int surface)
{
    return 0.3 + 0.001 * (surface % 500);
}

double sheetBend(int sheet, int frame)
{
    return 0.6 * std::sin(0.1 * frame + 0.3 * sheet);
}

double weightByColumn(int column, int vertices)
{
    return std::clamp(static_cast<double>(column) / (vertices - 1), leastWeight, 1.0 - leastWeight);
}

double weightVaried(int column, int row, int vertices)
{
    double const across = (column + static_cast<double>(row) / vertices) / vertices;
    return std::clamp(across, leastWeight, 1.0 - leastWeight);
}

Transform chain::top(int frame)
{
    Matrix3 const rotation = turnAboutZ(0.5 * degree * frame);
    return {rotation, middle - rotation * middle, 1.0};
}

Transform chain::step(int levels)
{
    return stepTurned(levels, stepTurn);
}

Transform chain::movingStep(int levels, int level, int frame)
{
    constexpr double swing = 0.001 * degree;
    return stepTurned(levels, stepTurn + swing * std::sin(0.1 * frame + level));
}

Matrix3 turnAboutY(double angle)
{
    double const c = std::cos(angle);
    double const s = std::sin(angle);
    return Matrix3({c, 0.0, s, 0.0, 1.0, 0.0, -s, 0.0, c});
}

Matrix3 turnAboutZ(double angle)
{
    double const c = std::cos(angle);
    double const s = std::sin(angle);
    return Matrix3({c, -s, 0.0, s, c, 0.0, 0.0, 0.0, 1.0});
}

} // namespace sgview
