// SPDX-License-Identifier: MIT
#include "tests/plugins/misbehavingfixture.h"

#include <atomic>

namespace {

constexpr int many = 100000;
constexpr const char *directives = "%s%s%n%*d%999999999d%1$s%lc\\%";
/// A QLineEdit takes no more.
constexpr int line_limit = 32767;

} // namespace

/// Plug-ins that say too much, or what is no text.
class TestMisbehavingMessages : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void aMessageIsShownOrLoggedAsItIs_data()
    {
        QTest::addColumn<QByteArray>("function"); // null: a null pointer, as in the next
        QTest::addColumn<QByteArray>("format");
        QTest::addColumn<QByteArray>("argument");
        QTest::addColumn<QString>("shown");  // as a status
        QTest::addColumn<QString>("logged"); // as a fault
        const auto row = [](const char *name, const char *function, const char *format, const QByteArray &argument,
                            const QString &shown, const QString &logged) {
            QTest::newRow(name) << QByteArray(function) << QByteArray(format) << argument << shown << logged;
        };
        const QByteArray long_text(many, 'x');
        row("a hundred thousand characters", "Read", "%s", long_text, QString::fromLatin1(long_text.left(line_limit)),
            "scripted: Read: " + QString::fromLatin1(long_text));
        row("directives in the argument", "Read", "Error %s", directives, QString("Error ") + directives,
            QString("scripted: Read: Error ") + directives);
        row("directives in the function's name", directives, "Error %s", "x", "Error x",
            QString("scripted: ") + directives + ": Error x");
        row("placeholders of the group's own texts", "Read", "%s", "L:%1, a:%2 %L1 %n", "L:%1, a:%2 %L1 %n",
            "scripted: Read: L:%1, a:%2 %L1 %n");
        row("line breaks", "Read", "%s", "one\ntwo\r\nthree", "one\ntwo\r\nthree",
            "scripted: Read: one\ntwo\r\nthree");
        row("markup", "Read", "%s", "<b>one</b>&amp;", "<b>one</b>&amp;", "scripted: Read: <b>one</b>&amp;");
        const QString replaced = QString(QChar::ReplacementCharacter).repeated(3);
        row("bytes that are no UTF-8", "Read", "%s", "\xff\xfe\x80", replaced, "scripted: Read: " + replaced);
        row("nothing", "Read", "%s", "", "", "scripted: Read: ");
        row("no function", nullptr, "Error %s", "x", "Error x", "scripted: : Error x");
        row("no format", "Read", nullptr, "", "", "scripted: Read: ");
    }

    void aMessageIsShownOrLoggedAsItIs()
    {
        QFETCH(QByteArray, function);
        QFETCH(QByteArray, format);
        QFETCH(QByteArray, argument);
        QFETCH(QString, shown);
        QFETCH(QString, logged);
        MisbehavingFixture f;
        f.addBad();
        std::atomic<int> kind{0};
        f.bad->on_spot_lab = [&](const ScriptedPlugin::Read &read) {
            read.sendLab(50, 0, 0);
            // No compiler lets such formats pass where it sees them.
            InstrumentMessageCallback say = read.message;
            say(read.message_context, kind, "scripted", function.isNull() ? nullptr : function.constData(),
                format.isNull() ? nullptr : format.constData(), argument.constData());
            read.say(kind, "Read", "Measurement complete");
            return 0;
        };
        // What came in between is gone from the line by now: listen to all of it.
        QStringList texts;
        connect(f.messageLine(), &QLineEdit::textChanged, this, [&](const QString &text) { texts.append(text); });
        f.chooseBad();

        f.press();
        QTRY_COMPARE(f.messageLine()->text(), QString("Measurement complete"));
        const QString colour = "L:50.000, a:0.000, b:0.000";
        QStringList expected = {colour, shown, "Measurement complete"};
        QCOMPARE(texts, expected);
        QVERIFY(recorder().lines().isEmpty());
        f.press();

        kind = 1;
        texts.clear();
        f.press();
        QTRY_COMPARE(recorder().lines().size(), 2);
        QCOMPARE(recorder().lines().first(), logged);
        expected = QStringList{colour}; // faults are not for the user
        QCOMPARE(texts, expected);
        expectLog(logged);
        expectLog("scripted: Read: Measurement complete");
        QVERIFY(f.looksOn());
        f.press();
        QVERIFY(f.looksOff());
        QCOMPARE(f.lightnessOfNewSpots(), std::vector<double>(2, 50.0));
        QVERIFY(f.allIsAsBefore());
    }

    void aBurstOfMessagesComesWholeAndInOrder_data()
    {
        QTest::addColumn<int>("kind");
        QTest::newRow("statuses") << 0;
        QTest::newRow("faults") << 1;
    }

    void aBurstOfMessagesComesWholeAndInOrder()
    {
        QFETCH(int, kind);
        MisbehavingFixture f;
        f.addBad();
        f.bad->on_spot_lab = [&](const ScriptedPlugin::Read &read) {
            read.sendLab(50, 0, 0);
            for (int i = 0; i < many; ++i)
                read.say(kind, "Read", "Measure %c%lu", 'A', static_cast<unsigned long>(i));
            read.sendLab(60, 0, 0);
            return 0;
        };
        int next = 0;
        bool in_order = true;
        connect(f.messageLine(), &QLineEdit::textChanged, this, [&](const QString &text) {
            if (text.startsWith("Measure "))
                in_order = in_order && text == QStringLiteral("Measure A%1").arg(next++);
        });
        allowLog("scripted: Read: Measure A");
        f.chooseBad();
        f.group->show();
        f.press();
        QTRY_COMPARE_WITH_TIMEOUT(f.lightnessOfNewSpots(), (std::vector<double>{50, 60}), 60000);
        QCOMPARE(f.messageLine()->text(), QString("L:60.000, a:0.000, b:0.000"));
        QVERIFY(in_order);
        QCOMPARE(next, kind == 0 ? many : 0);
        const QStringList lines = recorder().lines();
        QCOMPARE(lines.size(), kind == 0 ? 0 : many);
        for (int i = 0; i < lines.size(); ++i)
            QCOMPARE(lines[i], QStringLiteral("scripted: Read: Measure A%1").arg(i));
        f.press();
        QVERIFY(f.looksOff());
        QVERIFY(f.allIsAsBefore());
    }

    void aBurstThatIsTurnedOffIsDropped()
    {
        MisbehavingFixture f;
        f.addBad();
        std::atomic<int> sent{0};
        f.bad->on_spot_lab = [&](const ScriptedPlugin::Read &read) {
            for (; sent < many && !read.aborted(); ++sent)
                read.say(0, "Read", "Measure %c%lu", 'A', static_cast<unsigned long>(sent));
            return f.waitForAbort(read);
        };
        f.chooseBad();
        f.press();
        while (sent < many)
            std::this_thread::yield();
        int shown = 0;
        connect(f.messageLine(), &QLineEdit::textChanged, this, [&] { ++shown; });
        f.press();
        QCoreApplication::processEvents();
        QCOMPARE(shown, 0);
        QVERIFY(f.looksOff());
        QVERIFY(f.allIsAsBefore());
    }

    void directivesInTextsOfOpenAndCloseAreText()
    {
        MisbehavingFixture f;
        f.addBad();
        f.bad->on_open = [&](InstrumentMessageCallback message, void *context) -> void * {
            message(context, 0, "bad", "Open", "%s", directives);
            message(context, 1, "bad", directives, "%s", directives);
            return f.bad;
        };
        f.bad->on_close = [&](InstrumentMessageCallback message, void *context) {
            message(context, 1, "bad", "Close", "%s", directives);
        };
        f.chooseBad();
        const QString prefix = "orloinstrument: OrloInstrument: ";
        expectLog(prefix + directives + " " + directives);
        expectLog(prefix + "Close " + directives);
        f.press();
        QCOMPARE(f.messageLine()->text(), QString(directives));
        f.press();
        QVERIFY(f.allIsAsBefore());
    }
};

TAVI_GUI_TEST_MAIN(TestMisbehavingMessages)
#include "tst_misbehaving_messages.moc"
