// SPDX-License-Identifier: MIT
#include "foundation/taviwidgetutil.h"
#include "tests/support/tavitest.h"
#include "tests/support/testdisplay.h"

#include <QFile>
#include <QGroupBox>
#include <QPainter>
#include <QSplitter>

#include <memory>

namespace {

using Windows = std::list<QWidget *>;

QColor backgroundOf(const QWidget &widget, QPalette::ColorGroup group = QPalette::Active)
{
    return widget.palette().color(group, widget.backgroundRole());
}

/// A shown splitter of three panes, 600 pixels wide.
class ThreePanes : public QSplitter
{
public:
    ThreePanes()
    {
        for (int i = 0; i < 3; ++i) {
            auto *pane = new QWidget(this);
            pane->setMinimumWidth(1);
            addWidget(pane);
        }
        setHandleWidth(0);
        resize(600, 100);
        show();
    }
    bool isThere() { return QTest::qWaitForWindowExposed(this); }
};

} // namespace

/// What TaviWidgetUtil does besides window geometry.
class TestTaviWidgetUtil : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void standardKeys()
    {
        QCOMPARE(TaviWidgetUtil::PREFS_WINDOW_WIDTH, "WinWidth");
        QCOMPARE(TaviWidgetUtil::PREFS_WINDOW_HEIGHT, "WinHeight");
        QCOMPARE(TaviWidgetUtil::PREFS_WINDOW_X, "WinX");
        QCOMPARE(TaviWidgetUtil::PREFS_WINDOW_Y, "WinY");
        QCOMPARE(TaviWidgetUtil::PREFS_WINDOW_SCREEN, "WinScreen");
    }

    void toolTipsAreOnAtStart()
    {
        QVERIFY(TaviWidgetUtil::isToolTipEnabled());
        TaviWidgetUtil::setToolTipEnabled(false);
        QVERIFY(!TaviWidgetUtil::isToolTipEnabled());
        TaviWidgetUtil::setToolTipEnabled(true);
        QVERIFY(TaviWidgetUtil::isToolTipEnabled());
    }

    void nullsAreTakenQuietly()
    {
        TaviWidgetUtil::setBackgroundProperties(nullptr, Qt::red, 0.5);
        QCOMPARE(TaviWidgetUtil::getTopParentWidget(nullptr), nullptr);
        Windows found;
        QWidget *active = nullptr;
        QCOMPARE(TaviWidgetUtil::getTopLevelChildren(nullptr, found, false, &active), 0);
        QVERIFY(found.empty() && !active);
        QVERIFY(TaviWidgetUtil::getSplitterWidthsString(nullptr).isNull());
        TaviWidgetUtil::applySplitterWidthsString(nullptr, QStringLiteral("1 2 "));
    }

    void everyMessageBoxIconHasItsPicture_data()
    {
        QTest::addColumn<QMessageBox::Icon>("icon");
        QTest::addColumn<QString>("path");
        QTest::newRow("question") << QMessageBox::Question << ":tavi/tavierror_question.png";
        QTest::newRow("information") << QMessageBox::Information << ":tavi/tavierror_information.png";
        QTest::newRow("warning") << QMessageBox::Warning << ":tavi/tavierror_warning.png";
        QTest::newRow("critical") << QMessageBox::Critical << ":tavi/tavierror_critical.png";
    }

    void everyMessageBoxIconHasItsPicture()
    {
        QFETCH(QMessageBox::Icon, icon);
        QFETCH(QString, path);
        const std::unique_ptr<QPixmap> pixmap(TaviWidgetUtil::getMessageBoxIconPixmap(icon));
        QVERIFY(pixmap);
        QCOMPARE(pixmap->size(), QSize(64, 64));
        QVERIFY(QFile::exists(path));
        QCOMPARE(pixmap->toImage().convertToFormat(QImage::Format_ARGB32),
                 QImage(path).convertToFormat(QImage::Format_ARGB32));
        // The same file under its full path.
        QCOMPARE(QImage(QString(path).replace(":tavi", ":/tavi")), QImage(path));
        // Each caller has one of its own.
        const std::unique_ptr<QPixmap> another(TaviWidgetUtil::getMessageBoxIconPixmap(icon));
        QVERIFY(another.get() != pixmap.get());
    }

    void otherIconsHaveNoPicture()
    {
        QCOMPARE(TaviWidgetUtil::getMessageBoxIconPixmap(QMessageBox::NoIcon), nullptr);
        QCOMPARE(TaviWidgetUtil::getMessageBoxIconPixmap(static_cast<QMessageBox::Icon>(5)), nullptr);
    }

    void aWindowIsFadedAsAWhole()
    {
        QWidget window;
        TaviWidgetUtil::setBackgroundProperties(&window, QColor(10, 20, 30, 40), 0.5);
        QVERIFY(qAbs(window.windowOpacity() - 0.5) < 0.01);
        for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
            QCOMPARE(backgroundOf(window, group), QColor(10, 20, 30, 255));
        QCOMPARE(window.palette().brush(window.backgroundRole()).style(), Qt::SolidPattern);
        QVERIFY(window.autoFillBackground());
    }

    void aChildIsFilledTransparently()
    {
        QWidget window;
        QWidget child(&window);
        child.setBackgroundRole(QPalette::Base);
        TaviWidgetUtil::setBackgroundProperties(&child, QColor(10, 20, 30), 0.33);
        QCOMPARE(child.windowOpacity(), 1.0);
        for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
            QColor wanted(10, 20, 30);
            wanted.setAlphaF(0.33);
            QCOMPARE(child.palette().color(group, QPalette::Base), wanted);
        }
        QVERIFY(child.autoFillBackground());
        QCOMPARE(window.windowOpacity(), 1.0);
        QVERIFY(!window.autoFillBackground());
    }

    /// A window with a parent is a child here: what counts is the parent.
    void aDialogWithAParentIsNotFaded()
    {
        QWidget window;
        QWidget dialog(&window, Qt::Dialog);
        TaviWidgetUtil::setBackgroundProperties(&dialog, Qt::red, 0.25);
        QCOMPARE(dialog.windowOpacity(), 1.0);
        QCOMPARE(backgroundOf(dialog).alpha(), 64);
    }

    void thePaletteIsADefaultOne()
    {
        QWidget window;
        QWidget child(&window);
        QPalette loud;
        loud.setColor(QPalette::Text, Qt::magenta);
        child.setPalette(loud);
        TaviWidgetUtil::setBackgroundProperties(&child, Qt::red, 1.0);
        QCOMPARE(child.palette().color(QPalette::Text), QPalette().color(QPalette::Text));
        QCOMPARE(backgroundOf(child), QColor(Qt::red));
    }

    void theColourIsSeen()
    {
        QWidget window;
        window.resize(60, 60);
        QWidget child(&window);
        child.setGeometry(20, 20, 20, 20);
        TaviWidgetUtil::setBackgroundProperties(&window, Qt::white, 1.0);
        TaviWidgetUtil::setBackgroundProperties(&child, Qt::black, 0.5);
        const QImage seen = window.grab().toImage();
        QCOMPARE(seen.pixelColor(5, 5), QColor(Qt::white));
        const int grey = seen.pixelColor(30, 30).red();
        QVERIFY2(qAbs(grey - 127) <= 1, qPrintable(QString::number(grey)));
    }

    void alphaOutOfRangeIsTheNearestEnd_data()
    {
        QTest::addColumn<double>("alpha");
        QTest::addColumn<int>("wanted");
        QTest::newRow("0") << 0.0 << 0;
        QTest::newRow("1") << 1.0 << 255;
        QTest::newRow("below") << -0.5 << 0;
        QTest::newRow("above") << 1.5 << 255;
        QTest::newRow("infinite") << qInf() << 255;
        QTest::newRow("no number") << qQNaN() << 0;
    }

    void alphaOutOfRangeIsTheNearestEnd()
    {
        QFETCH(double, alpha);
        QWidget window;
        QWidget child(&window);
        TaviWidgetUtil::setBackgroundProperties(&child, Qt::blue, alpha);
        QTEST(backgroundOf(child).alpha(), "wanted");
        TaviWidgetUtil::setBackgroundProperties(&window, Qt::blue, alpha);
        QTEST(qRound(window.windowOpacity() * 255), "wanted");
    }

    void theTopParentIsTheLastOfTheChain()
    {
        QWidget window;
        QCOMPARE(TaviWidgetUtil::getTopParentWidget(&window), &window);
        QDialog dialog(&window);
        QGroupBox box(&dialog);
        QWidget inner(&box);
        QCOMPARE(TaviWidgetUtil::getTopParentWidget(&inner), &window);
        QCOMPARE(TaviWidgetUtil::getTopParentWidget(&dialog), &window);
    }

    void aRingOfParentsIsWalkedOnce()
    {
        QWidget first;
        QWidget second(&first);
        QWidget third(&second);
        // Qt makes no such ring by itself.
        static_cast<QObject &>(first).setParent(&third);
        QCOMPARE(TaviWidgetUtil::getTopParentWidget(&second), &third);
        QCOMPARE(TaviWidgetUtil::getTopParentWidget(&first), &second);
        static_cast<QObject &>(first).setParent(nullptr);
        QCOMPARE(TaviWidgetUtil::getTopParentWidget(&second), &first);
    }

    void windowsAreFoundInTheirOrder()
    {
        QWidget parent;
        QWidget box(&parent);
        QDialog in_box(&box);
        QDialog second(&parent);
        QDialog nested(&second);
        QObject no_widget(&parent);
        QWidget tool(&parent, Qt::Tool);
        Windows found = {&parent};
        QCOMPARE(TaviWidgetUtil::getTopLevelChildren(&parent, found, false, nullptr), 4);
        QCOMPARE(found, (Windows{&parent, &in_box, &second, &nested, &tool}));
    }

    void nothingBelowIsNothingFound()
    {
        QWidget parent;
        QWidget child(&parent);
        Windows found;
        QWidget *active = &parent;
        QCOMPARE(TaviWidgetUtil::getTopLevelChildren(&parent, found, false, &active), 0);
        QVERIFY(found.empty());
        QCOMPARE(active, &parent);
    }

    void shownWindowsInsideHiddenOnesAreFound()
    {
        QWidget parent;
        QWidget hidden(&parent, Qt::Window);
        QWidget shown(&hidden, Qt::Window);
        QWidget hidden_inside(&shown, Qt::Window);
        shown.show();
        QVERIFY(QTest::qWaitForWindowExposed(&shown));
        Windows found;
        QCOMPARE(TaviWidgetUtil::getTopLevelChildren(&parent, found, true, nullptr), 1);
        QCOMPARE(found, Windows{&shown});
        QCOMPARE(TaviWidgetUtil::getTopLevelChildren(&parent, found, false, nullptr), 3);
        QCOMPARE(found, (Windows{&shown, &hidden, &shown, &hidden_inside}));
    }

    void theActiveWindowIsTold()
    {
        QWidget parent;
        QWidget first(&parent, Qt::Window);
        QWidget second(&parent, Qt::Window);
        first.show();
        QTRY_COMPARE(QApplication::activeWindow(), &first);
        second.show();
        QTRY_COMPARE(QApplication::activeWindow(), &second);
        Windows found;
        QWidget *active = nullptr;
        QCOMPARE(TaviWidgetUtil::getTopLevelChildren(&parent, found, true, &active), 2);
        QCOMPARE(active, &second);
        first.activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), &first);
        TaviWidgetUtil::getTopLevelChildren(&parent, found, true, &active);
        QCOMPARE(active, &first);

        // One that is not among the found leaves the answer alone.
        QWidget stranger;
        stranger.show();
        QTRY_COMPARE(QApplication::activeWindow(), &stranger);
        active = nullptr;
        QCOMPARE(TaviWidgetUtil::getTopLevelChildren(&parent, found, true, &active), 2);
        QCOMPARE(active, nullptr);
    }

    void aSplitterWithoutPanesHasAnEmptyText()
    {
        QSplitter splitter;
        QVERIFY(TaviWidgetUtil::getSplitterWidthsString(&splitter).isEmpty());
        QVERIFY(!TaviWidgetUtil::getSplitterWidthsString(&splitter).isNull());
        TaviWidgetUtil::applySplitterWidthsString(&splitter, QStringLiteral("100 200 "));
        QCOMPARE(splitter.sizes(), QList<int>());
    }

    void paneWidthsComeBack()
    {
        ThreePanes splitter;
        QVERIFY(splitter.isThere());
        splitter.setSizes({100, 200, 300});
        QCOMPARE(splitter.sizes(), (QList<int>{100, 200, 300}));
        const QString text = TaviWidgetUtil::getSplitterWidthsString(&splitter);
        QCOMPARE(text, QStringLiteral("100 200 300 "));
        splitter.setSizes({300, 150, 150});
        TaviWidgetUtil::applySplitterWidthsString(&splitter, text);
        QCOMPARE(splitter.sizes(), (QList<int>{100, 200, 300}));
    }

    void aHiddenPaneHasAWidthOnceItIsShown()
    {
        ThreePanes splitter;
        QVERIFY(splitter.isThere());
        splitter.widget(0)->hide();
        splitter.setSizes({0, 200, 400});
        const QString text = TaviWidgetUtil::getSplitterWidthsString(&splitter);
        QCOMPARE(text, QStringLiteral("0 200 400 "));
        TaviWidgetUtil::applySplitterWidthsString(&splitter, text);
        QCOMPARE(splitter.sizes(), (QList<int>{0, 200, 400}));
        splitter.widget(0)->show();
        QTRY_VERIFY(splitter.sizes().at(0) > 0);
        // Its 50 of 650, in a splitter 600 wide.
        QVERIFY2(qAbs(splitter.sizes().at(0) - 50) <= 8, qPrintable(QString::number(splitter.sizes().at(0))));
    }

    /// A pane that the user has closed is no hidden one: it stays closed.
    void aCollapsedPaneStaysCollapsed()
    {
        ThreePanes splitter;
        QVERIFY(splitter.isThere());
        splitter.setSizes({0, 200, 400});
        TaviWidgetUtil::applySplitterWidthsString(&splitter, TaviWidgetUtil::getSplitterWidthsString(&splitter));
        QCOMPARE(splitter.sizes(), (QList<int>{0, 200, 400}));
    }

    void inAHiddenWindowOnlyHiddenPanesAreHidden()
    {
        QWidget window;
        auto *splitter = new QSplitter(&window);
        splitter->setHandleWidth(0);
        for (int i = 0; i < 3; ++i)
            splitter->addWidget(new QWidget(splitter));
        splitter->setGeometry(0, 0, 600, 100);
        window.resize(600, 100);
        TaviWidgetUtil::applySplitterWidthsString(splitter, QStringLiteral("0 200 400 "));
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QTRY_COMPARE(splitter->sizes(), (QList<int>{0, 200, 400}));
    }

    void tooFewNumbersGiveEqualPanes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("one number") << "300";
        QTest::newRow("two zeros") << "0 0";
        QTest::newRow("only a blank") << " ";
    }

    void tooFewNumbersGiveEqualPanes()
    {
        QFETCH(QString, text);
        ThreePanes splitter;
        QVERIFY(splitter.isThere());
        splitter.setSizes({100, 200, 300});
        TaviWidgetUtil::applySplitterWidthsString(&splitter, text);
        QCOMPARE(splitter.sizes(), (QList<int>{200, 200, 200}));
    }

    void anEmptyTextLeavesThePanesAlone()
    {
        ThreePanes splitter;
        QVERIFY(splitter.isThere());
        splitter.setSizes({100, 200, 300});
        TaviWidgetUtil::applySplitterWidthsString(&splitter, QString());
        TaviWidgetUtil::applySplitterWidthsString(&splitter, QStringLiteral(""));
        QCOMPARE(splitter.sizes(), (QList<int>{100, 200, 300}));
    }

    void hugeNumbersDoNoHarm()
    {
        ThreePanes splitter;
        QVERIFY(splitter.isThere());
        TaviWidgetUtil::applySplitterWidthsString(&splitter, QStringLiteral("2147483647 2147483647 2147483647 "));
        QCOMPARE(splitter.sizes(), (QList<int>{200, 200, 200}));
    }

    void surplusNumbersDoNoHarm()
    {
        ThreePanes splitter;
        QVERIFY(splitter.isThere());
        TaviWidgetUtil::applySplitterWidthsString(&splitter, QStringLiteral("100 200 300 400 "));
        QCOMPARE(splitter.sizes(), (QList<int>{100, 200, 300}));
    }
};

TAVI_GUI_TEST_MAIN(TestTaviWidgetUtil)
#include "tst_taviwidgetutil.moc"
