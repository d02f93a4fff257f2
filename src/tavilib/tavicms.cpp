// SPDX-License-Identifier: MIT
#include "tavilib/tavicms.h"

#include <cmath>
#include <lcms2.h>
#include <memory>

namespace {

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

    uint32_t convert(const cmsCIELab &lab) const
    {
        unsigned char rgb[3] = {0, 0, 0};
        if (transform_)
            cmsDoTransform(transform_, &lab, rgb, 1);
        return 0xff000000U | static_cast<uint32_t>(rgb[0] << 16 | rgb[1] << 8 | rgb[2]);
    }

private:
    using Profile = std::unique_ptr<void, cmsBool (*)(cmsHPROFILE)>;
    cmsHTRANSFORM transform_ = nullptr;
};

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

uint32_t TAVICMSLabToDisplay(double L, double a, double b)
{
    if (!std::isfinite(L) || !std::isfinite(a) || !std::isfinite(b))
        return 0xff000000U;
    static const DisplayTransform transform;
    return transform.convert({L, a, b});
}
