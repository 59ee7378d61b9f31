#pragma once

#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>

/// Nothing is measured before it does what it should.
inline void require(bool holds, const char *what) {
    if (holds)
        return;
    std::fprintf(stderr, "Not as it should be: %s\n", what);
    std::exit(1);
}

/// `prepare` runs before each round and is not timed.
inline void measure(const std::string &name, const std::function<void()> &round,
                    const std::function<void()> &prepare = nullptr) {
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State &state) {
        for ([[maybe_unused]] auto turn : state) {
            if (prepare) {
                state.PauseTiming();
                prepare();
                state.ResumeTiming();
            }
            round();
        }
    })->Unit(benchmark::kMillisecond);
}

/// The time of a round is what it gives, in seconds.
inline void measureItself(const std::string &name, const std::function<double()> &round) {
    benchmark::RegisterBenchmark(name.c_str(),
                                 [=](benchmark::State &state) {
                                     for ([[maybe_unused]] auto turn : state)
                                         state.SetIterationTime(round());
                                 })
        ->Unit(benchmark::kMillisecond)
        ->UseManualTime()
        ->Iterations(1);
}
