// SPDX-License-Identifier: MIT
#include "tests/qt3/listfixture.h"
#include "tests/support/contrast.h"
#include "tests/support/tavitest.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace {

/// An item that notes what is painted of it.
class Painted : public Q3ListViewItem
{
public:
    using Q3ListViewItem::Q3ListViewItem;
    void paintCell(QPainter *p, const QColorGroup &cg, int column, int width, int align) override
    {
        ++cells;
        last_group = cg.currentColorGroup();
        Q3ListViewItem::paintCell(p, cg, column, width, align);
    }
    void paintBranches(QPainter *p, const QColorGroup &cg, int w, int y, int h) override
    {
        ++branches;
        Q3ListViewItem::paintBranches(p, cg, w, y, h);
    }
    void paintFocus(QPainter *p, const QColorGroup &cg, const QRect &r) override
    {
        focus = r;
        Q3ListViewItem::paintFocus(p, cg, r);
    }
    int branches = 0;
    QRect focus;
    QPalette::ColorGroup last_group = QPalette::NColorGroups;
    static inline int cells = 0;
};

/// The most frequent colour in a part of the viewport, which is its background.
QColor background(const Q3ListView &list, const QRect &part)
{
    const QImage image = list.viewport()->grab(part).toImage();
    QHash<QRgb, int> counts;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            ++counts[image.pixel(x, y)];
    }
    QRgb best = 0;
    for (auto one = counts.cbegin(); one != counts.cend(); ++one)
        best = one.value() > counts.value(best) ? one.key() : best;
    return QColor(best);
}

/// The pixel that differs most from the background.
double textContrast(const Q3ListView &list, const QRect &part)
{
    const QColor back = background(list, part);
    const QImage image = list.viewport()->grab(part).toImage();
    double most = 1;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            most = std::max(most, contrast(image.pixelColor(x, y), back));
    }
    return most;
}

} // namespace

