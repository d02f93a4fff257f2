// SPDX-License-Identifier: MIT
#include "tests/instruments/cardtables.h"

#include <QtGlobal>

#include <algorithm>
#include <cmath>
#include <cstring>

#include <X11/Xlib.h>
#include <X11/extensions/Xrandr.h>

namespace {

/// Runs @a use(connection, resources).
template <typename Use>
void withServer(Use use)
{
    Display *connection = XOpenDisplay(nullptr);
    Q_ASSERT(connection);
    XRRScreenResources *resources = XRRGetScreenResourcesCurrent(connection, DefaultRootWindow(connection));
    use(connection, resources);
    XRRFreeScreenResources(resources);
    XCloseDisplay(connection);
}

/// Runs @a use(id, output) for the output of this name.
template <typename Use>
void withOutput(Display *connection, XRRScreenResources *resources, const char *name, Use use)
{
    for (int at = 0; at < resources->noutput; ++at) {
        XRROutputInfo *output = XRRGetOutputInfo(connection, resources, resources->outputs[at]);
        if (std::strcmp(output->name, name) == 0)
            use(resources->outputs[at], *output);
        XRRFreeOutputInfo(output);
    }
}

RRCrtc crtcOf(Display *connection, XRRScreenResources *resources, const char *name)
{
    RRCrtc crtc = None;
    withOutput(connection, resources, name, [&](RROutput, const XRROutputInfo &output) { crtc = output.crtc; });
    return crtc;
}

CardTables::Table tableOf(Display *connection, RRCrtc crtc)
{
    CardTables::Table table;
    if (crtc == None)
        return table;
    XRRCrtcGamma *gamma = XRRGetCrtcGamma(connection, crtc);
    table[0].assign(gamma->red, gamma->red + gamma->size);
    table[1].assign(gamma->green, gamma->green + gamma->size);
    table[2].assign(gamma->blue, gamma->blue + gamma->size);
    XRRFreeGamma(gamma);
    return table;
}

void setTable(Display *connection, RRCrtc crtc, const CardTables::Table &table)
{
    if (crtc == None)
        return;
    XRRCrtcGamma *gamma = XRRAllocGamma(static_cast<int>(table[0].size()));
    std::copy(table[0].begin(), table[0].end(), gamma->red);
    std::copy(table[1].begin(), table[1].end(), gamma->green);
    std::copy(table[2].begin(), table[2].end(), gamma->blue);
    XRRSetCrtcGamma(connection, crtc, gamma);
    XSync(connection, False);
    XRRFreeGamma(gamma);
}

} // namespace

CardTables::Table CardTables::curves(std::size_t size, double exponent)
{
    Table table;
    for (std::size_t channel = 0; channel < table.size(); ++channel)
        for (std::size_t at = 0; at < size; ++at) {
            const double place = double(at) / double(size - 1);
            const double value = 60001.0 * std::pow(place, exponent + 0.3 * double(channel));
            table[channel].push_back(static_cast<std::uint16_t>(value + 7.0 * double((at * 37 + channel) % 11)));
        }
    return table;
}

CardTables::Table CardTables::straight(std::size_t size)
{
    std::vector<std::uint16_t> line;
    for (std::size_t at = 0; at < size; ++at)
        line.push_back(static_cast<std::uint16_t>((at * 65535 * 2 + (size - 1)) / (2 * (size - 1))));
    return {line, line, line};
}

CardTables::Table CardTables::read(const char *output)
{
    Table table;
    withServer([&](Display *connection, XRRScreenResources *resources) {
        table = tableOf(connection, crtcOf(connection, resources, output));
    });
    return table;
}

void CardTables::write(const char *output, const Table &table)
{
    withServer([&](Display *connection, XRRScreenResources *resources) {
        setTable(connection, crtcOf(connection, resources, output), table);
    });
}

CardTables::Table CardTables::readCrtc(int number)
{
    Table table;
    withServer([&](Display *connection, XRRScreenResources *resources) {
        table = tableOf(connection, resources->crtcs[number]);
    });
    return table;
}

void CardTables::writeCrtc(int number, const Table &table)
{
    withServer([&](Display *connection, XRRScreenResources *resources) {
        setTable(connection, resources->crtcs[number], table);
    });
}

std::uint32_t CardTables::outputId(const char *name)
{
    std::uint32_t id = 0;
    withServer([&](Display *connection, XRRScreenResources *resources) {
        withOutput(connection, resources, name,
                   [&](RROutput output, const XRROutputInfo &) { id = static_cast<std::uint32_t>(output); });
    });
    return id;
}
