// SPDX-License-Identifier: MIT
#ifndef TESTS_TREEVIEWS_HEADERFIXTURE_H
#define TESTS_TREEVIEWS_HEADERFIXTURE_H

#include "treeviews/taviheaderview.h"

#include <QStandardItemModel>
#include <QTreeView>

/// A tree view of one row with this header and columns named "A", "B" ..., on the display if it is shown.
struct HeaderInView {
    explicit HeaderInView(int columns) : model(1, columns)
    {
        for (int column = 0; column < columns; ++column) {
            model.setHorizontalHeaderItem(column, new QStandardItem(QString(QChar('A' + column))));
            model.setItem(0, column, new QStandardItem(QString::number(column)));
        }
        header = new TaviHeaderView(Qt::Horizontal, &view);
        view.setHeader(header);
        view.setModel(&model);
        view.setFrameShape(QFrame::NoFrame);
        view.resize(600, 200);
    }

    /// Shows it with its header just as wide as @a width.
    void show(int width = 600)
    {
        view.resize(width, 200);
        view.show();
        if (!QTest::qWaitForWindowExposed(&view) || header->width() != width)
            QTest::qFail("the view is not on the display as it should be", __FILE__, __LINE__);
    }

    /// The visible sections in visual order, as "A B C".
    QString order() const
    {
        QStringList names;
        for (int place = 0; place < header->count(); ++place) {
            const int section = header->logicalIndex(place);
            if (!header->isSectionHidden(section))
                names << model.headerData(section, Qt::Horizontal).toString();
        }
        return names.join(' ');
    }

    /// By logical index; 0 for hidden ones.
    QVector<int> sizes() const
    {
        QVector<int> all;
        for (int section = 0; section < header->count(); ++section)
            all << header->sectionSize(section);
        return all;
    }

    /// The same as "100 80 420".
    QString sizesText() const
    {
        QStringList texts;
        for (const int size : sizes())
            texts << QString::number(size);
        return texts.join(' ');
    }

    QStandardItemModel model;
    QTreeView view;
    TaviHeaderView *header;
};

#endif
