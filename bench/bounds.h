#pragma once

#include <benchmark/benchmark.h>

// What a benchmark must keep. The report sets the measured figure beside it and says whether it holds. Each is called
// once, before or after the measured loop.

// The median time of one iteration must not be above this.
inline void BoundMilliseconds(benchmark::State& state, double atMost) {
    state.counters["at_most_ms"] = atMost;
}

// The benchmark has done this many items of work in all its iterations, and must do this many a second or more.
inline void BoundItemsPerSecond(benchmark::State& state, double items, double atLeast) {
    state.counters["items_per_s"] = benchmark::Counter(items, benchmark::Counter::kIsRate);
    state.counters["at_least_per_s"] = atLeast;
}

// How often memory was taken must not be above this.
inline void BoundAllocations(benchmark::State& state, double allocations, double atMost) {
    state.counters["allocations"] = allocations;
    state.counters["at_most_allocations"] = atMost;
}

// A size in megabytes must not be above this.
inline void BoundMegabytes(benchmark::State& state, double megabytes, double atMost) {
    state.counters["megabytes"] = megabytes;
    state.counters["at_most_mb"] = atMost;
}
