// SPDX-License-Identifier: MIT
#ifndef TESTS_SUPPORT_HELDDRAG_H
#define TESTS_SUPPORT_HELDDRAG_H

#include <QByteArray>
#include <QString>

#include <functional>

class QWidget;

/// Starts a drag of @a data from @a source and calls @a meanwhile while it goes on; then it is cancelled. Events that
/// @a meanwhile makes and hands to widgets have that source, as those of a real drag have. False if there was no
/// drag.
bool holdDrag(QWidget *source, const QString &type, const QByteArray &data, const std::function<void()> &meanwhile);

#endif
