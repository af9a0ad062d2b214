#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace velmodsp::bench {

/// What the work is compared with: a floor (the least that any code could do), a reference (plain code for the same
/// job), another case. `call` does as much as one call of the work does.
template <class Call>
struct Against {
    const char* name;
    Call call;
};
template <class Call>
Against(const char*, Call) -> Against<Call>;

/// Seconds that `calls` calls take. The compiler must take all memory for read and changed between two calls.
template <class Call>
double SecondsOf(const Call& call, std::size_t calls) {
    const auto start = std::chrono::steady_clock::now();
    for (std::size_t i = 0; i < calls; ++i) {
        call();
        benchmark::ClobberMemory();
    }
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// How often to call `call` in one turn: for about 100 us, long enough for the clock and short enough for all turns of
/// a round to meet the same state of the machine; once if a single call takes longer. Warms the caches up as well.
template <class Call>
std::size_t CallsPerTurn(const Call& call) {
    constexpr double turnSeconds = 100e-6;
    std::size_t calls = 1;
    while (SecondsOf(call, calls) < turnSeconds) calls *= 2;
    return calls;
}

/// The median; reorders `values`, of which there must be at least one.
inline double Median(std::vector<double>& values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// Times `work` and everything it is compared with in turns, so that all meet the same load of the machine, and reports
/// for each of the others a counter `x_<name>`: the median, over all rounds, of the time of the work divided by the
/// other's. `items_per_second` counts the work's items, `itemsPerCall` of them a call. The benchmark must have been
/// registered with `UseManualTime`.
///
///     InTurns(state, blockSize, [&] { engine.Process(out, in, blockSize); },
///             Against{"floor", [&] { std::memcpy(out, in, blockSize * sizeof(float)); }});
template <class Work, class... Others>
void InTurns(benchmark::State& state, std::size_t itemsPerCall, const Work& work, const Against<Others>&... others) {
    const std::size_t calls = CallsPerTurn(work);
    std::array<std::vector<double>, sizeof...(others)> ratios;
    for (auto _ : state) {
        const double seconds = SecondsOf(work, calls);
        state.SetIterationTime(seconds);
        auto ratiosOfOne = ratios.begin();
        (ratiosOfOne++->push_back(seconds / SecondsOf(others.call, calls)), ...);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(calls * itemsPerCall));
    auto ratiosOfOne = ratios.begin();
    ((state.counters[std::string("x_") + others.name] = Median(*ratiosOfOne++)), ...);
}

}  // namespace velmodsp::bench
