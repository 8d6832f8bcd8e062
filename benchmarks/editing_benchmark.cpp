// SPDX-License-Identifier: Apache-2.0
//
// What goes over a whole database of the editing library, beside the flat index of the same database. The
// counter is the ratio of the times, the median over rounds in which both run in turn.

#include <zantrel/database/content_list.h>
#include <zantrel/editing/editing.h>
#include <zantrel/zantrel.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace Zantrel;
using namespace Zantrel::Editing;

/// Ten parameters of which each has something to be held against, some of which have to be unique, and two of
/// which depend on another one.
void AddParameters(LayoutNode& group) {
    group.AddNode(L"Name", String, L"")->SetIsValueUnique(true)->SetAllowEmpty(true)->m_maxLength = 40;
    group.AddNode(L"Code", String, L"AB-12")->m_regex = L"[A-Z]{2}-[0-9]+";
    group.AddNode(L"Mode", Options, L"fine")->AddOption(L"fast", L"Fast")->AddOption(L"fine", L"Fine");
    for (wchar_t const* name : {L"Power", L"Speed", L"Focus", L"Hatch", L"Begin", L"End"}) {
        group.AddNode(name, Double, 2.5)->SetRange(0.0, 1e6)->SetDisplayName(name);
    }
    LayoutNode* const active = group.AddNode(L"Active", Bool, true);
    group.At(5).AddVisibilitySource(active, true);
    group.At(6).AddEditabilitySource(active, true);
}

/// 100,000 leaves in the items of lists, in profiles, or each on a node of its own.
struct Job {
    ParameterLayout layout;
    std::unique_ptr<ParameterDatabase> database;

    enum Shape { Items, Profiles, Nodes };
    explicit Job(Shape shape) {
        LayoutNode* const editor = layout.m_profileEditor;
        if (shape == Nodes) {
            for (int i = 0; i != 10000; ++i) {
                AddParameters(*editor->AddNode((L"Group" + std::to_wstring(i)).c_str()));
            }
        } else {
            LayoutNode* const entries = editor->AddNode(L"Entries");
            AddParameters(*entries);
            entries->SetNodeName(L"Entry")->SetIsList(shape == Items)->SetIsProfileList(shape == Profiles);
            entries->SetMultiplicity(shape == Items ? 10000 : 0);
        }
        database = std::make_unique<ParameterDatabase>(&layout);
        ParameterNode list = database->GetProfileEditor().Get(layout.m_profileEditor->Back());
        for (int i = 0; shape != Nodes && i != 10000; ++i) {
            std::wstring const name = L"Entry" + std::to_wstring(i);
            ParameterNode entry = shape == Items ? list.GetListNode(static_cast<unsigned long long>(i))
                                                 : list.AddProfile(name.c_str(), true);
            entry.Get(L"Name").SetValue(name);
        }
    }
};

/// Fills `made`, which is ended outside of the time.
template <class Made>
double TimeOf(Made (*run)(ParameterDatabase&), ParameterDatabase& database, Made& made) {
    std::clock_t const begin = std::clock();
    made = run(database);
    return static_cast<double>(std::clock() - begin);
}

std::unique_ptr<ContentList> Index(ParameterDatabase& database) {
    auto list = std::make_unique<ContentList>();
    database.GetProfileEditor().CreateContentList(*list);
    return list;
}
std::size_t WalkAll(ParameterDatabase& database) {
    std::size_t places = 0;
    for (PlaceWalk walk(std::as_const(database)); walk.Next();) {
        ++places;
    }
    return places;
}
std::size_t ValidateAll(ParameterDatabase& database) { return Validate(database).size(); }
std::size_t LookAtAll(ParameterDatabase& database) {
    std::size_t visible = 0;
    for (LookWalk walk(database); walk.Next();) {
        visible += walk.GetLook().isVisible;
    }
    return visible;
}
std::size_t LookOfEach(ParameterDatabase& database) {
    std::size_t visible = 0;
    for (PlaceWalk walk(std::as_const(database)); walk.Next();) {
        visible += LookOf(walk.GetPlace()).isVisible;
    }
    return visible;
}
std::size_t CompareAll(ParameterDatabase& database) { return Differences(database, database).size(); }
std::size_t MigrateAll(ParameterDatabase& database) {
    return Migrate(database, *database.GetLayout()).steps.size();
}

void BesideIndex(benchmark::State& state, std::size_t (*run)(ParameterDatabase&)) {
    Job job(static_cast<Job::Shape>(state.range(0)));
    std::vector<double> ratios;
    for ([[maybe_unused]] auto _ : state) {
        std::unique_ptr<ContentList> list;
        std::size_t count = 0;
        double const index = TimeOf(Index, *job.database, list);
        ratios.push_back(TimeOf(run, *job.database, count) / index);
        benchmark::DoNotOptimize(count);
    }
    std::nth_element(ratios.begin(), ratios.begin() + static_cast<std::ptrdiff_t>(ratios.size() / 2),
                     ratios.end());
    state.counters["ratio"] = ratios[ratios.size() / 2];
}

void Shapes(benchmark::internal::Benchmark* row) { row->DenseRange(Job::Items, Job::Nodes)->Iterations(15); }

BENCHMARK_CAPTURE(BesideIndex, Walk, WalkAll)->Apply(Shapes);
BENCHMARK_CAPTURE(BesideIndex, Validate, ValidateAll)->Apply(Shapes);
BENCHMARK_CAPTURE(BesideIndex, LookWalk, LookAtAll)->Apply(Shapes);
BENCHMARK_CAPTURE(BesideIndex, LookOf, LookOfEach)->Apply(Shapes);
BENCHMARK_CAPTURE(BesideIndex, Differences, CompareAll)->Apply(Shapes);
BENCHMARK_CAPTURE(BesideIndex, Migrate, MigrateAll)->Apply(Shapes);

} // namespace
