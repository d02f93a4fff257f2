// SPDX-License-Identifier: MIT
#include "tests/support/menuuser.h"
#include "tests/support/tavitest.h"
#include "tests/treeviews/headerfixture.h"

#include <QContextMenuEvent>
#include <QMenu>

#include <functional>
#include <memory>

namespace {

void rightClick(TaviHeaderView &header)
{
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(10, 5), header.viewport()->mapToGlobal(QPoint(10, 5)));
    QCoreApplication::sendEvent(header.viewport(), &event);
}

/// A subclass with a slot of its own.
class OwnDialog : public TaviHeaderView
{
    Q_OBJECT

public:
    using TaviHeaderView::TaviHeaderView;

    int dialogs = 0;

protected Q_SLOTS:
    void configureHeaders() { ++dialogs; }
};

} // namespace

class TestTaviHeaderView : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void construction()
    {
        QWidget parent;
        auto *header = new TaviHeaderView(Qt::Horizontal, &parent);
        QCOMPARE(header->parentWidget(), &parent);
        QCOMPARE(header->orientation(), Qt::Horizontal);
        const int minimum = header->minimumSectionSize();
        header->setMinimumSectionSize(-1);
        QCOMPARE(header->minimumSectionSize(), minimum);
        QCOMPARE(header->defaultAlignment(), Qt::AlignLeft);
        QVERIFY(header->sectionsClickable());
        QVERIFY(header->sectionsMovable());
        QVERIFY(header->isSortIndicatorShown());
        QVERIFY(header->stretchLastSection());
        QVERIFY(!header->isHidden());
        QCOMPARE(header->contextMenuPolicy(), Qt::CustomContextMenu);
        QVERIFY(header->isMenuEnabled());
        QVERIFY(!header->accessibleName().isEmpty());
        QCOMPARE(TaviHeaderView(Qt::Vertical).orientation(), Qt::Vertical);

        HeaderInView at(3);
        for (int section = 0; section < 3; ++section)
            QCOMPARE(at.header->sectionResizeMode(section), QHeaderView::Interactive);
    }

    void withoutAModelThereIsNothing()
    {
        TaviHeaderView header(Qt::Horizontal);
        QCOMPARE(header.visibleSectionCount(), 0);
        QCOMPARE(header.logicalIndexFromVisible(0), -1);
        header.showSectionLastStretchSafe(0);
        QTest::keyClick(&header, Qt::Key_Right);
    }

    void visibleSectionsAreCountedAndFound()
    {
        HeaderInView at(5);
        QCOMPARE(at.header->visibleSectionCount(), 5);
        at.header->moveSection(4, 0); // E A B C D
        at.header->setSectionHidden(1, true);
        QCOMPARE(at.order(), QString("E A C D"));
        QCOMPARE(at.header->visibleSectionCount(), 4);
        QVector<int> found;
        for (int visible = -1; visible <= 5; ++visible)
            found << at.header->logicalIndexFromVisible(visible);
        QCOMPARE(found, QVector<int>({-1, 4, 0, 2, 3, -1, -1}));
        for (int section = 0; section < 5; ++section)
            at.header->setSectionHidden(section, true);
        QCOMPARE(at.header->visibleSectionCount(), 0);
        QCOMPARE(at.header->logicalIndexFromVisible(0), -1);
    }

    void theLastColumnComesBack_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<QVector<int>>("before"); // sizes of A and B, and what C has of its own
        QTest::addColumn<QString>("after");
        using V = QVector<int>;
        QTest::newRow("much room: the neighbour is halved") << 600 << V{100, 100, 100} << "100 50 450";
        QTest::newRow("an odd width is cut") << 600 << V{100, 101, 100} << "100 50 450";
        QTest::newRow("no room, the newcomer wider") << 200 << V{150, 120, 130} << "150 60 60";
        QTest::newRow("half of nearly nothing") << 100 << V{100, 30, 100} << "100 15 15";
        QTest::newRow("no room: the neighbour gives") << 300 << V{100, 260, 130} << "100 130 130";
        QTest::newRow("the neighbour keeps the default size") << 200 << V{100, 190, 110} << "100 100 90";
        QTest::newRow("equal sizes") << 200 << V{100, 110, 110} << "100 100 10";
        QTest::newRow("a very narrow neighbour gets the default size") << 100 << V{100, 40, 30} << "100 100 30";
    }
    void theLastColumnComesBack()
    {
        QFETCH(const int, width);
        QFETCH(const QVector<int>, before);
        QFETCH(const QString, after);
        HeaderInView at(3);
        QCOMPARE(at.header->defaultSectionSize(), 100);
        at.show(width);
        for (int section = 0; section < 3; ++section)
            at.header->resizeSection(section, before.at(section));
        at.header->setSectionHidden(2, true);
        at.header->showSectionLastStretchSafe(2);
        QVERIFY(!at.header->isSectionHidden(2));
        QCOMPARE(at.sizesText(), after);
    }

    void withoutStretchAColumnIsJustShown()
    {
        HeaderInView at(3);
        at.show();
        at.header->setStretchLastSection(false);
        for (int section = 0; section < 3; ++section)
            at.header->resizeSection(section, 120 + section);
        at.header->setSectionHidden(2, true);
        at.header->showSectionLastStretchSafe(2);
        QCOMPARE(at.sizes(), QVector<int>({120, 121, 122}));
    }

    void aColumnInTheMiddleIsJustShown()
    {
        HeaderInView at(3);
        at.show();
        at.header->resizeSection(0, 120);
        at.header->resizeSection(1, 130);
        at.header->setSectionHidden(1, true);
        at.header->showSectionLastStretchSafe(1);
        QCOMPARE(at.sizes(), QVector<int>({120, 130, 350}));
    }

    void theOnlyColumnIsJustShown()
    {
        HeaderInView at(1);
        at.show();
        at.header->resizeSection(0, 130);
        at.header->setSectionHidden(0, true);
        at.header->showSectionLastStretchSafe(0);
        QCOMPARE(at.sizes(), QVector<int>({600}));
        at.header->setStretchLastSection(false);
        QCOMPARE(at.sizes(), QVector<int>({130})); // its own size was left alone
    }

    void aColumnThatIsShownAlreadyStaysAsItIs()
    {
        HeaderInView at(3);
        at.show();
        const QVector<int> before = at.sizes();
        at.header->showSectionLastStretchSafe(2);
        at.header->showSectionLastStretchSafe(-1);
        at.header->showSectionLastStretchSafe(99);
        QCOMPARE(at.sizes(), before);
    }

    void rightmostIsTheLastInVisualOrder()
    {
        HeaderInView at(3);
        at.show();
        at.header->moveSection(0, 2); // B C A
        at.header->resizeSection(2, 140);
        at.header->setSectionHidden(0, true);
        at.header->showSectionLastStretchSafe(0);
        QCOMPARE(at.sizes(), QVector<int>({430, 100, 70}));
    }

    void theMenuListsTheColumnsWithTheirState()
    {
        HeaderInView at(3);
        at.show();
        at.model.setHeaderData(2, Qt::Horizontal, "R&D");
        at.header->setSectionHidden(1, true);
        at.header->moveSection(2, 0);
        QStringList texts;
        QVariantList data;
        MenuUser user([&](QMenu &menu) {
            texts = entries(menu);
            const QList<QAction *> actions = menu.actions();
            for (const QAction *action : actions)
                data << action->data();
            closeMenu(menu);
        });
        rightClick(*at.header);
        QVERIFY(user.seen);
        QCOMPARE(texts, QStringList({"Configure Headers...", "-", "[x] A", "[ ] B", "[x] R&&D"}));
        data.removeAt(1); // the separator's
        QCOMPARE(data, QVariantList({-1, 0, 1, 2}));
        QCOMPARE(at.order(), QString("R&D A")); // nothing chosen, nothing changed
        QVERIFY(at.header->findChildren<QMenu *>().isEmpty());
    }

    void theMenuOpensAtThePointer()
    {
        HeaderInView at(3);
        at.show();
        const QPoint place = at.header->mapToGlobal(QPoint(150, 8));
        QCursor::setPos(place);
        QTRY_VERIFY((QCursor::pos() - place).manhattanLength() <= 2); // whole pixels of the screen, at any scale
        QPoint opened;
        MenuUser user([&opened](QMenu &menu) {
            opened = menu.pos();
            closeMenu(menu);
        });
        rightClick(*at.header); // elsewhere in the header
        QVERIFY(user.seen);
        QVERIFY2(
            (opened - place).manhattanLength() <= 4,
            qPrintable(
                QStringLiteral("%1,%2 from the pointer").arg(opened.x() - place.x()).arg(opened.y() - place.y())));
    }

    void aVerticalHeaderListsTitlesOfColumns()
    {
        QStandardItemModel model(2, 2);
        model.setHorizontalHeaderLabels({"Ink", "Density"});
        model.setVerticalHeaderLabels({"first", "second"});
        TaviHeaderView header(Qt::Vertical);
        header.setModel(&model);
        QStringList texts;
        MenuUser user([&texts](QMenu &menu) {
            texts = entries(menu);
            closeMenu(menu);
        });
        QMetaObject::invokeMethod(&header, "headerMenu", Q_ARG(QPoint, QPoint(1, 1)));
        QVERIFY(user.seen);
        QCOMPARE(texts.mid(2), QStringList({"[x] Ink", "[x] Density"}));
    }

    void theMenuHidesAndShows()
    {
        HeaderInView at(3);
        at.show();
        MenuUser hide([](QMenu &menu) { choose(menu, "B"); });
        rightClick(*at.header);
        QCOMPARE(at.order(), QString("A C"));
        MenuUser show([](QMenu &menu) { choose(menu, "B"); });
        rightClick(*at.header);
        QCOMPARE(at.order(), QString("A B C"));
    }

    void theMenuMayHideAllColumnsButOneAndEvenAll()
    {
        HeaderInView at(2);
        at.show();
        MenuUser first([](QMenu &menu) { choose(menu, "A"); });
        rightClick(*at.header);
        QCOMPARE(at.order(), QString("B"));
        MenuUser second([](QMenu &menu) { choose(menu, "B"); });
        rightClick(*at.header);
        QCOMPARE(at.order(), QString());
        MenuUser back([](QMenu &menu) { choose(menu, "A"); });
        rightClick(*at.header);
        QCOMPARE(at.order(), QString("A"));
    }

    // The menu goes the same way as showSectionLastStretchSafe(), not just setSectionHidden().
    void theMenuShowsTheLastColumnSafely()
    {
        HeaderInView at(3), safe(3);
        for (HeaderInView *each : {&at, &safe}) {
            each->show();
            each->header->setSectionHidden(2, true);
        }
        safe.header->showSectionLastStretchSafe(2);
        MenuUser user([](QMenu &menu) { choose(menu, "C"); });
        rightClick(*at.header);
        QVERIFY(user.seen);
        QCOMPARE(at.sizes(), safe.sizes());
    }

    void withTheMenuOffARightClickDoesNothing()
    {
        HeaderInView at(3);
        at.show();
        at.header->setMenuEnabled(false);
        QVERIFY(!at.header->isMenuEnabled());
        rightClick(*at.header); // would not return while a menu is open
        QVERIFY(!QApplication::activePopupWidget());
        at.header->setMenuEnabled(true);
        MenuUser user(closeMenu);
        rightClick(*at.header);
        QVERIFY(user.seen);
    }

    void aSubclassMayHaveADialogOfItsOwn()
    {
        QStandardItemModel model(1, 2);
        OwnDialog header(Qt::Horizontal);
        header.setModel(&model);
        header.show();
        QVERIFY(QTest::qWaitForWindowExposed(&header));
        MenuUser user([](QMenu &menu) { choose(menu, "Configure Headers..."); });
        rightClick(header);
        QCOMPARE(header.dialogs, 1);
        QCOMPARE(header.visibleSectionCount(), 2);
    }

    void aHeaderMayGoWhileItsMenuIsOpen()
    {
        auto at = std::make_unique<HeaderInView>(3);
        at->show();
        MenuUser user([&at](QMenu &) { at.reset(); });
        TaviHeaderView &header = *at->header;
        QMetaObject::invokeMethod(&header, "headerMenu", Q_ARG(QPoint, QPoint(1, 1)));
        QVERIFY(user.seen && !at);
    }

    void aColumnMayGoWhileTheMenuIsOpen()
    {
        HeaderInView at(3);
        at.show();
        MenuUser user([&at](QMenu &menu) {
            at.model.removeColumns(1, 2);
            choose(menu, "C");
        });
        rightClick(*at.header);
        QVERIFY(user.seen);
        QCOMPARE(at.order(), QString("A"));
    }
};

TAVI_GUI_TEST_MAIN(TestTaviHeaderView)
#include "tst_taviheaderview.moc"
