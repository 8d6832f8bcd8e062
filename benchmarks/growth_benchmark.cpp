// SPDX-License-Identifier: Apache-2.0
//
// How the time of each operation grows with what it works on: for 10 thousand values, for 100 thousand, how
// many times the second is the first, and the power of the number that this would be. A linear operation has
// a ratio of ten and a power of 1, and a little more where as much memory is no longer near.

#include "benchmarks/sample_job.h"

#include <zantrel/zantrel.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <ctime>
#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace Zantrel;

/// What is measured, with all that it works on, which is made before.
using Prepared = std::function<void()>;

struct Job {
    Sample::ParameterLayout layout{0};
    ParameterDatabase database{&layout};

    explicit Job(std::size_t values) { ZantrelBenchmark::FillSampleJob(database, values); }
    std::string Written() const {
        std::ostringstream out;
        WriteStream(database, out);
        return std::move(out).str();
    }
    ParameterNode Editor() { return database.GetProfileEditor(); }
};

std::vector<std::wstring> Names(std::size_t count) {
    std::vector<std::wstring> names;
    for (std::size_t number = 0; number < count; ++number) {
        names.push_back(L"Profile " + std::to_wstring(number * 7919 % count)); // in no order
    }
    return names;
}

/// A list of so many profiles, each with a value.
struct Profiles {
    ParameterLayout layout;
    std::unique_ptr<ParameterDatabase> database;
    std::vector<std::wstring> names;
    ParameterNode list;

    explicit Profiles(std::size_t count) : names(Names(count)) {
        layout.m_profileEditor->AddNode(L"Materials")
            ->SetProfile(true, L"Profile")
            ->AddNode(L"Power", Double, 1.5);
        database = std::make_unique<ParameterDatabase>(&layout);
        list = database->GetProfileEditor().Get(L"Materials");
        for (std::wstring const& name : names) {
            list.AddProfile(name.c_str(), false);
        }
    }
};

BuildTicket TicketOf(std::size_t values) {
    BuildTicket ticket(nullptr);
    for (std::size_t part = 0; part < values / 10; ++part) {
        std::wstring digits = std::to_wstring(part);
        digits.insert(0, 12 - digits.size(), L'0');
        KelAM::ExternalPropertyID const id(L"01234567-89ab-cdef-0123-" + digits);
        KelAM::ExternalProperties& store = *ticket.GetPartOverrides().GetProperties(id, true);
        for (std::size_t number = 0; number < 10; ++number) {
            store.SetValue(L"Property" + std::to_wstring(number), 0.5 + static_cast<double>(number));
        }
    }
    return ticket;
}

/// Groups of ten nodes.
std::string LayoutFileOf(std::size_t nodes) {
    ParameterLayout layout;
    for (std::size_t number = 0; number < nodes / 10; ++number) {
        LayoutNode& group = *layout.m_profileEditor->AddNode((L"Group" + std::to_wstring(number)).c_str());
        for (wchar_t const* const name : {L"A", L"B", L"C", L"D", L"E", L"F", L"G", L"H", L"I", L"J"}) {
            group.AddNode(name, Double, 1.5)->SetDescription(L"What it does");
        }
    }
    std::ostringstream out;
    WriteStream(layout, out);
    return std::move(out).str();
}

Prepared Read(std::size_t values) {
    auto const layout = std::make_shared<Sample::ParameterLayout>(0);
    return [layout, file = Job(values).Written()] {
        ParameterDatabase database(layout.get());
        std::istringstream in(file);
        benchmark::DoNotOptimize(ReadStream(database, in));
    };
}

Prepared Write(std::size_t values) {
    return [job = std::make_shared<Job>(values)] { benchmark::DoNotOptimize(job->Written()); };
}

Prepared WalkAll(std::size_t values) {
    return [job = std::make_shared<Job>(values)] {
        for (Walk walk(job->Editor()); walk.Next();) {
            benchmark::DoNotOptimize(walk.Depth());
        }
    };
}

Prepared Find(std::size_t profiles) {
    return [at = std::make_shared<Profiles>(profiles)] {
        for (std::wstring const& name : at->names) {
            benchmark::DoNotOptimize(at->list.GetProfile(name.c_str()));
        }
    };
}

// Works once: each try has a list of its own.
Prepared Remove(std::size_t profiles) {
    return [at = std::make_shared<Profiles>(profiles)] {
        for (std::wstring const& name : at->names) {
            at->list.m_pProperties->RemoveProperty(name, false);
        }
    };
}

