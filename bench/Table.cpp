#include "bench/Table.h"

#include <algorithm>
#include <cstdio>

namespace caretwell::bench {
namespace {

std::string Format(const char* format, double value) {
    char text[64];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

// Three digits that count, whatever the size.
std::string Digits(double value) { return Format(value < 1 ? "%.3f" : value < 100 ? "%.2f" : "%.0f", value); }

// A time becomes a rate once the bytes are known; before that, values are seconds.
double ToUnit(TUnit unit, double value, double bytes) {
    switch (unit) {
        case tuMilliseconds: return value * 1e3;
        case tuMegabytesPerSecond: return bytes / value / 1e6;
        case tuMegabytes: return value;
    }
    return value;
}

const char* NameOf(TUnit unit) {
    static constexpr const char* names[] = {" ms", " MB/s", " MB"};
    return names[unit];
}

std::string MarkOf(const TWork& work) {
    if (work.Mark == 0) return "";
    std::string mark =
        (work.Unit == tuMegabytesPerSecond ? "> " : "< ") + Format("%g", work.Mark) + NameOf(work.Unit);
    if (work.SwitchShare > 0) mark += Format(", %g of switch", work.SwitchShare);
    return mark;
}

}  // namespace

void TTable::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        if (run.run_type != Run::RT_Iteration) continue;
        TFigure& figure = FFigures[run.run_name.function_name];
        if (run.error_occurred) {
            figure.Error = run.error_message;
            continue;
        }
        auto counter = [&run](const std::string& name) {
            auto row = run.counters.find(name);
            return row == run.counters.end() ? 0.0 : row->second.value;
        };
        const auto& works = GetWorks();
        auto work = std::find_if(works.begin(), works.end(), [&run](const TWork& row) {
            return row.Group + ": " + row.Name == run.run_name.function_name;
        });
        if (work == works.end()) continue;
        double bytes = counter(BytesCounter);
        double value = counter(work->Unit == tuMegabytes ? MegabytesCounter : LapCounter);
        figure.Values.push_back(ToUnit(work->Unit, value, bytes));
        for (const auto& [name, yardstick] : run.counters)
            if (name.starts_with(YardstickPrefix))
                figure.Yardsticks[name.substr(YardstickPrefix.size())].push_back(
                    ToUnit(work->Unit, yardstick.value, bytes));
    }
    std::fprintf(stderr, ".");
}

TTable::TLine TTable::LineOf(const TWork& work, const TFigure& figure) {
    TLine line{.Work = "  " + work.Name, .Mark = MarkOf(work), .People = work.People};
    if (figure.Values.empty()) {
        line.Measured = "-";
        line.Met = work.Mark > 0 ? "NO" : "";
        line.Yardstick = "not measured: " + figure.Error;
        FMarks += work.Mark > 0;
        return line;
    }
    double value = MedianOf(figure.Values);
    bool isRate = work.Unit == tuMegabytesPerSecond;
    bool isMet = isRate ? value >= work.Mark : value <= work.Mark;
    line.Measured = Digits(value) + NameOf(work.Unit);
    for (const auto& [name, values] : figure.Yardsticks) {
        double yardstick = MedianOf(values);
        double ratio = value / yardstick;
        if (!line.Yardstick.empty()) line.Yardstick += "; ";
        line.Yardstick += Digits(ratio) + (isRate ? " of " : " x ") + name + " (" + Digits(yardstick) + ")";
        if (name == ByteSwitch && ratio < work.SwitchShare) isMet = false;
    }
    if (work.Mark == 0) return line;
    line.Met = isMet ? "yes" : "NO";
    ++FMarks;
    FMet += isMet;
    return line;
}

void TTable::Finalize() {
    static constexpr const char* format = "%-56s %12s  %-24s %-3s  %-10s %s\n";
    std::fprintf(stderr, "\n");
    std::printf(format, "work", "measured", "mark", "met", "people's", "yardstick of the same run");
    std::string group;
    for (const TWork& work : GetWorks()) {
        auto figure = FFigures.find(work.Group + ": " + work.Name);
        if (figure == FFigures.end()) continue;  // left out by a filter
        if (work.Group != group) std::printf("%s\n", work.Group.c_str());
        group = work.Group;
        TLine line = LineOf(work, figure->second);
        std::printf(format, line.Work.c_str(), line.Measured.c_str(), line.Mark.c_str(), line.Met.c_str(),
                    line.People.c_str(), line.Yardstick.c_str());
    }
    std::printf("%d of %d marks are met\n", FMet, FMarks);
}

}  // namespace caretwell::bench
