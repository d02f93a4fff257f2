// SPDX-License-Identifier: MIT
#include "tests/support/otherapplication.h"

#include <QtTest>

OtherApplication::OtherApplication(const QString &type, bool moves, const QPoint &place)
{
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process_.start(QStringLiteral(DROP_RECEIVER), {type, moves ? QStringLiteral("move") : QStringLiteral("copy"),
                                                   QString::number(place.x()), QString::number(place.y())});
    const QList<QByteArray> words = readLine().split(' ');
    ready_ = words.size() == 3 && words.at(0) == "ready";
    if (ready_)
        middle_ = QPoint(words.at(1).toInt(), words.at(2).toInt());
}

OtherApplication::~OtherApplication()
{
    process_.closeWriteChannel();
    process_.waitForFinished(10000);
}

QByteArray OtherApplication::readLine()
{
    if (!QTest::qWaitFor([this] { return process_.canReadLine() || process_.state() == QProcess::NotRunning; },
                         10000))
        return {};
    return process_.readLine().trimmed();
}

QByteArray OtherApplication::takeDrop()
{
    const QByteArray line = readLine();
    return line.startsWith("dropped ") ? line.mid(8) : QByteArray();
}
