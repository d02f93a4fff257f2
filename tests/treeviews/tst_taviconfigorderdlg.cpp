// SPDX-License-Identifier: MIT
#include "taviapp/taviregistry.h"
#include "tests/support/tavitest.h"
#include "tests/treeviews/orderdialoguser.h"

#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>

#include <cmath>

Q_DECLARE_METATYPE(QDialogButtonBox::StandardButton)

namespace {

/// The geometry for the run of the process, through the store.
QRect keptGeometry()
{
    TaviRegistry registry;
    TaviConfigOrder::saveDialogGeometry(registry);
    const auto value = [&registry](const char *key) {
        return int(registry.getlong("taviconfig_order_dlg", key));
    };
    return {value("DialogX"), value("DialogY"), value("DialogWidth"), value("DialogHeight")};
}

void keepGeometry(const QRect &rect)
{
    TaviRegistry registry;
    registry.putlong("taviconfig_order_dlg", "DialogX", rect.x());
    registry.putlong("taviconfig_order_dlg", "DialogY", rect.y());
    registry.putlong("taviconfig_order_dlg", "DialogWidth", rect.width());
    registry.putlong("taviconfig_order_dlg", "DialogHeight", rect.height());
    TaviConfigOrder::loadDialogGeometry(registry);
}

/// At a broken scale the window system's whole pixels may be one off.
bool isAbout(const QSize &size, const QSize &wanted)
{
    const int off = qApp->devicePixelRatio() == std::floor(qApp->devicePixelRatio()) ? 0 : 1;
    const QSize difference = size - wanted;
    return std::abs(difference.width()) <= off && std::abs(difference.height()) <= off;
}

/// Forgets the pictures of the buttons.
struct NoPictures {
    ~NoPictures()
    {
        TaviConfigOrder::set_pixname_moveup({});
        TaviConfigOrder::set_pixname_moveup_off({});
        TaviConfigOrder::set_pixname_movedown({});
        TaviConfigOrder::set_pixname_movedown_off({});
        TaviConfigOrder::set_pixname_makehidden({});
        TaviConfigOrder::set_pixname_makehidden_off({});
        TaviConfigOrder::set_pixname_makeshowing({});
        TaviConfigOrder::set_pixname_makeshowing_off({});
    }
};

/// The contrast of the strongest mark on a widget to its background, as readability is measured: 1 for none, 21 for
/// black on white.
double contrast(QWidget *widget)
{
    const QImage picture = widget->grab().toImage();
    const auto luminance = [](QColor colour) {
        const auto linear = [](double value) {
            return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
    };
    // The middle alone, without the button's frame.
    const QRect middle = picture.rect().adjusted(picture.width() / 4, picture.height() / 4, -picture.width() / 4,
                                                 -picture.height() / 4);
    const double background = luminance(picture.pixelColor(middle.topLeft()));
    double strongest = 1.0;
    for (int y = middle.top(); y <= middle.bottom(); ++y) {
        for (int x = middle.left(); x <= middle.right(); ++x) {
            const double mark = luminance(picture.pixelColor(x, y));
            strongest =
                std::max(strongest, (std::max(mark, background) + 0.05) / (std::min(mark, background) + 0.05));
        }
    }
    return strongest;
}

} // namespace

/// The window of the order dialog: its form, its buttons, its place.
class TestTaviConfigOrderDlg : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TaviTest::init();
        keepGeometry(QRect(50, 50, 500, 500));
    }

    // First of all: nothing has kept another one yet.
    void initTestCase() { QCOMPARE(keptGeometry(), QRect(50, 50, 500, 500)); }

    void theForm()
    {
        TaviConfigOrderDLG dialog;
        QVERIFY(dialog.isModal());
        QCOMPARE(dialog.windowTitle(), QString("Configure Order"));
        for (const char *name : {"hidden_frame", "showing_frame", "line1"})
            QVERIFY2(dialog.findChild<QFrame *>(name), name);
        for (const char *name : {"hidden_label", "showing_label"})
            QCOMPARE(dialog.findChild<QLabel *>(name)->text(), QString("NO-TR"));
        for (const char *name : {"make_showing_button", "make_hidden_button", "move_up_button", "move_down_button"})
            QCOMPARE(dialog.findChild<QAbstractButton *>(name)->text(), QString("..."));
        const auto *bbox = dialog.findChild<QDialogButtonBox *>("bbox");
        QCOMPARE(int(bbox->standardButtons()), 0x1400400);
        QCOMPARE(dialog.help_button, bbox->button(QDialogButtonBox::Help));
    }

    void theButtonsAtTheBottomEndIt_data()
    {
        QTest::addColumn<QDialogButtonBox::StandardButton>("button");
        QTest::addColumn<int>("result");
        QTest::newRow("Ok") << QDialogButtonBox::Ok << 1;
        QTest::newRow("Cancel") << QDialogButtonBox::Cancel << 0;
    }

    void theButtonsAtTheBottomEndIt()
    {
        QFETCH(QDialogButtonBox::StandardButton, button);
        QFETCH(int, result);
        TaviConfigOrderDLG dialog;
        dialog.show();
        dialog.setResult(77);
        dialog.bbox->button(button)->click();
        QVERIFY(!dialog.isVisible());
        QCOMPARE(dialog.result(), result);
    }

    void withoutPicturesTheButtonsShowArrows_data()
    {
        QTest::addColumn<Qt::LayoutDirection>("direction");
        QTest::newRow("left to right") << Qt::LeftToRight;
        QTest::newRow("right to left") << Qt::RightToLeft;
    }

    void withoutPicturesTheButtonsShowArrows()
    {
        QFETCH(Qt::LayoutDirection, direction);
        const bool mirrored = direction == Qt::RightToLeft;
        TaviConfigOrderDLG dialog;
        dialog.setLayoutDirection(direction);
        dialog.resize(400, 300);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        QCOMPARE(dialog.move_up_button->arrowType(), Qt::UpArrow);
        QCOMPARE(dialog.move_down_button->arrowType(), Qt::DownArrow);
        QCOMPARE(dialog.make_showing_button->arrowType(), mirrored ? Qt::LeftArrow : Qt::RightArrow);
        QCOMPARE(dialog.make_hidden_button->arrowType(), mirrored ? Qt::RightArrow : Qt::LeftArrow);
        // The arrow points to where the list stands.
        QCOMPARE(dialog.hidden_frame->x() > dialog.showing_frame->x(), mirrored);
        QCOMPARE(dialog.make_showing_button->shortcut(), QKeySequence(mirrored ? "Alt+Left" : "Alt+Right"));
        QCOMPARE(dialog.make_hidden_button->shortcut(), QKeySequence(mirrored ? "Alt+Right" : "Alt+Left"));
        QCOMPARE(dialog.move_up_button->shortcut(), QKeySequence("Alt+Up"));
        QCOMPARE(dialog.move_down_button->shortcut(), QKeySequence("Alt+Down"));
    }

    void theButtonsSayWhatTheyDo()
    {
        const TaviConfigOrderDLG dialog;
        QCOMPARE(dialog.make_showing_button->accessibleName(), QString("Show"));
        QCOMPARE(dialog.make_hidden_button->accessibleName(), QString("Hide"));
        QCOMPARE(dialog.move_up_button->accessibleName(), QString("Move up"));
        QCOMPARE(dialog.move_down_button->accessibleName(), QString("Move down"));
        QCOMPARE(dialog.move_up_button->toolTip(), QString("Move up (Alt+Up)"));
        QCOMPARE(dialog.make_showing_button->toolTip(), QString("Show (Alt+Right)"));
    }

    void arrowsAreSeenOnAnyBackground_data()
    {
        QTest::addColumn<QColor>("window");
        QTest::addColumn<QColor>("text");
        QTest::newRow("light") << QColor(0xEF, 0xEF, 0xEF) << QColor(Qt::black);
        QTest::newRow("dark") << QColor(0x28, 0x2A, 0x2E) << QColor(0xEE, 0xEE, 0xEE);
    }

    void arrowsAreSeenOnAnyBackground()
    {
        QFETCH(QColor, window);
        QFETCH(QColor, text);
        QPalette palette(window, window);
        for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::ButtonText, QPalette::Text})
            palette.setColor(role, text);
        TaviConfigOrderDLG dialog;
        dialog.setPalette(palette);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        for (QToolButton *button :
             {dialog.make_showing_button, dialog.make_hidden_button, dialog.move_up_button, dialog.move_down_button})
            QVERIFY2(contrast(button) >= 4.5, qPrintable(button->objectName()));
    }

    void picturesTakeTheArrowsPlace()
    {
        const QTemporaryDir folder;
        const QString normal = folder.filePath("normal.png");
        const QString disabled = folder.filePath("disabled.png");
        QPixmap red(16, 16);
        red.fill(Qt::red);
        QVERIFY(red.save(normal));
        QPixmap blue(16, 16);
        blue.fill(Qt::blue);
        QVERIFY(blue.save(disabled));
        const NoPictures afterwards;
        TaviConfigOrder::set_pixname_moveup(normal);
        TaviConfigOrder::set_pixname_moveup_off(disabled);
        TaviConfigOrder::set_pixname_movedown(normal);
        TaviConfigOrder::set_pixname_makehidden_off(disabled);
        TaviConfigOrder::set_pixname_makeshowing(folder.filePath("none.png"));
        OrderRun things;
        things.run([](const OrderDialog &dialog) {
            const auto colour = [](const QToolButton *button, QIcon::Mode mode) {
                return button->icon().pixmap(16, mode).toImage().pixelColor(8, 8);
            };
            const TaviConfigOrderDLG &window = dialog.window;
            QCOMPARE(colour(window.move_up_button, QIcon::Normal), QColor(Qt::red));
            QCOMPARE(colour(window.move_up_button, QIcon::Disabled), QColor(Qt::blue));
            QCOMPARE(colour(window.move_down_button, QIcon::Normal), QColor(Qt::red));
            QCOMPARE(colour(window.make_hidden_button, QIcon::Disabled), QColor(Qt::blue));
            for (const QToolButton *button :
                 {window.move_up_button, window.move_down_button, window.make_hidden_button}) {
                QCOMPARE(button->text(), QString());
                QCOMPARE(button->arrowType(), Qt::NoArrow);
                QVERIFY(!button->shortcut().isEmpty());
            }
            // A file that isn't there is none.
            QVERIFY(window.make_showing_button->icon().isNull());
            QCOMPARE(window.make_showing_button->text(), QString("..."));
            QCOMPARE(window.make_showing_button->arrowType(), Qt::RightArrow);
            dialog.window.setLayoutDirection(Qt::RightToLeft);
            QCOMPARE(window.make_hidden_button->arrowType(), Qt::NoArrow);
        });
    }

    void eachButtonHasItsPicture()
    {
        const QTemporaryDir folder;
        const NoPictures afterwards;
        const auto file = [&folder](const QColor &colour) {
            QPixmap picture(16, 16);
            picture.fill(colour);
            const QString name = folder.filePath(colour.name().mid(1) + ".png");
            return picture.save(name) ? name : QString();
        };
        TaviConfigOrder::set_pixname_moveup(file(QColor(1, 0, 0)));
        TaviConfigOrder::set_pixname_moveup_off(file(QColor(2, 0, 0)));
        TaviConfigOrder::set_pixname_movedown(file(QColor(3, 0, 0)));
        TaviConfigOrder::set_pixname_movedown_off(file(QColor(4, 0, 0)));
        TaviConfigOrder::set_pixname_makehidden(file(QColor(5, 0, 0)));
        TaviConfigOrder::set_pixname_makehidden_off(file(QColor(6, 0, 0)));
        TaviConfigOrder::set_pixname_makeshowing(file(QColor(7, 0, 0)));
        TaviConfigOrder::set_pixname_makeshowing_off(file(QColor(8, 0, 0)));
        OrderRun things;
        things.run([](const OrderDialog &dialog) {
            int expected = 0;
            for (const QToolButton *button : {dialog.window.move_up_button, dialog.window.move_down_button,
                                              dialog.window.make_hidden_button, dialog.window.make_showing_button}) {
                for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Disabled})
                    QCOMPARE(button->icon().pixmap(16, mode).toImage().pixelColor(8, 8).red(), ++expected);
            }
        });
    }

    void theGeometryIsKeptForTheProcess()
    {
        keepGeometry(QRect(100, 40, 640, 400));
        OrderRun first;
        first.run([](const OrderDialog &dialog) {
            QVERIFY(isAbout(dialog.window.size(), QSize(640, 400)));
            dialog.window.resize(660, 440);
            QTRY_VERIFY(isAbout(dialog.window.size(), QSize(660, 440)));
        });
        QVERIFY(isAbout(keptGeometry().size(), QSize(660, 440)));
        keepGeometry(QRect(100, 40, 660, 440));
        OrderRun second;
        second.run([](const OrderDialog &dialog) { QVERIFY(isAbout(dialog.window.size(), QSize(660, 440))); });
    }

    void theGeometryIsKeptInTheStore()
    {
        TaviRegistry registry;
        OrderRun first;
        first.registry = &registry;
        first.section = "inks";
        first.run([](const OrderDialog &dialog) {
            dialog.window.resize(680, 420);
            QTRY_VERIFY(isAbout(dialog.window.size(), QSize(680, 420)));
            dialog.finish(QDialogButtonBox::Ok);
        });
        QVERIFY(isAbout(QSize(int(registry.getlong("inks", "WinWidth")), int(registry.getlong("inks", "WinHeight"))),
                        QSize(680, 420)));
        QCOMPARE(keptGeometry(), QRect(50, 50, 500, 500));
        OrderRun second;
        second.registry = &registry;
        second.section = "inks";
        registry.putlong("inks", "WinWidth", 680);
        registry.putlong("inks", "WinHeight", 420);
        second.run([](const OrderDialog &dialog) { QVERIFY(isAbout(dialog.window.size(), QSize(680, 420))); });
    }

    void withoutSectionOrStoreItIsKeptForTheProcess_data()
    {
        QTest::addColumn<bool>("with_registry");
        QTest::newRow("no section") << true;
        QTest::newRow("no store") << false;
    }

    void withoutSectionOrStoreItIsKeptForTheProcess()
    {
        QFETCH(bool, with_registry);
        TaviRegistry registry;
        OrderRun things;
        things.registry = with_registry ? &registry : nullptr;
        things.section = with_registry ? nullptr : "inks";
        things.run([](const OrderDialog &dialog) {
            dialog.window.resize(640, 408);
            QTRY_VERIFY(isAbout(dialog.window.size(), QSize(640, 408)));
        });
        QVERIFY(isAbout(keptGeometry().size(), QSize(640, 408)));
    }

    void anIncompleteGeometryIsNotTaken_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<int>("value");
        for (const char *key : {"DialogX", "DialogY", "DialogWidth", "DialogHeight"}) {
            QTest::newRow(qPrintable(QString("%1 missing").arg(key))) << key << INT_MIN;
            QTest::newRow(qPrintable(QString("%1 is 0").arg(key))) << key << 0;
            QTest::newRow(qPrintable(QString("%1 is negative").arg(key))) << key << -5;
        }
    }

    void anIncompleteGeometryIsNotTaken()
    {
        QFETCH(QString, key);
        QFETCH(int, value);
        TaviRegistry registry;
        for (const char *each : {"DialogX", "DialogY", "DialogWidth", "DialogHeight"}) {
            if (key != each)
                registry.putlong("taviconfig_order_dlg", each, 300);
            else if (value != INT_MIN)
                registry.putlong("taviconfig_order_dlg", each, value);
        }
        TaviConfigOrder::loadDialogGeometry(registry);
        QCOMPARE(keptGeometry(), QRect(50, 50, 500, 500));
        registry.putlong("taviconfig_order_dlg", key.toLatin1(), 1);
        TaviConfigOrder::loadDialogGeometry(registry);
        QVERIFY(keptGeometry() != QRect(50, 50, 500, 500));
    }

    void labelsTellTheSelection_data()
    {
        QTest::addColumn<int>("selected");
        QTest::addColumn<QString>("text");
        QTest::newRow("none") << 0 << "<small>None selected</small>";
        QTest::newRow("less") << -3 << "<small>None selected</small>";
        QTest::newRow("one") << 1 << "<small>1 of 12 selected</small>";
        QTest::newRow("all") << 12 << "<small>12 of 12 selected</small>";
    }

    void labelsTellTheSelection()
    {
        QFETCH(int, selected);
        QFETCH(QString, text);
        QLabel label;
        TaviConfigOrder::updateLabelText(&label, selected, 12);
        QCOMPARE(label.text(), text);
        TaviConfigOrder::updateLabelText(nullptr, selected, 12);
    }
};

TAVI_GUI_TEST_MAIN(TestTaviConfigOrderDlg)
#include "tst_taviconfigorderdlg.moc"
