// SPDX-License-Identifier: MIT
#ifndef TESTS_TREEVIEWS_MODELSIGNALS_H
#define TESTS_TREEVIEWS_MODELSIGNALS_H

#include <QAbstractItemModel>
#include <QObject>
#include <QStringList>

/// Writes down what a model tells, in order: "+rows 2-3", "rows 2-3" (done), "-rows", "reset" and the like. Rows
/// below a parent name the parent's row: "+rows 0-0 in 2".
class ModelSignals : public QObject
{
public:
    explicit ModelSignals(const QAbstractItemModel *model)
    {
        using M = QAbstractItemModel;
        const auto rows = [this](const char *name) {
            return [this, name](const QModelIndex &parent, int first, int last) {
                note(name, parent, first, last);
            };
        };
        connect(model, &M::rowsAboutToBeInserted, this, rows("about+"));
        connect(model, &M::rowsInserted, this, rows("+"));
        connect(model, &M::rowsAboutToBeRemoved, this, rows("about-"));
        connect(model, &M::rowsRemoved, this, rows("-"));
        connect(model, &M::modelAboutToBeReset, this, [this] { lines.append(QStringLiteral("about reset")); });
        connect(model, &M::modelReset, this, [this] { lines.append(QStringLiteral("reset")); });
        connect(model, &M::layoutAboutToBeChanged, this, [this] { lines.append(QStringLiteral("about layout")); });
        connect(model, &M::layoutChanged, this, [this] { lines.append(QStringLiteral("layout")); });
        connect(model, &M::dataChanged, this, [this](const QModelIndex &from, const QModelIndex &to) {
            lines.append(
                QStringLiteral("data %1,%2-%3,%4").arg(from.row()).arg(from.column()).arg(to.row()).arg(to.column()));
        });
        connect(model, &M::headerDataChanged, this, [this](Qt::Orientation orientation, int first, int last) {
            lines.append(QStringLiteral("header %1 %2-%3").arg(int(orientation)).arg(first).arg(last));
        });
    }

    /// What was written since the last call.
    QString take()
    {
        const QString all = lines.join(QStringLiteral("; "));
        lines.clear();
        return all;
    }

private:
    void note(const char *name, const QModelIndex &parent, int first, int last)
    {
        QString line = QStringLiteral("%1 %2-%3").arg(QLatin1String(name)).arg(first).arg(last);
        if (parent.isValid())
            line += QStringLiteral(" in %1").arg(parent.row());
        lines.append(line);
    }

    QStringList lines;
};

#endif
