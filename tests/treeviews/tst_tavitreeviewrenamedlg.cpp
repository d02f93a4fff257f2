// SPDX-License-Identifier: MIT
#include "tests/treeviews/renamedialogtest.h"
#include "tests/treeviews/renamefixture.h"

/// The tree's rename dialog: its form, its settings and its place.
class TestTaviTreeViewRenameDlg : public RenameDialogTest
{
    Q_OBJECT

protected:
    std::unique_ptr<RenameRows> makeRows(const QStringList &texts) override
    {
        return std::make_unique<RenameTree>(texts);
    }
    std::unique_ptr<TaviRenameDialog> makeDialogOfNoView(TaviRegistry &registry, std::string &section) override
    {
        return std::make_unique<TaviTreeViewRenameDLG>(nullptr, 0, registry, section);
    }

private Q_SLOTS:
    void construction()
    {
        RenameTree tree;
        const RenameDialog dialog(tree);
        QCOMPARE(dialog.window.parentWidget(), &tree.view);
        QCOMPARE(dialog.window.objectName(), QString("tavitree_rename_DLG"));
    }

    void withoutAViewThereAreNoCandidates()
    {
        TaviRegistry registry;
        std::string section;
        const TaviTreeViewRenameDLG window(nullptr, 0, registry, section);
        QVERIFY(!window.nextCandidate().isValid() && !window.prevCandidate().isValid());
    }
};

TAVI_GUI_TEST_MAIN(TestTaviTreeViewRenameDlg)
#include "tst_tavitreeviewrenamedlg.moc"
