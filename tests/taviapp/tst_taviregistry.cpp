// SPDX-License-Identifier: MIT
#include "taviapp/taviregistry.h"
#include "tests/support/tavitest.h"

#include <QTemporaryDir>

#include <climits>
#include <memory>

namespace {

/// Every key of a section with its text, as a walk finds them: "key=value".
QStringList walked(TaviRegistry &registry, const char *section)
{
    QStringList items;
    for (auto at = registry.firstItem(section); !registry.isEndItem(at); at = registry.nextItem())
        items.append(QString::fromStdString(registry.key(at) + "=" + registry.value(at)));
    return items;
}

} // namespace

Q_DECLARE_METATYPE(std::string)

/// The rules of the store, on both of its forms.
class TestTaviRegistry : public TaviTest
{
    Q_OBJECT

    /// One store in memory or in a file; the latter can be closed and opened again.
    class Store
    {
    public:
        Store()
        {
            QFETCH_GLOBAL(bool, file);
            file_ = file;
            reopen();
        }
        TaviRegistry *operator->() { return registry_.get(); }
        TaviRegistry &operator*() { return *registry_; }
        /// Shows what the file holds; the form in memory stays as it is.
        void reopen()
        {
            if (registry_ && !file_)
                return;
            registry_.reset();
            registry_ = file_ ? std::make_unique<TaviRegistry>(directory_.filePath("settings.db").toStdString())
                              : std::make_unique<TaviRegistry>();
        }

    private:
        QTemporaryDir directory_;
        bool file_ = false;
        std::unique_ptr<TaviRegistry> registry_;
    };

private Q_SLOTS:
    void initTestCase_data()
    {
        QTest::addColumn<bool>("file");
        QTest::newRow("in memory") << false;
        QTest::newRow("in a file") << true;
    }

    void aNewStoreIsEmpty()
    {
        Store store;
        QCOMPARE(store->size("window"), size_t(0));
        QVERIFY(store->isEndItem(store->firstItem("window")));
        QVERIFY(!store->exists("window", "width"));
    }

    void missingKeysGiveEmptyValues()
    {
        Store store;
        QCOMPARE(store->getlong("window", "width"), 0L);
        QCOMPARE(store->getstring("window", "width"), std::string());
        QCOMPARE(store->getbool("window", "width", true), true);
        QCOMPARE(store->getbool("window", "width", false), false);
        store->putlong("window", "height", 5);
        QVERIFY(!store->exists("window", "width"));
        QVERIFY(!store->exists("height", "window"));
        QCOMPARE(store->getbool("window", "width", true), true);
    }

    void whatIsPutIsThereAgain()
    {
        Store store;
        store->putlong("window", "width", 800);
        store->putulong("window", "count", 7);
        store->putbool("window", "shown", false);
        store->putstring("window", "name", "proof");
        for (int pass = 0; pass < 2; ++pass) {
            QCOMPARE(store->size("window"), size_t(4));
            QCOMPARE(store->getlong("window", "width"), 800L);
            QCOMPARE(store->getlong("window", "count"), 7L);
            QCOMPARE(store->getbool("window", "shown", true), false);
            QCOMPARE(store->getstring("window", "name"), std::string("proof"));
            QVERIFY(store->exists("window", "name"));
            QCOMPARE(walked(*store, "window"), (QStringList{"count=7", "name=proof", "shown=0", "width=800"}));
            store.reopen();
        }
    }
};

TAVI_TEST_MAIN(TestTaviRegistry)
#include "tst_taviregistry.moc"
