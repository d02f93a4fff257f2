// SPDX-License-Identifier: MIT
#include "taviapp/taviregistry.h"
#include "tests/support/tavitest.h"

#include <QTemporaryDir>

#include <climits>
#include <memory>
#include <string>
#include <vector>

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

    void eachPutReplacesWhateverWasThere()
    {
        Store store;
        store->putstring("window", "state", "a long text");
        store->putbool("window", "state", true);
        QCOMPARE(store->getstring("window", "state"), std::string("1"));
        store->putlong("window", "state", -12);
        QCOMPARE(store->getstring("window", "state"), std::string("-12"));
        QCOMPARE(store->size("window"), size_t(1));
        store.reopen();
        QCOMPARE(walked(*store, "window"), QStringList{"state=-12"});
    }

    void sectionsDoNotMix()
    {
        Store store;
        store->putstring("ab", "c", "first");
        store->putstring("a", "bc", "second");
        store->putstring("", "abc", "third");
        store.reopen();
        QCOMPARE(store->getstring("ab", "c"), std::string("first"));
        QCOMPARE(store->getstring("a", "bc"), std::string("second"));
        QCOMPARE(store->getstring("", "abc"), std::string("third"));
        store->clearsection("a");
        QCOMPARE(store->size("a"), size_t(0));
        QCOMPARE(store->size("ab"), size_t(1));
        QCOMPARE(store->size(""), size_t(1));
    }

    void stringFormsAndPointerFormsAreTheSame()
    {
        Store store;
        std::string section = "window";
        std::string key = "width";
        store->putlong(section, key, 3);
        QCOMPARE(store->getlong("window", "width"), 3L);
        store->putulong("window", "width", 4);
        QCOMPARE(store->getlong(section, key), 4L);
        store->putbool(section, key, true);
        QVERIFY(store->getbool("window", "width", false));
        store->putstring("window", "width", "text");
        QCOMPARE(store->getstring(section, key), std::string("text"));
        store->putstring(section, key, std::string("other"));
        QCOMPARE(store->getstring("window", "width"), std::string("other"));
        store->putulong(section, key, 9);
        store->putbool("window", "shown", true);
        QVERIFY(store->exists(section, key) && store->exists("window", "shown"));
        QVERIFY(!store->getbool(section, key = "none", false));
        QCOMPARE(store->size(section), store->size("window"));
        QCOMPARE(store->key(store->firstItem(section)), std::string("shown"));
        store->clearkey(section, key = "shown");
        QCOMPARE(store->size(section), size_t(1));
        store->clearkey("window", "width");
        QCOMPARE(store->size(section), size_t(0));
        store->putlong("window", "width", 3);
        store->clearsection(section);
        QCOMPARE(store->size(section), size_t(0));
        QCOMPARE(section, std::string("window"));
        QCOMPARE(key, std::string("shown"));
    }

    void aNullPointerActsAsAnEmptyString()
    {
        Store store;
        const char *null = nullptr;
        QCOMPARE(TaviRegistry::reg_fixup_null_cstr(null), std::string());
        QCOMPARE(TaviRegistry::reg_fixup_null_cstr("text"), std::string("text"));

        QVERIFY(!store->exists(null, null));
        QCOMPARE(store->getlong(null, null), 0L);
        QCOMPARE(store->getstring(null, null), std::string());
        QVERIFY(store->getbool(null, null, true));
        QCOMPARE(store->size(null), size_t(0));
        QVERIFY(store->isEndItem(store->firstItem(null)));

        store->putlong(null, null, 1);
        QCOMPARE(store->getlong("", ""), 1L);
        store->putulong(null, null, 2);
        QCOMPARE(store->getlong("", ""), 2L);
        store->putbool(null, null, true);
        QVERIFY(store->getbool("", "", false));
        store->putstring(null, null, "text");
        QCOMPARE(store->getstring("", ""), std::string("text"));
        store->putstring(null, null, null);
        QVERIFY(store->exists("", ""));
        QCOMPARE(store->getstring("", ""), std::string());
        store->putstring(null, "key", "text");
        store->putstring("section", null, "text");
        store.reopen();
        QCOMPARE(store->getstring("", "key"), std::string("text"));
        QCOMPARE(store->getstring("section", ""), std::string("text"));
        QCOMPARE(walked(*store, null), (QStringList{"=", "key=text"}));

        store->clearkey(null, null);
        QVERIFY(!store->exists("", ""));
        store->clearsection(null);
        QCOMPARE(store->size(""), size_t(0));
    }

    void numbersAreKeptAsDecimalText_data()
    {
        QTest::addColumn<long>("number");
        QTest::addColumn<std::string>("text");
        QTest::newRow("zero") << 0L << std::string("0");
        QTest::newRow("one") << 1L << std::string("1");
        QTest::newRow("negative") << -42L << std::string("-42");
        QTest::newRow("largest") << LONG_MAX << std::to_string(LONG_MAX);
        QTest::newRow("smallest") << LONG_MIN << std::to_string(LONG_MIN);
    }
    void numbersAreKeptAsDecimalText()
    {
        QFETCH(long, number);
        QFETCH(std::string, text);
        Store store;
        store->putlong("numbers", "n", number);
        store.reopen();
        QCOMPARE(store->getlong("numbers", "n"), number);
        QCOMPARE(store->getstring("numbers", "n"), text);
        QCOMPARE(store->value(store->firstItem("numbers")), text);
    }

    void unsignedNumbersReadBackAsTheSameBits_data()
    {
        QTest::addColumn<ulong>("number");
        QTest::newRow("zero") << 0UL;
        QTest::newRow("largest long") << static_cast<ulong>(LONG_MAX);
        QTest::newRow("one above") << static_cast<ulong>(LONG_MAX) + 1;
        QTest::newRow("largest") << ULONG_MAX;
    }
    void unsignedNumbersReadBackAsTheSameBits()
    {
        QFETCH(ulong, number);
        Store store;
        store->putulong("numbers", "n", number);
        store.reopen();
        QCOMPARE(static_cast<ulong>(store->getlong("numbers", "n")), number);
        QCOMPARE(store->getstring("numbers", "n"), std::to_string(number));
    }

    void aTextIsReadAsTheNumberItBeginsWith_data()
    {
        QTest::addColumn<std::string>("text");
        QTest::addColumn<long>("number");
        const auto row = [](const char *text, long number) {
            QTest::newRow(text) << std::string(text) << number;
        };
        row("", 0);
        row("width", 0);
        row("true", 0);
        row("12 mm", 12);
        row("12.9", 12);
        row("1e3", 1);
        row("0x10", 0);
        row("007", 7);
        row(" \t\n\v\f\r5", 5);
        row("+5", 5);
        row("-5x", -5);
        row("  -5", -5);
        row("- 5", 0);
        row("+-5", 0);
        row("--5", 0);
        row("-", 0);
        row("   ", 0);
        row("9223372036854775807", LONG_MAX);
        row("9223372036854775808", LONG_MIN); // as an unsigned number would be kept
        row("18446744073709551615", -1);
        row("18446744073709551616", LONG_MAX);
        row("99999999999999999999999999", LONG_MAX);
        row("-9223372036854775808", LONG_MIN);
        row("-9223372036854775809", LONG_MIN);
        row("-18446744073709551615", LONG_MIN);
        row("-99999999999999999999999999", LONG_MIN);
        row("\xc2\xa0"
            "5",
            0); // a no-break space is no blank
        QTest::newRow("zero byte") << std::string("4\0"
                                                  "2",
                                                  3)
                                   << 4L;
    }
    void aTextIsReadAsTheNumberItBeginsWith()
    {
        QFETCH(std::string, text);
        QFETCH(long, number);
        Store store;
        std::string section = "numbers";
        std::string key = "n";
        store->putstring(section, key, text);
        QCOMPARE(store->getlong(section, key), number);
    }

    void flagsAreKeptAsOneAndZero()
    {
        Store store;
        store->putbool("flags", "on", true);
        store->putbool("flags", "off", false);
        store.reopen();
        QCOMPARE(walked(*store, "flags"), (QStringList{"off=0", "on=1"}));
        QCOMPARE(store->getlong("flags", "on"), 1L);
        QVERIFY(store->getbool("flags", "on", false));
        QVERIFY(!store->getbool("flags", "off", true));
    }

    void textsAreReadAsFlags_data()
    {
        QTest::addColumn<std::string>("text");
        QTest::addColumn<bool>("flag");
        for (const char *text : {"1", "2", "-1", " 7", "12 mm", "true", "99999999999999999999999999"})
            QTest::newRow(text) << std::string(text) << true;
        for (const char *text : {"", "0", "-0", "00", "false", "TRUE", "true ", " true", "yes", "0.5"})
            QTest::newRow(text) << std::string(text) << false;
    }
    void textsAreReadAsFlags()
    {
        QFETCH(std::string, text);
        QFETCH(bool, flag);
        Store store;
        store->putstring("flags", "f", text.c_str());
        QCOMPARE(store->getbool("flags", "f", !flag), flag);
        QCOMPARE(store->getbool("flags", "f", flag), flag);
    }

    void textsComeBackByteForByte_data()
    {
        QTest::addColumn<std::string>("text");
        QTest::newRow("empty") << std::string();
        QTest::newRow("line breaks") << std::string("one\ntwo\r\nthree\r\n\n");
        QTest::newRow("blanks at the ends") << std::string("  text\t");
        QTest::newRow("quotes") << std::string("it's \"so\"; DROP TABLE setting; --");
        QTest::newRow("UTF-8") << std::string("gr\xc3\xbc\xc3\x9f"
                                              "e \xe6\x97\xa5\xe6\x9c\xac \xf0\x9f\x8e\xa8");
        QTest::newRow("not UTF-8") << std::string("\xff\xfe\x80\xc3");
        QTest::newRow("zero bytes") << std::string("\0a\0\0b\0", 6);
        QTest::newRow("looks like a number") << std::string("007.50");
        QTest::newRow("long") << std::string(3000000, 'x');
    }
    void textsComeBackByteForByte()
    {
        QFETCH(std::string, text);
        Store store;
        std::string section = "texts";
        std::string key = "t";
        store->putstring(section, key, text);
        for (int pass = 0; pass < 2; ++pass) {
            QVERIFY(store->exists(section, key));
            QVERIFY(store->getstring(section, key) == text);
            QVERIFY(store->value(store->firstItem(section)) == text);
            store.reopen();
        }
    }

    void sectionsAndKeysAreAnyBytes_data() { textsComeBackByteForByte_data(); }
    void sectionsAndKeysAreAnyBytes()
    {
        QFETCH(std::string, text);
        Store store;
        std::string other = text + "x";
        store->putlong(text, text, 1);
        store->putlong(text, other, 2);
        store->putlong(other, text, 3);
        for (int pass = 0; pass < 2; ++pass) {
            QCOMPARE(store->getlong(text, text), 1L);
            QCOMPARE(store->getlong(text, other), 2L);
            QCOMPARE(store->getlong(other, text), 3L);
            QVERIFY(store->key(store->firstItem(text)) == text);
            store.reopen();
        }
        store->clearkey(text, text);
        QCOMPARE(store->size(text), size_t(1));
        store->clearsection(text);
        store.reopen();
        QCOMPARE(store->size(text), size_t(0));
        QCOMPARE(store->getlong(other, text), 3L);
    }

    void keysComeInBytewiseOrder()
    {
        const std::vector<std::string> ordered = {"",
                                                  std::string("\0", 1),
                                                  std::string("\0a", 2),
                                                  "\n",
                                                  " ",
                                                  "10",
                                                  "9",
                                                  "A",
                                                  "AA",
                                                  "Z",
                                                  "a",
                                                  "a\x01",
                                                  "aa",
                                                  "b",
                                                  "\x7f",
                                                  "\x80",
                                                  "\xc3\xa4",
                                                  "\xff",
                                                  "\xff\x01"};
        Store store;
        std::string section = "order";
        // From the middle outwards, so that neither the order of putting nor its reverse is right.
        for (size_t i = 0; i < ordered.size(); ++i) {
            std::string key = ordered[(i * 7) % ordered.size()];
            store->putstring(section, key, "");
        }
        QCOMPARE(store->size(section), ordered.size());
        for (int pass = 0; pass < 2; ++pass) {
            std::vector<std::string> found;
            for (auto at = store->firstItem(section); !store->isEndItem(at); at = store->nextItem())
                found.push_back(store->key(at));
            QVERIFY(found == ordered);
            store.reopen();
        }
    }

    void clearkeyRemovesOneKey()
    {
        Store store;
        store->putlong("window", "height", 1);
        store->putlong("window", "width", 2);
        store->clearkey("window", "height");
        store->clearkey("window", "height");
        store->clearkey("unknown", "height");
        QVERIFY(!store->exists("window", "height"));
        store.reopen();
        QCOMPARE(walked(*store, "window"), QStringList{"width=2"});
        store->clearkey("window", "width");
        store.reopen();
        QCOMPARE(store->size("window"), size_t(0));
    }

    void clearsectionLeavesNoStaleKey()
    {
        Store store;
        store->putlong("window", "stale", 1);
        store->putlong("window", "width", 2);
        store->clearsection("window");
        QCOMPARE(store->size("window"), size_t(0));
        QVERIFY(store->isEndItem(store->firstItem("window")));
        QVERIFY(!store->exists("window", "stale"));
        store->putlong("window", "width", 3);
        store.reopen();
        QCOMPARE(walked(*store, "window"), QStringList{"width=3"});
        store->clearsection("unknown");
        QCOMPARE(store->size("unknown"), size_t(0));
    }

    void aDefaultCursorStandsAtAnEnd()
    {
        Store store;
        const TaviRegistry::Cursor cursor;
        QVERIFY(store->isEndItem(cursor));
        QCOMPARE(store->key(cursor), std::string());
        QCOMPARE(store->value(cursor), std::string());
        QVERIFY(store->isEndItem(store->nextItem()));
    }

    void aWalkStaysAtItsEnd()
    {
        Store store;
        store->putlong("window", "width", 1);
        const TaviRegistry::Cursor first = store->firstItem("window");
        QVERIFY(store->isEndItem(store->nextItem()));
        QVERIFY(store->isEndItem(store->nextItem()));
        QCOMPARE(store->key(store->nextItem()), std::string());
        QCOMPARE(store->key(first), std::string("width"));
    }

    void firstItemBeginsANewWalk()
    {
        Store store;
        store->putlong("one", "a", 1);
        store->putlong("one", "b", 2);
        store->putlong("two", "c", 3);
        const TaviRegistry::Cursor of_one = store->firstItem("one");
        QCOMPARE(store->key(store->firstItem("two")), std::string("c"));
        QVERIFY(store->isEndItem(store->nextItem()));
        store->firstItem("one");
        QCOMPARE(store->key(store->nextItem()), std::string("b"));
        QCOMPARE(store->key(store->firstItem("one")), std::string("a"));
        QCOMPARE(store->key(of_one), std::string("a"));
        store->firstItem("unknown");
        QVERIFY(store->isEndItem(store->nextItem()));
    }

    void aCursorIsAValueThatOutlivesEveryChange()
    {
        Store store;
        store->putstring("window", "a", "old");
        store->putstring("window", "b", "old");
        const TaviRegistry::Cursor first = store->firstItem("window");
        const TaviRegistry::Cursor second = store->nextItem();
        store->putstring("window", "a", "new");
        store->clearkey("window", "b");
        QCOMPARE(store->key(first), std::string("a"));
        QCOMPARE(store->value(first), std::string("old"));
        QCOMPARE(store->value(second), std::string("old"));
        store->clearsection("window");
        QCOMPARE(store->value(second), std::string("old"));
        store.reopen();
        QVERIFY(!store->isEndItem(second));
        QCOMPARE(store->key(second), std::string("b"));
        QCOMPARE(store->value(second), std::string("old"));
        QCOMPARE(store->size("window"), size_t(0));
    }

    void aWalkIsASnapshot()
    {
        Store store;
        for (const char *key : {"a", "c", "e"})
            store->putlong("window", key, 1);
        QStringList keys;
        for (auto at = store->firstItem("window"); !store->isEndItem(at); at = store->nextItem()) {
            keys.append(QString::fromStdString(store->key(at)));
            store->clearkey("window", store->key(at).c_str());
            store->putlong("window", "d", 1);
        }
        QCOMPARE(keys, (QStringList{"a", "c", "e"}));
        QCOMPARE(walked(*store, "window"), QStringList{"d=1"});
    }

    void manyKeysInManySections()
    {
        Store store;
        for (int i = 0; i < 3000; ++i)
            store->putlong(("section " + std::to_string(i % 30)).c_str(), ("key " + std::to_string(i)).c_str(), i);
        store.reopen();
        for (int s = 0; s < 30; ++s) {
            const std::string section = "section " + std::to_string(s);
            QCOMPARE(store->size(section.c_str()), size_t(100));
            long sum = 0;
            for (auto at = store->firstItem(section.c_str()); !store->isEndItem(at); at = store->nextItem())
                sum += std::stol(store->value(at));
            QCOMPARE(sum, 100L * s + 30L * (99 * 100 / 2));
        }
    }
};

TAVI_TEST_MAIN(TestTaviRegistry)
#include "tst_taviregistry.moc"
