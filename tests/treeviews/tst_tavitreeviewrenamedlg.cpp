// SPDX-License-Identifier: MIT
#include "tests/support/tavitest.h"
#include "tests/treeviews/renamefixture.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QScreen>

namespace {

/// Those widgets that only serve the first method.
QVector<QWidget *> widgetsOfFind(const TaviRenameDialog &dialog)
{
    return {dialog.replace_label,    dialog.replace_edit, dialog.results_label,
            dialog.ignore_case_tick, dialog.wrap_tick,    dialog.navi_frame};
}

/// "shown", "hidden", or "mixed".
QString shownOf(const TaviRenameDialog &dialog)
{
    int hidden = 0;
    for (const QWidget *widget : widgetsOfFind(dialog))
        hidden += widget->isHidden() ? 1 : 0;
    return hidden == 0 ? "shown" : hidden == widgetsOfFind(dialog).size() ? "hidden" : "mixed";
}

bool isVisibleWindow(QWidget *window)
{
    window->show();
    return QTest::qWaitForWindowExposed(window);
}

} // namespace

/// The rename dialog's form, its settings and its place.
class TestTaviTreeViewRenameDlg : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void theForm_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("class_name");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("tool_tip");
        const auto row = [](const char *name, const char *class_name, const char *text, const char *tool_tip) {
            QTest::newRow(name) << name << class_name << text << tool_tip;
        };
        row("op_combo", "QComboBox", nullptr, "Action to perform");
        row("op_edit", "QLineEdit", "", "Parameter for the action.");
        row("replace_label", "QLabel", "Replace With:", "");
        row("replace_edit", "QLineEdit", "", "Replace found text with this.");
        row("results_label", "QLabel", "", "");
        row("ignore_case_tick", "QCheckBox", "Ignore Case", "Searching will ignore case if this is turned on.");
        row("wrap_tick", "QCheckBox", "Wrap Around",
            "Once the searched has reached the end it continues again from the top if this is turned on.");
        row("apply_frame", "QFrame", nullptr, "");
        row("apply_all_button", "QPushButton", "Rename All", "Apply the rename to all items.");
        row("apply_selected_button", "QPushButton", "Rename Selected", "Only rename the selected items.");
        row("apply_current_button", "QPushButton", "Rename Current", "Only rename the most recently selected item.");
        row("navi_frame", "QFrame", nullptr, "");
        row("find_prev_button", "QPushButton", "Find Previous",
            "Find the previous item matching the search criteria.");
        row("find_next_button", "QPushButton", "Find Next", "Find the next item matching the search criteria.");
    }
    void theForm()
    {
        QFETCH(const QString, name);
        QFETCH(const QString, class_name);
        QFETCH(const QString, text);
        QFETCH(const QString, tool_tip);
        RenameTree tree;
        const RenameDialog dialog(tree);
        const auto *widget = dialog.window.findChild<QWidget *>(name);
        QVERIFY(widget);
        QCOMPARE(QString(widget->metaObject()->className()), class_name);
        QCOMPARE(widget->toolTip(), tool_tip);
        if (!text.isNull())
            QCOMPARE(widget->property("text").toString(), text);
    }

    void theChoicesAndTheFrames()
    {
        RenameTree tree;
        const RenameDialog dialog(tree);
        const Ui::TaviListViewRename_UI &form = dialog.window;
        QCOMPARE(form.op_combo->count(), 3);
        QCOMPARE(form.op_combo->itemText(0), QString("Find"));
        QCOMPARE(form.op_combo->itemText(1), QString("Prefix With"));
        QCOMPARE(form.op_combo->itemText(2), QString("Append"));
        for (const QFrame *frame : {form.apply_frame, form.navi_frame})
            QCOMPARE(frame->frameShape(), QFrame::NoFrame);
        for (const QWidget *button : {form.apply_all_button, form.apply_selected_button, form.apply_current_button})
            QCOMPARE(button->parentWidget(), form.apply_frame);
        for (const QWidget *button : {form.find_prev_button, form.find_next_button})
            QCOMPARE(button->parentWidget(), form.navi_frame);
    }

    void theWidgetsStandInRows()
    {
        RenameTree tree;
        RenameDialog dialog(tree);
        QVERIFY(isVisibleWindow(&dialog.window));
        const auto top = [&dialog](const QWidget *widget) {
            return widget->mapTo(&dialog.window, widget->rect().center()).y();
        };
        const auto left = [&dialog](const QWidget *widget) {
            return widget->mapTo(&dialog.window, QPoint()).x();
        };
        const auto stand = [&](const QVector<QWidget *> &row, const QWidget *above) {
            for (int at = 0; at < row.size(); ++at) {
                if (above && top(row.at(at)) <= top(above))
                    return false;
                if (at > 0
                    && (left(row.at(at)) <= left(row.at(at - 1)) || qAbs(top(row.at(at)) - top(row.at(0))) > 4))
                    return false;
            }
            return true;
        };
        const TaviTreeViewRenameDLG &form = dialog.window;
        QVERIFY(stand({form.op_combo, form.op_edit}, nullptr));
        QVERIFY(stand({form.replace_label, form.replace_edit}, form.op_combo));
        QVERIFY(stand({form.results_label, form.ignore_case_tick, form.wrap_tick}, form.replace_edit));
        QVERIFY(
            stand({form.apply_all_button, form.apply_selected_button, form.apply_current_button}, form.wrap_tick));
        QVERIFY(stand({form.find_prev_button, form.find_next_button}, form.apply_all_button));
    }

    void construction()
    {
        RenameTree tree;
        const RenameDialog dialog(tree);
        QCOMPARE(dialog.window.parentWidget(), &tree.view);
        QVERIFY(dialog.window.isWindow());
        QVERIFY(dialog.window.windowFlags() & Qt::WindowStaysOnTopHint);
        QCOMPARE(dialog.window.windowFlags() & Qt::WindowType_Mask, int(Qt::Dialog));
        QVERIFY(!dialog.window.isModal());
        QCOMPARE(dialog.window.objectName(), QString("tavitree_rename_DLG"));
        QCOMPARE(dialog.result(), QString());
        QCOMPARE(shownOf(dialog.window), QString("shown"));
        for (const QWidget *widget :
             {static_cast<QWidget *>(dialog.window.op_combo), static_cast<QWidget *>(dialog.window.op_edit)})
            QVERIFY(!widget->accessibleName().isEmpty());
        QCOMPARE(dialog.window.replace_label->buddy(), dialog.window.replace_edit);
    }

    void theTitleNamesTheColumn_data()
    {
        QTest::addColumn<int>("column");
        QTest::addColumn<QString>("title");
        QTest::newRow("first") << 0 << "Rename or Find (Ink)";
        QTest::newRow("second") << 1 << "Rename or Find (Remark)";
        QTest::newRow("none") << 2 << "Rename or Find";
        QTest::newRow("negative") << -1 << "Rename or Find";
    }
    void theTitleNamesTheColumn()
    {
        QFETCH(const int, column);
        QFETCH(const QString, title);
        RenameTree tree;
        RenameDialog dialog(tree, column);
        QCOMPARE(dialog.window.windowTitle(), title);
        // A column that isn't there has nothing to find or rename.
        dialog.choose(0, "40", "50");
        const int changed = dialog.apply("applyToAll");
        QCOMPARE(changed, column == 0 ? 3 : 0); // the second can't be edited
        QMetaObject::invokeMethod(&dialog.window, "findNext");
        QCOMPARE(dialog.result(), QString(column == 1 ? "Found" : "Not Found"));
    }

    void aPercentSignInATitleIsOne()
    {
        RenameTree tree;
        tree.model.setHeaderData({"%1 %", "Remark"});
        const RenameDialog dialog(tree);
        QCOMPARE(dialog.window.windowTitle(), QString("Rename or Find (%1 %)"));
    }

    void withoutAViewNothingHappens()
    {
        TaviRegistry registry;
        std::string section;
        TaviTreeViewRenameDLG window(nullptr, 0, registry, section);
        QCOMPARE(window.windowTitle(), QString("Rename or Find"));
        window.op_edit->setText("40");
        int changed = -1;
        QVERIFY(QMetaObject::invokeMethod(&window, "applyToAll", Q_RETURN_ARG(int, changed)));
        QCOMPARE(changed, 0);
        QCOMPARE(window.results_label->text(), QString());
        QVERIFY(!window.nextCandidate().isValid() && !window.prevCandidate().isValid());
        window.find_next_button->click();
        QCOMPARE(window.results_label->text(), QString("Not Found"));
    }

    // A window without a parent begins larger.
    void withoutAParentItIsNoHigherThanItNeeds()
    {
        TaviRegistry registry;
        std::string section = "inks";
        const TaviTreeViewRenameDLG window(nullptr, 0, registry, section);
        QCOMPARE(window.size(), window.minimumSizeHint());
        QCOMPARE(window.pos(), QPoint(0, 20));
    }

    void theMethodShowsWhatItNeeds_data()
    {
        QTest::addColumn<QVector<int>>("methods");
        QTest::addColumn<QString>("shown");
        QTest::newRow("find") << QVector<int>{0} << "shown";
        QTest::newRow("prefix") << QVector<int>{1} << "hidden";
        QTest::newRow("append") << QVector<int>{2} << "hidden";
        QTest::newRow("none") << QVector<int>{1, -1} << "shown";
        QTest::newRow("from one to the other") << QVector<int>{1, 2} << "hidden";
        QTest::newRow("and back") << QVector<int>{2, 0} << "shown";
    }
    void theMethodShowsWhatItNeeds()
    {
        QFETCH(const QVector<int>, methods);
        QFETCH(const QString, shown);
        for (const bool by_slot : {true, false}) {
            RenameTree tree;
            RenameDialog dialog(tree);
            for (const int method : methods) {
                if (by_slot)
                    QMetaObject::invokeMethod(&dialog.window, "methodChanged", Q_ARG(int, method));
                else
                    dialog.window.adjustDialog(method, false);
            }
            QCOMPARE(shownOf(dialog.window), shown);
            for (const QWidget *button : {dialog.window.apply_all_button, dialog.window.apply_selected_button,
                                          dialog.window.apply_current_button})
                QVERIFY(!button->isHidden());
        }
    }

    // By the keyboard: down in the list of methods.
    void anotherMethodMakesTheWindowAsHighAsItNeeds()
    {
        RenameTree tree;
        RenameDialog dialog(tree);
        dialog.window.resize(520, 300);
        QVERIFY(isVisibleWindow(&dialog.window));
        QTRY_COMPARE(dialog.window.width(), 520);
        dialog.window.op_combo->setFocus();
        QTest::keyClick(dialog.window.op_combo, Qt::Key_Down);
        QTest::keyClick(dialog.window.op_combo, Qt::Key_Down);
        QCOMPARE(dialog.window.op_combo->currentText(), QString("Append"));
        QCOMPARE(shownOf(dialog.window), QString("hidden"));
        QTRY_COMPARE(dialog.window.height(), dialog.window.sizeHint().height());
        const int low = dialog.window.height();
        QCOMPARE(dialog.window.width(), 520);
        QTest::keyClick(dialog.window.op_combo, Qt::Key_Up);
        QTest::keyClick(dialog.window.op_combo, Qt::Key_Up);
        QCOMPARE(shownOf(dialog.window), QString("shown"));
        QTRY_COMPARE(dialog.window.height(), dialog.window.sizeHint().height());
        QVERIFY(dialog.window.height() > low);
        QCOMPARE(dialog.window.width(), 520);
    }

    void findThatIsShownAlreadyIsNotAdjusted()
    {
        RenameTree tree;
        RenameDialog dialog(tree);
        dialog.window.resize(520, 400);
        dialog.window.adjustDialog(0, true);
        QCOMPARE(dialog.window.height(), 400);
        dialog.window.adjustDialog(-1, true);
        QCOMPARE(dialog.window.height(), dialog.window.sizeHint().height());
        dialog.window.resize(520, 400);
        dialog.window.adjustDialog(1, false);
        QCOMPARE(dialog.window.height(), 400);
        dialog.window.adjustDialog(1, true);
        QCOMPARE(dialog.window.size(), QSize(520, dialog.window.sizeHint().height()));
    }

    void settingsAreTakenUp()
    {
        RenameTree tree;
        tree.registry.putstring("inks", "rename_value",
                                "Gr\xC3\xB6\xC3\x9F"
                                "e");
        tree.registry.putstring("inks", "rename_replace", "Ma\xC3\x9F");
        tree.registry.putstring("inks", "rename_settings", "2 0 1");
        const RenameDialog dialog(tree);
        QCOMPARE(dialog.window.op_edit->text(), QStringLiteral("Größe"));
        QCOMPARE(dialog.window.replace_edit->text(), QStringLiteral("Maß"));
        QCOMPARE(dialog.window.op_combo->currentIndex(), 2);
        QCOMPARE(shownOf(dialog.window), QString("hidden"));
        QVERIFY(!dialog.window.ignore_case_tick->isChecked());
        QVERIFY(dialog.window.wrap_tick->isChecked());
    }

    void settingsThatAreNotThere()
    {
        RenameTree tree;
        const RenameDialog dialog(tree);
        QCOMPARE(dialog.window.op_edit->text(), QString());
        QCOMPARE(dialog.window.replace_edit->text(), QString());
        QCOMPARE(dialog.window.op_combo->currentIndex(), 0);
        QVERIFY(dialog.window.ignore_case_tick->isChecked());
        QVERIFY(!dialog.window.wrap_tick->isChecked());
        const QSize least = dialog.window.minimumSizeHint();
        QCOMPARE(dialog.window.size(), least);
    }

    void itStandsWhereTheViewStands()
    {
        RenameTree tree;
        QWidget window;
        tree.view.setParent(&window);
        tree.view.move(30, 40);
        window.setGeometry(200, 300, 500, 400);
        QVERIFY(isVisibleWindow(&window));
        const RenameDialog dialog(tree);
        QCOMPARE(dialog.window.pos(), tree.view.mapToGlobal(tree.view.pos()));
        tree.view.setParent(nullptr);
    }

    void geometryIsTakenUp_data()
    {
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<QPoint>("place");
        QTest::addColumn<int>("width"); // 0: the least
        QTest::newRow("as stored") << QByteArray("100 200 640") << QPoint(100, 200) << 640;
        QTest::newRow("below the menu bar") << QByteArray("100 5 640") << QPoint(100, 20) << 640;
        QTest::newRow("20 is low enough") << QByteArray("100 20 640") << QPoint(100, 20) << 640;
        QTest::newRow("beyond the left edge") << QByteArray("-5 -7 640") << QPoint(0, 20) << 640;
        QTest::newRow("narrower than it can be") << QByteArray("0 21 10") << QPoint(0, 21) << 0;
        QTest::newRow("a negative width") << QByteArray("0 21 -10") << QPoint(0, 21) << 0;
    }
    void geometryIsTakenUp()
    {
        QFETCH(const QByteArray, stored);
        QFETCH(const QPoint, place);
        QFETCH(const int, width);
        RenameTree tree;
        tree.registry.putstring("inks", "rename_geometry", stored.constData());
        const RenameDialog dialog(tree);
        const QSize least = dialog.window.minimumSizeHint();
        QVERIFY(least.width() < 640);
        QCOMPARE(dialog.window.pos(), place);
        QCOMPARE(dialog.window.size(), QSize(width == 0 ? least.width() : width, least.height()));
    }

    // The settings of a screen that isn't there any more, or of no screen at all.
    void hostileGeometryLeavesTheWindowInReach_data()
    {
        QTest::addColumn<QByteArray>("stored");
        QTest::newRow("far right") << QByteArray("2147483647 200 640");
        QTest::newRow("far down") << QByteArray("100 2147483647 640");
        QTest::newRow("far left and up") << QByteArray("-2147483648 -2147483648 640");
        QTest::newRow("wide") << QByteArray("100 200 2147483647");
    }
    void hostileGeometryLeavesTheWindowInReach()
    {
        QFETCH(const QByteArray, stored);
        RenameTree tree;
        tree.registry.putstring("inks", "rename_geometry", stored.constData());
        RenameDialog dialog(tree);
        const QRect screens = QGuiApplication::primaryScreen()->virtualGeometry();
        QVERIFY(screens.contains(QRect(dialog.window.pos(), QSize(50, 50))));
        QVERIFY(dialog.window.width() <= screens.width());
        QVERIFY(isVisibleWindow(&dialog.window));
    }

    void closingKeepsTheSettings()
    {
        RenameTree tree;
        RenameDialog dialog(tree);
        dialog.choose(1, QStringLiteral("Größe"), QStringLiteral("Maß"));
        dialog.window.ignore_case_tick->setChecked(false);
        dialog.window.wrap_tick->setChecked(true);
        QVERIFY(isVisibleWindow(&dialog.window));
        dialog.window.resize(610, dialog.window.height());
        QTRY_COMPARE(dialog.window.width(), 610);
        dialog.window.move(120, 130);
        QTRY_COMPARE(dialog.window.pos(), QPoint(120, 130));
        QSignalSpy closed(&dialog.window, &TaviRenameDialog::closed);
        QVERIFY(dialog.window.close());
        QCOMPARE(closed.count(), 1);
        QVERIFY(!dialog.window.isVisible());
        QCOMPARE(tree.registry.getstring("inks", "rename_value"), std::string("Gr\xC3\xB6\xC3\x9F"
                                                                              "e"));
        QCOMPARE(tree.registry.getstring("inks", "rename_replace"), std::string("Ma\xC3\x9F"));
        QCOMPARE(tree.registry.getstring("inks", "rename_settings"), std::string("1 0 1"));
        QCOMPARE(tree.registry.getstring("inks", "rename_geometry"), std::string("120 130 610"));
        // And so it comes back.
        const RenameDialog next(tree);
        QCOMPARE(next.window.pos(), QPoint(120, 130));
        QCOMPARE(next.window.width(), 610);
        QCOMPARE(next.window.op_combo->currentIndex(), 1);
    }

    void escapeClosesAsTheTitleBarDoes()
    {
        RenameTree tree;
        RenameDialog dialog(tree);
        dialog.window.op_edit->setText("40");
        QVERIFY(isVisibleWindow(&dialog.window));
        QSignalSpy closed(&dialog.window, &TaviRenameDialog::closed);
        QTest::keyClick(dialog.window.op_edit, Qt::Key_Escape);
        QCOMPARE(closed.count(), 1);
        QVERIFY(!dialog.window.isVisible());
        QCOMPARE(tree.registry.getstring("inks", "rename_value"), std::string("40"));
    }

    void withoutASectionNothingIsReadOrKept()
    {
        RenameTree tree;
        tree.section = "";
        tree.registry.putstring("", "rename_value", "40");
        tree.registry.putstring("", "rename_settings", "2 1 1");
        tree.registry.putstring("", "rename_geometry", "300 300 700");
        RenameDialog dialog(tree);
        QCOMPARE(dialog.window.op_edit->text(), QString());
        QCOMPARE(dialog.window.op_combo->currentIndex(), 0);
        QVERIFY(dialog.window.pos() != QPoint(300, 300));
        dialog.window.op_edit->setText("50");
        QSignalSpy closed(&dialog.window, &TaviRenameDialog::closed);
        dialog.window.close();
        QCOMPARE(closed.count(), 1);
        QCOMPARE(tree.registry.getstring("", "rename_value"), std::string("40"));
    }

    void returnFindsTheNextRow()
    {
        RenameTree tree;
        RenameDialog dialog(tree);
        dialog.window.op_edit->setText("40");
        QVERIFY(isVisibleWindow(&dialog.window));
        QTest::keyClick(dialog.window.op_edit, Qt::Key_Return);
        QCOMPARE(dialog.result(), QString("Found"));
        QCOMPARE(tree.texts(), QString("cyan 40|magenta 40|yellow 70|black 40")); // and renames nothing
        dialog.choose(1, "new ");
        QTest::keyClick(dialog.window.op_edit, Qt::Key_Return);
        QCOMPARE(tree.texts(), QString("cyan 40|magenta 40|yellow 70|black 40"));
    }

    void rightToLeft()
    {
        RenameTree tree;
        RenameDialog dialog(tree);
        dialog.window.setLayoutDirection(Qt::RightToLeft);
        QVERIFY(isVisibleWindow(&dialog.window));
        QVERIFY(dialog.window.op_combo->x() > dialog.window.op_edit->x());
    }
};

TAVI_GUI_TEST_MAIN(TestTaviTreeViewRenameDlg)
#include "tst_tavitreeviewrenamedlg.moc"
