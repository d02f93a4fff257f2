// SPDX-License-Identifier: MIT
#include "proofcheck/mainwindow.h"
#include "proofcheck/schememenu.h"
#include "tests/apps/desktopwindow.h"
#include "tests/support/contrast.h"
#include "tests/support/tavitest.h"

#include <QAction>
#include <QActionGroup>
#include <QMenuBar>
#include <QProcess>
#include <QScreen>
#include <QTemporaryDir>

#include <algorithm>

namespace {

/// What xdotool says; empty if it fails.
QString xdotool(const QStringList &arguments)
{
    return toolOutput("xdotool", arguments).trimmed();
}

/// The program in a process of its own, used with real key presses and looked at through the screen.
class Proofcheck
{
public:
    explicit Proofcheck(const QString &settings) { process_.start(PROOFCHECK_PROGRAM, {"--settings", settings}); }
    ~Proofcheck()
    {
        process_.kill();
        process_.waitForFinished();
    }

    bool isActive()
    {
        window_ = windows().value(0);
        return !window_.isEmpty() && xdotool({"getactivewindow"}) == window_;
    }
    /// A menu is a window of its own: keys that come earlier go to the one behind it.
    bool menuIsOpen() const { return windows().size() > 1; }

    void press(const QString &keys) { xdotool({"key", keys}); }

    /// How much of the window on the screen is of just this colour, from 0 to 1.
    double share(const QColor &colour) const
    {
        const QImage image = QGuiApplication::primaryScreen()
                                 ->grabWindow(window_.toULongLong())
                                 .toImage()
                                 .convertToFormat(QImage::Format_RGB32);
        if (image.width() < 100 || image.height() < 100)
            return 0.0;
        qint64 same = 0;
        for (int y = 0; y < image.height(); ++y) {
            const auto *row = reinterpret_cast<const QRgb *>(image.constScanLine(y));
            same += std::count(row, row + image.width(), colour.rgb());
        }
        return static_cast<double>(same) / (static_cast<double>(image.width()) * image.height());
    }

    /// Whether it ends well.
    bool quits()
    {
        press("ctrl+q");
        return process_.waitForFinished(30000) && process_.exitStatus() == QProcess::NormalExit
               && process_.exitCode() == 0;
    }

private:
    QStringList windows() const
    {
        const QString pid = QString::number(process_.processId());
        return xdotool({"search", "--onlyvisible", "--pid", pid}).split('\n', Qt::SkipEmptyParts);
    }

    QProcess process_;
    QString window_;
};

// How much of the window is its own ground, around a list that is white; and what a few stray pixels are.
constexpr double ground = 0.1;
constexpr double trace = 0.001;

// Half colours, worked out apart from the library.
const QColor blue_half(230, 236, 254);
const QColor amber_half(253, 232, 216);

} // namespace

