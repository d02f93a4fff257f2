// SPDX-License-Identifier: MIT
#include "taviapp/taviregistry.h"
#include "tests/support/tavitest.h"
#include "tests/treeviews/headerfixture.h"
#include "treeviews/headerstate_p.h"

#include <QAbstractTableModel>

#include <algorithm>
#include <climits>
#include <memory>
#include <random>

namespace {

QByteArray bytesOf(const QVector<HeaderSectionState> &sections, int sort_section = 0, int sort_order = 0)
{
    HeaderState state;
    state.sections = sections;
    state.sort_section = sort_section;
    state.sort_order = sort_order;
    return state.toBytes();
}

HeaderSectionState shown(int size, int place)
{
    return {size, place, false};
}

HeaderSectionState hidden(int size, int place)
{
    return {size, place, true};
}

/// Gets its columns without telling anybody.
class SilentColumns : public QAbstractTableModel
{
public:
    int rowCount(const QModelIndex &) const override { return 1; }
    int columnCount(const QModelIndex &) const override { return columns; }
    QVariant data(const QModelIndex &, int) const override { return {}; }

    int columns = 0;
};

} // namespace

class TestTaviHeaderViewState : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void aStateTellsEachSectionAndTheSorting()
    {
        HeaderInView at(3);
        at.show();
        at.header->resizeSection(0, 120);
        at.header->resizeSection(1, 140);
        at.header->moveSection(0, 1); // B A C
        at.header->setSectionHidden(1, true);
        at.header->setSortIndicator(2, Qt::DescendingOrder);
        const HeaderState state = HeaderState::fromBytes(at.header->saveState(), 3);
        QCOMPARE(at.header->saveState(), bytesOf({shown(120, 1), hidden(140, 0), shown(480, 2)}, 2, 1));
        QCOMPARE(state.sections.size(), 3);
    }

    void savingChangesNothingAndTellsNobody_data()
    {
        QTest::addColumn<bool>("stretch");
        QTest::addColumn<int>("hide");
        for (const bool stretch : {true, false}) {
            for (int hide = 0; hide < 8; ++hide) {
                QTest::addRow("%s, hidden %d%d%d", stretch ? "stretched" : "as wide as it is", hide & 1,
                              hide >> 1 & 1, hide >> 2 & 1)
                    << stretch << hide;
            }
        }
    }
    void savingChangesNothingAndTellsNobody()
    {
        QFETCH(const bool, stretch);
        QFETCH(const int, hide);
        HeaderInView at(3);
        at.show();
        at.header->setStretchLastSection(stretch);
        for (int section = 0; section < 3; ++section) {
            at.header->resizeSection(section, 110 + section);
            at.header->setSectionHidden(section, hide >> section & 1);
        }
        const QVector<int> sizes = at.sizes();
        const QString order = at.order();
        QCoreApplication::processEvents();
        QSignalSpy resized(at.header, &QHeaderView::sectionResized);
        QSignalSpy moved(at.header, &QHeaderView::sectionMoved);
        QSignalSpy geometries(at.header, &QHeaderView::geometriesChanged);
        const QByteArray state = at.header->saveState();
        QCOMPARE(at.header->saveState(), state);
        QCoreApplication::processEvents();
        QCOMPARE(resized.count() + moved.count() + geometries.count(), 0);
        QCOMPARE(at.sizes(), sizes);
        QCOMPARE(at.order(), order);
        for (int section = 0; section < 3; ++section)
            at.header->setSectionHidden(section, false);
        at.header->setStretchLastSection(false);
        QCOMPARE(at.sizes(), QVector<int>({110, 111, 112}));
    }

    void aHiddenColumnKeepsItsWidth_data()
    {
        QTest::addColumn<int>("section");
        QTest::addColumn<bool>("stretch");
        QTest::newRow("first") << 0 << true;
        QTest::newRow("middle") << 1 << true;
        QTest::newRow("last, which would be stretched") << 2 << true;
        QTest::newRow("last, not stretched") << 2 << false;
    }
    void aHiddenColumnKeepsItsWidth()
    {
        QFETCH(const int, section);
        QFETCH(const bool, stretch);
        HeaderInView from(3), to(3);
        from.show();
        to.show();
        from.header->setStretchLastSection(stretch);
        from.header->resizeSection(section, 87);
        from.header->setSectionHidden(section, true);
        QVERIFY(to.header->restoreState(from.header->saveState()));
        QVERIFY(to.header->isSectionHidden(section));
        to.header->setStretchLastSection(false);
        to.header->setSectionHidden(section, false);
        QCOMPARE(to.header->sectionSize(section), 87);
    }

    void anyOrderComesBack()
    {
        std::mt19937 random(20240612);
        for (const int columns : {1, 2, 3, 4, 5, 8, 13, 40}) {
            HeaderInView from(columns), to(columns);
            for (int move = 0; move < 3 * columns; ++move) {
                from.header->moveSection(int(random() % columns), int(random() % columns));
                to.header->moveSection(int(random() % columns), int(random() % columns));
            }
            from.header->setSectionHidden(int(random() % columns), columns > 3);
            to.header->setSectionHidden(int(random() % columns), columns > 3);
            to.header->restoreState(from.header->saveState());
            QCOMPARE(to.order(), from.order());
            for (int section = 0; section < columns; ++section) {
                QCOMPARE(to.header->visualIndex(section), from.header->visualIndex(section));
                QCOMPARE(to.header->isSectionHidden(section), from.header->isSectionHidden(section));
            }
        }
    }

    void sizesAreThoseOfTheState_data()
    {
        QTest::addColumn<int>("size");
        QTest::addColumn<int>("expected");
        QTest::newRow("usual") << 123 << 123;
        QTest::newRow("below the least of the style") << 7 << 7;
        QTest::newRow("the least") << 6 << 6;
        QTest::newRow("5 is no size") << 5 << 100;
        QTest::newRow("0 is no size") << 0 << 100;
        QTest::newRow("negative") << -1 << 100;
        QTest::newRow("the most negative") << INT_MIN << 100;
        QTest::newRow("wide") << 5000 << 5000;
        QTest::newRow("no header can be so wide") << INT_MAX << 77;
    }
    void sizesAreThoseOfTheState()
    {
        QFETCH(const int, size);
        QFETCH(const int, expected);
        HeaderInView at(3);
        at.show();
        QVERIFY(at.header->minimumSectionSize() > 7);
        QCOMPARE(at.header->defaultSectionSize(), 100);
        at.header->resizeSection(1, 77);
        const int minimum = at.header->minimumSectionSize();
        at.header->restoreState(bytesOf({shown(60, 0), shown(size, 1), shown(70, 2)}));
        QCOMPARE(at.header->sectionSize(1), expected);
        QCOMPARE(at.header->minimumSectionSize(), qMin(minimum, expected));
        // Still after the header was laid out anew.
        at.view.resize(700, 200);
        QTRY_COMPARE(at.header->width(), 700);
        QCOMPARE(at.header->sectionSize(1), expected);
        // Also of a column that is hidden meanwhile.
        at.header->resizeSection(1, 77);
        at.header->restoreState(bytesOf({shown(60, 0), hidden(size, 1), shown(70, 2)}));
        at.header->showSectionLastStretchSafe(1);
        QCOMPARE(at.header->sectionSize(1), expected);
    }

    void theLastColumnIsStretchedAgainAndKnowsItsSize()
    {
        HeaderInView at(3);
        at.show();
        at.header->restoreState(bytesOf({shown(60, 2), shown(80, 0), shown(70, 1)}));
        QCOMPARE(at.sizes(), QVector<int>({450, 80, 70}));
        at.header->setStretchLastSection(false);
        QCOMPARE(at.sizes(), QVector<int>({60, 80, 70}));
    }

    void aStateComesBackWholeIntoAHeaderThatLooksOtherwise()
    {
        HeaderInView at(4);
        at.show();
        const QByteArray state =
            bytesOf({shown(60, 3), hidden(70, 1), shown(80, 0), hidden(90, 2)}, 2, Qt::DescendingOrder);
        at.header->setSectionHidden(0, true);
        at.header->setSectionHidden(2, true);
        at.header->moveSection(3, 0);
        QVERIFY(at.header->restoreState(state));
        at.header->setStretchLastSection(false);
        QCOMPARE(at.header->saveState(), state);
    }

    void restoringClicksTheSortSection()
    {
        qRegisterMetaType<Qt::SortOrder>();
        HeaderInView at(3);
        QSignalSpy indicator(at.header, &QHeaderView::sortIndicatorChanged);
        QSignalSpy clicked(at.header, &QHeaderView::sectionClicked);
        const QByteArray state = bytesOf({shown(60, 0), shown(70, 1), shown(80, 2)}, 1, 1);
        at.header->restoreState(state);
        QCOMPARE(at.header->sortIndicatorSection(), 1);
        QCOMPARE(at.header->sortIndicatorOrder(), Qt::DescendingOrder);
        QCOMPARE(indicator.count(), 1);
        QCOMPARE(clicked.count(), 1);
        QCOMPARE(clicked.at(0).at(0).toInt(), 1);
        // A view that sorts by clicks has to be told even if the indicator stays.
        at.header->restoreState(state);
        QCOMPARE(clicked.count(), 2);
    }

    void anyOrderButOneIsAscending_data()
    {
        QTest::addColumn<int>("order");
        QTest::addColumn<int>("expected");
        QTest::newRow("0") << 0 << 0;
        QTest::newRow("1") << 1 << 1;
        QTest::newRow("2") << 2 << 0;
        QTest::newRow("negative") << -1 << 0;
        QTest::newRow("huge") << INT_MAX << 0;
    }
    void anyOrderButOneIsAscending()
    {
        QFETCH(const int, order);
        QFETCH(const int, expected);
        HeaderInView at(1);
        at.header->restoreState(bytesOf({shown(60, 0)}, 0, order));
        QCOMPARE(int(at.header->sortIndicatorOrder()), expected);
    }

    void aSortSectionThatIsNotThereSortsByNothing_data()
    {
        QTest::addColumn<int>("section");
        QTest::newRow("none") << -1;
        QTest::newRow("one too far") << 3;
        QTest::newRow("huge") << INT_MAX;
        QTest::newRow("the most negative") << INT_MIN;
    }
    void aSortSectionThatIsNotThereSortsByNothing()
    {
        QFETCH(const int, section);
        HeaderInView at(3);
        at.show();
        at.view.setSortingEnabled(true);
        QVERIFY(at.header->restoreState(bytesOf({shown(60, 0), shown(70, 1), shown(80, 2)}, section, 1)));
        at.header->viewport()->repaint();
        QCOMPARE(at.header->sortIndicatorSection(), section);
        QCOMPARE(at.order(), QString("A B C"));
    }

    void aShortStateIsAppliedAsFarAsItGoes()
    {
        HeaderInView at(4);
        at.show();
        at.header->setStretchLastSection(false);
        for (int section = 0; section < 4; ++section)
            at.header->resizeSection(section, 100 + section);
        at.header->setSortIndicator(3, Qt::DescendingOrder);
        const QByteArray state = bytesOf({shown(60, 2), hidden(70, 0), shown(80, 1), shown(90, 3)}, 2, 1);
        QVERIFY(at.header->restoreState(state.left(2 * 9 + 5))); // two sections and a half
        QCOMPARE(at.order(), QString("C A D"));
        QCOMPARE(at.sizes(), QVector<int>({60, 0, 102, 103}));
        QCOMPARE(at.header->sortIndicatorSection(), 0);
        QCOMPARE(at.header->sortIndicatorOrder(), Qt::AscendingOrder);
    }

    void anEmptyStateOnlyResetsTheSorting()
    {
        HeaderInView at(3);
        at.show();
        const QVector<int> sizes = at.sizes();
        at.header->setSortIndicator(2, Qt::DescendingOrder);
        QVERIFY(at.header->restoreState(QByteArray()));
        QCOMPARE(at.sizes(), sizes);
        QCOMPARE(at.header->sortIndicatorSection(), 0);
        QCOMPARE(at.header->sortIndicatorOrder(), Qt::AscendingOrder);
    }

    void bytesOfAnyKindDoNoHarm()
    {
        std::mt19937 random(7);
        HeaderInView at(5);
        at.show();
        for (int round = 0; round < 200; ++round) {
            QByteArray bytes(int(random() % 60), '\0');
            for (char &byte : bytes)
                byte = char(random() % 4 ? random() % 8 : random());
            QVERIFY(at.header->restoreState(bytes));
            QVector<int> places;
            for (int section = 0; section < 5; ++section)
                places << at.header->visualIndex(section);
            std::sort(places.begin(), places.end());
            QCOMPARE(places, QVector<int>({0, 1, 2, 3, 4}));
            at.header->saveState();
        }
    }

    void columnsThatCameSilentlyAreRestored()
    {
        SilentColumns model;
        QTreeView view;
        auto *header = new TaviHeaderView(Qt::Horizontal, &view);
        view.setHeader(header);
        view.setModel(&model);
        header->setStretchLastSection(false);
        QCOMPARE(header->count(), 0);
        model.columns = 3;
        header->restoreState(bytesOf({shown(60, 2), shown(70, 0), hidden(80, 1)}));
        QCOMPARE(header->count(), 3);
        QCOMPARE(header->sectionSize(0), 60);
        QCOMPARE(header->logicalIndex(0), 1);
        QVERIFY(header->isSectionHidden(2));
    }

    void withoutAModelOnlyTheSortingIsSaved()
    {
        TaviHeaderView header(Qt::Horizontal);
        QCOMPARE(header.saveState().size(), 8);
        QVERIFY(header.restoreState(QByteArray(100, '\xff')));
    }

    void aSlotMayTakeTheHeaderAwayWhileItIsRestored()
    {
        auto header = std::make_unique<TaviHeaderView>(Qt::Horizontal);
        QStandardItemModel model(1, 2);
        header->setModel(&model);
        connect(header.get(), &QHeaderView::sortIndicatorChanged, this, [&header] { header.reset(); });
        TaviHeaderView *const restored = header.get();
        QVERIFY(restored->restoreState(bytesOf({shown(60, 0), shown(70, 1)}, 1, 0)));
        QVERIFY(!header);
    }

    void aSlotMaySaveWhileTheUserResizes()
    {
        HeaderInView at(3);
        at.show();
        at.header->setSectionHidden(2, true);
        QByteArray saved;
        connect(at.header, &QHeaderView::sectionResized, this, [&] { saved = at.header->saveState(); });
        at.header->resizeSection(0, 133);
        QCOMPARE(HeaderState::fromBytes(saved, 3).sections.at(0).size, 133);
    }

    void theOldestSettingsBecomeAState()
    {
        HeaderInView at(3);
        at.show();
        at.header->setStretchLastSection(false);
        const QByteArray before = at.header->saveState();
        TaviRegistry registry;
        std::string section = "list";
        registry.putstring("list", "column_0", "2 1 61");
        registry.putstring("list", "column_1", "0 0 71");
        registry.putstring("list", "column_2", "1 1 81");
        registry.putstring("list", "sorting", "2 1");
        const QByteArray state = at.header->autoUpdateHeaderState(registry, section);
        QCOMPARE(state, bytesOf({shown(61, 2), hidden(71, 0), shown(81, 1)}, 0, 1));
        QCOMPARE(registry.size("list"), size_t(0));
        QCOMPARE(at.header->saveState(), before); // nothing is applied
        at.header->restoreState(state);
        QCOMPARE(at.order(), QString("C A"));
    }

    void tooFewOldSettingsGiveNothingAndAreGoneAllTheSame()
    {
        HeaderInView at(3);
        TaviRegistry registry;
        std::string section = "list";
        registry.putstring("list", "column_0", "2 1 61");
        registry.putstring("list", "sorting", "2 1");
        QCOMPARE(at.header->autoUpdateHeaderState(registry, section), QByteArray());
        QCOMPARE(registry.size("list"), size_t(0));
    }
};

TAVI_GUI_TEST_MAIN(TestTaviHeaderViewState)
#include "tst_taviheaderview_state.moc"
