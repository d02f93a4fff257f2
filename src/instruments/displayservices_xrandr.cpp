// SPDX-License-Identifier: MIT
#include "instruments/displayservices_p.h"
#include "instruments/gammatable_p.h"

#include <QGuiApplication>

#include <algorithm>
#include <memory>

// Xlib last: its macros take everyday words.
#include <X11/Xlib.h>
#include <X11/extensions/Xrandr.h>

namespace DisplayServices {
namespace {

template <auto Release>
struct Releaser {
    template <typename T>
    void operator()(T *resource) const
    {
        Release(resource);
    }
};
using Connection = std::unique_ptr<Display, Releaser<XCloseDisplay>>;
using Resources = std::unique_ptr<XRRScreenResources, Releaser<XRRFreeScreenResources>>;
using Output = std::unique_ptr<XRROutputInfo, Releaser<XRRFreeOutputInfo>>;
using Crtc = std::unique_ptr<XRRCrtcInfo, Releaser<XRRFreeCrtcInfo>>;
using Gamma = std::unique_ptr<XRRCrtcGamma, Releaser<XRRFreeGamma>>;

/// Catches the errors of one connection while it lives; those of others go where they went before.
class ErrorTrap
{
public:
    explicit ErrorTrap(Display *connection)
    {
        trapped_ = connection;
        caught_ = false;
        former_ = XSetErrorHandler(handle);
    }
    ~ErrorTrap()
    {
        XSetErrorHandler(former_);
        trapped_ = nullptr;
    }
    ErrorTrap(const ErrorTrap &) = delete;
    ErrorTrap &operator=(const ErrorTrap &) = delete;

    /// Whether there was an error, once the server has answered everything.
    bool caught() const
    {
        XSync(trapped_, False);
        return caught_;
    }

private:
    static int handle(Display *connection, XErrorEvent *event)
    {
        if (connection != trapped_)
            return former_(connection, event);
        caught_ = true;
        return 0;
    }

    static inline Display *trapped_ = nullptr;
    static inline bool caught_ = false;
    static inline XErrorHandler former_ = nullptr;
};

bool holds(const RROutput *outputs, int count, RROutput output)
{
    return std::find(outputs, outputs + count, output) != outputs + count;
}

/// A connection of our own, for one operation: its errors cannot be taken for those of Qt's, nor get lost among them.
Connection connectToServer()
{
    if (QGuiApplication::platformName() != QLatin1String("xcb"))
        return nullptr;
    Connection connection(XOpenDisplay(nullptr));
    int event = 0;
    int error = 0;
    int major = 0;
    int minor = 0;
    if (!connection || !XRRQueryExtension(connection.get(), &event, &error)
        || !XRRQueryVersion(connection.get(), &major, &minor) || (major == 1 && minor < 3))
        return nullptr;
    return connection;
}

/// Runs @a operation(connection, resources) under a trap.
template <typename Operation>
Result askServer(Operation operation)
{
    const Connection connection = connectToServer();
    if (!connection)
        return NoServices;
    const ErrorTrap trap(connection.get());
    // What the server knows: to look for new monitors takes long, and makes some of them flicker.
    const Resources resources(XRRGetScreenResourcesCurrent(connection.get(), DefaultRootWindow(connection.get())));
    const Result result = resources ? operation(connection.get(), resources.get()) : NoServices;
    return trap.caught() ? Refused : result;
}

/// Runs @a operation(connection, resources, output, crtc) for the part of the card that drives the display now.
template <typename Operation>
Result askCrtc(DisplayId display, Operation operation)
{
    return askServer([&](Display *connection, XRRScreenResources *resources) {
        if (!holds(resources->outputs, resources->noutput, display))
            return NoDisplay;
        const Output output(XRRGetOutputInfo(connection, resources, display));
        if (!output || output->crtc == None)
            return NoDisplay;
        return operation(connection, resources, *output, output->crtc);
    });
}

/// Sets the table that @a make(size) gives.
template <typename Make>
Result setTable(DisplayId display, Make make)
{
    return askCrtc(display, [&](Display *connection, XRRScreenResources *, const XRROutputInfo &, RRCrtc crtc) {
        const int size = XRRGetCrtcGammaSize(connection, crtc);
        if (size < 2) // no curve in that
            return NoGammaControl;
        const Gamma gamma(XRRAllocGamma(size));
        if (!gamma)
            return Refused;
        const CardTable table = make(static_cast<std::size_t>(size));
        std::copy(table.channels[0].begin(), table.channels[0].end(), gamma->red);
        std::copy(table.channels[1].begin(), table.channels[1].end(), gamma->green);
        std::copy(table.channels[2].begin(), table.channels[2].end(), gamma->blue);
        XRRSetCrtcGamma(connection, crtc, gamma.get());
        return Done;
    });
}

} // namespace

Result displayAtPoint(int x, int y, DisplayId &display)
{
    return askServer([&](Display *connection, XRRScreenResources *resources) {
        const RROutput primary = XRRGetOutputPrimary(connection, DefaultRootWindow(connection));
        RROutput found = None;
        for (int at = 0; at < resources->ncrtc; ++at) {
            const Crtc crtc(XRRGetCrtcInfo(connection, resources, resources->crtcs[at]));
            if (!crtc || crtc->noutput == 0 || x < crtc->x || y < crtc->y || x >= crtc->x + int(crtc->width)
                || y >= crtc->y + int(crtc->height))
                continue;
            if (holds(crtc->outputs, crtc->noutput, primary))
                found = primary;
            else if (found == None)
                found = crtc->outputs[0];
        }
        display = static_cast<DisplayId>(found);
        return found == None ? NoDisplay : Done;
    });
}

Result physicalSize(DisplayId display, double &mm_width, double &mm_height)
{
    return askCrtc(display,
                   [&](Display *connection, XRRScreenResources *resources, const XRROutputInfo &output, RRCrtc id) {
                       const Crtc crtc(XRRGetCrtcInfo(connection, resources, id));
                       if (!crtc)
                           return Refused;
                       mm_width = double(output.mm_width);
                       mm_height = double(output.mm_height);
                       if (crtc->rotation & (RR_Rotate_90 | RR_Rotate_270)) // it reports itself as it was built
                           std::swap(mm_width, mm_height);
                       return Done;
                   });
}

Result readTable(DisplayId display, GammaSamples &samples, CardTable &card)
{
    return askCrtc(display, [&](Display *connection, XRRScreenResources *, const XRROutputInfo &, RRCrtc crtc) {
        const Gamma gamma(XRRGetCrtcGamma(connection, crtc));
        if (!gamma)
            return Refused;
        if (gamma->size < 2) // no curve in that
            return NoGammaControl;
        card.channels[0].assign(gamma->red, gamma->red + gamma->size);
        card.channels[1].assign(gamma->green, gamma->green + gamma->size);
        card.channels[2].assign(gamma->blue, gamma->blue + gamma->size);
        samplesOfCardTable(card, samples);
        return Done;
    });
}

Result writeTable(DisplayId display, const GammaSamples &samples, const CardTable &card)
{
    return setTable(display,
                    [&](std::size_t size) { return card.size() == size ? card : cardTableOfSamples(samples, size); });
}

Result writeLinearRamp(DisplayId display)
{
    return setTable(display, linearCardTable);
}

} // namespace DisplayServices
