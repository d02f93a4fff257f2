// SPDX-License-Identifier: MIT
#include "instruments/gammatable_p.h"
#include "tests/instruments/cardtables.h"
#include "tests/support/tavitest.h"

#include <algorithm>
#include <limits>
#include <memory>

namespace {

using Samples = std::unique_ptr<GammaSamples>;

Samples samplesOf(const CardTable &card)
{
    auto samples = std::make_unique<GammaSamples>();
    samples->count = GammaSamples::capacity;
    samplesOfCardTable(card, *samples);
    return samples;
}

} // namespace

/// Between a card's table and the samples that callers see.
class TestGammaTable : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void aCardsTableComesBackAsItWas_data();
    void aCardsTableComesBackAsItWas();
    void samplesOfALargerTableStayTheSame_data() { sizes({1025, 2048, 4096, 65536}); }
    void samplesOfALargerTableStayTheSame();
    void thereAreAlwaysAsManySamples_data() { sizes({2, 256, 1024, 4096}); }
    void thereAreAlwaysAsManySamples();
    void everyEntryIsASampleWithStraightLinesBetween();
    void theNearestEntryOfALargerTableIsTaken();
    void asManySamplesAreMadeAsWereAskedFor();
    void channelsKeepApart();
    void fewerSamplesSpanTheWholeTable();
    void whatIsOutsideIsPutOnTheEdge();
    void theLineRunsFromNothingToAll_data() { sizes({2, 3, 256, 1024, 4096}); }
    void theLineRunsFromNothingToAll();

private:
    static void sizes(std::initializer_list<int> values)
    {
        QTest::addColumn<int>("size");
        for (const int value : values)
            QTest::addRow("%d", value) << value;
    }
};

void TestGammaTable::aCardsTableComesBackAsItWas_data()
{
    sizes({2, 3, 16, 17, 255, 256, 257, 511, 512, 513, 1000, 1022, 1023, 1024});
}

void TestGammaTable::aCardsTableComesBackAsItWas()
{
    QFETCH(int, size);
    const CardTable card{CardTables::curves(std::size_t(size), 1.7)};
    CardTable back = card;
    for (int round = 0; round < 5; ++round)
        back = cardTableOfSamples(*samplesOf(back), std::size_t(size));
    QVERIFY(back.channels == card.channels);
    // No value is bent on its way.
    CardTable all;
    for (unsigned value = 0; value < 65536; value += 64)
        for (unsigned channel = 0; channel < 3; ++channel)
            all.channels[channel].push_back(static_cast<std::uint16_t>(value + 21 * channel));
    QVERIFY(cardTableOfSamples(*samplesOf(all), all.size()).channels == all.channels);
}

void TestGammaTable::samplesOfALargerTableStayTheSame()
{
    QFETCH(int, size);
    const Samples first = samplesOf({CardTables::curves(std::size_t(size), 2.2)});
    for (int round = 0; round < 5; ++round) {
        const CardTable card = cardTableOfSamples(*first, std::size_t(size));
        QCOMPARE(int(card.size()), size);
        const Samples again = samplesOf(card);
        QVERIFY(again->channels == first->channels);
    }
}

void TestGammaTable::thereAreAlwaysAsManySamples()
{
    QFETCH(int, size);
    const Samples samples = samplesOf({CardTables::straight(std::size_t(size))});
    QCOMPARE(samples->returned, 1024u);
    for (const auto &channel : samples->channels) {
        QCOMPARE(channel.front(), 0.0f);
        QCOMPARE(channel.back(), 1.0f);
        for (std::size_t at = 1; at < channel.size(); ++at) {
            QVERIFY(channel[at] > channel[at - 1]);
            // On the line, but for half a sample and half an entry of the card.
            const double off = channel[at] - double(at) / 1023.0;
            QVERIFY2(std::abs(off) <= 0.5 / 1023.0 + 0.5 / (size - 1.0), qPrintable(QString::number(off)));
        }
    }
}

