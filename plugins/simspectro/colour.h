// SPDX-License-Identifier: MIT
#ifndef SIMSPECTRO_COLOUR_H
#define SIMSPECTRO_COLOUR_H

namespace simspectro {

/// CIE Lab, D50.
struct Lab {
    double L = 0.0;
    double a = 0.0;
    double b = 0.0;
};

/// CIE XYZ under D50, the perfect diffuser at Y = 100.
struct XYZ {
    double X = 0.0;
    double Y = 0.0;
    double Z = 0.0;
};

/// Densities of the four process channels.
struct Densities {
    double k = 0.0;
    double c = 0.0;
    double m = 0.0;
    double y = 0.0;
};

Lab labFromXyz(const XYZ &xyz);
XYZ xyzFromLab(const Lab &lab);

/// Colorimetric densities: -log10 of X, Y and Z against those of the white stand for cyan, magenta and yellow, that
/// of Y also for black. No paper is subtracted. From 0 to 4.
Densities densitiesFromXyz(const XYZ &xyz);

/// The point at @a part (0..1) of the way from @a from to @a to.
XYZ between(const XYZ &from, const XYZ &to, double part);
Densities between(const Densities &from, const Densities &to, double part);

} // namespace simspectro

#endif
