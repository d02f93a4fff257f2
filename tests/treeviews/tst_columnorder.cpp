// SPDX-License-Identifier: MIT
#include "tests/support/tavitest.h"
#include "tests/treeviews/headerfixture.h"
#include "treeviews/columnorder_p.h"

namespace {

/// The entries of a header, deleted at the end.
struct Entries : ColumnOrder {
    explicit Entries(const TaviHeaderView &header) : ColumnOrder(ColumnOrder::of(header)) {}
    ~Entries()
    {
        qDeleteAll(all);
        qDeleteAll(shown);
    }
};

/// "text id" of each, with "-" before one that isn't visible and "+" behind one in the show list.
QStringList told(const QList<ConfigOrderItem *> &entries)
{
    QStringList texts;
    for (const ConfigOrderItem *entry : entries) {
        texts << (entry->isItemVisible() ? "" : "-") + entry->data(0, Qt::DisplayRole).toString()
                     + QString::number(entry->itemID()) + (entry->isItemInShowList() ? "+" : "");
    }
    return texts;
}

} // namespace

/// What the order dialog gets of a header, and what comes of its result.
class TestColumnOrder : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void thereIsAnEntryForEachSectionAndOneMoreForEachThatShows()
    {
        HeaderInView at(4);
        at.header->moveSection(3, 0); // D A B C
        at.header->setSectionHidden(1, true);
        const Entries entries(*at.header);
        QCOMPARE(told(entries.all), QStringList({"A0", "-B1", "C2", "D3"}));
        QCOMPARE(told(entries.shown), QStringList({"D3+", "A0+", "C2+"}));
        for (const ConfigOrderItem *entry : entries.shown)
            QVERIFY(entry->isEnabled() && qobject_cast<const ColumnOrderItem *>(entry));
        QCOMPARE(entries.all.at(1)->isEnabled(), true);
        QCOMPARE(entries.all.at(0)->isEnabled(), false);
    }

    void iconsComeAlong()
    {
        HeaderInView at(1);
        at.model.setHeaderData(0, Qt::Horizontal, QColor(Qt::green), Qt::DecorationRole);
        const Entries entries(*at.header);
        QCOMPARE(entries.all.at(0)->data(0, Qt::DecorationRole), QVariant(QColor(Qt::green)));
        QCOMPARE(entries.shown.at(0)->data(0, Qt::DecorationRole), QVariant(QColor(Qt::green)));
    }

    void whatIsAcceptedIsShownHiddenAndOrdered()
    {
        HeaderInView at(5);
        at.header->setSectionHidden(1, true);
        Entries entries(*at.header); // shown: A C D E
        entries.all.at(1)->setItemVisible(true);
        entries.all.at(3)->setItemVisible(false);
        // As the dialog gives it: B at the second place, D gone, E in front.
        ConfigOrderItem *d = entries.shown.takeAt(2);
        delete d;
        ConfigOrderItem *b = entries.all.at(1)->clone();
        b->setItemInShowList(true);
        entries.shown.insert(1, b);
        entries.shown.move(3, 0);
        entries.applyTo(*at.header);
        QCOMPARE(at.order(), QString("E A B C"));
        QVERIFY(at.header->isSectionHidden(3));
    }

    void acceptingWithoutAChangeChangesNothing()
    {
        HeaderInView at(5);
        at.show();
        at.header->moveSection(4, 1);
        at.header->setSectionHidden(2, true);
        const QString order = at.order(), sizes = at.sizesText();
        Entries(*at.header).applyTo(*at.header);
        QCOMPARE(at.order(), order);
        QCOMPARE(at.sizesText(), sizes);
    }

    // Through showSectionLastStretchSafe(), not just setSectionHidden().
    void theLastColumnComesBackSafely()
    {
        HeaderInView at(3), safe(3);
        for (HeaderInView *each : {&at, &safe}) {
            each->show();
            each->header->setSectionHidden(2, true);
        }
        Entries entries(*at.header);
        entries.all.at(2)->setItemVisible(true);
        entries.shown.append(entries.all.at(2)->clone());
        entries.applyTo(*at.header);
        safe.header->showSectionLastStretchSafe(2);
        QCOMPARE(at.sizesText(), safe.sizesText());
        QVERIFY(at.sizesText() != "100 100 400"); // what plainly showing it would give
    }

    void columnsThatWentMeanwhileArePassedOver()
    {
        HeaderInView at(4);
        const Entries entries(*at.header);
        at.model.removeColumns(1, 2);
        entries.applyTo(*at.header);
        QCOMPARE(at.header->count(), 2);
        QCOMPARE(at.order(), QString("A D"));
    }

    void aHeaderWithoutModelHasNoEntries()
    {
        TaviHeaderView header(Qt::Horizontal);
        const Entries entries(header);
        QVERIFY(entries.all.isEmpty() && entries.shown.isEmpty());
        entries.applyTo(header);
    }
};

TAVI_GUI_TEST_MAIN(TestColumnOrder)
#include "tst_columnorder.moc"
