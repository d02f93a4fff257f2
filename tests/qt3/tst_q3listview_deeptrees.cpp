// SPDX-License-Identifier: MIT
//
// Trees that are deeper than the stack: nothing may call itself for each level.
#include "tests/qt3/listfixture.h"
#include "tests/support/tavitest.h"

#include <sys/resource.h>

namespace {

/// Lets the stack grow to half a megabyte only.
class SmallStack
{
public:
    SmallStack()
    {
        getrlimit(RLIMIT_STACK, &before_);
        rlimit small = before_;
        small.rlim_cur = 512 * 1024;
        setrlimit(RLIMIT_STACK, &small);
    }
    ~SmallStack() { setrlimit(RLIMIT_STACK, &before_); }
    SmallStack(const SmallStack &) = delete;
    SmallStack &operator=(const SmallStack &) = delete;

private:
    rlimit before_{};
};

constexpr int levels = 10000;

/// Open to the lowest, which is returned.
Q3ListViewItem *makeDeep(Q3ListView *list)
{
    list->setTreeStepSize(0);
    auto *item = new Q3ListViewItem(list, QStringLiteral("top"));
    for (int level = 1; level < levels; ++level) {
        auto *child = new Q3ListViewItem(item, QStringLiteral("x"));
        item->setOpen(true);
        item = child;
    }
    return item;
}

/// Notes the deletion, and may delete another with itself.
class Mortal : public Q3ListViewItem
{
public:
    template <typename Parent>
    Mortal(Parent *parent, const QString &name) : Q3ListViewItem(parent, name)
    {}
    ~Mortal() override
    {
        deleted += text(0);
        delete victim;
        deleted += QLatin1Char(' ');
    }
    Mortal *victim = nullptr;
    static inline QString deleted;
};

} // namespace

class TestQ3ListViewDeepTrees : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { Mortal::deleted.clear(); }

    void theyAreMeasured()
    {
        ListFixture list(0);
        const Q3ListViewItem *const lowest = makeDeep(&list);
        const SmallStack small;
        const int y = lowest->itemPos();
        QVERIFY(lowest->height() > 0);
        QCOMPARE(y, lowest->height() * (levels - 1));
        QCOMPARE(list.firstChild()->totalHeight(), lowest->height() * levels);
    }

    void theyAreSorted()
    {
        ListFixture list(0);
        Q3ListViewItem *const lowest = makeDeep(&list);
        new Q3ListViewItem(lowest, QStringLiteral("a"));
        new Q3ListViewItem(lowest, QStringLiteral("b"));
        lowest->setOpen(true);
        const SmallStack small;
        list.setSorting(0);
        QCOMPARE(lowest->itemBelow()->text(0), QStringLiteral("a"));
        const int height = list.firstChild()->totalHeight();
        QVERIFY(lowest->height() > 0);
        QCOMPARE(height, lowest->height() * (levels + 2));
    }

    void theyAreDeleted()
    {
        ListFixture list(0);
        makeDeep(&list);
        const SmallStack small;
        delete list.firstChild();
        QCOMPARE(list.childCount(), 0);
        makeDeep(&list);
        list.clear();
        QCOMPARE(list.childCount(), 0);
    }

    void parentsAreDeletedFirstAndChildrenBeforeSiblings()
    {
        ListFixture list(0);
        auto *top = new Mortal(&list, QStringLiteral("top"));
        auto *b = new Mortal(top, QStringLiteral("b"));
        auto *a = new Mortal(top, QStringLiteral("a"));
        new Mortal(a, QStringLiteral("a2"));
        new Mortal(new Mortal(a, QStringLiteral("a1")), QStringLiteral("a1x"));
        new Mortal(b, QStringLiteral("b1"));
        delete top;
        QCOMPARE(Mortal::deleted, QStringLiteral("top a a1 a1x a2 b b1 "));
    }

    void siblingsMayGoInTheDestructor()
    {
        ListFixture list(0);
        list.setSorting(0);
        auto *top = new Mortal(&list, QStringLiteral("top"));
        top->setOpen(true);
        std::vector<Mortal *> children;
        for (const char *name : {"a", "b", "c", "d"})
            children.push_back(new Mortal(top, QString::fromLatin1(name)));
        new Mortal(children[1], QStringLiteral("b1"));
        QCOMPARE(list.rows(), QStringLiteral("top a b c d"));
        children[0]->victim = children[1];
        children[2]->victim = children[3];
        delete top;
        QCOMPARE(Mortal::deleted, QStringLiteral("top ab b1  cd  "));
    }

    void siblingsMayGoInTheDestructorFurtherDown()
    {
        ListFixture list(0);
        auto *middle = new Mortal(new Mortal(&list, QStringLiteral("top")), QStringLiteral("middle"));
        auto *c = new Mortal(middle, QStringLiteral("c"));
        auto *b = new Mortal(middle, QStringLiteral("b"));
        auto *a = new Mortal(middle, QStringLiteral("a"));
        new Mortal(b, QStringLiteral("b1"));
        a->victim = b;
        Q_UNUSED(c)
        delete list.firstChild();
        QCOMPARE(Mortal::deleted, QStringLiteral("top middle ab b1  c "));
    }
};

TAVI_GUI_TEST_MAIN(TestQ3ListViewDeepTrees)

#include "tst_q3listview_deeptrees.moc"
