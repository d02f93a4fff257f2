// SPDX-License-Identifier: MIT
#include "tests/listviews/listrenamefixture.h"
#include "tests/treeviews/renamedialogtest.h"

/// The list's rename dialog: its form, its settings and its place.
class TestTaviListViewRenameDlg : public RenameDialogTest
{
    Q_OBJECT

protected:
    std::unique_ptr<RenameRows> makeRows(const QStringList &texts) override
    {
        return std::make_unique<RenameList>(texts);
    }
    std::unique_ptr<TaviRenameDialog> makeDialogOfNoView(TaviRegistry &registry, std::string &section) override
    {
        return std::make_unique<TaviListViewRenameDLG>(nullptr, 0, registry, section);
    }

private Q_SLOTS:
    void construction()
    {
        RenameList list;
        const ListRenameDialog dialog(list);
        QCOMPARE(dialog.window.parentWidget(), nullptr);
        QCOMPARE(dialog.window.objectName(), QString("tavilist_rename_DLG"));
    }

    // An id is no section: columns are moved and hidden.
    void theTitleNamesTheColumnWithTheId()
    {
        RenameList list;
        QVERIFY(isVisibleWindow(&list.view));
        list.view.dragHeading(0, 1, 20);
        QCOMPARE(list.view.headings(), QString("Remark Ink"));
        QCOMPARE(ListRenameDialog(list, 0).window.windowTitle(), QString("Rename or Find (Ink)"));
        list.view.setItemVisible(1, false);
        QCOMPARE(list.view.headings(), QString("Ink"));
        QCOMPARE(ListRenameDialog(list, 0).window.windowTitle(), QString("Rename or Find (Ink)"));
        QCOMPARE(ListRenameDialog(list, 1).window.windowTitle(), QString("Rename or Find"));
    }

    void aColumnWithoutAHeadingIsNotNamed()
    {
        RenameList list;
        list.setHeading("");
        QCOMPARE(ListRenameDialog(list).window.windowTitle(), QString("Rename or Find"));
    }

    void aListWithoutAHeaderMenuHasNoIds()
    {
        RenameList list;
        list.view.setHeaderMenuEnabled(false);
        ListRenameDialog dialog(list);
        QCOMPARE(dialog.window.windowTitle(), QString("Rename or Find"));
        dialog.choose(0, "40", "50");
        QCOMPARE(found(dialog, list, true), QString(": Not Found"));
        QCOMPARE(dialog.apply("applyToAll"), 0);
        QCOMPARE(list.texts(), RenameRows::inks().join('|'));
    }

    // It stands for itself, but is no window that an application lives for.
    void theApplicationEndsWithItsLastWindowAllTheSame()
    {
        RenameList list;
        QVERIFY(isVisibleWindow(&list.view));
        ListRenameDialog dialog(list);
        QVERIFY(isVisibleWindow(&dialog.window));
        QTimer::singleShot(0, &list.view, &QWidget::close);
        QTimer::singleShot(10000, &dialog.window, [] { QCoreApplication::exit(1); });
        QCOMPARE(QCoreApplication::exec(), 0); // which ends the program
    }
};

TAVI_GUI_TEST_MAIN(TestTaviListViewRenameDlg)
#include "tst_tavilistviewrenamedlg.moc"
