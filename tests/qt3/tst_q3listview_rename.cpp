// SPDX-License-Identifier: MIT
#include "tests/qt3/listfixture.h"
#include "tests/support/tavitest.h"

#include <QLineEdit>

namespace {

QLineEdit *editorOf(const Q3ListView &list)
{
    QLineEdit *editor = list.viewport()->findChild<QLineEdit *>(QStringLiteral("list view editor"));
    return editor && editor->isVisible() ? editor : nullptr;
}

} // namespace

class TestQ3ListViewRename : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void onlyWhereItIsEnabled()
    {
        ListFixture list;
        QVERIFY(list.showAndWait());
        list.at(1)->startRename(0);
        QVERIFY(!list.isRenaming());
        list.at(1)->setRenameEnabled(1, true);
        list.at(1)->setRenameEnabled(-1, true);
        QVERIFY(list.at(1)->renameEnabled(1) && !list.at(1)->renameEnabled(0) && !list.at(1)->renameEnabled(-1));
        list.at(1)->startRename(0);
        QVERIFY(!list.isRenaming());
        list.at(1)->startRename(1);
        QVERIFY(list.isRenaming());
    }

    void returnAccepts()
    {
        ListFixture list;
        list.at(1)->setRenameEnabled(0, true);
        QVERIFY(list.showAndWait());
        QSignalSpy renamed(&list, SIGNAL(itemRenamed(Q3ListViewItem *, int, QString)));
        QSignalSpy shorter(&list, SIGNAL(itemRenamed(Q3ListViewItem *, int)));
        list.at(1)->startRename(0);
        QLineEdit *editor = editorOf(list);
        QVERIFY(editor);
        QCOMPARE(editor->text(), QStringLiteral("row 1"));
        QCOMPARE(editor->selectedText(), QStringLiteral("row 1"));
        QVERIFY(list.itemRect(list.at(1)).contains(editor->geometry()));
        QTest::keyClicks(editor, QStringLiteral("new"));
        QTest::keyClick(editor, Qt::Key_Return);
        QCOMPARE(list.at(1)->text(0), QStringLiteral("new"));
        QCOMPARE(renamed.count(), 1);
        QCOMPARE(renamed.at(0).at(0).value<Q3ListViewItem *>(), list.at(1));
        QCOMPARE(renamed.at(0).at(1).toInt(), 0);
        QCOMPARE(renamed.at(0).at(2).toString(), QStringLiteral("new"));
        QCOMPARE(shorter.count(), 1);
        QVERIFY(!list.isRenaming() && !editorOf(list));
        QTRY_VERIFY(list.hasFocus());
    }

    void escapeRejects()
    {
        ListFixture list;
        list.at(1)->setRenameEnabled(0, true);
        QVERIFY(list.showAndWait());
        QSignalSpy renamed(&list, SIGNAL(itemRenamed(Q3ListViewItem *, int)));
        list.at(1)->startRename(0);
        QTest::keyClicks(editorOf(list), QStringLiteral("new"));
        QTest::keyClick(editorOf(list), Qt::Key_Escape);
        QCOMPARE(list.at(1)->text(0), QStringLiteral("row 1"));
        QCOMPARE(renamed.count(), 0);
        QVERIFY(!list.isRenaming());
    }

    void losingTheFocus_data()
    {
        QTest::addColumn<Q3ListView::RenameAction>("action");
        QTest::addColumn<QString>("text");
        QTest::newRow("accepts") << Q3ListView::Accept << "new";
        QTest::newRow("rejects") << Q3ListView::Reject << "row 1";
    }
    void losingTheFocus()
    {
        QFETCH(Q3ListView::RenameAction, action);
        QFETCH(QString, text);
        QWidget window;
        auto *list = new ListFixture;
        list->setParent(&window);
        QLineEdit other(&window);
        other.move(0, 210);
        window.resize(300, 240);
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QCOMPARE(list->defaultRenameAction(), Q3ListView::Reject);
        list->setDefaultRenameAction(action);
        list->at(1)->setRenameEnabled(0, true);
        list->at(1)->startRename(0);
        QTest::keyClicks(editorOf(*list), QStringLiteral("new"));
        other.setFocus();
        QCOMPARE(list->at(1)->text(0), text);
        QVERIFY(!list->isRenaming());
        QVERIFY(other.hasFocus());
        list->at(1)->startRename(0);
        QTest::keyClicks(editorOf(*list), QStringLiteral("new"));
        list->click(list->at(3));
        QCOMPARE(list->at(1)->text(0), text);
    }

    void f2Renames()
    {
        ListFixture list;
        list.at(2)->setRenameEnabled(1, true);
        QVERIFY(list.showAndWait());
        list.setCurrentItem(list.at(1));
        QTest::keyClick(&list, Qt::Key_F2);
        QVERIFY(!list.isRenaming());
        list.setCurrentItem(list.at(2));
        QTest::keyClick(&list, Qt::Key_F2);
        QVERIFY(list.isRenaming());
        QCOMPARE(editorOf(list)->text(), QStringLiteral("2"));
    }

    void aSecondSlowClickRenames()
    {
        const int before = QApplication::doubleClickInterval();
        QApplication::setDoubleClickInterval(50);
        ListFixture list;
        list.at(2)->setRenameEnabled(0, true);
        QVERIFY(list.showAndWait());
        list.click(list.at(2));
        QVERIFY(!list.isRenaming());
        list.click(list.at(2));
        QVERIFY(!list.isRenaming());
        QTRY_VERIFY(list.isRenaming());
        QTest::keyClick(editorOf(list), Qt::Key_Escape);
        list.click(list.at(2));
        QTest::mouseDClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, list.middleOf(list.at(2)));
        QTest::qWait(100); // twice the time after which it would begin
        QVERIFY(!list.isRenaming());
        QApplication::setDoubleClickInterval(before);
    }

    void theEditorScrollsAlong()
    {
        ListFixture list(100);
        list.at(3)->setRenameEnabled(0, true);
        QVERIFY(list.showAndWait());
        list.at(3)->startRename(0);
        const QPoint before = editorOf(list)->pos();
        list.setContentsPos(0, 20);
        QCOMPARE(editorOf(list)->pos(), before - QPoint(0, 20));
        list.setColumnWidth(0, 90);
        QTRY_COMPARE(editorOf(list)->width(), 90);
    }

    void aSecondRenamingEndsTheFirst()
    {
        ListFixture list;
        list.setDefaultRenameAction(Q3ListView::Accept);
        list.at(1)->setRenameEnabled(0, true);
        list.at(2)->setRenameEnabled(0, true);
        QVERIFY(list.showAndWait());
        list.at(1)->startRename(0);
        QTest::keyClicks(editorOf(list), QStringLiteral("new"));
        list.at(2)->startRename(0);
        QCOMPARE(list.at(1)->text(0), QStringLiteral("new"));
        QVERIFY(list.isRenaming());
    }

    void whatIsNoSecondSlowClick_data()
    {
        QTest::addColumn<int>("what");
        QTest::newRow("a first click") << 0;
        QTest::newRow("with a modifier") << 1;
        QTest::newRow("a click elsewhere follows") << 2;
        QTest::newRow("in a column that cannot be renamed") << 3;
    }
    void whatIsNoSecondSlowClick()
    {
        QFETCH(int, what);
        const int before = QApplication::doubleClickInterval();
        QApplication::setDoubleClickInterval(50);
        ListFixture list;
        list.at(2)->setRenameEnabled(0, true);
        QVERIFY(list.showAndWait());
        if (what > 0)
            list.click(list.at(2));
        list.click(list.at(2), what == 1 ? Qt::ControlModifier : Qt::NoModifier, what == 3 ? 1 : 0);
        if (what == 2)
            list.click(list.at(4));
        QTest::qWait(150); // thrice the time after which it would begin
        QVERIFY(!list.isRenaming());
        QApplication::setDoubleClickInterval(before);
    }

    void aPressEndsARenamingWithoutTheFocus()
    {
        ListFixture list;
        list.setFocusPolicy(Qt::NoFocus);
        list.viewport()->setFocusPolicy(Qt::NoFocus);
        list.at(1)->setRenameEnabled(0, true);
        QVERIFY(list.showAndWait());
        list.at(1)->startRename(0);
        list.click(list.at(3));
        QVERIFY(!list.isRenaming());
        QCOMPARE(list.at(1)->text(0), QStringLiteral("row 1"));
    }
};

TAVI_GUI_TEST_MAIN(TestQ3ListViewRename)

#include "tst_q3listview_rename.moc"
