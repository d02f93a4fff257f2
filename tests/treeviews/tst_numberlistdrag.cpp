// SPDX-License-Identifier: MIT
#include "qt3/q3dragobject.h"
#include "tests/support/tavitest.h"
#include "treeviews/numberlistdrag.h"

#include <QDropEvent>
#include <QMimeData>
#include <QWidget>

#include <climits>

namespace {

using Numbers = std::vector<long>;

QDropEvent dropOf(const QMimeData *data)
{
    return {QPointF(), Qt::MoveAction, data, Qt::LeftButton, Qt::NoModifier};
}

} // namespace

/// Drags of numbers.
class TestNumberListDrag : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void construction()
    {
        QWidget source;
        const auto *drag = new NumberListDrag("-test", &source, "a name");
        QCOMPARE(drag->objectName(), QString("a name"));
        QCOMPARE(drag->source(), &source);
        QVERIFY(drag->mimeData() == nullptr);
        QCOMPARE(NumberListDrag::MIME_NUMBERLIST_DRAG, QByteArray("x-orlo/numberlistdrag"));
        const auto *nameless = new NumberListDrag("-test", &source, nullptr);
        QCOMPARE(nameless->objectName(), QString());
    }

    void numbersAreDigitsWithBlanksBetween()
    {
        QWidget source;
        NumberListDrag drag("-conford", &source, "drag");
        Numbers numbers{3, 1, 12};
        drag.setData(numbers);
        QCOMPARE(drag.mimeData()->formats(), QStringList{"x-orlo/numberlistdrag-conford"});
        QCOMPARE(drag.mimeData()->data("x-orlo/numberlistdrag-conford"), QByteArray("3 1 12"));
        QCOMPARE(numbers, (Numbers{3, 1, 12}));
    }

    void noNumbersChangeNothing()
    {
        QWidget source;
        NumberListDrag drag("-test", &source, "drag");
        Numbers none;
        drag.setData(none);
        QVERIFY(drag.mimeData() == nullptr);
        Numbers one{7};
        drag.setData(one);
        drag.setData(none);
        QCOMPARE(drag.mimeData()->data("x-orlo/numberlistdrag-test"), QByteArray("7"));
    }

    void dataThatIsReplacedIsDeleted()
    {
        QWidget source;
        NumberListDrag drag("-test", &source, "drag");
        Numbers numbers{1};
        drag.setData(numbers);
        const QPointer<QMimeData> first = drag.mimeData();
        drag.setData(numbers);
        QVERIFY(!first);
    }

    void asADragOfTheOlderKind()
    {
        QWidget source;
        auto *drag = new NumberListDrag("-conford", &source, "a name");
        QScopedPointer<Q3StoredDrag> empty(drag->toQ3StoredDrag());
        QCOMPARE(empty->format(0), "x-orlo/numberlistdrag-conford");
        QVERIFY(empty->encodedData("x-orlo/numberlistdrag-conford").isEmpty());
        Numbers numbers{3, 1, 12};
        drag->setData(numbers);
        const QScopedPointer<Q3StoredDrag> stored(drag->toQ3StoredDrag());
        delete drag;
        QCOMPARE(stored->objectName(), QString("a name"));
        QCOMPARE(stored->source(), &source);
        QCOMPARE(stored->parent(), &source);
        QCOMPARE(stored->format(0), "x-orlo/numberlistdrag-conford");
        QCOMPARE(stored->encodedData("x-orlo/numberlistdrag-conford"), QByteArray("3 1 12"));
    }

    void whatWasSetIsDecoded_data()
    {
        QTest::addColumn<QVector<long>>("numbers");
        QTest::newRow("three") << QVector<long>{3, 1, 12};
        QTest::newRow("zero") << QVector<long>{0};
        QTest::newRow("negative") << QVector<long>{-1, 5, -70};
        QTest::newRow("extremes") << QVector<long>{LONG_MIN, LONG_MAX};
    }

    void whatWasSetIsDecoded()
    {
        QFETCH(QVector<long>, numbers);
        QWidget source;
        NumberListDrag drag("-test", &source, "drag");
        Numbers given(numbers.cbegin(), numbers.cend());
        drag.setData(given);
        const QDropEvent drop = dropOf(drag.mimeData());
        QVERIFY(NumberListDrag::canDecode(&drop, "-test"));
        Numbers got{99};
        QVERIFY(NumberListDrag::decode(&drop, got, "-test"));
        QCOMPARE(got, given);
    }

    void anotherSuffixIsAnotherType()
    {
        QMimeData data;
        data.setData("x-orlo/numberlistdrag-conford", "3 1 12");
        const QDropEvent drop = dropOf(&data);
        Numbers numbers{99};
        QVERIFY(!NumberListDrag::canDecode(&drop, "-tabs"));
        QVERIFY(!NumberListDrag::decode(&drop, numbers, "-tabs"));
        QCOMPARE(numbers, Numbers{99});
        QVERIFY(NumberListDrag::canDecode(&drop, "-conford"));
    }

    void nullAndNoDataAreRefused()
    {
        Numbers numbers{99};
        QVERIFY(!NumberListDrag::canDecode(nullptr, "-test"));
        QVERIFY(!NumberListDrag::decode(nullptr, numbers, "-test"));
        const QDropEvent drop = dropOf(nullptr);
        QVERIFY(!NumberListDrag::canDecode(&drop, "-test"));
        QVERIFY(!NumberListDrag::decode(&drop, numbers, "-test"));
        QCOMPARE(numbers, Numbers{99});
    }

    void anEmptyPayloadCanBeDecodedButIsNothing()
    {
        QMimeData data;
        data.setData("x-orlo/numberlistdrag-test", QByteArray());
        const QDropEvent drop = dropOf(&data);
        Numbers numbers{99};
        QVERIFY(NumberListDrag::canDecode(&drop, "-test"));
        QVERIFY(!NumberListDrag::decode(&drop, numbers, "-test"));
        QCOMPARE(numbers, Numbers{99});
    }

    void foreignTextIsReadAsFarAsItGoes_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QVector<long>>("numbers");
        QTest::newRow("blanks") << QByteArray("  4   5 ") << QVector<long>{4, 5};
        QTest::newRow("words") << QByteArray("4 five 6") << QVector<long>{4};
        QTest::newRow("nothing") << QByteArray("none") << QVector<long>{};
        QTest::newRow("too large") << QByteArray("1 99999999999999999999999 2") << QVector<long>{1};
        QTest::newRow("a null byte") << QByteArray("1\0 2", 4) << QVector<long>{1};
    }

    void foreignTextIsReadAsFarAsItGoes()
    {
        QFETCH(QByteArray, text);
        QFETCH(QVector<long>, numbers);
        QMimeData data;
        data.setData("x-orlo/numberlistdrag-test", text);
        const QDropEvent drop = dropOf(&data);
        Numbers got{99};
        QVERIFY(NumberListDrag::decode(&drop, got, "-test"));
        QCOMPARE(QVector<long>(got.cbegin(), got.cend()), numbers);
    }
};

TAVI_GUI_TEST_MAIN(TestNumberListDrag)
#include "tst_numberlistdrag.moc"
