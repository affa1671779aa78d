#pragma once

#include "bench/AllocationCount.h"
#include "bench/Inputs.h"

#include <benchmark/benchmark.h>

#include <string>
#include <utility>

namespace hxbench {

/**
 * Registers one bar, named "operation/case/contender"; `body` does the work once and returns its
 * result. Bars of the same operation and case are compared with each other.
 */
template <typename Body>
void add(const std::string& name, Body body)
{
    benchmark::RegisterBenchmark(name.c_str(), [body](benchmark::State& state) {
        const std::uint64_t before = allocationCount();
        for (auto _ : state) {
            auto result = body();
            benchmark::DoNotOptimize(result);
        }
        if (countsAllocations()) {
            const auto allocations = static_cast<double>(allocationCount() - before);
            state.counters["allocations"] = allocations / static_cast<double>(state.iterations());
        }
    });
}

void addMatching();
void addHexText();
void addBuilder();
void addRendering();
void addSearching();
void addCutting();
void addComparison();
void addFields();
void addPlainOperations();
void addUpdateLoop();

} // namespace hxbench
