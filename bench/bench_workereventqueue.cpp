// SPDX-License-Identifier: MIT

/// The queue between a worker thread and the main thread against a queued signal of Qt that carries the same three
/// doubles. A worker makes Lab values, as an instrument's driver does, and a callback on the main thread gets them:
///
/// - 100000_values: as fast as they come, until the last has arrived and all events are delivered;
/// - latency: one value each 50 us, by both in turn. The time is the median of the queue from the worker's hand to
/// the
///   callback, `signal_us` that of the signal;
/// - held_up: a million values while the main thread does something else for a second. What the process holds
///   afterwards beyond what it held before is `in_use_KiB` (allocated memory) and `resident_KiB`; the time is that
///   until the last value has arrived, `all_events_ms` that until all events are delivered.

#include "bench/benchmain.h"
#include "instruments/orloinstrumentevent_p.h"

#include <QCoreApplication>
#include <QEventLoop>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>
#include <vector>

#include <malloc.h>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;

constexpr int burst_length = 100000;
constexpr int held_up_length = 1000000;
constexpr int latency_length = 10000;
constexpr std::chrono::microseconds latency_pace(50);

double seconds(Clock::duration duration)
{
    return std::chrono::duration<double>(duration).count();
}

/// What stands behind both roads: the callback that the values reach, and the loop that waits for the last of them.
struct Destination {
    QEventLoop loop;
    int expected = 0;
    int arrived = 0;
    double sum = 0.0;
    std::vector<Clock::time_point> *arrivals = nullptr; ///< Filled if wanted.

    static int callback(void *context, double L, double a, double b)
    {
        auto *destination = static_cast<Destination *>(context);
        if (destination->arrivals)
            destination->arrivals->push_back(Clock::now());
        destination->sum += L + a + b;
        if (++destination->arrived == destination->expected)
            destination->loop.quit();
        return 0;
    }
};

/// The queue, fed and drained as by a driver.
class QueueRoad : public QObject
{
public:
    explicit QueueRoad(Destination &destination) : destination_(&destination), queue_(this, freeRecord) {}

    /// On the worker.
    void send(double L, double a, double b)
    {
        auto *record = static_cast<OrloInstrumentEvent *>(std::calloc(1, sizeof(OrloInstrumentEvent)));
        if (!record)
            std::abort();
        record->type = ORLOINSTRUMENTEVENT_LAB;
        record->L = L;
        record->a = a;
        record->b = b;
        queue_.post(record);
    }

    bool event(QEvent *event) override
    {
        if (event->type() != QEvent::User)
            return QObject::event(event);
        ++events_;
        queue_.drain([this](const OrloInstrumentEvent *record) {
            Destination::callback(destination_, record->L, record->a, record->b);
        });
        return true;
    }

    /// How many events have come, those that found the queue empty included.
    int events() const { return events_; }

private:
    static void freeRecord(OrloInstrumentEvent *record) { std::free(record); }

    Destination *destination_;
    int events_ = 0;
    WorkerEventQueue<OrloInstrumentEvent> queue_;
};

/// A signal that is emitted on the worker and arrives at the main thread.
class SignalRoad : public QObject
{
    Q_OBJECT

public:
    explicit SignalRoad(Destination &destination) : destination_(&destination)
    {
        connect(this, &SignalRoad::lab, this, &SignalRoad::deliver, Qt::QueuedConnection);
    }

    /// On the worker.
    void send(double L, double a, double b) { Q_EMIT lab(L, a, b); }
    int events() const { return destination_->arrived; }

Q_SIGNALS:
    void lab(double L, double a, double b);

private:
    void deliver(double L, double a, double b) { Destination::callback(destination_, L, a, b); }

    Destination *destination_;
};

template <typename Road>
void sendAll(Road &road, int count)
{
    for (int i = 0; i < count; ++i)
        road.send(i % 101, 1.0, -1.0);
}

/// Returns when no event of the values, which have all reached the callback, is left.
template <typename Road>
void receiveRest(const Road &road, const Destination &destination)
{
    while (road.events() < destination.expected)
        QCoreApplication::processEvents();
}

/// So that neither side delivers something else.
void check(benchmark::State &state, const Destination &destination)
{
    double sum = 0.0;
    for (int i = 0; i < destination.expected; ++i)
        sum += i % 101;
    if (destination.arrived != destination.expected || destination.sum != sum)
        state.SkipWithError("something else was delivered");
}

template <typename Road>
void burst(benchmark::State &state)
{
    for ([[maybe_unused]] const auto &turn : state) {
        Destination destination;
        destination.expected = burst_length;
        Road road(destination);
        const Clock::time_point start = Clock::now();
        std::thread worker([&road] { sendAll(road, burst_length); });
        destination.loop.exec();
        receiveRest(road, destination);
        state.SetIterationTime(seconds(Clock::now() - start));
        worker.join();
        check(state, destination);
    }
    state.SetItemsProcessed(state.iterations() * burst_length);
}

