// SPDX-License-Identifier: MIT
#ifndef TESTS_TREEVIEWS_RENAMEDIALOGTEST_H
#define TESTS_TREEVIEWS_RENAMEDIALOGTEST_H

#include "tests/support/tavitest.h"
#include "tests/treeviews/renamerows.h"

#include <QCheckBox>
#include <QFrame>
#include <QScreen>

/// Those widgets that only serve the first method.
inline QVector<QWidget *> widgetsOfFind(const TaviRenameDialog &dialog)
{
    return {dialog.replace_label,    dialog.replace_edit, dialog.results_label,
            dialog.ignore_case_tick, dialog.wrap_tick,    dialog.navi_frame};
}

/// "shown", "hidden", or "mixed".
inline QString shownOf(const TaviRenameDialog &dialog)
{
    int hidden = 0;
    for (const QWidget *widget : widgetsOfFind(dialog))
        hidden += widget->isHidden() ? 1 : 0;
    return hidden == 0 ? "shown" : hidden == widgetsOfFind(dialog).size() ? "hidden" : "mixed";
}

/// What holds for the rename dialogs of all views: form, settings and place. The test of a dialog derives from this
/// and adds what is its own.
class RenameDialogTest : public TaviTest
{
    Q_OBJECT

protected:
    virtual std::unique_ptr<RenameRows> makeRows(const QStringList &texts) = 0;
    virtual std::unique_ptr<TaviRenameDialog> makeDialogOfNoView(TaviRegistry &registry, std::string &section) = 0;

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
        const auto rows = makeRows(RenameRows::inks());
        const auto dialog = rows->makeDialog(0);
        const auto *widget = dialog->findChild<QWidget *>(name);
        QVERIFY(widget);
        QCOMPARE(QString(widget->metaObject()->className()), class_name);
        QCOMPARE(widget->toolTip(), tool_tip);
        if (!text.isNull())
            QCOMPARE(widget->property("text").toString(), text);
    }

    void theChoicesAndTheFrames()
    {
        const auto rows = makeRows(RenameRows::inks());
        const auto dialog = rows->makeDialog(0);
        const Ui::TaviListViewRename_UI &form = *dialog;
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
        const auto rows = makeRows(RenameRows::inks());
        const auto dialog = rows->makeDialog(0);
        QVERIFY(isVisibleWindow(dialog.get()));
        const auto top = [&dialog](const QWidget *widget) {
            return widget->mapTo(dialog.get(), widget->rect().center()).y();
        };
        const auto left = [&dialog](const QWidget *widget) {
            return widget->mapTo(dialog.get(), QPoint()).x();
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
        const TaviRenameDialog &form = *dialog;
        QVERIFY(stand({form.op_combo, form.op_edit}, nullptr));
        QVERIFY(stand({form.replace_label, form.replace_edit}, form.op_combo));
        QVERIFY(stand({form.results_label, form.ignore_case_tick, form.wrap_tick}, form.replace_edit));
        QVERIFY(
            stand({form.apply_all_button, form.apply_selected_button, form.apply_current_button}, form.wrap_tick));
        QVERIFY(stand({form.find_prev_button, form.find_next_button}, form.apply_all_button));
    }

    void theWindow()
    {
        const auto rows = makeRows(RenameRows::inks());
        const auto dialog = rows->makeDialog(0);
        QVERIFY(dialog->isWindow());
        QVERIFY(dialog->windowFlags() & Qt::WindowStaysOnTopHint);
        QCOMPARE(dialog->windowFlags() & Qt::WindowType_Mask, int(Qt::Dialog));
        QVERIFY(!dialog->isModal());
        QCOMPARE(dialog->results_label->text(), QString());
        QCOMPARE(shownOf(*dialog), QString("shown"));
        for (const QWidget *widget :
             {static_cast<QWidget *>(dialog->op_combo), static_cast<QWidget *>(dialog->op_edit)})
            QVERIFY(!widget->accessibleName().isEmpty());
        QCOMPARE(dialog->replace_label->buddy(), dialog->replace_edit);
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
        const auto rows = makeRows(RenameRows::inks());
        const auto dialog = rows->makeDialog(column);
        QCOMPARE(dialog->windowTitle(), title);
        // A column that isn't there has nothing to find or rename.
        RenameUser(*dialog).choose(0, "40", "50");
        const int changed = RenameUser(*dialog).apply("applyToAll");
        QCOMPARE(changed, column == 0 ? 3 : 0); // the second can't be edited
        QMetaObject::invokeMethod(dialog.get(), "findNext");
        QCOMPARE(dialog->results_label->text(), QString(column == 1 ? "Found" : "Not Found"));
    }

    void aPercentSignInATitleIsOne()
    {
        const auto rows = makeRows(RenameRows::inks());
        rows->setHeading("%1 %");
        const auto dialog = rows->makeDialog(0);
        QCOMPARE(dialog->windowTitle(), QString("Rename or Find (%1 %)"));
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
            const auto rows = makeRows(RenameRows::inks());
            const auto dialog = rows->makeDialog(0);
            for (const int method : methods) {
                if (by_slot)
                    QMetaObject::invokeMethod(dialog.get(), "methodChanged", Q_ARG(int, method));
                else
                    dialog->adjustDialog(method, false);
            }
            QCOMPARE(shownOf(*dialog), shown);
            for (const QWidget *button :
                 {dialog->apply_all_button, dialog->apply_selected_button, dialog->apply_current_button})
                QVERIFY(!button->isHidden());
        }
    }

    // By the keyboard: down in the list of methods.
    void anotherMethodMakesTheWindowAsHighAsItNeeds()
    {
        const auto rows = makeRows(RenameRows::inks());
        const auto dialog = rows->makeDialog(0);
        dialog->resize(520, 300);
        QVERIFY(isVisibleWindow(dialog.get()));
        QTRY_COMPARE(dialog->width(), 520);
        dialog->op_combo->setFocus();
        QTest::keyClick(dialog->op_combo, Qt::Key_Down);
        QTest::keyClick(dialog->op_combo, Qt::Key_Down);
        QCOMPARE(dialog->op_combo->currentText(), QString("Append"));
        QCOMPARE(shownOf(*dialog), QString("hidden"));
        QTRY_COMPARE(dialog->height(), dialog->sizeHint().height());
        const int low = dialog->height();
        QCOMPARE(dialog->width(), 520);
        QTest::keyClick(dialog->op_combo, Qt::Key_Up);
        QTest::keyClick(dialog->op_combo, Qt::Key_Up);
        QCOMPARE(shownOf(*dialog), QString("shown"));
        QTRY_COMPARE(dialog->height(), dialog->sizeHint().height());
        QVERIFY(dialog->height() > low);
        QCOMPARE(dialog->width(), 520);
    }

    void findThatIsShownAlreadyIsNotAdjusted()
    {
        const auto rows = makeRows(RenameRows::inks());
        const auto dialog = rows->makeDialog(0);
        dialog->resize(520, 400);
        dialog->adjustDialog(0, true);
        QCOMPARE(dialog->height(), 400);
        dialog->adjustDialog(-1, true);
        QCOMPARE(dialog->height(), dialog->sizeHint().height());
        dialog->resize(520, 400);
        dialog->adjustDialog(1, false);
        QCOMPARE(dialog->height(), 400);
        dialog->adjustDialog(1, true);
        QCOMPARE(dialog->size(), QSize(520, dialog->sizeHint().height()));
    }

    void settingsAreTakenUp()
    {
        const auto rows = makeRows(RenameRows::inks());
        rows->registry.putstring("inks", "rename_value",
                                 "Gr\xC3\xB6\xC3\x9F"
                                 "e");
        rows->registry.putstring("inks", "rename_replace", "Ma\xC3\x9F");
        rows->registry.putstring("inks", "rename_settings", "2 0 1");
        const auto dialog = rows->makeDialog(0);
        QCOMPARE(dialog->op_edit->text(), QStringLiteral("Größe"));
        QCOMPARE(dialog->replace_edit->text(), QStringLiteral("Maß"));
        QCOMPARE(dialog->op_combo->currentIndex(), 2);
        QCOMPARE(shownOf(*dialog), QString("hidden"));
        QVERIFY(!dialog->ignore_case_tick->isChecked());
        QVERIFY(dialog->wrap_tick->isChecked());
    }

    void settingsThatAreNotThere()
    {
        const auto rows = makeRows(RenameRows::inks());
        const auto dialog = rows->makeDialog(0);
        QCOMPARE(dialog->op_edit->text(), QString());
        QCOMPARE(dialog->replace_edit->text(), QString());
        QCOMPARE(dialog->op_combo->currentIndex(), 0);
        QVERIFY(dialog->ignore_case_tick->isChecked());
        QVERIFY(!dialog->wrap_tick->isChecked());
        const QSize least = dialog->minimumSizeHint();
        QCOMPARE(dialog->size(), least);
    }

    void itStandsWhereTheViewStands()
    {
        const auto rows = makeRows(RenameRows::inks());
        QWidget window;
        rows->widget().setParent(&window);
        rows->widget().move(30, 40);
        window.setGeometry(200, 300, 500, 400);
        QVERIFY(isVisibleWindow(&window));
        const auto dialog = rows->makeDialog(0);
        QCOMPARE(dialog->pos(), rows->widget().mapToGlobal(rows->widget().pos()));
        rows->widget().setParent(nullptr);
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
        const auto rows = makeRows(RenameRows::inks());
        rows->registry.putstring("inks", "rename_geometry", stored.constData());
        const auto dialog = rows->makeDialog(0);
        const QSize least = dialog->minimumSizeHint();
        QVERIFY(least.width() < 640);
        QCOMPARE(dialog->pos(), place);
        QCOMPARE(dialog->size(), QSize(width == 0 ? least.width() : width, least.height()));
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
        const auto rows = makeRows(RenameRows::inks());
        rows->registry.putstring("inks", "rename_geometry", stored.constData());
        const auto dialog = rows->makeDialog(0);
        const QRect screens = QGuiApplication::primaryScreen()->virtualGeometry();
        QVERIFY(screens.contains(QRect(dialog->pos(), QSize(50, 50))));
        QVERIFY(dialog->width() <= screens.width());
        QVERIFY(isVisibleWindow(dialog.get()));
    }

    void closingKeepsTheSettings()
    {
        const auto rows = makeRows(RenameRows::inks());
        const auto dialog = rows->makeDialog(0);
        RenameUser(*dialog).choose(1, QStringLiteral("Größe"), QStringLiteral("Maß"));
        dialog->ignore_case_tick->setChecked(false);
        dialog->wrap_tick->setChecked(true);
        QVERIFY(isVisibleWindow(dialog.get()));
        dialog->resize(610, dialog->height());
        QTRY_COMPARE(dialog->width(), 610);
        dialog->move(120, 130);
        QTRY_COMPARE(dialog->pos(), QPoint(120, 130));
        QSignalSpy closed(dialog.get(), &TaviRenameDialog::closed);
        QVERIFY(dialog->close());
        QCOMPARE(closed.count(), 1);
        QVERIFY(!dialog->isVisible());
        QCOMPARE(rows->registry.getstring("inks", "rename_value"), std::string("Gr\xC3\xB6\xC3\x9F"
                                                                               "e"));
        QCOMPARE(rows->registry.getstring("inks", "rename_replace"), std::string("Ma\xC3\x9F"));
        QCOMPARE(rows->registry.getstring("inks", "rename_settings"), std::string("1 0 1"));
        QCOMPARE(rows->registry.getstring("inks", "rename_geometry"), std::string("120 130 610"));
        // And so it comes back.
        const auto next = rows->makeDialog(0);
        QCOMPARE(next->pos(), QPoint(120, 130));
        QCOMPARE(next->width(), 610);
        QCOMPARE(next->op_combo->currentIndex(), 1);
    }

    void escapeClosesAsTheTitleBarDoes()
    {
        const auto rows = makeRows(RenameRows::inks());
        const auto dialog = rows->makeDialog(0);
        dialog->op_edit->setText("40");
        QVERIFY(isVisibleWindow(dialog.get()));
        QSignalSpy closed(dialog.get(), &TaviRenameDialog::closed);
        QTest::keyClick(dialog->op_edit, Qt::Key_Escape);
        QCOMPARE(closed.count(), 1);
        QVERIFY(!dialog->isVisible());
        QCOMPARE(rows->registry.getstring("inks", "rename_value"), std::string("40"));
    }

    void withoutASectionNothingIsReadOrKept()
    {
        const auto rows = makeRows(RenameRows::inks());
        rows->section = "";
        rows->registry.putstring("", "rename_value", "40");
        rows->registry.putstring("", "rename_settings", "2 1 1");
        rows->registry.putstring("", "rename_geometry", "300 300 700");
        const auto dialog = rows->makeDialog(0);
        QCOMPARE(dialog->op_edit->text(), QString());
        QCOMPARE(dialog->op_combo->currentIndex(), 0);
        QVERIFY(dialog->pos() != QPoint(300, 300));
        dialog->op_edit->setText("50");
        QSignalSpy closed(dialog.get(), &TaviRenameDialog::closed);
        dialog->close();
        QCOMPARE(closed.count(), 1);
        QCOMPARE(rows->registry.getstring("", "rename_value"), std::string("40"));
    }

    void returnFindsTheNextRow()
    {
        const auto rows = makeRows(RenameRows::inks());
        const auto dialog = rows->makeDialog(0);
        dialog->op_edit->setText("40");
        QVERIFY(isVisibleWindow(dialog.get()));
        QTest::keyClick(dialog->op_edit, Qt::Key_Return);
        QCOMPARE(dialog->results_label->text(), QString("Found"));
        QCOMPARE(rows->texts(), QString("cyan 40|magenta 40|yellow 70|black 40")); // and renames nothing
        RenameUser(*dialog).choose(1, "new ");
        QTest::keyClick(dialog->op_edit, Qt::Key_Return);
        QCOMPARE(rows->texts(), QString("cyan 40|magenta 40|yellow 70|black 40"));
    }

    void rightToLeft()
    {
        const auto rows = makeRows(RenameRows::inks());
        const auto dialog = rows->makeDialog(0);
        dialog->setLayoutDirection(Qt::RightToLeft);
        QVERIFY(isVisibleWindow(dialog.get()));
        QVERIFY(dialog->op_combo->x() > dialog->op_edit->x());
    }

    void withoutAViewNothingHappens()
    {
        TaviRegistry registry;
        std::string section;
        const auto dialog = makeDialogOfNoView(registry, section);
        QCOMPARE(dialog->windowTitle(), QString("Rename or Find"));
        dialog->op_edit->setText("40");
        QCOMPARE(RenameUser(*dialog).apply("applyToAll"), 0);
        QCOMPARE(dialog->results_label->text(), QString());
        dialog->find_next_button->click();
        QCOMPARE(dialog->results_label->text(), QString("Not Found"));
    }

    // A window without a parent begins larger.
    void withoutAParentItIsNoHigherThanItNeeds()
    {
        TaviRegistry registry;
        std::string section = "inks";
        const auto dialog = makeDialogOfNoView(registry, section);
        QCOMPARE(dialog->size(), dialog->minimumSizeHint());
        QCOMPARE(dialog->pos(), QPoint(0, 20));
    }
};

#endif
