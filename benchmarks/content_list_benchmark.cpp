// SPDX-License-Identifier: Apache-2.0
//
// The flat index of a database of up to 1 million leaves, beside a std::map of the same paths made from a
// ready vector; a query, beside a look-up in that map; the validity check of the file, beside reading it.

#include "benchmarks/document.h"
#include "benchmarks/sample_job.h"

#include <zantrel/database/content_list.h>
#include <zantrel/parameter_files/generic_parameter_file.h>
#include <zantrel/parameter_files/parameter_file_validity.h>

#include <benchmark/benchmark.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace Zantrel;

/// A database of a number of leaves, its file, and the paths of its leaves; made once.
struct Job : ZantrelBenchmark::Document {
    Sample::ParameterLayout layout{0};
    ParameterDatabase database{&layout};
    std::vector<std::wstring> paths;

    static Job& Of(std::int64_t leaves) {
        static std::map<std::int64_t, std::unique_ptr<Job>> jobs;
        auto& job = jobs[leaves];
        if (job == nullptr) {
            job = std::make_unique<Job>(leaves);
        }
        return *job;
    }

    explicit Job(std::int64_t leaves) : Document("indexed_" + std::to_string(leaves)) {
        ZantrelBenchmark::FillSampleJob(database, static_cast<std::size_t>(leaves));
        WriteFile(database, path, L"");
        ContentList list;
        database.GetProfileEditor().CreateContentList(list);
        for (ContentList::Node const& node : list.m_nodes) {
            paths.push_back(node.m_path);
        }
    }
};

std::map<std::wstring, void*> MapOf(std::vector<std::wstring> const& paths) {
    std::map<std::wstring, void*> made;
    for (std::wstring const& path : paths) {
        made.emplace(path, nullptr);
    }
    return made;
}

void MakeMap(benchmark::State& state) {
    Job const& job = Job::Of(state.range(0));
    for ([[maybe_unused]] auto _ : state) {
        auto made = MapOf(job.paths);
        state.PauseTiming();
        made.clear();
        state.ResumeTiming();
    }
}

void MakeContentList(benchmark::State& state) {
    Job& job = Job::Of(state.range(0));
    for ([[maybe_unused]] auto _ : state) {
        ContentList list;
        job.database.GetProfileEditor().CreateContentList(list);
        state.PauseTiming();
        list = ContentList();
        state.ResumeTiming();
    }
    state.counters["leaves"] = static_cast<double>(job.paths.size());
}

/// Every path of a stride through all, so that neither finds its way in a cache.
template <class Find> void FindAll(benchmark::State& state, Job const& job, Find find) {
    std::size_t at = 0;
    for ([[maybe_unused]] auto _ : state) {
        // 7919 is a prime: a number of paths that it does not divide is gone through whole.
        at = (at + 7919) % job.paths.size();
        find(job.paths[at]);
    }
}

void FindInMap(benchmark::State& state) {
    Job const& job = Job::Of(state.range(0));
    auto const made = MapOf(job.paths);
    FindAll(state, job, [&](std::wstring const& path) { benchmark::DoNotOptimize(made.find(path)); });
}

void Query(benchmark::State& state) {
    Job& job = Job::Of(state.range(0));
    ParameterNode const editor = job.database.GetProfileEditor();
    // Makes the index, which the cursor keeps, before the time starts.
    editor.Query(L"");
    FindAll(state, job,
            [&](std::wstring const& path) { benchmark::DoNotOptimize(editor.Query(path.c_str())); });
}

/// What CheckValidity stands beside: the check reads the file into a database of its own, too.
void Read(benchmark::State& state) {
    Job const& job = Job::Of(state.range(0));
    for ([[maybe_unused]] auto _ : state) {
        ParameterDatabase database(&job.layout);
        ReadFile(database, job.path);
    }
}

void CheckValidity(benchmark::State& state) {
    Job const& job = Job::Of(state.range(0));
    for ([[maybe_unused]] auto _ : state) {
        if (!IsValidParameterFile(job.layout, job.path, {}, nullptr)) {
            state.SkipWithError("the file should be valid");
        }
    }
}

void Sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->RangeMultiplier(10)->Range(100'000, 1'000'000)->Unit(benchmark::kMillisecond)->UseRealTime();
}

void LookUps(benchmark::internal::Benchmark* benchmark) { benchmark->Arg(1'000'000)->UseRealTime(); }

BENCHMARK(MakeMap)->Apply(Sizes);
BENCHMARK(MakeContentList)->Apply(Sizes);
BENCHMARK(FindInMap)->Apply(LookUps);
BENCHMARK(Query)->Apply(LookUps);
BENCHMARK(Read)->Apply(Sizes);
BENCHMARK(CheckValidity)->Apply(Sizes);

} // namespace
