// SPDX-License-Identifier: Apache-2.0
//
// Reading and writing a layout meta file of 10 thousand and 100 thousand nodes, beside a bare pass of
// libexpat: nodes in groups, and containers nested in each other.

#include "benchmarks/document.h"

#include <zantrel/layout_files/meta_file.h>

#include <benchmark/benchmark.h>

#include <map>
#include <memory>

namespace {

using namespace Zantrel;

void AddParameter(LayoutNode& parent, std::int64_t number) {
    std::wstring const name = L"Parameter" + std::to_wstring(number);
    LayoutNode* const node =
        parent.AddNode<double>(name.c_str(), Distance, 0.25 * static_cast<double>(number));
    node->SetRange(-100.0, 100.0)->SetPostfix(L"mm")->SetDisplayName(L"Display name of " + name);
    node->SetPropName(L"BuildProcessor." + name)->SetDescription(L"What the parameter does & when");
}

/// Ten parameters in a group, a hundred groups in a branch.
void FillGroups(ParameterLayout& layout, std::int64_t nodes) {
    LayoutNode* branch = nullptr;
    LayoutNode* group = nullptr;
    for (std::int64_t i = 0; i < nodes; ++i) {
        if (i % 1000 == 0) {
            branch = layout.m_profileEditor->AddNode((L"Branch" + std::to_wstring(i / 1000)).c_str());
        }
        if (i % 10 == 0) {
            group = branch->AddNode((L"Group" + std::to_wstring(i / 10 % 100)).c_str());
        }
        AddParameter(*group, i % 10);
    }
}

/// Chains of 200 lists and profile lists by turns, each with a parameter and the next.
/// The reader takes 256 levels: a chain of 200 is deep, and still fits.
void FillContainers(ParameterLayout& layout, std::int64_t nodes) {
    LayoutNode* container = nullptr;
    for (std::int64_t i = 0; i < nodes; i += 2) {
        LayoutNode* const parent = i % 400 == 0 ? layout.m_profileEditor.GetNode() : container;
        container = parent->AddNode((L"Container" + std::to_wstring(i)).c_str());
        // By steps of two: every other container is a list.
        i % 4 == 0 ? container->SetList(true, L"Item", L"Item") : container->SetProfile(true, L"Profile");
        AddParameter(*container, i);
    }
}

using Fill = void (*)(ParameterLayout&, std::int64_t);

/// A layout of a number of nodes and its file, made once.
struct Schema : ZantrelBenchmark::Document {
    ParameterLayout layout;

    static Schema const& Of(Fill fill, std::int64_t nodes) {
        static std::map<std::pair<Fill, std::int64_t>, std::unique_ptr<Schema>> schemas;
        auto& schema = schemas[{fill, nodes}];
        if (schema == nullptr) {
            schema = std::make_unique<Schema>(fill, nodes);
        }
        return *schema;
    }

    Schema(Fill fill, std::int64_t nodes) : Document("layout_" + std::to_string(nodes)) {
        fill(layout, nodes);
        WriteFile(layout, path);
        Load();
    }
};

void Rate(benchmark::State& state, Schema const& schema) {
    state.SetItemsProcessed(state.range(0) * state.iterations());
    state.counters["bytes_per_node"] =
        static_cast<double>(schema.text.size()) / static_cast<double>(state.range(0));
}

template <Fill fill> void Expat(benchmark::State& state) {
    Schema const& schema = Schema::Of(fill, state.range(0));
    for ([[maybe_unused]] auto _ : state) {
        ZantrelBenchmark::PassOfExpat(schema, state);
    }
    Rate(state, schema);
}

template <Fill fill> void Read(benchmark::State& state) {
    Schema const& schema = Schema::Of(fill, state.range(0));
    // Written anew, since groups and containers of one number share the path of their file.
    ZantrelBenchmark::Document const input("layout_read");
    WriteFile(schema.layout, input.path);
    for ([[maybe_unused]] auto _ : state) {
        auto layout = std::make_unique<ParameterLayout>();
        if (!ReadFile(*layout, input.path)) {
            state.SkipWithError("the file can't be read");
        }
        state.PauseTiming();
        layout.reset();
        state.ResumeTiming();
    }
    Rate(state, schema);
}

template <Fill fill> void Write(benchmark::State& state) {
    Schema const& schema = Schema::Of(fill, state.range(0));
    ZantrelBenchmark::Document const output("layout_written");
    for ([[maybe_unused]] auto _ : state) {
        if (!WriteFile(schema.layout, output.path)) {
            state.SkipWithError("the file can't be written");
        }
    }
    Rate(state, schema);
}

void Sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->RangeMultiplier(10)->Range(10'000, 100'000)->Unit(benchmark::kMillisecond)->UseRealTime();
}

BENCHMARK(Expat<FillGroups>)->Apply(Sizes);
BENCHMARK(Read<FillGroups>)->Apply(Sizes);
BENCHMARK(Write<FillGroups>)->Apply(Sizes);
BENCHMARK(Expat<FillContainers>)->Apply(Sizes);
BENCHMARK(Read<FillContainers>)->Apply(Sizes);
BENCHMARK(Write<FillContainers>)->Apply(Sizes);

} // namespace
