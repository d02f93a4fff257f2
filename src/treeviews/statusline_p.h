// SPDX-License-Identifier: MIT
#ifndef TREEVIEWS_STATUSLINE_P_H
#define TREEVIEWS_STATUSLINE_P_H

#include <QStatusBar>

/// A status bar whose message reads the same in both directions of layout.
///
/// A text such as "1 of 9 items" begins with a digit, which has no direction of its own: among text from right to
/// left it would come last. The message is painted as a piece by itself, in the direction of its own first letter;
/// currentMessage() stays what was shown.
class StatusLine : public QStatusBar
{
public:
    using QStatusBar::QStatusBar;

protected:
    /// Paints frames, permanent widgets' places and the message.
    void paintEvent(QPaintEvent *event) override;

private:
    QRect messagePlace() const;
};

#endif