/// The waits of the values of one road.
struct Waits {
    std::vector<Clock::time_point> departures;
    std::vector<Clock::time_point> arrivals;

    Waits()
    {
        departures.reserve(latency_length);
        arrivals.reserve(latency_length);
    }
    double rank(size_t percent) const
    {
        std::vector<double> waits;
        for (size_t i = 0; i < arrivals.size(); ++i)
            waits.push_back(seconds(arrivals[i] - departures[i]));
        const auto at = waits.begin() + static_cast<std::ptrdiff_t>(waits.size() * percent / 100);
        std::nth_element(waits.begin(), at, waits.end());
        return *at;
    }
};

/// Both roads in turn, so that both meet the same machine: whether the main thread sleeps or not, which others decide
/// too, makes ten times the difference that the roads make.
void latency(benchmark::State &state)
{
    for ([[maybe_unused]] const auto &turn : state) {
        Waits queue_waits;
        Waits signal_waits;
        Destination queue_end;
        Destination signal_end;
        queue_end.expected = latency_length;
        signal_end.expected = latency_length;
        queue_end.arrivals = &queue_waits.arrivals;
        signal_end.arrivals = &signal_waits.arrivals;
        QueueRoad queue(queue_end);
        SignalRoad signal(signal_end);
        std::thread worker([&] {
            Clock::time_point next = Clock::now();
            const auto leave = [&next](Waits &waits) {
                // A sleep is not as fine as this pace.
                while (Clock::now() < next) {
                }
                waits.departures.push_back(Clock::now());
                next = waits.departures.back() + latency_pace;
            };
            for (int i = 0; i < latency_length; ++i) {
                leave(queue_waits);
                queue.send(i % 101, 1.0, -1.0);
                leave(signal_waits);
                signal.send(i % 101, 1.0, -1.0);
            }
        });
        signal_end.loop.exec();
        receiveRest(queue, queue_end);
        worker.join();
        check(state, queue_end);
        check(state, signal_end);
        state.SetIterationTime(queue_waits.rank(50));
        state.counters["queue_p90_us"] = queue_waits.rank(90) * 1e6;
        state.counters["signal_us"] = signal_waits.rank(50) * 1e6;
        state.counters["signal_p90_us"] = signal_waits.rank(90) * 1e6;
    }
}

struct Memory {
    double in_use = 0.0;
    double resident = 0.0;

    static Memory now()
    {
        const struct mallinfo2 info = mallinfo2();
        long all_pages = 0;
        long resident_pages = 0;
        FILE *file = std::fopen("/proc/self/statm", "r");
        if (!file || std::fscanf(file, "%ld %ld", &all_pages, &resident_pages) != 2)
            std::abort();
        std::fclose(file);
        return {static_cast<double>(info.uordblks + info.hblkhd),
                static_cast<double>(resident_pages) * static_cast<double>(sysconf(_SC_PAGESIZE))};
    }
};

template <typename Road>
void heldUp(benchmark::State &state)
{
    for ([[maybe_unused]] const auto &turn : state) {
        const Memory before = Memory::now();
        Memory full;
        {
            Destination destination;
            destination.expected = held_up_length;
            Road road(destination);
            std::thread worker([&road] { sendAll(road, held_up_length); });
            std::this_thread::sleep_for(std::chrono::seconds(1));
            worker.join();
            full = Memory::now();
            const Clock::time_point start = Clock::now();
            destination.loop.exec();
            state.SetIterationTime(seconds(Clock::now() - start));
            receiveRest(road, destination);
            state.counters["all_events_ms"] = seconds(Clock::now() - start) * 1e3;
            check(state, destination);
        }
        const Memory after = Memory::now();
        state.counters["in_use_KiB"] = (after.in_use - before.in_use) / 1024;
        state.counters["resident_KiB"] = (after.resident - before.resident) / 1024;
        state.counters["full_KiB"] = (full.in_use - before.in_use) / 1024;
    }
}

BENCHMARK(burst<QueueRoad>)->Name("100000_values/WorkerEventQueue")->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(burst<SignalRoad>)->Name("100000_values/queued_signal")->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(latency)
    ->Name("latency/WorkerEventQueue_and_queued_signal")
    ->Unit(benchmark::kMicrosecond)
    ->UseManualTime()
    ->Iterations(1);
BENCHMARK(heldUp<QueueRoad>)
    ->Name("held_up/WorkerEventQueue")
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(1);
BENCHMARK(heldUp<SignalRoad>)
    ->Name("held_up/queued_signal")
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(1);

} // namespace

int main(int argc, char **argv)
{
    return runBenchmarks<QCoreApplication>(argc, argv);
}

#include "bench_workereventqueue.moc"
