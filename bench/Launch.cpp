// Runs a command several times and prints four numbers: its status, the medians of its wall
// time and of its processor time in milliseconds, its peak memory in bytes. What it writes is
// dropped.
//
//     bench_launch 20 caretwell complete page.html:3:4
//
// A program of its own and without libraries that weigh: a process's peak counts the memory
// of the one that it was made from, so that one has to be small.
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr int MostRuns = 1000;

void Execute(char** command) {
    int nothing = open("/dev/null", O_WRONLY);
    dup2(nothing, STDOUT_FILENO);
    dup2(nothing, STDERR_FILENO);
    execv(command[0], command);
    _exit(127);
}

double MillisecondsOf(const timeval& time) {
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
}

double MedianOf(double* values, int count) {
    std::nth_element(values, values + count / 2, values + count);
    return values[count / 2];
}

}  // namespace

int main(int count, char** words) {
    int runs = count > 2 ? std::atoi(words[1]) : 0;
    if (runs < 1 || runs > MostRuns) return 2;
    static double wall[MostRuns], processor[MostRuns];
    int status = 0;
    long peak = 0;
    for (int run = 0; run < runs; ++run) {
        auto start = std::chrono::steady_clock::now();
        pid_t child = fork();
        if (child == 0) Execute(words + 2);
        rusage usage{};
        if (wait4(child, &status, 0, &usage) < 0) return 1;
        std::chrono::duration<double, std::milli> passed = std::chrono::steady_clock::now() - start;
        wall[run] = passed.count();
        processor[run] = MillisecondsOf(usage.ru_utime) + MillisecondsOf(usage.ru_stime);
        peak = std::max(peak, usage.ru_maxrss);
    }
    std::printf("%d %.3f %.3f %ld\n", WIFEXITED(status) ? WEXITSTATUS(status) : -1, MedianOf(wall, runs),
                MedianOf(processor, runs), peak * 1024);
}
