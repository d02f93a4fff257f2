// SPDX-License-Identifier: MIT
#include "tests/apps/desktopwindow.h"

#include <QProcess>
#include <QRegularExpression>
#include <QtTest>

namespace {

bool succeeds(const QString &program, const QStringList &arguments)
{
    return !toolOutput(program, arguments).isNull();
}

/// The number behind @a label.
int numberIn(const QString &text, const QString &label)
{
    const QRegularExpression pattern(QRegularExpression::escape(label) + QStringLiteral("\\s*(-?\\d+)"));
    return pattern.match(text).captured(1).toInt();
}

} // namespace

QString toolOutput(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        return {};
    return QStringLiteral("") + QString::fromLocal8Bit(process.readAllStandardOutput());
}

DesktopWindow::DesktopWindow(qint64 pid, const QString &title)
{
    const auto find = [&] {
        const QStringList ids =
            toolOutput("xdotool", {"search", "--onlyvisible", "--all", "--pid", QString::number(pid), "--name",
                                   '^' + QRegularExpression::escape(title) + '$'})
                .split('\n', Qt::SkipEmptyParts);
        id_ = ids.value(0);
        return ids.size() == 1 && frameExtents().size() == 4;
    };
    if (!QTest::qWaitFor(find, 20000))
        problem_ = QStringLiteral("no window \"%1\" of process %2 with a frame").arg(title).arg(pid);
}

QRect DesktopWindow::client() const
{
    const QString text = toolOutput("xwininfo", {"-id", id_});
    return {numberIn(text, "Absolute upper-left X:"), numberIn(text, "Absolute upper-left Y:"),
            numberIn(text, "Width:"), numberIn(text, "Height:")};
}

QRect DesktopWindow::frame() const
{
    const QList<int> widths = frameExtents();
    if (widths.size() != 4)
        return {};
    return client().adjusted(-widths[0], -widths[2], widths[1], widths[3]);
}

QList<int> DesktopWindow::frameExtents() const
{
    const QString text = toolOutput("xprop", {"-id", id_, "-notype", "_NET_FRAME_EXTENTS"});
    QList<int> extents;
    if (text.contains('=')) {
        for (const QString &part : text.section('=', 1).split(','))
            extents.append(part.trimmed().toInt());
    }
    return extents;
}

bool DesktopWindow::place(const QRect &wanted) const
{
    // A window is moved by its frame.
    const QPoint corner = wanted.topLeft() - (client().topLeft() - frame().topLeft());
    return succeeds("xdotool", {"windowsize", id_, QString::number(wanted.width()), QString::number(wanted.height())})
           && succeeds("xdotool", {"windowmove", id_, QString::number(corner.x()), QString::number(corner.y())})
           && QTest::qWaitFor([&] { return client() == wanted; });
}

bool DesktopWindow::clickClose() const
{
    // The rightmost button of the title bar, which is about as wide as the bar is high.
    const QRect whole = frame();
    const int bar = client().top() - whole.top();
    return succeeds("xdotool", {"mousemove", QString::number(whole.right() - bar / 2),
                                QString::number(whole.top() + bar / 2), "click", "1"});
}
