#include "bench/Measure.h"

#include <time.h>

#include <algorithm>
#include <cstring>

namespace caretwell::bench {
namespace {

constexpr int Repetitions = 5;
constexpr double SecondsPerRepetition = 0.05;

std::vector<TWork>& Works() {
    static std::vector<TWork> works;
    return works;
}

std::vector<double> Laps;  // of the repetition that runs

}  // namespace

double MedianOf(std::vector<double> values) {
    if (values.empty()) return 0;
    auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

double TStopwatch::Now() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

void AddLap(benchmark::State& state, double seconds) {
    state.SetIterationTime(seconds);
    Laps.push_back(seconds);
}

const std::vector<TWork>& GetWorks() { return Works(); }

void Measure(TWork work, const std::function<void(benchmark::State&)>& run) {
    std::string name = work.Group + ": " + work.Name;
    auto* entry = benchmark::RegisterBenchmark(name.c_str(), [run](benchmark::State& state) {
        Laps.clear();
        run(state);
        state.counters[LapCounter] = MedianOf(Laps);
    });
    entry->UseManualTime()->Unit(benchmark::kMillisecond);
    if (work.RunsOnce) entry->Iterations(1);
    else entry->MinTime(SecondsPerRepetition)->Repetitions(Repetitions);
    Works().push_back(std::move(work));
}

void SetYardstick(benchmark::State& state, std::string_view name, double value) {
    state.counters[std::string(YardstickPrefix) + std::string(name)] = value;
}

size_t SweepByMemchr(std::string_view bytes) {
    size_t count = 0;
    for (const char *p = bytes.data(), *end = p + bytes.size(); p < end; ++p, ++count) {
        p = static_cast<const char*>(std::memchr(p, '<', static_cast<size_t>(end - p)));
        if (!p) break;
    }
    return count;
}

size_t SweepBySwitch(std::string_view bytes) {
    size_t tags = 0, values = 0, lines = 0, entities = 0;
    bool isInTag = false;
    for (char c : bytes) {
        switch (c) {
            case '<':
                isInTag = true;
                ++tags;
                break;
            case '>': isInTag = false; break;
            case '"':
            case '\'': values += isInTag; break;
            case '&': ++entities; break;
            case '\n': ++lines; break;
            default: break;
        }
    }
    return tags + values + lines + entities;
}

double TimeSweep(size_t (*sweep)(std::string_view), std::string_view bytes) {
    std::vector<double> seconds;
    for (int i = 0; i < 9; ++i) {
        TStopwatch stopwatch;
        benchmark::DoNotOptimize(sweep(bytes));
        seconds.push_back(stopwatch.GetSeconds());
    }
    return MedianOf(std::move(seconds));
}

}  // namespace caretwell::bench