Prepared Index(std::size_t values) {
    return [job = std::make_shared<Job>(values)] {
        ContentList list;
        job->Editor().CreateContentList(list);
        benchmark::DoNotOptimize(list.m_nodes.size());
    };
}

Prepared Query(std::size_t values) {
    auto const job = std::make_shared<Job>(values);
    ContentList list;
    job->Editor().CreateContentList(list);
    std::vector<std::wstring> paths;
    for (ContentList::Node const& node : list.m_nodes) {
        paths.push_back(node.m_path);
    }
    ParameterNode editor = job->Editor();
    editor.Query(L""); // which makes the index
    // The job comes along, since the cursor stands in it.
    return [job, editor, paths] {
        for (std::wstring const& path : paths) {
            benchmark::DoNotOptimize(editor.Query(path.c_str()));
        }
    };
}

Prepared Copy(std::size_t values) {
    return [job = std::make_shared<Job>(values)] {
        benchmark::DoNotOptimize(ParameterDatabase(job->database).GetLayout());
    };
}

Prepared CheckValidity(std::size_t values) {
    auto const layout = std::make_shared<Sample::ParameterLayout>(0);
    return [layout, file = Job(values).Written()] {
        std::istringstream in(file);
        ParameterFileValidityResult result;
        benchmark::DoNotOptimize(IsValidParameterStream(*layout, in, {}, &result));
    };
}

Prepared SaveTicket(std::size_t values) {
    return [ticket = std::make_shared<BuildTicket>(TicketOf(values))] {
        std::ostringstream out;
        benchmark::DoNotOptimize(SaveBuildTicket(out, *ticket, {}));
    };
}

Prepared LoadTicket(std::size_t values) {
    std::ostringstream out;
    SaveBuildTicket(out, TicketOf(values), {});
    return [file = out.str()] {
        BuildTicket ticket(nullptr);
        std::istringstream in(file);
        benchmark::DoNotOptimize(LoadBuildTicket(in, ticket));
    };
}

Prepared ReadLayout(std::size_t nodes) {
    return [file = LayoutFileOf(nodes)] {
        ParameterLayout layout;
        std::istringstream in(file);
        benchmark::DoNotOptimize(ReadStream(layout, in));
    };
}

/// The least of some tries, since whatever else runs can only add to it; each on something new.
double LeastSeconds(Prepared (*prepare)(std::size_t), std::size_t count) {
    double least = HUGE_VAL;
    for (int tries = 0; tries < 5; ++tries) {
        Prepared const operation = prepare(count);
        std::clock_t const start = std::clock(); // of the processor, whoever else has it meanwhile
        operation();
        least = std::min(least, static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
    }
    return least;
}

void Growth(benchmark::State& state, Prepared (*prepare)(std::size_t)) {
    double few = 0, many = 0;
    for ([[maybe_unused]] auto _ : state) {
        few = LeastSeconds(prepare, 10'000);
        many = LeastSeconds(prepare, 100'000);
        state.SetIterationTime(many);
    }
    state.counters["ms_of_10_000"] = few * 1000;
    state.counters["ms_of_100_000"] = many * 1000;
    state.counters["power"] = std::log10(many / few);
    state.counters["ratio"] = many / few;
}

BENCHMARK_CAPTURE(Growth, read, Read)->UseManualTime()->Iterations(1);
BENCHMARK_CAPTURE(Growth, write, Write)->UseManualTime()->Iterations(1);
BENCHMARK_CAPTURE(Growth, walk, WalkAll)->UseManualTime()->Iterations(1);
BENCHMARK_CAPTURE(Growth, find, Find)->UseManualTime()->Iterations(1);
BENCHMARK_CAPTURE(Growth, remove, Remove)->UseManualTime()->Iterations(1);
BENCHMARK_CAPTURE(Growth, index, Index)->UseManualTime()->Iterations(1);
BENCHMARK_CAPTURE(Growth, query, Query)->UseManualTime()->Iterations(1);
BENCHMARK_CAPTURE(Growth, copy, Copy)->UseManualTime()->Iterations(1);
BENCHMARK_CAPTURE(Growth, validity, CheckValidity)->UseManualTime()->Iterations(1);
BENCHMARK_CAPTURE(Growth, ticket_save, SaveTicket)->UseManualTime()->Iterations(1);
BENCHMARK_CAPTURE(Growth, ticket_load, LoadTicket)->UseManualTime()->Iterations(1);
BENCHMARK_CAPTURE(Growth, layout_read, ReadLayout)->UseManualTime()->Iterations(1);

} // namespace
