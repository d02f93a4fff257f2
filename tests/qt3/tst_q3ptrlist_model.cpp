// SPDX-License-Identifier: MIT
#include "tests/qt3/numberlist.h"
#include "tests/support/tavitest.h"

#include <random>
#include <vector>

namespace {

/// What the list should do, told with a plain vector.
struct Model {
    std::vector<Number *> items;
    int current = -1;
    int iterator = -1; ///< Where an iterator stands; -1 for none.

    int size() const { return static_cast<int>(items.size()); }

    void insert(int index, Number *item)
    {
        items.insert(items.begin() + index, item);
        current = index;
        if (iterator >= index)
            ++iterator;
    }

    Number *take(int index)
    {
        Number *item = items[static_cast<size_t>(index)];
        items.erase(items.begin() + index);
        if (iterator > index || iterator == size())
            --iterator;
        current = std::min(index, size() - 1);
        return item;
    }

    void find(const Number *item, int from)
    {
        current = -1;
        for (int i = from; from >= 0 && i < size() && current < 0; ++i) {
            if (items[static_cast<size_t>(i)] == item)
                current = i;
        }
    }
};

} // namespace

/// Random operations, done to a list and to a plain vector: both agree after each.
class TestQ3PtrListModel : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void theListDoesWhatAVectorWould_data()
    {
        QTest::addColumn<uint>("seed");
        for (uint seed = 1; seed <= 20; ++seed)
            QTest::addRow("seed %u", seed) << seed;
    }

    void theListDoesWhatAVectorWould()
    {
        QFETCH(uint, seed);
        std::mt19937 random(seed);
        const auto below = [&random](int limit) {
            return limit > 0 ? static_cast<int>(random() % static_cast<uint>(limit)) : 0;
        };
        Q3PtrList<Number> list;
        Q3PtrListIterator<Number> iterator(list);
        Model model;
        for (int step = 0; step < 2000; ++step) {
            const int size = model.size();
            const int index = below(size + 2);
            const bool is_there = index < size;
            switch (below(13)) {
            case 0:
            case 1:
            case 2: {
                auto *item = new Number(step);
                if (list.insert(static_cast<uint>(index), item))
                    model.insert(index, item);
                else
                    delete item;
                QCOMPARE(model.size(), index <= size ? size + 1 : size);
                break;
            }
            case 3:
                if (Number *item = list.take(static_cast<uint>(index))) {
                    QVERIFY(is_there && item == model.take(index));
                    delete item;
                } else {
                    QVERIFY(!is_there);
                }
                break;
            case 4:
                if (Number *item = list.take()) {
                    QVERIFY(item == model.take(model.current));
                    delete item;
                } else {
                    QCOMPARE(model.current, -1);
                }
                break;
            case 5:
                QVERIFY(list.at(static_cast<uint>(index)) == (is_there ? model.items[size_t(index)] : nullptr));
                if (is_there)
                    model.current = index;
                break;
            case 6:
                list.next();
                model.current = model.current < 0 || model.current + 1 == size ? -1 : model.current + 1;
                break;
            case 7:
                list.prev();
                model.current = std::max(model.current - 1, -1);
                break;
            case 8:
                if (is_there) {
                    list.findRef(model.items[size_t(index)]);
                    model.find(model.items[size_t(index)], 0);
                }
                break;
            case 9:
                if (is_there) {
                    list.findNext(model.items[size_t(index)]);
                    model.find(model.items[size_t(index)], model.current);
                }
                break;
            case 10:
                iterator.toFirst();
                iterator += static_cast<uint>(index);
                model.iterator = is_there ? index : -1;
                break;
            case 11:
                --iterator;
                model.iterator = std::max(model.iterator - 1, -1);
                break;
            default:
                if (is_there) {
                    list.at(static_cast<uint>(index));
                    Q3LNode *node = list.currentNode();
                    list.at(static_cast<uint>(below(size)));
                    Number *item = list.takeNode(node);
                    QVERIFY(item == model.take(index));
                    delete item;
                    model.current = model.items.empty() ? -1 : 0;
                }
                break;
            }
            QCOMPARE(list.at(), model.current);
            QVERIFY(list.current() == (model.current < 0 ? nullptr : model.items[size_t(model.current)]));
            QVERIFY(iterator.current() == (model.iterator < 0 ? nullptr : model.items[size_t(model.iterator)]));
            QVERIFY(std::equal(list.begin(), list.end(), model.items.begin(), model.items.end()));
            QVERIFY(std::equal(std::make_reverse_iterator(list.end()), std::make_reverse_iterator(list.begin()),
                               model.items.rbegin(), model.items.rend()));
            QCOMPARE(list.count(), static_cast<uint>(model.size()));
        }
        list.setAutoDelete(true);
        list.clear();
        QCOMPARE(Number::alive, 0);
    }
};

TAVI_TEST_MAIN(TestQ3PtrListModel)
#include "tst_q3ptrlist_model.moc"
