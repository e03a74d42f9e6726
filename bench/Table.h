// Prints all that was measured as one table: work, figure, mark, whether it is met, and the
// yardstick of the same run.
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

#include "bench/Measure.h"

namespace caretwell::bench {

class TTable final : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context&) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

private:
    struct TFigure {
        std::vector<double> Values;  // one for each repetition
        std::map<std::string, std::vector<double>> Yardsticks;
        std::string Error;
    };
    struct TLine {
        std::string Work{}, Measured{}, Mark{}, Met{}, Yardstick{}, People{};
    };
    TLine LineOf(const TWork& work, const TFigure& figure);

    std::map<std::string, TFigure> FFigures;
    int FMarks = 0;
    int FMet = 0;
};

}  // namespace caretwell::bench
