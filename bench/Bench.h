#pragma once

#include "bench/AllocationCount.h"

#include <benchmark/benchmark.h>

#include <QByteArray>

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

/** Bytes of every value in a fixed, mixed order. */
QByteArray mixedBytes(int size);

/** `size` bytes of System Exclusive messages, 48 bytes each. */
QByteArray messageStream(int size);

/** "4096", but "4K" and "1M" where the number is round. */
std::string sizeName(int size);

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
