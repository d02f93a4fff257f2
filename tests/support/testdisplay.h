// SPDX-License-Identifier: MIT
#ifndef TESTS_SUPPORT_TESTDISPLAY_H
#define TESTS_SUPPORT_TESTDISPLAY_H

#include <QProcess>
#include <QRect>
#include <QVector>
#include <QtTest>

class QWidget;

/// Whether this is a display of script/with-display with both screens, 1600x1200+0+0 and 1280x1024+1600+0.
bool hasTwoScreens();

/// Ends the test function where there are not two screens: it is skipped with a line that says why, or fails where
/// two are required (TAVI_REQUIRE_TWO_SCREENS).
#define TAVI_NEED_TWO_SCREENS()                                                                                      \
    do {                                                                                                             \
        if (!hasTwoScreens()) {                                                                                      \
            QVERIFY2(!qEnvironmentVariableIsSet("TAVI_REQUIRE_TWO_SCREENS"),                                         \
                     "two screens are required here, and this is not the display of script/with-display with two "   \
                     "screens");                                                                                     \
            QSKIP("no two screens: not run under script/with-display, or Xorg's dummy driver could not be started"); \
        }                                                                                                            \
    } while (false)

/// The test display's screens, set up otherwise by `xrandr` for as long as this lives. It is undone even when the
/// test's program dies meanwhile. Where there is one screen only, it does nothing.
class ChangedDisplay
{
public:
    /// Runs `xrandr` with @a change; @a undo are the arguments that bring back what was. Waits until it is done, but
    /// not until the application knows.
    ChangedDisplay(const QString &change, const QString &undo);
    ~ChangedDisplay() { this->undo(); }
    ChangedDisplay(const ChangedDisplay &) = delete;
    ChangedDisplay &operator=(const ChangedDisplay &) = delete;

    /// Brings back what was, once, and waits until that is done. False if it failed.
    bool undo();

private:
    QProcess keeper_; ///< Holds the change until its input ends.
};

/// The second screen of the test display, unplugged for as long as this lives. It comes back even when the test's
/// program dies meanwhile. Where there is one screen only, it does nothing.
class UnpluggedScreen
{
public:
    /// Unplugs it and waits until the application knows.
    UnpluggedScreen();
    ~UnpluggedScreen() { plugIn(); }
    UnpluggedScreen(const UnpluggedScreen &) = delete;
    UnpluggedScreen &operator=(const UnpluggedScreen &) = delete;

    /// Plugs it in again and waits until the application knows. False if it does not come back.
    bool plugIn();
    /// Whether the application has one screen.
    bool isUnplugged() const;

private:
    static QVector<QRect> availableAreas();
    static bool waitFor(const QVector<QRect> &available);

    const QVector<QRect> available_; ///< Of each screen, before it was unplugged.
    ChangedDisplay unplugged_;
};

/// Shows the window and waits until it is on the display with a frame around it.
bool showWithFrame(QWidget &window);

#endif
