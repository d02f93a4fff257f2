// SPDX-License-Identifier: MIT
#ifndef TREEVIEWS_FOCUSKEPT_P_H
#define TREEVIEWS_FOCUSKEPT_P_H

#include <QApplication>
#include <QPointer>
#include <QWidget>

/// Keeps the keyboard focus where it is: a button that is disabled, be it for a moment, loses it. If it stays
/// disabled, the focus goes to another widget.
class FocusKept
{
public:
    explicit FocusKept(QWidget *otherwise) : kept_(QApplication::focusWidget()), otherwise_(otherwise) {}
    ~FocusKept()
    {
        if (!kept_ || kept_ == QApplication::focusWidget())
            return;
        QWidget *const next = kept_->isEnabled() ? kept_.data() : otherwise_.data();
        if (next)
            next->setFocus();
    }
    FocusKept(const FocusKept &) = delete;
    FocusKept &operator=(const FocusKept &) = delete;

private:
    const QPointer<QWidget> kept_;
    const QPointer<QWidget> otherwise_;
};

#endif
