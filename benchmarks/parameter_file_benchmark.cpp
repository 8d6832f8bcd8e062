// SPDX-License-Identifier: Apache-2.0
//
// Reading and writing a generic parameter file of 10 thousand, 100 thousand and 1 million leaves, beside what
// a reader and a writer can't do without: a bare pass of libexpat, pugixml with every value converted, a flat
// loop of std::to_chars.

#include "benchmarks/document.h"
#include "benchmarks/sample_job.h"

#include <zantrel/parameter_files/generic_parameter_file.h>

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <pugixml.hpp>

#include <filesystem>
#include <map>
#include <memory>
#include <vector>

namespace {

using namespace Zantrel;

/// A written job of a number of leaves, made once.
struct Job : ZantrelBenchmark::Document {
    std::vector<double> numbers;
    std::size_t leaves = 0; ///< values of all types in the database

    static Sample::ParameterLayout const& Layout() {
        static Sample::ParameterLayout const layout(0);
        return layout;
    }

    static Job const& Of(std::int64_t leaves) {
        static std::map<std::int64_t, std::unique_ptr<Job>> jobs;
        auto& job = jobs[leaves];
        if (job == nullptr) {
            job = std::make_unique<Job>(static_cast<std::size_t>(leaves));
        }
        return *job;
    }

    explicit Job(std::size_t wanted) : Document("job_" + std::to_string(wanted)) {
        ParameterDatabase database(&Layout());
        ZantrelBenchmark::FillSampleJob(database, wanted);
        auto collect = [this](double value) { numbers.push_back(value); };
        ZantrelBenchmark::VisitNumbers(database.GetProfileEditor(), collect);
        leaves = wanted;
        WriteFile(database, path, L"");
        Load();
    }
};

void Rate(benchmark::State& state, Job const& job) {
    state.SetItemsProcessed(static_cast<std::int64_t>(job.leaves) * state.iterations());
    state.counters["bytes_per_leaf"] = static_cast<double>(job.text.size()) / static_cast<double>(job.leaves);
}

void Expat(benchmark::State& state) {
    Job const& job = Job::Of(state.range(0));
    for ([[maybe_unused]] auto _ : state) {
        ZantrelBenchmark::PassOfExpat(job, state);
    }
    Rate(state, job);
}

/// Every leaf's text as a number, as far as it is one.
double Convert(pugi::xml_node const& node) {
    double sum = 0;
    for (pugi::xml_node const& child : node.children()) {
        if (child.first_child().type() == pugi::node_pcdata) {
            sum += child.text().as_double();
        } else {
            sum += Convert(child);
        }
    }
    return sum;
}

/// A reader of another kind, which keeps the whole document in memory; converting its numbers is part of the
/// time, as the library does that while it reads.
void Pugixml(benchmark::State& state) {
    Job const& job = Job::Of(state.range(0));
    for ([[maybe_unused]] auto _ : state) {
        pugi::xml_document document;
        document.load_file(std::filesystem::path(job.path).c_str());
        benchmark::DoNotOptimize(Convert(document));
    }
    Rate(state, job);
}

void Read(benchmark::State& state) {
    Job const& job = Job::Of(state.range(0));
    double bytes = 0;
    for ([[maybe_unused]] auto _ : state) {
        // The heap is compared around the read alone; what it takes for itself it has given back by then.
        std::size_t const before = mallinfo2().uordblks;
        auto database = std::make_unique<ParameterDatabase>(&Job::Layout());
        if (!ReadFile(*database, job.path)) {
            state.SkipWithError("the file can't be read");
        }
        state.PauseTiming();
        bytes = static_cast<double>(mallinfo2().uordblks - before);
        database.reset();
        state.ResumeTiming();
    }
    Rate(state, job);
    state.counters["heap_per_value"] = bytes / static_cast<double>(job.leaves);
}

void Write(benchmark::State& state) {
    Job const& job = Job::Of(state.range(0));
    ParameterDatabase database(&Job::Layout());
    ReadFile(database, job.path);
    std::wstring const path = job.path + L".out";
    for ([[maybe_unused]] auto _ : state) {
        if (!WriteFile(database, path, L"")) {
            state.SkipWithError("the file can't be written");
        }
    }
    std::filesystem::remove(path);
    Rate(state, job);
}

/// The least that writing can cost: the numbers, without names and without a tree.
void FlatPrint(benchmark::State& state) {
    Job const& job = Job::Of(state.range(0));
    ZantrelBenchmark::Document const output("flat");
    for ([[maybe_unused]] auto _ : state) {
        ZantrelBenchmark::FlatFile file(output.path);
        for (double const number : job.numbers) {
            file.Print(number);
        }
    }
    Rate(state, job);
}

/// A layout of `leaves` parameters in groups of ten.
void Format(benchmark::State& state) {
    ParameterLayout layout;
    LayoutNode* group = nullptr;
    LayoutNode* branch = nullptr;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        if (i % 1000 == 0) {
            branch = layout.m_profileEditor->AddNode((L"Branch" + std::to_wstring(i)).c_str());
        }
        if (i % 10 == 0) {
            group = branch->AddNode((L"Group" + std::to_wstring(i % 1000)).c_str());
        }
        group->AddNode<double>((L"Parameter" + std::to_wstring(i % 10)).c_str(), eTypeLayoutNode::Double,
                               0.5);
    }
    double bytes = 0;
    for ([[maybe_unused]] auto _ : state) {
        std::size_t const before = mallinfo2().uordblks;
        auto database = std::make_unique<ParameterDatabase>(&layout);
        state.PauseTiming();
        bytes = static_cast<double>(mallinfo2().uordblks - before);
        database.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.range(0) * state.iterations());
    state.counters["heap_per_value"] = bytes / static_cast<double>(state.range(0));
}

void Sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->RangeMultiplier(10)->Range(10'000, 1'000'000)->Unit(benchmark::kMillisecond)->UseRealTime();
}

BENCHMARK(Expat)->Apply(Sizes);
BENCHMARK(Pugixml)->Apply(Sizes);
BENCHMARK(Read)->Apply(Sizes);
BENCHMARK(FlatPrint)->Apply(Sizes);
BENCHMARK(Write)->Apply(Sizes);
BENCHMARK(Format)->Apply(Sizes);

} // namespace
