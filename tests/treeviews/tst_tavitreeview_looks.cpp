// SPDX-License-Identifier: MIT
#include "tests/support/tavitest.h"
#include "tests/treeviews/treefixture.h"

#include <QAccessible>
#include <QLabel>
#include <QProcess>
#include <QStyleFactory>

#include <cmath>

namespace {

double luminance(const QColor &colour)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

double contrast(const QColor &a, const QColor &b)
{
    const double first = luminance(a) + 0.05;
    const double second = luminance(b) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

QPalette darkPalette()
{
    QPalette dark;
    dark.setColor(QPalette::Window, QColor(53, 53, 53));
    dark.setColor(QPalette::WindowText, Qt::white);
    dark.setColor(QPalette::Base, QColor(32, 32, 32));
    dark.setColor(QPalette::AlternateBase, QColor(45, 45, 45));
    dark.setColor(QPalette::Text, Qt::white);
    dark.setColor(QPalette::Button, QColor(53, 53, 53));
    dark.setColor(QPalette::ButtonText, Qt::white);
    return dark;
}

/// The darkest and the lightest colour in a rectangle of a picture.
QPair<QColor, QColor> extremes(const QImage &image, const QRect &rect)
{
    QColor darkest = Qt::white;
    QColor lightest = Qt::black;
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        for (int x = rect.left(); x <= rect.right(); ++x) {
            const QColor colour = image.pixelColor(x, y);
            if (luminance(colour) < luminance(darkest))
                darkest = colour;
            if (luminance(colour) > luminance(lightest))
                lightest = colour;
        }
    }
    return {darkest, lightest};
}

/// Where there is ink in a line of text: first and last column of each word.
QVector<QPair<int, int>> wordsOf(QWidget *line)
{
    constexpr int widest_gap_in_word = 2;
    const QImage image = line->grab(QRect(0, 3, line->width(), line->height() - 6)).toImage();
    const double ground = luminance(image.pixelColor(image.width() / 2, 0));
    QVector<QPair<int, int>> words;
    for (int x = 0; x < image.width(); ++x) {
        bool ink = false;
        for (int y = 0; y < image.height() && !ink; ++y)
            ink = std::abs(luminance(image.pixelColor(x, y)) - ground) > 0.2;
        if (!ink)
            continue;
        if (words.isEmpty() || x - words.last().second > widest_gap_in_word + 1)
            words.append({x, x});
        words.last().second = x;
    }
    return words;
}

} // namespace

