// SPDX-License-Identifier: Apache-2.0
//
// Loading, saving, cleaning and converting a build ticket of 10 thousand and 100 thousand part instances of
// 20 properties, beside a bare pass of libexpat and a flat loop of std::to_chars.

#include "benchmarks/document.h"

#include <zantrel/build_ticket/build_ticket_file.h>
#include <zantrel/store/property_names.h>

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <map>
#include <memory>
#include <random>

namespace {

using namespace Zantrel;

constexpr std::int64_t PropertiesEach = 20;

std::wstring NameOf(std::int64_t property) { return L"BuildProcessor.Property" + std::to_wstring(property); }

/// Calls `take` with each name and value of an instance: thirteen numbers of 17 digits, three integers, three
/// texts and a flag.
template <class Take> void MakeValues(std::mt19937_64& random, Take take) {
    std::uniform_real_distribution<double> number(0.0, 100.0);
    for (std::int64_t i = 0; i < PropertiesEach; ++i) {
        if (i < 13) {
            take(NameOf(i), number(random));
        } else if (i < 16) {
            take(NameOf(i), static_cast<std::int32_t>(random() % 100000));
        } else if (i < 19) {
            take(NameOf(i), L"Profile " + std::to_wstring(random() % 50));
        } else {
            take(NameOf(i), random() % 2 == 0);
        }
    }
}

/// The number fills the last group, which has twelve digits, so that each is a GUID of its own.
std::wstring GuidOf(std::int64_t instance) {
    std::wstring const digits = std::to_wstring(instance);
    return L"01234567-89ab-cdef-0123-" + std::wstring(12 - digits.size(), L'0') + digits;
}

/// The seed is fixed: every run measures the same ticket, and the flat loop prints the ticket's values.
void FillStores(KelAM::DatabaseExternalProperties& stores, std::int64_t instances) {
    std::mt19937_64 random(17);
    for (std::int64_t i = 0; i < instances; ++i) {
        KelAM::ExternalProperties& store = *stores.GetProperties(KelAM::ExternalPropertyID(GuidOf(i)), true);
        store.m_objectKind = 2;
        MakeValues(random, [&](std::wstring const& name, auto const& value) { store.SetValue(name, value); });
    }
}

/// A saved ticket of a number of instances, made once.
struct Saved : ZantrelBenchmark::Document {
    static Saved const& Of(std::int64_t instances) {
        static std::map<std::int64_t, std::unique_ptr<Saved>> files;
        auto& file = files[instances];
        if (file == nullptr) {
            file = std::make_unique<Saved>(instances);
        }
        return *file;
    }

