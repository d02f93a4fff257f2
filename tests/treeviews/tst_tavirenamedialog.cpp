// SPDX-License-Identifier: MIT
#include "taviapp/taviregistry.h"
#include "tests/support/tavitest.h"
#include "tests/treeviews/renamerows.h"
#include "treeviews/renamemethod_p.h"

#include <QCheckBox>
#include <QTranslator>

#include <memory>

namespace {

/// A rename dialog of no view, that notes what it is asked for.
class DialogProbe : public TaviRenameDialog
{
public:
    explicit DialogProbe(TaviRegistry *store = nullptr, const std::string &store_section = "inks")
        : TaviRenameDialog(nullptr, QString(), store, store_section, QPoint(70, 80))
    {}

    QString asked_rows;
    RenameRule asked;
    int changes = 0;
    std::function<void()> in_between; ///< Called between the change and its report.
    bool finds = false;

private:
    int renameRows(const RenameRule &rule, Rows which, const Report &report) override
    {
        asked_rows = which == Rows::All ? "all" : which == Rows::Selected ? "selected" : "current";
        asked = rule;
        const int changed = changes;
        if (const auto act = in_between)
            act();
        report(changed);
        return changed;
    }
    bool findRow(const RenameRule &rule, bool forward) override
    {
        asked_rows = forward ? "next" : "previous";
        asked = rule;
        const bool found = finds;
        if (const auto act = in_between)
            act();
        return found;
    }
};

/// Puts the context in place of each text.
class ContextTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *text, const char *, int) const override
    {
        return QString::fromLatin1(context) + (QByteArray(text).contains("%1") ? " %1" : "");
    }
};

} // namespace