class TestQ3ListViewPaint : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void onlyRowsInSightArePainted()
    {
        ListFixture list(0);
        Q3ListViewItem *last = nullptr;
        for (int row = 0; row < 5000; ++row)
            last = new Painted(&list, last, QString::number(row));
        QVERIFY(list.showAndWait());
        list.setContentsPos(0, 30000);
        Painted::cells = 0;
        list.viewport()->grab();
        const int rows = list.visibleHeight() / last->height();
        QVERIFY2(Painted::cells >= 2 * rows && Painted::cells <= 2 * (rows + 2),
                 qPrintable(QString::number(Painted::cells)));
    }

    void coloursAreThePalettes_data()
    {
        QTest::addColumn<bool>("dark");
        QTest::newRow("light") << false;
        QTest::newRow("dark") << true;
    }
    void coloursAreThePalettes()
    {
        QFETCH(bool, dark);
        ListFixture list(4);
        QPalette palette;
        palette.setColor(QPalette::Base, dark ? QColor(20, 22, 25) : QColor(Qt::white));
        palette.setColor(QPalette::Text, dark ? QColor(Qt::white) : QColor(Qt::black));
        palette.setColor(QPalette::Highlight, QColor(191, 216, 250));
        palette.setColor(QPalette::HighlightedText, Qt::black);
        list.setPalette(palette);
        list.setSelected(list.at(1), true);
        QVERIFY(list.showAndWait());
        list.clearFocus();
        const auto cell = [&list](int row, int column) {
            QRect part = list.header()->sectionRect(column);
            const QRect rect = list.itemRect(list.at(row));
            return QRect(part.left() + 2, rect.top() + 2, part.width() - 4, rect.height() - 4);
        };
        QCOMPARE(background(list, cell(0, 0)), palette.color(QPalette::Base));
        QVERIFY(textContrast(list, cell(0, 0)) > 4.5);
        QVERIFY(background(list, cell(1, 0)) != palette.color(QPalette::Base));
        QVERIFY(textContrast(list, cell(1, 0)) > 4.5);
        QCOMPARE(background(list, cell(1, 1)), palette.color(QPalette::Base)); // the focus shows in column 0
        list.setAllColumnsShowFocus(true);
        QVERIFY(background(list, cell(1, 1)) != palette.color(QPalette::Base));
        QCOMPARE(background(list, QRect(220, 5, 40, 100)), palette.color(QPalette::Base));
        QCOMPARE(background(list, QRect(5, 120, 100, 20)), palette.color(QPalette::Base));
    }

    void disabledItemsGetTheDisabledColours()
    {
        ListFixture list(0);
        auto *item = new Painted(&list, QStringLiteral("x"));
        QVERIFY(list.showAndWait());
        list.viewport()->grab();
        QVERIFY(item->last_group != QPalette::Disabled);
        item->setEnabled(false);
        list.viewport()->grab();
        QCOMPARE(item->last_group, QPalette::Disabled);
    }

    void focusRectangle()
    {
        ListFixture list(1);
        auto *item = new Painted(&list, list.at(0), QStringLiteral("x"));
        QVERIFY(list.showAndWait());
        list.setCurrentItem(item);
        list.viewport()->grab();
        QCOMPARE(item->focus, QRect(0, item->height(), 120, item->height()));
        list.setAllColumnsShowFocus(true);
        list.viewport()->grab();
        QCOMPARE(item->focus, QRect(0, item->height(), 200, item->height()));
        item->focus = QRect();
        list.clearFocus();
        list.viewport()->grab();
        QVERIFY(item->focus.isNull());
    }

    void branchesArePainted()
    {
        ListFixture list(1);
        auto *parent = new Painted(&list, list.at(0), QStringLiteral("parent"));
        new Q3ListViewItem(parent, QStringLiteral("child"));
        QVERIFY(list.showAndWait());
        const QImage closed = list.viewport()->grab().toImage();
        list.setRootIsDecorated(true);
        QCOMPARE(list.firstChild()->depth(), 0);
        QVERIFY(list.viewport()->grab(QRect(0, 0, 20, 60)).toImage() != closed.copy(0, 0, 20, 60));
        parent->setOpen(true);
        parent->branches = 0;
        list.viewport()->grab();
        QCOMPARE(parent->branches, 1);
    }

    void longTextsAreCutOff()
    {
        ListFixture list(1);
        list.at(0)->setText(0, QStringLiteral("a text that is far too long for the column that it is in"));
        QVERIFY(list.showAndWait());
        list.clearFocus();
        const QRect second = list.header()->sectionRect(1);
        const QRect row = list.itemRect(list.at(0));
        const QRect part(second.left(), row.top(), second.width(), row.height());
        const QImage with = list.viewport()->grab(part).toImage();
        list.at(0)->setText(0, QString());
        QCOMPARE(list.viewport()->grab(part).toImage(), with);
    }

    void toolTipsTellCutOffTexts()
    {
        ListFixture list(2);
        const QString text = QStringLiteral("a text that is far too long for the column that it is in");
        list.at(0)->setText(0, text);
        QVERIFY(list.showAndWait());
        const auto ask = [&list](Q3ListViewItem *item) {
            const QPoint at = list.middleOf(item);
            QHelpEvent event(QEvent::ToolTip, at, list.viewport()->mapToGlobal(at));
            QCoreApplication::sendEvent(list.viewport(), &event);
            return QToolTip::isVisible() ? QToolTip::text() : QString();
        };
        QVERIFY(list.showToolTips());
        QCOMPARE(ask(list.at(0)), text);
        QToolTip::hideText();
        QTRY_VERIFY(!QToolTip::isVisible());
        QCOMPARE(ask(list.at(1)), QString());
        list.setShowToolTips(false);
        QCOMPARE(ask(list.at(0)), QString());
    }

    void severalLines()
    {
        ListFixture list(1);
        const int one = list.at(0)->totalHeight();
        list.at(0)->setMultiLinesEnabled(true);
        list.at(0)->setText(0, QStringLiteral("one\ntwo\nthree"));
        QVERIFY(list.at(0)->totalHeight() > 2 * one);
        list.at(0)->setMultiLinesEnabled(false);
        QCOMPARE(list.at(0)->totalHeight(), one);
    }

    void theCallersTextsAreMeasured()
    {
        ListFixture list(1);
        QPixmap pixmap(30, 10);
        const int plain = list.at(0)->width(list.fontMetrics(), &list, 0);
        QVERIFY(plain >= list.fontMetrics().horizontalAdvance(QStringLiteral("row 0")));
        list.at(0)->setPixmap(0, pixmap);
        QVERIFY(list.at(0)->width(list.fontMetrics(), &list, 0) >= plain + 30);
    }
};

TAVI_GUI_TEST_MAIN(TestQ3ListViewPaint)

#include "tst_q3listview_paint.moc"
