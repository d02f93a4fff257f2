// SPDX-License-Identifier: MIT
// From the driver's callbacks to the signals.
#include "instruments/spectrobuddy.h"

#include "taviapp/tavicombocolour_cc.h"
#include "tavilib/tavipacket.h"

#include <QLineEdit>
#include <QMetaMethod>

namespace {

const QString lab_text = QStringLiteral("L:%1, a:%2, b:%3");

bool isEndMarker(double L)
{
    return L < 0.0;
}

} // namespace

int SpectroBuddy::processLabFromInstrument(void *buddy, double L, double a, double b)
{
    auto *self = static_cast<SpectroBuddy *>(buddy);
    if (!self || (self->mode != SPOT_MODE && self->mode != CHART_MODE))
        return 0;
    if (self->mode == CHART_MODE && self->buffer_line)
        self->bufferLineLab(L, a, b);
    else if (self->buffer_all)
        self->bufferAllLab(L, a, b);
    else
        self->fireSpotLab(L, a, b);
    return 0;
}

int SpectroBuddy::processInstrumentMessage(void *buddy, char const *text)
{
    if (auto *self = static_cast<SpectroBuddy *>(buddy))
        self->showMessage(QString::fromUtf8(text));
    return 0;
}

void SpectroBuddy::showMessage(const QString &text)
{
    if (!show_messages || !message_line)
        return;
    message_line->setText(text);
    message_line->setCursorPosition(0); // a text longer than the line shows its beginning
}

void SpectroBuddy::fireSpotLab(double L, double a, double b)
{
    if (show_messages)
        showMessage(lab_text.arg(L, 0, 'f', 3).arg(a, 0, 'f', 3).arg(b, 0, 'f', 3));
    Q_EMIT spotLab(L, a, b);
}

void SpectroBuddy::bufferAllLab(double L, double a, double b)
{
    if (isEndMarker(L))
        fireAllLab();
    else
        buffer.append(TAVICOMBOCOLOUR_CC::newMeasuredPatch(L, a, b));
}

void SpectroBuddy::fireAllLab()
{
    if (buffer.isEmpty())
        return;
    showMessage(tr("Measured %1 colours.").arg(buffer.length()));
    TAVICOMBOCOLOUR *measured = buffer.takeAll();
    if (!signalsBlocked() && isSignalConnected(QMetaMethod::fromSignal(&SpectroBuddy::allLab)))
        Q_EMIT allLab(measured);
    else
        TaviPacketFreeList(&measured, TAVIPACKET_COMBOCOLOUR);
}

void SpectroBuddy::bufferLineLab(double L, double a, double b)
{
    // No look at the end marker: a strip is as long as it is, and a marker inside one is a patch like another, which
    // keeps the lines in step with the chart.
    if (buffer.length() < line_length)
        buffer.append(TAVICOMBOCOLOUR_CC::newMeasuredPatch(L, a, b));
    fireLineLab();
}

void SpectroBuddy::fireLineLab()
{
    if (line_length == 0 || buffer.length() < line_length)
        return;
    TAVICOMBOCOLOUR *line = buffer.takeFront(line_length);
    showMessage(tr("Measured %1 colours").arg(line_length));
    if (!signalsBlocked() && isSignalConnected(QMetaMethod::fromSignal(&SpectroBuddy::lineLab)))
        Q_EMIT lineLab(line);
    else
        TaviPacketFreeList(&line, TAVIPACKET_COMBOCOLOUR);
}
