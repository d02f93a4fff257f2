// SPDX-License-Identifier: MIT
#include "qt3/q3listviewaccess_p.h"
#include "tests/qt3/listfixture.h"
#include "tests/support/tavitest.h"

namespace {

/// An event as an assistive program would get it.
struct Told {
    QAccessible::Event type;
    QString name; ///< Of what it is about.
};
QVector<Told> told;

void record(QAccessibleEvent *event)
{
    QAccessibleInterface *about = event->accessibleInterface();
    told.append({event->type(), about ? about->text(QAccessible::Name) : QStringLiteral("nothing")});
}

/// A list that describes itself.
class OwnList : public ListFixture
{
    Q_OBJECT
};

QAccessibleInterface *describeOwn(const QString &class_name, QObject *object)
{
    return class_name.endsWith(QLatin1String("OwnList"))
               ? new QAccessibleWidget(static_cast<QWidget *>(object), QAccessible::Table)
               : nullptr;
}

/// The names that events of a kind were about.
QStringList toldOf(QAccessible::Event type)
{
    QStringList names;
    for (const Told &one : qAsConst(told)) {
        if (one.type == type)
            names.append(one.name);
    }
    return names;
}

QAccessibleInterface *of(Q3ListView *view)
{
    return QAccessible::queryAccessibleInterface(view);
}

/// The row with a number among those of a view; the header stands before them.
QAccessibleInterface *rowOf(Q3ListView *view, int row)
{
    return of(view)->child(row + 1);
}

} // namespace