/// How a tree view looks and names itself: dark and light, in both directions of reading, at every scale.
class TestTaviTreeViewLooks : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        delete TaviTreeView::filterFloater();
        QGuiApplication::setLayoutDirection(Qt::LeftToRight);
        QApplication::setPalette(QApplication::style()->standardPalette());
        TaviTest::cleanup();
    }

    void everythingHasAName()
    {
        Tree tree;
        QVERIFY(tree.show());
        tree.view.showFilterFloater();
        const TaviTreeViewFilterFloater *floater = TaviTreeView::filterFloater();
        for (const QWidget *widget : {static_cast<const QWidget *>(&tree.view), static_cast<const QWidget *>(floater),
                                      static_cast<const QWidget *>(floater->lineEdit()),
                                      static_cast<const QWidget *>(tree.view.statusBar())}) {
            QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(const_cast<QWidget *>(widget));
            QVERIFY(interface);
            QVERIFY2(!interface->text(QAccessible::Name).isEmpty(), widget->metaObject()->className());
        }
        QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(&tree.view);
        QCOMPARE(interface->role(), QAccessible::Tree);
    }

    void aPaletteThatTurnsDarkIsFollowed()
    {
        TaviTreeView view;
        QPalette own = view.palette();
        own.setColor(QPalette::All, QPalette::Link, Qt::red);
        view.setPalette(own);
        QApplication::setPalette(darkPalette());
        QCoreApplication::processEvents();
        for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive})
            QCOMPARE(view.palette().color(group, QPalette::Text), QColor(Qt::white));
        QCOMPARE(view.palette().color(QPalette::Active, QPalette::Base), QColor(32, 32, 32));
        QCOMPARE(view.palette().color(QPalette::Disabled, QPalette::Text), QColor(Qt::gray));
        QCOMPARE(view.palette().color(QPalette::Active, QPalette::Highlight), QColor(0xBF, 0xD8, 0xFA));
        QCOMPARE(view.palette().color(QPalette::Active, QPalette::Link), QColor(Qt::red));
    }

    void anApplicationsNameStays()
    {
        TaviTreeView view;
        view.setAccessibleName("Patches");
        view.widget();
        QCOMPARE(view.accessibleName(), QString("Patches"));
        QWidget *container = view.parentWidget();
        view.setParent(nullptr);
        delete container;
    }

    void textsAreReadable_data()
    {
        QTest::addColumn<bool>("dark");
        QTest::newRow("light") << false;
        QTest::newRow("dark") << true;
    }
    void textsAreReadable()
    {
        QFETCH(bool, dark);
        if (dark)
            QApplication::setPalette(darkPalette());
        Tree tree;
        QVERIFY(tree.show());
        tree.view.selectItem(tree.magenta);
        QTest::qWait(50); // for a fading of the style, if it has one
        const QImage image = tree.view.viewport()->grab().toImage();
        for (TaviTreeItem *item : {tree.cyan, tree.magenta, tree.black}) {
            const QRect rect = tree.view.visualRect(tree.view.indexOf(item)).adjusted(0, 1, -1, -1);
            const auto [darkest, lightest] = extremes(image, rect);
            QVERIFY2(contrast(darkest, lightest) >= 4.5, qPrintable(darkest.name() + lightest.name()));
        }
        // A selected row is light blue everywhere, the others follow the palette.
        const QRect selected = tree.view.visualRect(tree.view.indexOf(tree.magenta, 2));
        QCOMPARE(image.pixelColor(selected.right() - 3, selected.center().y()), QColor(191, 216, 250));
        const QRect plain = tree.view.visualRect(tree.view.indexOf(tree.cyan, 2));
        QCOMPARE(image.pixelColor(plain.right() - 3, plain.center().y()).lightness() < 128, dark);
    }

    void rightToLeft()
    {
        QGuiApplication::setLayoutDirection(Qt::RightToLeft);
        Tree tree;
        QVERIFY(tree.show());
        const QRect first = tree.view.visualRect(tree.view.indexOf(tree.cyan, 0));
        const QRect second = tree.view.visualRect(tree.view.indexOf(tree.cyan, 1));
        QVERIFY(first.left() > second.right() - 1);
        tree.view.filter("light cyan");
        const QRect child = tree.view.visualRect(tree.view.indexOf(tree.light_cyan));
        QVERIFY(child.isValid() && child.right() < first.right());
        QCOMPARE(tree.view.indexAt(child.center()), tree.view.indexOf(tree.light_cyan));
        tree.view.filter("");
        // The arrows keep their meaning: they name what they do, not a direction.
        tree.view.setFocus();
        tree.view.setCurrentIndex(tree.view.indexOf(tree.black));
        QTest::keyClick(&tree.view, Qt::Key_Right);
        QVERIFY(tree.view.isItemExpanded(tree.black));
        tree.view.showFilterFloater();
        const TaviTreeViewFilterFloater *floater = TaviTreeView::filterFloater();
        QVERIFY(QTest::qWaitForWindowExposed(const_cast<TaviTreeViewFilterFloater *>(floater)));
        QVERIFY(floater->findChild<QLabel *>()->x() > floater->lineEdit()->x());
    }

    void theStatusReadsTheSameInBothDirections()
    {
        QVector<QPair<int, int>> left_to_right;
        for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
            QGuiApplication::setLayoutDirection(direction);
            Tree tree;
            QVERIFY(tree.show());
            tree.view.selectItem(tree.paper);
            QStatusBar *bar = tree.view.statusBar();
            QCOMPARE(bar->currentMessage(), QString("1 of 4 items"));
            const QVector<QPair<int, int>> words = wordsOf(bar);
            QCOMPARE(words.size(), 4);
            if (direction == Qt::LeftToRight) {
                left_to_right = words;
                QVERIFY(words[0].first < 20);
                continue;
            }
            // The same words in the same order, but beside the other edge.
            for (int i = 0; i < words.size(); ++i) {
                const int width = words[i].second - words[i].first;
                QVERIFY2(qAbs(width - (left_to_right[i].second - left_to_right[i].first)) <= 2,
                         qPrintable(QString::number(i)));
            }
            QVERIFY(words.last().second > bar->width() - 20);
            // A widget that an application puts there stands at the end of the line, the text before it.
            auto *permanent = new QWidget;
            permanent->setFixedWidth(100);
            bar->addPermanentWidget(permanent);
            QCoreApplication::processEvents();
            QVERIFY(permanent->isVisible() && permanent->x() < 20);
            QCOMPARE(wordsOf(bar).size(), 4);
            bar->showMessage(QString(100, 'm'));
            QVERIFY(wordsOf(bar).value(0).first > permanent->geometry().right());
            bar->clearMessage();
            QVERIFY(wordsOf(bar).isEmpty());
        }
    }

    /// The same in a process of its own for each scale; what runs there is scaled() below.
    void everyScale_data()
    {
        QTest::addColumn<QString>("factor");
        for (const char *factor : {"1", "1.5", "2"})
            QTest::newRow(factor) << QString(factor);
    }
    void everyScale()
    {
        QFETCH(QString, factor);
        if (qEnvironmentVariableIsSet("TAVI_SCALED"))
            return; // we are that process
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_SCALE_FACTOR", factor);
        environment.insert("QT_SCALE_FACTOR_ROUNDING_POLICY", "PassThrough");
        environment.insert("TAVI_SCALED", factor);
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(QCoreApplication::applicationFilePath(), {"scaled"});
        QVERIFY(process.waitForFinished(60000));
        const QByteArray output = process.readAll();
        QVERIFY2(process.exitCode() == 0 && output.contains("3 passed, 0 failed, 0 skipped"), output.constData());
    }

    void scaled()
    {
        const QString factor = qEnvironmentVariable("TAVI_SCALED", "1");
        Tree tree;
        QVERIFY(tree.show({400, 300}));
        QCOMPARE(tree.view.devicePixelRatioF(), factor.toDouble());
        tree.view.filter("light");
        tree.view.selectItem(tree.light_grey);
        // Rows follow each other without gap, and each is found where it is drawn.
        int bottom = -1;
        const QModelIndexList rows = tree.view.allRows(0);
        QCOMPARE(rows.size(), 5);
        for (const QModelIndex &row : rows) {
            const QRect rect = tree.view.visualRect(row);
            QCOMPARE(rect.top(), bottom + 1);
            QCOMPARE(tree.view.indexAt(rect.center()), row);
            QVERIFY(rect.height() >= tree.view.fontMetrics().height());
            bottom = rect.bottom();
        }
        const QImage image = tree.view.viewport()->grab().toImage();
        QCOMPARE(image.width(), qRound(tree.view.viewport()->width() * factor.toDouble()));
        const QRect selected = tree.view.visualRect(tree.view.indexOf(tree.light_grey, 2));
        const QPointF at = QPointF(selected.right() - 3, selected.center().y()) * factor.toDouble();
        QCOMPARE(image.pixelColor(at.toPoint()), QColor(191, 216, 250));
        tree.view.showFilterFloater();
        const TaviTreeViewFilterFloater *floater = TaviTreeView::filterFloater();
        QVERIFY(QTest::qWaitForWindowExposed(const_cast<TaviTreeViewFilterFloater *>(floater)));
        const QRect over(tree.view.viewport()->mapToGlobal({0, 0}), tree.view.viewport()->size());
        QVERIFY(over.adjusted(-40, -60, 40, 60).contains(floater->geometry()));
    }
};

TAVI_GUI_TEST_MAIN(TestTaviTreeViewLooks)
#include "tst_tavitreeview_looks.moc"