/// The menu "Scheme" and what it leaves behind.
class TestProofcheckScheme : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TaviTest::init();
        registry = std::make_unique<TaviRegistry>();
        folder = std::make_unique<QTemporaryDir>();
        plain = QApplication::palette().color(QPalette::Window);
        open();
    }

    void cleanup()
    {
        window.reset();
        registry.reset();
        folder.reset();
        TaviTest::cleanup();
    }

    void theMenuOffersTheSchemes()
    {
        QVERIFY(window->menuBar()->actions().contains(menu()->menuAction()));
        QStringList texts;
        for (const QAction *action : menu()->actions()) {
            texts.append(action->text());
            QVERIFY(action->isCheckable());
            QVERIFY(!action->icon().isNull());
        }
        QCOMPARE(texts, (QStringList{"&Default", "&Blue", "&Green", "&Amber"}));
    }

    void withoutAChoiceTheWindowIsPlain()
    {
        QCOMPARE(checked(), QString("scheme_default"));
        QCOMPARE(colour(), plain);
        QVERIFY(!registry->exists("proofcheck scheme", "id"));
    }

    void aChoiceByKeyboardTintsTheWindow()
    {
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
        QTest::keyClick(window.get(), Qt::Key_S, Qt::AltModifier);
        QTRY_VERIFY(menu()->isVisible());
        QTest::keyClick(menu(), Qt::Key_B);
        QVERIFY(!menu()->isVisible());
        QCOMPARE(checked(), QString("scheme_blue"));
        QCOMPARE(colour(), blue_half);
        QCOMPARE(window->centralWidget()->palette().color(QPalette::Window), blue_half);
        QCOMPARE(window->grab().toImage().pixelColor(2, window->height() - 2), blue_half);
        QCOMPARE(registry->getstring("proofcheck scheme", "id"), std::string("blue"));
    }

    void theDefaultTakesTheTintAway()
    {
        action("scheme_amber")->trigger();
        QCOMPARE(colour(), amber_half);
        action("scheme_default")->trigger();
        QCOMPARE(colour(), plain);
        QCOMPARE(registry->getstring("proofcheck scheme", "id"), std::string("default"));
    }

    void theDefaultFollowsTheDesktop()
    {
        const QPalette former = QApplication::palette();
        QPalette dark = former;
        dark.setColor(QPalette::Window, QColor(40, 40, 40));
        QApplication::setPalette(dark);
        const QColor followed = colour();
        action("scheme_blue")->trigger();
        const QColor tinted = colour();
        QApplication::setPalette(former);
        QCOMPARE(followed, QColor(40, 40, 40));
        QVERIFY(tinted != followed);
        QCOMPARE(colour(), tinted);
    }

    void theChoiceIsKept()
    {
        for (const char *id : {"green", "amber", "default", "blue"}) {
            action(QByteArray("scheme_") + id)->trigger();
            const QColor chosen = colour();
            window.reset();
            open();
            QCOMPARE(checked(), QString("scheme_") + id);
            QCOMPARE(colour(), chosen);
        }
    }

    void aSchemeThatThereIsNoMoreIsTheDefault()
    {
        registry->putstring("proofcheck scheme", "id", "tartan");
        window.reset();
        open();
        QCOMPARE(checked(), QString("scheme_default"));
        QCOMPARE(colour(), plain);
        // Another version may know it: only a choice of the user's replaces it.
        QCOMPARE(registry->getstring("proofcheck scheme", "id"), std::string("tartan"));
    }

    void textReadsWellInEveryScheme()
    {
        QVector<QColor> seen;
        for (QAction *action : menu()->actions()) {
            action->trigger();
            const double seen_contrast = contrast(colour(), window->palette().color(QPalette::WindowText));
            QVERIFY2(seen_contrast > 12.0,
                     qPrintable(QStringLiteral("%1: %2").arg(action->text()).arg(seen_contrast)));
            QVERIFY(!seen.contains(colour()));
            seen.append(colour());
        }
    }

    void theProgramComesBackWithItsTint()
    {
        QVERIFY2(xdotool({"version"}).startsWith("xdotool"), "xdotool is not installed");
        window.reset();
        const QString settings = folder->filePath("settings.db");
        {
            Proofcheck first(settings);
            QTRY_VERIFY_WITH_TIMEOUT(first.isActive(), 30000);
            QTRY_VERIFY_WITH_TIMEOUT(first.share(plain) > ground, 10000);
            QVERIFY(first.share(blue_half) < trace);
            first.press("alt+s");
            QTRY_VERIFY_WITH_TIMEOUT(first.menuIsOpen(), 10000);
            first.press("b");
            QTRY_VERIFY_WITH_TIMEOUT(first.share(blue_half) > ground, 10000);
            QVERIFY(first.quits());
        }
        {
            Proofcheck second(settings);
            QTRY_VERIFY_WITH_TIMEOUT(second.isActive(), 30000);
            QTRY_VERIFY_WITH_TIMEOUT(second.share(blue_half) > ground, 10000);
            QVERIFY(second.quits());
        }
        // Settings of its own, another window of its own.
        Proofcheck other(folder->filePath("other.db"));
        QTRY_VERIFY_WITH_TIMEOUT(other.isActive(), 30000);
        QTRY_VERIFY_WITH_TIMEOUT(other.share(plain) > ground, 10000);
        QVERIFY(other.share(blue_half) < trace);
        QVERIFY(other.quits());
    }

private:
    void open()
    {
        window = std::make_unique<MainWindow>(*registry);
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    }

    SchemeMenu *menu() const { return window->findChild<SchemeMenu *>("scheme_menu"); }
    QAction *action(const char *name) const { return window->findChild<QAction *>(name); }
    QString checked() const
    {
        QStringList names;
        for (const QAction *action : menu()->actions()) {
            if (action->isChecked())
                names.append(action->objectName());
        }
        return names.join(' ');
    }
    QColor colour() const { return window->palette().color(QPalette::Window); }

    std::unique_ptr<TaviRegistry> registry;
    std::unique_ptr<QTemporaryDir> folder;
    std::unique_ptr<MainWindow> window;
    QColor plain;
};

TAVI_GUI_TEST_MAIN(TestProofcheckScheme)
#include "tst_proofcheck_scheme.moc"