class TestQ3ListViewAccessible : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { Q3ListViewAccess::deliver = record; }
    void cleanupTestCase() { Q3ListViewAccess::deliver = QAccessible::updateAccessibility; }
    void init()
    {
        TaviTest::init();
        told.clear();
    }

    void aViewIsATreeOfRows()
    {
        ListFixture list(3);
        auto *child = new Q3ListViewItem(list.at(1), QStringLiteral("below"), QStringLiteral("11"));
        QAccessibleInterface *view = of(&list);
        QVERIFY(view);
        QCOMPARE(view->object(), &list);
        QCOMPARE(view->role(), QAccessible::Tree);
        QCOMPARE(view->childCount(), 4);
        QCOMPARE(view->child(0)->object(), list.header());
        QVERIFY(!view->child(-1));
        QVERIFY(!view->child(4));
        for (int row = 0; row < 3; ++row) {
            QAccessibleInterface *item = view->child(row + 1);
            QCOMPARE(item->role(), QAccessible::TreeItem);
            QCOMPARE(item->text(QAccessible::Name), QStringLiteral("row %1, %1").arg(row));
            QCOMPARE(item->parent(), view);
            QCOMPARE(view->indexOfChild(item), row + 1);
            QVERIFY(item->isValid());
        }
        QCOMPARE(view->indexOfChild(view->child(0)), 0);
        QCOMPARE(view->indexOfChild(view), -1);
        ListFixture other(3);
        QCOMPARE(view->indexOfChild(rowOf(&other, 1)), -1);
        QAccessibleInterface *parent = rowOf(&list, 1);
        QCOMPARE(parent->childCount(), 1);
        QCOMPARE(rowOf(&list, 0)->childCount(), 0);
        QAccessibleInterface *below = parent->child(0);
        QCOMPARE(below->text(QAccessible::Name), QStringLiteral("below, 11"));
        QCOMPARE(below->parent(), parent);
        QCOMPARE(parent->indexOfChild(below), 0);
        QCOMPARE(parent->indexOfChild(parent), -1);
        QCOMPARE(view->indexOfChild(below), -1);
        QVERIFY(!parent->child(1));
        QVERIFY(!parent->child(-1));
        QCOMPARE(parent->child(0), below); // one object for one row
        QCOMPARE(below->window(), view->window());
        delete child;
    }

    void namesFollowWhatIsShown()
    {
        ListFixture list(2);
        list.at(1)->setText(1, QString());
        QCOMPARE(rowOf(&list, 1)->text(QAccessible::Name), QStringLiteral("row 1"));
        list.header()->moveSection(1, 0);
        QCOMPARE(rowOf(&list, 0)->text(QAccessible::Name), QStringLiteral("0, row 0"));
        list.hideColumn(1);
        QCOMPARE(rowOf(&list, 0)->text(QAccessible::Name), QStringLiteral("row 0"));
        QVERIFY(rowOf(&list, 0)->text(QAccessible::Description).isEmpty());
        rowOf(&list, 0)->setText(QAccessible::Name, QStringLiteral("other"));
        QCOMPARE(list.at(0)->text(0), QStringLiteral("row 0"));
    }

    void rowsFollowTheOrder()
    {
        ListFixture list(5);
        QCOMPARE(rowOf(&list, 4)->text(QAccessible::Name), QStringLiteral("row 4, 4"));
        QAccessibleInterface *third = rowOf(&list, 2);
        list.setSorting(1, false);
        QCOMPARE(rowOf(&list, 0)->text(QAccessible::Name), QStringLiteral("row 4, 4"));
        QCOMPARE(rowOf(&list, 4)->text(QAccessible::Name), QStringLiteral("row 0, 0"));
        list.at(2)->setText(1, QStringLiteral("9"));
        QCOMPARE(of(&list)->indexOfChild(third), 1);
        list.setSorting(-1);
        QCOMPARE(rowOf(&list, 1)->text(QAccessible::Name), QStringLiteral("row 4, 4"));
        delete list.at(4);
        QCOMPARE(rowOf(&list, 1)->text(QAccessible::Name), QStringLiteral("row 3, 3"));
        new Q3ListViewItem(&list, QStringLiteral("first"));
        QCOMPARE(rowOf(&list, 1)->text(QAccessible::Name), QStringLiteral("row 2, 9"));
        list.firstChild()->moveItem(list.at(0));
        QCOMPARE(rowOf(&list, 0)->text(QAccessible::Name), QStringLiteral("row 2, 9"));
        auto *taken = list.at(2);
        list.takeItem(taken);
        QCOMPARE(rowOf(&list, 0)->text(QAccessible::Name), QStringLiteral("row 3, 3"));
        list.insertItem(taken);
        QCOMPARE(rowOf(&list, 1)->text(QAccessible::Name), QStringLiteral("row 3, 3"));
        list.at(3)->setText(1, QStringLiteral("zz"));
        list.setSorting(1);
        list.sort();
        QCOMPARE(rowOf(&list, 4)->text(QAccessible::Name), QStringLiteral("row 3, zz"));
    }

    void states()
    {
        ListFixture list(40, Q3ListView::Extended);
        list.setRootIsDecorated(true);
        auto *child = new Q3ListViewItem(list.at(1), QStringLiteral("below"));
        list.at(2)->setExpandable(true);
        list.at(3)->setEnabled(false);
        list.at(4)->setSelectable(false);
        list.at(5)->setVisible(false);
        QVERIFY(list.showAndWait());
        const auto state = [&list](int row) {
            return rowOf(&list, row)->state();
        };

        QVERIFY(of(&list)->state().extSelectable);
        QVERIFY(of(&list)->state().multiSelectable);
        QVERIFY(state(0).selectable);
        QVERIFY(state(0).focusable);
        QVERIFY(!state(0).expandable);
        QVERIFY(!state(0).invisible);
        QVERIFY(!state(0).offscreen);
        QVERIFY(!state(0).disabled);
        QVERIFY(!state(0).selected);

        QVERIFY(state(1).expandable);
        QVERIFY(state(1).collapsed);
        QVERIFY(!state(1).expanded);
        QVERIFY(rowOf(&list, 1)->child(0)->state().invisible);
        list.at(1)->setOpen(true);
        QVERIFY(state(1).expanded);
        QVERIFY(!state(1).collapsed);
        QVERIFY(!rowOf(&list, 1)->child(0)->state().invisible);
        list.at(1)->setVisible(false);
        QVERIFY(rowOf(&list, 1)->child(0)->state().invisible);
        list.at(1)->setVisible(true);
        delete child;
        QVERIFY(!state(1).expandable);
        QVERIFY(state(2).expandable);

        QVERIFY(state(3).disabled);
        QVERIFY(!state(3).focusable);
        QVERIFY(!state(3).selectable);
        QVERIFY(!state(4).selectable);
        QVERIFY(!state(4).disabled);
        QVERIFY(state(5).invisible);
        QVERIFY(!state(5).offscreen); // it is nowhere
        QVERIFY(state(39).offscreen);
        QVERIFY(!state(39).invisible);

        list.setCurrentItem(list.at(6));
        list.setSelected(list.at(7), true);
        QVERIFY(state(6).focused);
        QVERIFY(!state(6).selected);
        QVERIFY(state(7).selected);
        QVERIFY(!state(7).focused);
        QCOMPARE(of(&list)->focusChild(), rowOf(&list, 6));
        list.setSelectionMode(Q3ListView::NoSelection);
        QVERIFY(!state(0).selectable);
        list.setSelectionMode(Q3ListView::Single);
        QVERIFY(!of(&list)->state().multiSelectable);
        list.setEnabled(false);
        QVERIFY(state(0).disabled);
        QVERIFY(!state(0).selectable);
        QVERIFY(!state(6).focused);
        QVERIFY(!of(&list)->focusChild());
    }

    void places()
    {
        ListFixture list(40);
        new Q3ListViewItem(list.at(1), QStringLiteral("below"));
        list.at(5)->setVisible(false);
        QVERIFY(list.showAndWait());
        QAccessibleInterface *view = of(&list);
        for (const int row : {0, 3, 6}) {
            const QRect rect = rowOf(&list, row)->rect();
            const QRect item = list.itemRect(list.at(row));
            QCOMPARE(rect.top(), list.viewport()->mapToGlobal(item.topLeft()).y());
            QCOMPARE(rect.height(), item.height());
            QCOMPARE(rect.left(), list.viewport()->mapToGlobal(QPoint()).x());
            QCOMPARE(rect.width(), 200);
            QCOMPARE(view->childAt(rect.left() + 10, rect.center().y()), rowOf(&list, row));
        }
        const QRect far = rowOf(&list, 39)->rect();
        QCOMPARE(far.top() - rowOf(&list, 0)->rect().top(), list.at(39)->itemPos());
        QVERIFY(rowOf(&list, 5)->rect().isEmpty());
        QVERIFY(rowOf(&list, 1)->child(0)->rect().isEmpty());
        const QPoint heading = list.header()->mapToGlobal(list.header()->rect().center());
        QCOMPARE(view->childAt(heading.x(), heading.y()), view->child(0));
        const QPoint beside = list.viewport()->mapToGlobal(QPoint(250, 50));
        QVERIFY(!view->childAt(beside.x(), beside.y()));
        QVERIFY(!view->childAt(-5000, -5000));
        QVERIFY(!rowOf(&list, 0)->childAt(beside.x(), beside.y()));
    }

    void rightToLeftRowsReachTheRight()
    {
        ListFixture list(4);
        list.setLayoutDirection(Qt::RightToLeft);
        QVERIFY(list.showAndWait());
        const QPoint right = list.viewport()->mapToGlobal(QPoint(list.viewport()->width() - 1, 0));
        QCOMPARE(rowOf(&list, 0)->rect().right(), right.x());
        QCOMPARE(rowOf(&list, 0)->rect().width(), 200);
    }

    void pressingIsAClick()
    {
        ListFixture list(4, Q3ListView::Extended);
        QVERIFY(list.showAndWait());
        QAccessibleActionInterface *actions = rowOf(&list, 2)->actionInterface();
        QVERIFY(actions);
        QVERIFY(actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
        QVERIFY(actions->keyBindingsForAction(QAccessibleActionInterface::pressAction()).isEmpty());
        QSignalSpy clicked(&list, SIGNAL(clicked(Q3ListViewItem *)));
        QSignalSpy pressed(&list, SIGNAL(pressed(Q3ListViewItem *)));
        QSignalSpy button(&list, SIGNAL(mouseButtonClicked(int, Q3ListViewItem *, const QPoint &, int)));
        actions->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(clicked.count(), 1);
        QCOMPARE(clicked.at(0).at(0).value<Q3ListViewItem *>(), list.at(2));
        QCOMPARE(pressed.count(), 1);
        QCOMPARE(button.at(0).at(0).toInt(), static_cast<int>(Qt::LeftButton));
        QCOMPARE(button.at(0).at(2).toPoint(), list.viewport()->mapToGlobal(list.itemRect(list.at(2)).center()));
        QCOMPARE(button.at(0).at(3).toInt(), 0);
        QCOMPARE(list.currentItem(), list.at(2));
        QCOMPARE(list.selection(), QStringLiteral("2"));
        rowOf(&list, 1)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(list.selection(), QStringLiteral("1"));
        rowOf(&list, 1)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(list.selection(), QStringLiteral("1"));

        list.at(0)->setEnabled(false);
        actions = rowOf(&list, 0)->actionInterface();
        QVERIFY(actions->actionNames().isEmpty());
        actions->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(clicked.count(), 3);
        QCOMPARE(list.currentItem(), list.at(1));
    }

    void togglingOpensAndCloses()
    {
        ListFixture list(3);
        list.setRootIsDecorated(true);
        new Q3ListViewItem(list.at(1), QStringLiteral("below"));
        const QString toggle = QAccessibleActionInterface::toggleAction();
        QVERIFY(!rowOf(&list, 0)->actionInterface()->actionNames().contains(toggle));
        QAccessibleActionInterface *actions = rowOf(&list, 1)->actionInterface();
        QVERIFY(actions->actionNames().contains(toggle));
        actions->doAction(toggle);
        QVERIFY(list.at(1)->isOpen());
        actions->doAction(toggle);
        QVERIFY(!list.at(1)->isOpen());
        list.setRootIsDecorated(false);
        QVERIFY(!actions->actionNames().contains(toggle));
        actions->doAction(toggle);
        QVERIFY(!list.at(1)->isOpen());
    }

    void focusingMakesCurrentOnly()
    {
        ListFixture list(3);
        const QString focus = QAccessibleActionInterface::setFocusAction();
        QVERIFY(list.showAndWait());
        list.header()->setFocus();
        rowOf(&list, 2)->actionInterface()->doAction(focus);
        QCOMPARE(list.currentItem(), list.at(2));
        QVERIFY(list.hasFocus());
        QVERIFY(list.selection().isEmpty());
        rowOf(&list, 1)->actionInterface()->doAction(QStringLiteral("nonsense"));
        QCOMPARE(list.currentItem(), list.at(2));
    }

    void changesAreTold()
    {
        ListFixture list(4);
        list.setRootIsDecorated(true);
        new Q3ListViewItem(list.at(1), QStringLiteral("below"));
        QVERIFY(list.showAndWait());
        QTest::keyClick(&list, Qt::Key_Home);
        list.setSelected(list.at(2), true);
        list.setOpen(list.at(1), true);
        list.setOpen(list.at(1), false);
        list.setSelected(list.at(0), true);
        QVERIFY(told.isEmpty()); // nobody has looked
        QVERIFY(rowOf(&list, 0));
        QTest::keyClick(&list, Qt::Key_Down);
        QCOMPARE(list.currentItem(), list.at(1));
        QCOMPARE(toldOf(QAccessible::Focus), QStringList{QStringLiteral("row 1, 1")});
        QCOMPARE(toldOf(QAccessible::Selection), QStringList{QStringLiteral("row 1, 1")});
        QCOMPARE(toldOf(QAccessible::SelectionWithin).size(), 1);
        told.clear();
        list.setOpen(list.at(1), true);
        QCOMPARE(toldOf(QAccessible::StateChanged), QStringList{QStringLiteral("row 1, 1")});
        list.setOpen(list.at(1), false);
        QCOMPARE(toldOf(QAccessible::StateChanged).size(), 2);
        list.header()->setFocus();
        told.clear();
        list.setCurrentItem(list.at(3));
        QVERIFY(toldOf(QAccessible::Focus).isEmpty());
        list.setFocus();
        QCOMPARE(toldOf(QAccessible::Focus).last(), QStringLiteral("row 3, 3"));
    }

    void rowsThatGoTakeTheirInterfacesAlong()
    {
        ListFixture list(4);
        new Q3ListViewItem(list.at(1), QStringLiteral("below"));
        const QAccessible::Id parent = QAccessible::uniqueId(rowOf(&list, 1));
        const QAccessible::Id child = QAccessible::uniqueId(rowOf(&list, 1)->child(0));
        const QAccessible::Id other = QAccessible::uniqueId(rowOf(&list, 2));
        delete list.at(1);
        QVERIFY(!QAccessible::accessibleInterface(parent));
        QVERIFY(!QAccessible::accessibleInterface(child));
        QVERIFY(QAccessible::accessibleInterface(other));
        list.takeItem(list.at(2));
        QAccessibleInterface *taken = QAccessible::accessibleInterface(other);
        QVERIFY(taken);
        QVERIFY(!taken->isValid());
        QVERIFY(!taken->parent());
        QVERIFY(!taken->window());
        QCOMPARE(taken->childCount(), 0);
        QVERIFY(taken->rect().isEmpty());
        QVERIFY(taken->text(QAccessible::Name).isEmpty());
        QVERIFY(taken->state().invalid);
        QVERIFY(taken->actionInterface()->actionNames().isEmpty());
        taken->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        list.insertItem(list.at(2));
        QVERIFY(taken->isValid());
        QCOMPARE(taken->text(QAccessible::Name), QStringLiteral("row 2, 2"));
        list.clear();
        QVERIFY(!QAccessible::accessibleInterface(other));
        QCOMPARE(of(&list)->childCount(), 1);
    }

    void theViewTakesThemAlong()
    {
        auto list = std::make_unique<ListFixture>(3);
        const QAccessible::Id view = QAccessible::uniqueId(of(list.get()));
        const QAccessible::Id row = QAccessible::uniqueId(rowOf(list.get(), 1));
        QVERIFY(list->showAndWait());
        list->setCurrentItem(list->at(1));
        list.reset();
        QVERIFY(!QAccessible::accessibleInterface(view));
        QVERIFY(!QAccessible::accessibleInterface(row));
    }

    void anItemMayGoWhenPressed()
    {
        ListFixture list(3);
        connect(&list, static_cast<void (Q3ListView::*)(Q3ListViewItem *)>(&Q3ListView::pressed), &list,
                [](Q3ListViewItem *item) { delete item; });
        rowOf(&list, 1)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(list.childCount(), 2);
    }

    void manyRowsAreWalkedOnce()
    {
        ListFixture list(100000);
        QAccessibleInterface *view = of(&list);
        QCOMPARE(view->childCount(), 100001);
        QElapsedTimer time;
        time.start();
        for (int row = 1; row <= 100000; row += 10) {
            QAccessibleInterface *item = view->child(row);
            QCOMPARE(view->indexOfChild(item), row);
        }
        for (int row = 100000; row > 0; row -= 10)
            QVERIFY(view->child(row));
        // Were each sought from the first one, this would take minutes.
        QVERIFY2(time.elapsed() < 20000, qPrintable(QString::number(time.elapsed())));
    }

    void derivedClassesMayBeDescribedOtherwise()
    {
        QAccessible::installFactory(describeOwn);
        OwnList own;
        ListFixture list(1);
        QCOMPARE(of(&own)->role(), QAccessible::Table);
        QCOMPARE(of(&list)->role(), QAccessible::Tree);
        QAccessible::removeFactory(describeOwn);
    }

    void theProgramNamesTheView()
    {
        ListFixture list(1);
        QCOMPARE(of(&list)->text(QAccessible::Name), QString());
        list.setAccessibleName(QStringLiteral("inks"));
        QCOMPARE(of(&list)->text(QAccessible::Name), QStringLiteral("inks"));
    }
};

TAVI_GUI_TEST_MAIN(TestQ3ListViewAccessible)

#include "tst_q3listview_accessible.moc"
