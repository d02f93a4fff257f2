// SPDX-License-Identifier: MIT
#include "colour.h"

#include <algorithm>
#include <cmath>

namespace simspectro {

namespace {

constexpr XYZ white = {96.42, 100.0, 82.49};
constexpr double max_density = 4.0;

// The two pieces of the Lab formula meet at a reflectance of (6/29)^3.
constexpr double delta = 6.0 / 29.0;

double labCurve(double t)
{
    return t > delta * delta * delta ? std::cbrt(t) : t / (3.0 * delta * delta) + 4.0 / 29.0;
}

double labCurveInverse(double t)
{
    return t > delta ? t * t * t : 3.0 * delta * delta * (t - 4.0 / 29.0);
}

double density(double value, double of_white)
{
    const double least = of_white * std::pow(10.0, -max_density);
    return std::max(0.0, -std::log10(std::max(value, least) / of_white));
}

} // namespace

Lab labFromXyz(const XYZ &xyz)
{
    const double x = labCurve(xyz.X / white.X);
    const double y = labCurve(xyz.Y / white.Y);
    const double z = labCurve(xyz.Z / white.Z);
    return {116.0 * y - 16.0, 500.0 * (x - y), 200.0 * (y - z)};
}

XYZ xyzFromLab(const Lab &lab)
{
    const double y = (lab.L + 16.0) / 116.0;
    return {white.X * labCurveInverse(y + lab.a / 500.0), white.Y * labCurveInverse(y),
            white.Z * labCurveInverse(y - lab.b / 200.0)};
}

Densities densitiesFromXyz(const XYZ &xyz)
{
    const double of_y = density(xyz.Y, white.Y);
    return {of_y, density(xyz.X, white.X), of_y, density(xyz.Z, white.Z)};
}

XYZ between(const XYZ &from, const XYZ &to, double part)
{
    return {std::lerp(from.X, to.X, part), std::lerp(from.Y, to.Y, part), std::lerp(from.Z, to.Z, part)};
}

Densities between(const Densities &from, const Densities &to, double part)
{
    return {std::lerp(from.k, to.k, part), std::lerp(from.c, to.c, part), std::lerp(from.m, to.m, part),
            std::lerp(from.y, to.y, part)};
}

} // namespace simspectro