void TestGammaTable::everyEntryIsASampleWithStraightLinesBetween()
{
    // 1023 / 4 = 255.75: the entries are at 0, 256, 512 (511.5), 767 and 1023.
    const std::vector<std::uint16_t> entries{65535, 0, 32767, 32767, 65535};
    const Samples samples = samplesOf({{entries, entries, entries}});
    const auto &red = samples->channels[0];
    QCOMPARE(red[0], 1.0f);
    QCOMPARE(red[64], 0.75f);
    QCOMPARE(red[128], 0.5f);
    QCOMPARE(red[256], 0.0f);
    QCOMPARE(red[384], float(32767.0 / 2 / 65535.0));
    QCOMPARE(red[512], float(32767.0 / 65535.0));
    QCOMPARE(red[700], float(32767.0 / 65535.0));
    QCOMPARE(red[767], float(32767.0 / 65535.0));
    QVERIFY(red[768] > red[767]);
    QCOMPARE(red[1023], 1.0f);
}

void TestGammaTable::theNearestEntryOfALargerTableIsTaken()
{
    std::vector<std::uint16_t> entries(4092); // four times 1023
    for (std::size_t at = 0; at < entries.size(); ++at)
        entries[at] = static_cast<std::uint16_t>(at);
    const Samples samples = samplesOf({{entries, entries, entries}});
    for (std::size_t at = 0; at < 1024; ++at)
        QCOMPARE(std::lround(samples->channels[0][at] * 65535.0f), std::lround(double(at) * 4091.0 / 1023.0));
}

void TestGammaTable::asManySamplesAreMadeAsWereAskedFor()
{
    const auto samples = std::make_unique<GammaSamples>();
    samples->count = 3;
    samplesOfCardTable({CardTables::straight(2)}, *samples);
    QCOMPARE(samples->returned, 3u);
    const std::vector<float> expected{0.0f, 0.5f, 1.0f, 0.0f};
    QVERIFY(std::equal(expected.begin(), expected.end(), samples->channels[2].begin()));
}

void TestGammaTable::channelsKeepApart()
{
    const CardTable card{{std::vector<std::uint16_t>{0, 1000}, {2000, 3000}, {4000, 5000}}};
    const Samples samples = samplesOf(card);
    for (std::size_t channel = 0; channel < 3; ++channel) {
        QCOMPARE(samples->channels[channel].front(), float(card.channels[channel][0] / 65535.0));
        QCOMPARE(samples->channels[channel].back(), float(card.channels[channel][1] / 65535.0));
    }
}

void TestGammaTable::fewerSamplesSpanTheWholeTable()
{
    const auto samples = std::make_unique<GammaSamples>();
    for (auto &channel : samples->channels)
        channel = {0.0f, 1.0f, 0.25f, 9.0f}; // what is behind the returned ones counts for nothing
    samples->returned = 3;
    const CardTable card = cardTableOfSamples(*samples, 5);
    const std::vector<std::uint16_t> expected{0, 32768, 65535, 40959, 16384};
    QVERIFY(card.channels[1] == expected);
}

void TestGammaTable::whatIsOutsideIsPutOnTheEdge()
{
    using Limits = std::numeric_limits<float>;
    const auto samples = std::make_unique<GammaSamples>();
    for (auto &channel : samples->channels)
        channel = {-0.5f, 1.5f, Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(), 0.5f};
    samples->returned = 6;
    const CardTable card = cardTableOfSamples(*samples, 6);
    const std::vector<std::uint16_t> expected{0, 65535, 0, 65535, 0, 32768};
    for (const auto &channel : card.channels)
        QVERIFY(channel == expected);
}

void TestGammaTable::theLineRunsFromNothingToAll()
{
    QFETCH(int, size);
    QVERIFY(linearCardTable(std::size_t(size)).channels == CardTables::straight(std::size_t(size)));
}

TAVI_TEST_MAIN(TestGammaTable)
#include "tst_gammatable.moc"
