// SPDX-License-Identifier: MIT
#include "tests/support/tavitest.h"
#include "tests/treeviews/treefixture.h"

#include <QMimeData>
#include <QProcess>

Q_DECLARE_METATYPE(Qt::DropAction)

namespace {

/// A model whose rows are dragged and dropped; it notes what is dropped.
class DragModel : public TaviTreeModel
{
public:
    using TaviTreeModel::TaviTreeModel;

    QMimeData *mimeData(const QModelIndexList &indexes) const override
    {
        auto *data = new QMimeData;
        data->setText(indexes.value(0).data().toString());
        return data;
    }
    bool dropMimeData(const QMimeData *, Qt::DropAction action, int, int, const QModelIndex &) override
    {
        drops.append(action);
        if (during_drop)
            during_drop();
        return true;
    }
    bool canDropMimeData(const QMimeData *, Qt::DropAction, int, int, const QModelIndex &) const override
    {
        return true;
    }
    bool removeRows(int row, int count, const QModelIndex &parent) override
    {
        removed_rows += count;
        return TaviTreeModel::removeRows(row, count, parent);
    }
    Qt::DropActions supportedDropActions() const override { return Qt::CopyAction | Qt::MoveAction; }

    QList<Qt::DropAction> drops;
    int removed_rows = 0;
    std::function<void()> during_drop;
};

} // namespace

/// Drags by the real pointer, of a view into itself and into another.
class TestTaviTreeViewDrag : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY2(QProcess::execute("xdotool", {"version"}) == 0, "xdotool is needed"); }
    void init()
    {
        TaviTest::init();
        for (View *one : {&first, &second}) {
            one->model = std::make_unique<DragModel>(QList<QVariant>{"name"});
            for (const char *name : {"cyan", "magenta", "yellow", "black"}) {
                TaviTreeItem *item = makeItem(name);
                item->setDraggable(true);
                item->setDroppable(true);
                one->model->appendItem(item);
            }
            one->view = std::make_unique<TreeProbe>();
            one->view->setModel(one->model.get());
            one->view->setDragDropMode(QAbstractItemView::DragDrop);
            one->view->setGeometry(one == &first ? 100 : 500, 100, 300, 250);
            one->view->show();
            QVERIFY(QTest::qWaitForWindowActive(one->view.get()));
        }
    }
    void cleanup()
    {
        for (View *one : {&first, &second}) {
            one->view.reset();
            one->model.reset();
        }
        TaviTest::cleanup();
    }

    void aViewIntoItself_data()
    {
        QTest::addColumn<long>("flags");
        QTest::addColumn<bool>("with_control");
        QTest::addColumn<QList<Qt::DropAction>>("drops");
        const QList<Qt::DropAction> none;
        QTest::newRow("nothing allowed") << 0L << false << none;
        QTest::newRow("others allowed") << (2L | 4L | 8L) << false << none;
        QTest::newRow("a copy") << 1L << true << QList<Qt::DropAction>({Qt::CopyAction});
        QTest::newRow("forced to move") << 9L << false << QList<Qt::DropAction>({Qt::MoveAction});
        QTest::newRow("forced to move from a copy") << 9L << true << QList<Qt::DropAction>({Qt::MoveAction});
    }
    void aViewIntoItself()
    {
        QFETCH(long, flags);
        QFETCH(bool, with_control);
        QFETCH(QList<Qt::DropAction>, drops);
        first.view->setDNDFlags(flags);
        QVERIFY(drag(placeOf(first, 0), placeOf(first, 2), with_control));
        QCOMPARE(first.model->drops, drops);
        // The source hears of the move, too.
        QCOMPARE(first.model->removed_rows, drops.contains(Qt::MoveAction) ? 1 : 0);
        QCOMPARE(first.view->state(), 0);
    }

    void oneViewIntoAnother_data()
    {
        QTest::addColumn<long>("flags");
        QTest::addColumn<QList<Qt::DropAction>>("drops");
        QTest::newRow("nothing allowed") << 0L << QList<Qt::DropAction>();
        QTest::newRow("itself and outside allowed") << (1L | 4L) << QList<Qt::DropAction>();
        QTest::newRow("allowed") << 2L << QList<Qt::DropAction>({Qt::CopyAction});
        QTest::newRow("forced to move") << (2L | 16L) << QList<Qt::DropAction>({Qt::MoveAction});
    }
    void oneViewIntoAnother()
    {
        QFETCH(long, flags);
        QFETCH(QList<Qt::DropAction>, drops);
        second.view->setDNDFlags(flags);
        QVERIFY(drag(placeOf(first, 1), placeOf(second, 2), true));
        QCOMPARE(second.model->drops, drops);
        QVERIFY(first.model->drops.isEmpty());
    }

    void theDraggedItemMayBeDeletedByTheDrop()
    {
        first.view->setDNDFlags(9);
        first.model->during_drop = [&] {
            first.model->removeItems({first.model->itemAt(0), first.model->itemAt(2)});
        };
        QVERIFY(drag(placeOf(first, 0), placeOf(first, 2), false));
        QCOMPARE(first.model->drops.size(), 1);
        QCOMPARE(first.view->shownTexts(), QStringList({"magenta", "black"}));
        first.view->repaint();
    }

private:
    struct View {
        std::unique_ptr<DragModel> model;
        std::unique_ptr<TreeProbe> view;
    };

    static QPoint placeOf(const View &one, int row)
    {
        return one.view->viewport()->mapToGlobal(one.view->centreOf(one.view->model()->index(row, 0)));
    }

    /// Drags with the pointer of the display, as a user would: the program has to see single moves.
    static bool drag(const QPoint &from, const QPoint &to, bool with_control)
    {
        QString script = QStringLiteral("xdotool mousemove %1 %2; sleep 0.1; xdotool mousedown 1; sleep 0.1; ")
                             .arg(from.x())
                             .arg(from.y());
        if (with_control)
            script += QStringLiteral("xdotool keydown ctrl; ");
        const int steps = 10;
        for (int step = 1; step <= steps; ++step) {
            const QPoint at = from + (to - from) * step / steps;
            script += QStringLiteral("xdotool mousemove %1 %2; sleep 0.03; ").arg(at.x()).arg(at.y());
        }
        script += QStringLiteral("sleep 0.2; xdotool mousemove_relative 1 1; sleep 0.2; xdotool mouseup 1; ");
        if (with_control)
            script += QStringLiteral("sleep 0.05; xdotool keyup ctrl; ");
        QProcess process;
        process.start("bash", {"-c", script});
        const bool done = QTest::qWaitFor([&] { return process.state() == QProcess::NotRunning; }, 15000);
        QTest::qWait(150); // the drop itself comes with the window system's answer
        return done && process.exitCode() == 0;
    }

    View first;
    View second;
};

TAVI_GUI_TEST_MAIN(TestTaviTreeViewDrag)
#include "tst_tavitreeview_drag.moc"
