// SPDX-License-Identifier: MIT
#ifndef TESTS_APPS_DESKTOPWINDOW_H
#define TESTS_APPS_DESKTOPWINDOW_H

#include <QRect>
#include <QString>
#include <QStringList>

/// What a program wrote to its standard output; null if it failed, empty if it had nothing to say.
QString toolOutput(const QString &program, const QStringList &arguments);

/// A window of another program on the display, as the window system shows it and a user handles it. Each operation
/// runs a program of the X tools.
class DesktopWindow
{
public:
    /// Waits for a visible window of the process @a pid with the title @a title and a frame.
    DesktopWindow(qint64 pid, const QString &title);

    /// Why there is no such window; empty if there is.
    QString problem() const { return problem_; }
    /// The client area, in the coordinates of the whole desktop.
    QRect client() const;
    /// The same with the frame; null if the window is gone.
    QRect frame() const;
    /// Resizes the client and moves it to the given place, and waits until the window system says so.
    bool place(const QRect &wanted) const;
    /// Clicks the close button of the frame.
    bool clickClose() const;

private:
    /// Widths of the frame's left, right, top and bottom.
    QList<int> frameExtents() const;

    QString id_;
    QString problem_;
};

#endif
