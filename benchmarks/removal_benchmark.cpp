// SPDX-License-Identifier: Apache-2.0
//
// Ending the children of one layout node one by one, forwards, backwards and in a random order: the time for
// 10 thousand, for 100 thousand, and how many times the second is the first. Ten would be linear, were memory
// as near for many as it is for few: the rows "alone" end as many nodes that stand under no parent.

#include <zantrel/layout/parameter_layout.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace Zantrel;

enum class Order { Forwards, Backwards, Random };

/// How long it takes to end `count` children, in seconds.
double SecondsToRemove(std::size_t count, Order order, bool alone) {
    ParameterLayout layout;
    LayoutNode& parent = *layout.m_partConfigurator;
    std::vector<LayoutNode*> children;
    for (std::size_t number = 0; number < count; ++number) {
        children.push_back(LayoutNode::MakeNode(std::to_wstring(number).c_str(), Group));
        if (!alone) {
            parent.AppendNode(children.back());
        }
    }
    if (order == Order::Backwards) {
        std::reverse(children.begin(), children.end());
    } else if (order == Order::Random) {
        std::shuffle(children.begin(), children.end(), std::mt19937(1));
    }
    auto const start = std::chrono::steady_clock::now();
    for (LayoutNode* const child : children) {
        delete child;
        benchmark::DoNotOptimize(parent.Size());
    }
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// The least of some tries, since whatever else runs can only add to it.
double LeastSeconds(std::size_t count, Order order, bool alone) {
    double least = SecondsToRemove(count, order, alone);
    for (int tries = 0; tries < 4; ++tries) {
        least = std::min(least, SecondsToRemove(count, order, alone));
    }
    return least;
}

/// One iteration, as LeastSeconds repeats by itself, and a time told by hand, since making the children must
/// not count.
void Remove(benchmark::State& state, Order order, bool alone) {
    double few = 0;
    double many = 0;
    for ([[maybe_unused]] auto _ : state) {
        few = LeastSeconds(10'000, order, alone);
        many = LeastSeconds(100'000, order, alone);
        state.SetIterationTime(many);
    }
    state.counters["ms_of_10_000"] = few * 1000;
    state.counters["ms_of_100_000"] = many * 1000;
    state.counters["ratio"] = many / few;
}

BENCHMARK_CAPTURE(Remove, forwards, Order::Forwards, false)->UseManualTime()->Iterations(1);
BENCHMARK_CAPTURE(Remove, backwards, Order::Backwards, false)->UseManualTime()->Iterations(1);
BENCHMARK_CAPTURE(Remove, at_random, Order::Random, false)->UseManualTime()->Iterations(1);
BENCHMARK_CAPTURE(Remove, forwards_alone, Order::Forwards, true)->UseManualTime()->Iterations(1);
BENCHMARK_CAPTURE(Remove, backwards_alone, Order::Backwards, true)->UseManualTime()->Iterations(1);
BENCHMARK_CAPTURE(Remove, at_random_alone, Order::Random, true)->UseManualTime()->Iterations(1);

} // namespace
