// What is measured, and how a program of this folder says so.
//
//     Measure({.Group = "keystroke to list", .Name = "page of 100 KB", .Mark = 0.6, .People = "18 ms"},
//             [](benchmark::State& state) {
//                 for (auto _ : state) {
//                     TLap lap(state);
//                     ...the work...
//                 }
//             });
//
// Work and mark stand together, so that a mark is changed where its work is.
#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace caretwell::bench {

/// What a figure counts. A rate is to be above its mark, the others below. One megabyte is
/// 1,000,000 bytes.
enum TUnit { tuMilliseconds, tuMegabytesPerSecond, tuMegabytes };

struct TWork {
    std::string Group{};
    std::string Name{};
    TUnit Unit = tuMilliseconds;
    double Mark = 0;         ///< 0: none
    double SwitchShare = 0;  ///< the share of the byte switch's rate to be reached; 0: none
    std::string People{};    ///< what people's present tools need
    bool RunsOnce = false;   ///< it repeats by itself
};

/// Registers work with Google Benchmark. run measures by TLap, or sets the counter
/// MegabytesCounter; a rate needs BytesCounter too.
void Measure(TWork work, const std::function<void(benchmark::State&)>& run);
const std::vector<TWork>& GetWorks();

inline constexpr const char* LapCounter = "median lap";
inline constexpr const char* BytesCounter = "bytes";
inline constexpr const char* MegabytesCounter = "megabytes";
/// Counters that begin with it are yardsticks, in seconds (for megabytes: in megabytes).
inline constexpr std::string_view YardstickPrefix = "against ";
inline constexpr std::string_view ByteSwitch = "byte switch";

void SetYardstick(benchmark::State& state, std::string_view name, double value);

/// One iteration took that long. The figure is the median of all laps: a mean would tell
/// how busy the machine was with other things.
void AddLap(benchmark::State& state, double seconds);

/// Seconds that this thread has had the processor. A clock on the wall would count whatever
/// else the machine does; with nothing else to do both agree.
class TStopwatch {
public:
    double GetSeconds() const { return Now() - FStart; }

private:
    static double Now();
    double FStart = Now();
};

/// What lies between its making and its end is one lap.
class TLap {
public:
    explicit TLap(benchmark::State& state) : FState(state) {}
    ~TLap() { AddLap(FState, FStopwatch.GetSeconds()); }
    TLap(const TLap&) = delete;
    TLap& operator=(const TLap&) = delete;

private:
    benchmark::State& FState;
    TStopwatch FStopwatch;
};

double MedianOf(std::vector<double> values);

// ---- yardsticks, over the same bytes in the same run

/// Jumps from '<' to '<' with memchr; returns how many there are.
size_t SweepByMemchr(std::string_view bytes);
/// Looks at each byte in a switch, as the plainest scanner would; returns a count of what it saw.
size_t SweepBySwitch(std::string_view bytes);
/// Seconds of one sweep: the median of several.
double TimeSweep(size_t (*sweep)(std::string_view), std::string_view bytes);

// ---- the subjects, one file each

void RegisterScans();
void RegisterGrammar();
void RegisterKeystrokes();
void RegisterChoices();
void RegisterSheets();
void RegisterSchemas();
void RegisterSwitches();
void RegisterProcesses();

}  // namespace caretwell::bench
