// SPDX-License-Identifier: MIT
#include "listviews/dndlistview.h"
#include "tests/support/tavitest.h"

namespace {

/// What shows of the mark, a line of text for each line of pixels.
QStringList picture(const DNDIndicator &mark)
{
    QStringList lines;
    for (int y = 0; y < mark.height(); ++y) {
        QString line;
        for (int x = 0; x < mark.width(); ++x)
            line += mark.mask().contains(QPoint(x, y)) ? '#' : '.';
        lines << line;
    }
    return lines;
}

/// A mark on a window, where it gets its size at once.
template <typename Mark>
struct Shown {
    Shown()
    {
        behind.resize(300, 100);
        behind.show();
        mark.show();
        if (!QTest::qWaitForWindowExposed(&behind))
            QTest::qFail("the window does not come", __FILE__, __LINE__);
    }
    QWidget behind;
    Mark mark{&behind};
};

/// Counts how often its mask was made.
class Counted : public DNDIndicator
{
public:
    using DNDIndicator::DNDIndicator;
    void updateMask() override
    {
        ++made;
        DNDIndicator::updateMask();
    }
    int made = 0;
};

} // namespace

/// The mark of where a drop would go.
class TestDNDIndicator : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void construction()
    {
        QWidget parent;
        const DNDIndicator mark(&parent);
        QCOMPARE(mark.objectName(), QString("DNDindicator"));
        QCOMPARE(mark.parentWidget(), &parent);
        QCOMPARE(mark.size(), QSize(11, 11));
        QCOMPARE(mark.minimumSize(), QSize(11, 11));
        QVERIFY(mark.autoFillBackground());
        QVERIFY(mark.isDropBetweenMode());
        for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
            QCOMPARE(mark.palette().brush(group, mark.backgroundRole()), QBrush(Qt::red));
    }

    void betweenRowsItIsTwoTriangles()
    {
        Shown<DNDIndicator> shown;
        DNDIndicator &mark = shown.mark;
        mark.resize(20, 11);
        QCOMPARE(picture(mark), QStringList({
                                    "#..................#",
                                    "##................##",
                                    "###..............###",
                                    "####............####",
                                    "#####..........#####",
                                    "######........######",
                                    "#####..........#####",
                                    "####............####",
                                    "###..............###",
                                    "##................##",
                                    "#..................#",
                                }));
    }

    void theSmallestHasItsMaskFromTheBeginning()
    {
        const DNDIndicator mark;
        QCOMPARE(picture(mark).at(5), QString("###########"));
        QCOMPARE(picture(mark).at(0), QString("#.........#"));
    }

    void aroundARowItIsDoubleBrackets()
    {
        Shown<DNDIndicator> shown;
        DNDIndicator &mark = shown.mark;
        mark.resize(24, 12);
        mark.setDropBetweenMode(false);
        QVERIFY(!mark.isDropBetweenMode());
        const QString ends = "########.......#########"; // the right one begins one pixel further in
        const QString side = "##....................##";
        QCOMPARE(picture(mark),
                 QStringList({ends, ends, side, side, side, side, side, side, side, side, ends, ends}));
    }

    void theMaskFollowsTheSize()
    {
        Shown<Counted> shown;
        Counted &mark = shown.mark;
        const int before = mark.made;
        mark.resize(200, 11);
        QVERIFY(mark.made > before);
        QVERIFY(mark.mask().contains(QPoint(199, 0)));
        QVERIFY(!mark.mask().contains(QPoint(100, 5)));
        const int settled = mark.made;
        mark.setDropBetweenMode(true); // as before
        QCOMPARE(mark.made, settled);
        mark.setDropBetweenMode(false);
        QCOMPARE(mark.made, settled + 1);
    }

    void whatShowsIsRed()
    {
        Shown<DNDIndicator> shown;
        QWidget &behind = shown.behind;
        behind.setPalette(Qt::white);
        shown.mark.setGeometry(10, 10, 40, 11);
        const QImage seen = behind.grab().toImage();
        const double scale = behind.devicePixelRatioF();
        const auto at = [&](int x, int y) {
            return seen.pixelColor(int((x + 0.5) * scale), int((y + 0.5) * scale));
        };
        QCOMPARE(at(10, 10), QColor(Qt::red));
        QCOMPARE(at(49, 20), QColor(Qt::red));
        QCOMPARE(at(15, 15), QColor(Qt::red));
        QCOMPARE(at(30, 15), QColor(Qt::white));
        QCOMPARE(at(15, 10), QColor(Qt::white));
    }
};

TAVI_GUI_TEST_MAIN(TestDNDIndicator)
#include "tst_dndindicator.moc"
