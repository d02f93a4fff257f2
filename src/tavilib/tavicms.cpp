// SPDX-License-Identifier: MIT
#include "tavilib/tavicms.h"

#include <algorithm>
#include <cmath>
#include <lcms2.h>
#include <memory>

namespace {

bool isFinite(const double *lab)
{
    return std::isfinite(lab[0]) && std::isfinite(lab[1]) && std::isfinite(lab[2]);
}

uint32_t opaque(const unsigned char *rgb)
{
    return 0xff000000U | static_cast<uint32_t>(rgb[0] << 16 | rgb[1] << 8 | rgb[2]);
}

/// From D50 Lab to sRGB without a cache, so that threads may share it.
class DisplayTransform
{
public:
    DisplayTransform()
    {
        const Profile lab(cmsCreateLab4Profile(nullptr), cmsCloseProfile);
        const Profile srgb(cmsCreate_sRGBProfile(), cmsCloseProfile);
        if (lab && srgb) {
            // sRGB's white in the connection space is D50 white, so the colorimetric intent leaves paper as it is.
            transform_ = cmsCreateTransform(lab.get(), TYPE_Lab_DBL, srgb.get(), TYPE_RGB_8,
                                            INTENT_RELATIVE_COLORIMETRIC, cmsFLAGS_NOCACHE | cmsFLAGS_NOOPTIMIZE);
        }
    }
    ~DisplayTransform()
    {
        if (transform_)
            cmsDeleteTransform(transform_);
    }
    DisplayTransform(const DisplayTransform &) = delete;
    DisplayTransform &operator=(const DisplayTransform &) = delete;

    void convert(const double *lab, uint32_t *argb, size_t count) const
    {
        constexpr size_t most = 128;
        double usable[most * 3];
        unsigned char rgb[most * 3] = {};
        while (count > 0) {
            const size_t part = std::min(count, most);
            for (size_t i = 0; i < part * 3; i += 3) {
                const bool finite = isFinite(lab + i);
                for (size_t j = i; j < i + 3; ++j)
                    usable[j] = finite ? lab[j] : 0.0;
            }
            if (transform_)
                cmsDoTransform(transform_, usable, rgb, static_cast<cmsUInt32Number>(part));
            for (size_t i = 0; i < part; ++i)
                argb[i] = opaque(rgb + i * 3);
            lab += part * 3;
            argb += part;
            count -= part;
        }
    }

private:
    using Profile = std::unique_ptr<void, cmsBool (*)(cmsHPROFILE)>;
    cmsHTRANSFORM transform_ = nullptr;
};

cmsCIELab labOf(const double *triple)
{
    return {triple[0], triple[1], triple[2]};
}

double orInfinite(double difference)
{
    return std::isfinite(difference) ? difference : HUGE_VAL;
}

double chroma(const double *lab)
{
    return std::sqrt(lab[1] * lab[1] + lab[2] * lab[2]);
}

/// |dH|, in a form in which nothing cancels out: the difference of dE^2, dL^2 and dC^2 would lose half of the digits
/// where the hues are close.
double hueDifference(const double *p, const double *q)
{
    const double chromas = chroma(p) * chroma(q);
    const double product = p[1] * q[1] + p[2] * q[2];
    if (product > 0.0)
        return std::fabs(p[1] * q[2] - p[2] * q[1]) / std::sqrt(0.5 * (chromas + product));
    return std::sqrt(2.0 * (chromas - product));
}

} // namespace

void TAVICMSXYZToLab(double X, double Y, double Z, double *L, double *a, double *b)
{
    const cmsCIEXYZ xyz = {X / 100.0, Y / 100.0, Z / 100.0};
    cmsCIELab lab = {};
    cmsXYZ2Lab(nullptr, &lab, &xyz); // null: D50
    *L = lab.L;
    *a = lab.a;
    *b = lab.b;
}

void TAVICMS_XYZToLab(const double xyz[3], const double white_point[3], double lab[3])
{
    const cmsCIEXYZ colour = {xyz[0], xyz[1], xyz[2]};
    const cmsCIEXYZ white = {white_point[0], white_point[1], white_point[2]};
    cmsCIELab result = {};
    cmsXYZ2Lab(&white, &result, &colour);
    lab[0] = result.L;
    lab[1] = result.a;
    lab[2] = result.b;
}

uint32_t TAVICMSLabToDisplay(double L, double a, double b)
{
    const double lab[3] = {L, a, b};
    uint32_t argb = 0;
    TAVICMSLabListToDisplay(lab, &argb, 1);
    return argb;
}

void TAVICMSLabListToDisplay(const double *lab, uint32_t *argb, size_t count)
{
    static const DisplayTransform transform;
    transform.convert(lab, argb, count);
}

double TAVICMS_ColourDiff_DeltaE(const double reference[3], const double measured[3])
{
    const cmsCIELab p = labOf(reference);
    const cmsCIELab q = labOf(measured);
    return orInfinite(cmsDeltaE(&p, &q));
}

double TAVICMS_ColourDiff_CIE94(const double reference[3], const double measured[3])
{
    // Little CMS weighs by the mean chroma of both and with other constants.
    constexpr double k1 = 0.045;
    constexpr double k2 = 0.015;
    const double c = chroma(reference);
    const double dl = reference[0] - measured[0];
    const double dc = (c - chroma(measured)) / (1.0 + k1 * c);
    const double dh = hueDifference(reference, measured) / (1.0 + k2 * c);
    return orInfinite(std::sqrt(dl * dl + dc * dc + dh * dh));
}

double TAVICMS_ColourDiff_CIE2000(const double reference[3], const double measured[3])
{
    const cmsCIELab p = labOf(reference);
    const cmsCIELab q = labOf(measured);
    return orInfinite(cmsCIE2000DeltaE(&p, &q, 1.0, 1.0, 1.0));
}

double TAVICMS_ColourDiff_dH(const double reference[3], const double measured[3])
{
    // Hue does not depend on lightness, but a colour without a lightness is none.
    const double difference = hueDifference(reference, measured);
    return isFinite(reference) && isFinite(measured) ? orInfinite(difference) : HUGE_VAL;
}

double TAVICMS_ColourDiff_dC(const double reference[3], const double measured[3])
{
    const double difference = chroma(reference) - chroma(measured);
    return isFinite(reference) && isFinite(measured) ? orInfinite(difference) : HUGE_VAL;
}

double TAVICMS_ColourDiff_dCh(const double reference[3], const double measured[3])
{
    const double da = reference[1] - measured[1];
    const double db = reference[2] - measured[2];
    const double difference = std::sqrt(da * da + db * db);
    return isFinite(reference) && isFinite(measured) ? orInfinite(difference) : HUGE_VAL;
}
