// SPDX-License-Identifier: MIT
#ifndef TESTS_SUPPORT_OTHERAPPLICATION_H
#define TESTS_SUPPORT_OTHERAPPLICATION_H

#include <QPoint>
#include <QProcess>

/// Another application on the display, with a window on which things can be dropped. It ends with this object.
class OtherApplication
{
public:
    /// Starts it with a window of 200 by 200 at @a place, and waits until that is there. It takes data of @a type as
    /// a move, or as a copy.
    OtherApplication(const QString &type, bool moves, const QPoint &place);
    ~OtherApplication();
    OtherApplication(const OtherApplication &) = delete;
    OtherApplication &operator=(const OtherApplication &) = delete;

    /// Whether its window is there.
    bool isReady() const { return ready_; }
    /// The middle of its window, in pixels of the display.
    QPoint middle() const { return middle_; }
    /// What was dropped on it since the last call: waits for one drop and returns its data; empty if none comes.
    QByteArray takeDrop();

private:
    QByteArray readLine();

    QProcess process_;
    QPoint middle_;
    bool ready_ = false;
};

#endif