/// What a rename dialog asks of the view's kind, and what it makes of the answer.
class TestTaviRenameDialog : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void withoutAStoreNothingIsReadOrKept()
    {
        DialogProbe dialog;
        QVERIFY(dialog.pos() != QPoint(70, 80));
        QCOMPARE(dialog.op_combo->currentIndex(), 0);
        QSignalSpy closed(&dialog, &TaviRenameDialog::closed);
        dialog.show();
        QVERIFY(dialog.close());
        QCOMPARE(closed.count(), 1);
    }

    void thePlaceIsTheOneGivenIfNoneIsKept()
    {
        TaviRegistry registry;
        QCOMPARE(DialogProbe(&registry).pos(), QPoint(70, 80));
        QVERIFY(DialogProbe(&registry, "").pos() != QPoint(70, 80));
    }

    void eachButtonAsksForItsRows()
    {
        DialogProbe dialog;
        const auto asked = [&dialog](QPushButton *button) {
            dialog.asked_rows.clear();
            button->click();
            return dialog.asked_rows;
        };
        QCOMPARE(asked(dialog.apply_all_button), QString("all"));
        QCOMPARE(asked(dialog.apply_selected_button), QString("selected"));
        QCOMPARE(asked(dialog.apply_current_button), QString("current"));
        QCOMPARE(asked(dialog.find_next_button), QString("next"));
        QCOMPARE(asked(dialog.find_prev_button), QString("previous"));
    }

    void theRuleIsWhatTheFormSays_data()
    {
        QTest::addColumn<int>("method");
        QTest::addColumn<bool>("ignore_case");
        QTest::addColumn<QString>("with");
        QTest::newRow("find") << 0 << true << "50";
        QTest::newRow("find exactly") << 0 << false << "50";
        QTest::newRow("prefix") << 1 << true << "";
        QTest::newRow("append") << 2 << false << "";
    }
    void theRuleIsWhatTheFormSays()
    {
        QFETCH(const int, method);
        QFETCH(const bool, ignore_case);
        QFETCH(const QString, with);
        DialogProbe dialog;
        RenameUser(dialog).choose(method, "40", "50");
        dialog.ignore_case_tick->setChecked(ignore_case);
        dialog.apply_all_button->click();
        QCOMPARE(int(dialog.asked.method), method);
        QCOMPARE(dialog.asked.op, QString("40"));
        QCOMPARE(dialog.asked.with, with);
        QCOMPARE(dialog.asked.case_sensitivity, ignore_case ? Qt::CaseInsensitive : Qt::CaseSensitive);
    }

    void theLabelTellsWhatWasFound_data()
    {
        QTest::addColumn<int>("method");
        QTest::addColumn<int>("changes");
        QTest::addColumn<QString>("text");
        QTest::newRow("none") << 0 << 0 << "Not Found";
        QTest::newRow("one") << 0 << 1 << "Found 1 item";
        QTest::newRow("two") << 0 << 2 << "Found 2 items";
        QTest::newRow("many") << 0 << 100000 << "Found 100000 items";
        QTest::newRow("prefix") << 1 << 2 << "";
        QTest::newRow("append") << 2 << 0 << "";
    }
    void theLabelTellsWhatWasFound()
    {
        QFETCH(const int, method);
        QFETCH(const int, changes);
        QFETCH(const QString, text);
        DialogProbe dialog;
        RenameUser(dialog).choose(method, "40");
        dialog.changes = changes;
        QCOMPARE(RenameUser(dialog).apply("applyToAll"), changes);
        QCOMPARE(RenameUser(dialog).apply("applyToSelected"), changes);
        QCOMPARE(RenameUser(dialog).apply("applyToCurrent"), changes);
        QCOMPARE(dialog.results_label->text(), text);
    }

    void theLabelTellsWhetherSomethingWasFound()
    {
        DialogProbe dialog;
        dialog.find_next_button->click();
        QCOMPARE(dialog.results_label->text(), QString("Not Found"));
        dialog.finds = true;
        dialog.find_prev_button->click();
        QCOMPARE(dialog.results_label->text(), QString("Found"));
    }

    void textsAreTranslated()
    {
        ContextTranslator translator;
        QVERIFY(QCoreApplication::installTranslator(&translator));
        DialogProbe dialog;
        const QString form = "TaviListViewRename_UI";
        QCOMPARE(dialog.windowTitle(), form);
        for (int choice = 0; choice < 3; ++choice)
            QCOMPARE(dialog.op_combo->itemText(choice), form);
        const QList<QAbstractButton *> buttons = dialog.findChildren<QAbstractButton *>();
        QCOMPARE(buttons.size(), 7);
        for (const QAbstractButton *button : buttons) {
            QCOMPARE(button->text(), form);
            QCOMPARE(button->toolTip(), form);
        }
        QCOMPARE(dialog.replace_label->text(), form);
        for (const QWidget *widget : {static_cast<QWidget *>(dialog.op_combo), static_cast<QWidget *>(dialog.op_edit),
                                      static_cast<QWidget *>(dialog.replace_edit)})
            QCOMPARE(widget->toolTip(), form);
        QCOMPARE(dialog.results_label->text(), QString());
        for (const int changes : {0, 1, 2}) {
            dialog.changes = changes;
            dialog.apply_all_button->click();
            QCOMPARE(dialog.results_label->text(), QString(changes < 2 ? "TaviRenameDialog" : "TaviRenameDialog 2"));
        }
        for (const bool finds : {true, false}) {
            dialog.results_label->clear();
            dialog.finds = finds;
            dialog.find_next_button->click();
            QCOMPARE(dialog.results_label->text(), QString("TaviRenameDialog"));
        }
    }

    void itMayGoInTheMiddleOfEach()
    {
        for (const bool find : {true, false}) {
            auto dialog = std::make_unique<DialogProbe>();
            dialog->in_between = [&dialog] {
                dialog.reset();
            };
            (find ? dialog->find_next_button : dialog->apply_all_button)->click();
            QVERIFY(!dialog);
        }
    }
};

TAVI_GUI_TEST_MAIN(TestTaviRenameDialog)
#include "tst_tavirenamedialog.moc"