    explicit Saved(std::int64_t instances) : Document("ticket_" + std::to_string(instances)) {
        BuildTicket ticket(nullptr);
        FillStores(ticket.GetPartOverrides(), instances);
        SaveBuildTicket(path, ticket, {});
        Load();
    }
};

void Rate(benchmark::State& state) {
    state.SetItemsProcessed(state.range(0) * PropertiesEach * state.iterations());
    double const properties = static_cast<double>(state.range(0) * PropertiesEach);
    state.counters["bytes_per_property"] =
        static_cast<double>(Saved::Of(state.range(0)).text.size()) / properties;
}

void Expat(benchmark::State& state) {
    Saved const& saved = Saved::Of(state.range(0));
    for ([[maybe_unused]] auto _ : state) {
        ZantrelBenchmark::PassOfExpat(saved, state);
    }
    Rate(state);
}

void Load(benchmark::State& state) {
    Saved const& saved = Saved::Of(state.range(0));
    double bytes = 0;
    for ([[maybe_unused]] auto _ : state) {
        std::size_t const before = mallinfo2().uordblks;
        auto ticket = std::make_unique<BuildTicket>(nullptr);
        if (!LoadBuildTicket(saved.path, *ticket)) {
            state.SkipWithError("the ticket can't be loaded");
        }
        // Ending the ticket isn't loading: it happens outside of the time, and after the heap has been looked
        // at.
        state.PauseTiming();
        bytes = static_cast<double>(mallinfo2().uordblks - before);
        ticket.reset();
        state.ResumeTiming();
    }
    Rate(state);
    state.counters["heap_per_property"] = bytes / static_cast<double>(state.range(0) * PropertiesEach);
}

/// The least that saving can cost: the same values, without names and without a tree. They are laid out
/// before the time starts.
void FlatPrint(benchmark::State& state) {
    ZantrelBenchmark::Document const output("flat");
    std::vector<double> numbers;
    std::vector<std::int32_t> integers;
    std::vector<std::string> texts;
    std::mt19937_64 random(17);
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        MakeValues(random, [&]<class T>(std::wstring const&, T const& value) {
            if constexpr (std::is_same_v<T, double>) {
                numbers.push_back(value);
            } else if constexpr (std::is_same_v<T, std::int32_t>) {
                integers.push_back(value);
            } else if constexpr (std::is_same_v<T, bool>) {
                texts.push_back(value ? "True" : "False");
            } else {
                texts.emplace_back(value.begin(), value.end());
            }
        });
    }
    for ([[maybe_unused]] auto _ : state) {
        ZantrelBenchmark::FlatFile file(output.path);
        for (double const number : numbers) {
            file.Print(number);
        }
        for (std::int32_t const integer : integers) {
            file.Print(integer);
        }
        for (std::string const& text : texts) {
            file.Print(text);
        }
    }
    Rate(state);
}

/// Of a ticket that was loaded, or that a host built property by property.
void Save(benchmark::State& state, bool isBuilt) {
    BuildTicket ticket(nullptr);
    if (isBuilt) {
        FillStores(ticket.GetPartOverrides(), state.range(0));
    } else {
        LoadBuildTicket(Saved::Of(state.range(0)).path, ticket);
    }
    ZantrelBenchmark::Document const output("ticket_saved");
    for ([[maybe_unused]] auto _ : state) {
        if (!SaveBuildTicket(output.path, ticket, {})) {
            state.SkipWithError("the ticket can't be saved");
        }
    }
    Rate(state);
}

/// A host's own database of part instances, and a layout that uses half of their properties.
void CleanUpAndConvert(benchmark::State& state) {
    ParameterLayout layout;
    for (std::int64_t i = 0; i < PropertiesEach; i += 2) {
        layout.m_partConfigurator->AddNode(NameOf(i).c_str())->SetPropName(NameOf(i));
    }
    KelAM::DatabaseExternalProperties source;
    FillStores(source, state.range(0));
    for (auto const& [key, property] : source) {
        auto& store = PropertyCast<KelAM::ExternalProperties>(property)->m_value;
        // Or the conversion would leave the entry out.
        store.SetValue(KelAM::PropertyNames::ObjectType, KelAM::ObjectTypes::ObjectTypePartInstance);
    }
    for ([[maybe_unused]] auto _ : state) {
        auto ticket = std::make_unique<BuildTicket>(&layout);
        ticket->ConvertFromInternalBuildTicket(source);
        ticket->CleanUp();
        state.PauseTiming();
        ticket.reset();
        state.ResumeTiming();
    }
    Rate(state);
}

void Sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->RangeMultiplier(10)->Range(10'000, 100'000)->Unit(benchmark::kMillisecond)->UseRealTime();
}

BENCHMARK(Expat)->Apply(Sizes);
BENCHMARK(Load)->Apply(Sizes);
BENCHMARK(FlatPrint)->Apply(Sizes);
BENCHMARK_CAPTURE(Save, loaded, false)->Apply(Sizes);
BENCHMARK_CAPTURE(Save, built, true)->Apply(Sizes);
BENCHMARK(CleanUpAndConvert)->Apply(Sizes);

} // namespace
