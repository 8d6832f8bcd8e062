// SPDX-License-Identifier: Apache-2.0
//
// What a parameter costs here and with what else one could take: reading, writing, finding and holding the
// same values as XML by pugixml and as JSON by nlohmann's library, with every value converted to its type.
// The counters are ratios to the unit that each row names, each the median over rounds in which all
// contestants run in turn: the machine changes its speed, a round hardly does.

#include "benchmarks/document.h"
#include "benchmarks/mixed_job.h"

#include <zantrel/database/content_list.h>
#include <zantrel/parameter_files/generic_parameter_file.h>
#include <zantrel/text/string_conversion.h>

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <nlohmann/json.hpp>
#include <pugixml.hpp>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace Zantrel;
using nlohmann::json;
using Seconds = double;

constexpr int Rounds = 9;

/// A walk's places as nested objects, by the names and elements that the file has.
json JsonOf(ParameterDatabase const& database) {
    json top = json::object();
    std::vector<json*> open{&top};
    for (Walk<ParameterView> walk(database.GetProfileEditor()); walk.Next();) {
        open.resize(walk.Depth() + 1);
        if (walk.Depth() == 0) {
            open[0] = &top;
            continue;
        }
        std::string name = walk.Kind() == PlaceKind::DefaultProfile ? "Default"
                           : walk.Kind() == PlaceKind::Item         ? std::to_string(walk.Index())
                                                            : StringConversion::NativeToUtf8(walk.Name());
        json& place = (*open[walk.Depth() - 1])[name];
        open[walk.Depth()] = &place;
        if (double const* real = walk.Node().FindValue<double>()) {
            place = *real;
        } else if (std::int32_t const* number = walk.Node().FindValue<std::int32_t>()) {
            place = *number;
        } else if (bool const* flag = walk.Node().FindValue<bool>()) {
            place = *flag;
        } else if (std::wstring const* text = walk.Node().FindValue<std::wstring>()) {
            place = StringConversion::NativeToUtf8(*text);
        }
    }
    return top;
}

/// The same values in all forms; made once for each number of values.
struct Job : ZantrelBenchmark::Document {
    ZantrelBenchmark::MixedLayout layout;
    ParameterDatabase database{&layout};
    std::string json;
    std::size_t values = 0;
    std::vector<std::vector<std::wstring>> names; ///< of leaves all over, from the profile editor down
    std::vector<std::wstring> paths;              ///< of the same leaves

    static Job& Of(std::int64_t values) {
        static std::map<std::int64_t, std::unique_ptr<Job>> jobs;
        auto& job = jobs[values];
        if (job == nullptr) {
            job = std::make_unique<Job>(static_cast<std::size_t>(values));
        }
        return *job;
    }

    explicit Job(std::size_t wanted) : Document("mixed_" + std::to_string(wanted)) {
        ZantrelBenchmark::FillMixedJob(database, wanted);
        WriteFile(database, path, L"");
        Load();
        json = JsonOf(database).dump();
        for (Walk<ParameterView> walk(std::as_const(database).GetProfileEditor()); walk.Next();) {
            values += walk.IsLeaf() ? 1u : 0u;
        }
        // Spread over the whole, so that a look-up finds nothing in the caches but what all have in common.
        for (std::size_t machine = 0; machine < values / 45; machine += values / 45 / 500 + 1) {
            std::wstring const name = L"Machine " + std::to_wstring(machine);
            names.push_back({L"Machines", name, L"Laser", L"MaximumTemperature"});
            paths.push_back(L"Machines_Machine[" + name + L"]_Laser_MaximumTemperature");
        }
    }
};

Seconds Now() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

template <class Action> Seconds TimeOf(Action const& action) {
    Seconds const start = Now();
    action();
    return Now() - start;
}

/// In a process of its own, whose heap has nothing to give yet.
Seconds InFreshProcess(std::function<Seconds()> const& measure) {
    int ends[2];
    if (pipe(ends) != 0) {
        std::abort();
    }
    pid_t const child = fork();
    if (child == 0) {
        Seconds const seconds = measure();
        _exit(write(ends[1], &seconds, sizeof seconds) == sizeof seconds ? 0 : 1);
    }
    Seconds seconds = 0;
    bool const isTold = child > 0 && read(ends[0], &seconds, sizeof seconds) == sizeof seconds;
    close(ends[0]);
    close(ends[1]);
    waitpid(child, nullptr, 0);
    return isTold ? seconds : std::numeric_limits<Seconds>::quiet_NaN();
}

/// Contestants by name; the unit is the first.
using Contestants = std::vector<std::pair<std::string, std::function<Seconds()>>>;

void Compare(benchmark::State& state, Contestants const& contestants) {
    std::vector<std::vector<double>> ratios(contestants.size());
    for ([[maybe_unused]] auto _ : state) {
        for (int round = 0; round < Rounds; ++round) {
            Seconds unit = 0;
            for (std::size_t i = 0; i < contestants.size(); ++i) {
                Seconds const seconds = contestants[i].second();
                unit = i == 0 ? seconds : unit;
                ratios[i].push_back(seconds / unit);
            }
        }
    }
    for (std::size_t i = 1; i < contestants.size(); ++i) {
        auto const middle = ratios[i].begin() + static_cast<std::ptrdiff_t>(ratios[i].size() / 2);
        std::nth_element(ratios[i].begin(), middle, ratios[i].end());
        state.counters[contestants[i].first + "_per_" + contestants[0].first] = *middle;
    }
}

// Contestants

/// Sums all values up, each converted to the type that it has.
double Convert(pugi::xml_node const& node) {
    double sum = 0;
    for (pugi::xml_node const& child : node.children()) {
        bool const isLeaf = child.first_child().type() == pugi::node_pcdata;
        sum += isLeaf ? child.text().as_double() : Convert(child);
    }
    return sum;
}

double Convert(json const& value) {
    double sum = value.is_number() ? value.get<double>() : 0;
    if (value.is_structured()) {
        for (json const& inner : value) {
            sum += Convert(inner);
        }
    }
    return sum;
}

/// Of what `make` gives: the first in its process, or the third one, in the heap that the others have left.
/// Not the second: the heap is a copy of the parent's, each page made when it is first written, and a second
/// one finds places there that the first had left alone, which costs it half of its time again.
template <class Make> Seconds TimeOfMaking(bool isWarm, Make const& make) {
    return InFreshProcess([&] {
        decltype(make()) made{};
        Seconds seconds = TimeOf([&] { made = make(); });
        for (int others = 2; isWarm && others != 0; --others) {
            made = {};
            seconds = TimeOf([&] { made = make(); });
        }
        return seconds;
    });
}

void Read(benchmark::State& state, bool isWarm) {
    Job const& job = Job::Of(state.range(0));
    auto const pass = [&] {
        PassOfExpat(job, state);
        return 0;
    };
    auto const read = [&] {
        auto database = std::make_unique<ParameterDatabase>(&job.layout);
        ReadFile(*database, job.path);
        return database;
    };
    auto const load = [&] {
        auto document = std::make_unique<pugi::xml_document>();
        document->load_file(std::filesystem::path(job.path).c_str());
        benchmark::DoNotOptimize(Convert(*document));
        return document;
    };
    auto const parse = [&] {
        json document = json::parse(job.json);
        benchmark::DoNotOptimize(Convert(document));
        return document;
    };
    Compare(state, {{"expat", [&] { return TimeOfMaking(isWarm, pass); }},
                    {"zantrel", [&] { return TimeOfMaking(isWarm, read); }},
                    {"pugixml", [&] { return TimeOfMaking(isWarm, load); }},
                    {"json", [&] { return TimeOfMaking(isWarm, parse); }}});
}

void Write(benchmark::State& state) {
    Job& job = Job::Of(state.range(0));
    ZantrelBenchmark::Document const out("written");
    std::string const path = std::filesystem::path(out.path).string();
    pugi::xml_document document;
    document.load_file(std::filesystem::path(job.path).c_str());
    json const values = json::parse(job.json);
    std::vector<double> numbers;
    std::size_t others = 0;
    for (Walk<ParameterView> walk(std::as_const(job.database).GetProfileEditor()); walk.Next();) {
        if (double const* real = walk.Node().FindValue<double>()) {
            numbers.push_back(*real);
        } else {
            others += walk.IsLeaf() ? 1u : 0u;
        }
    }
    auto const flat = [&] {
        ZantrelBenchmark::FlatFile file(out.path);
        for (double const number : numbers) {
            file.Print(number);
        }
        for (std::size_t count = 0; count < others; ++count) {
            file.Print(std::string_view("operator"));
        }
    };
    Compare(state, {{"flat_loop", [&] { return TimeOf(flat); }},
                    {"zantrel", [&] { return TimeOf([&] { WriteFile(job.database, out.path, L""); }); }},
                    {"pugixml", [&] { return TimeOf([&] { document.save_file(path.c_str()); }); }},
                    {"json", [&] { return TimeOf([&] { std::ofstream(path) << values; }); }}});
}

void LookUp(benchmark::State& state) {
    Job& job = Job::Of(state.range(0));
    json const values = json::parse(job.json);
    std::vector<std::vector<std::string>> narrow;
    for (auto const& names : job.names) {
        auto& converted = narrow.emplace_back();
        for (std::wstring const& name : names) {
            converted.push_back(StringConversion::NativeToUtf8(name));
        }
    }
    ParameterNode const editor = job.database.GetProfileEditor();
    static_cast<void>(editor.Query(L"")); // makes the index
    double sum = 0;
    Compare(state, {{"json",
                     [&] {
                         return TimeOf([&] {
                             for (auto const& names : narrow) {
                                 json const* at = &values;
                                 for (std::string const& name : names) {
                                     at = &at->at(name);
                                 }
                                 sum += at->get<double>();
                             }
                         });
                     }},
                    {"zantrel_by_names",
                     [&] {
                         return TimeOf([&] {
                             for (auto const& names : job.names) {
                                 sum += editor.Get(names[0].c_str())
                                            .GetProfile(names[1].c_str())
                                            .Get(names[2].c_str())
                                            .Get(names[3].c_str())
                                            .GetValue<double>();
                             }
                         });
                     }},
                    {"zantrel_by_path", [&] {
                         return TimeOf([&] {
                             for (std::wstring const& path : job.paths) {
                                 sum += editor.Query(path.c_str()).GetValue<double>();
                             }
                         });
                     }}});
    benchmark::DoNotOptimize(sum);
}

/// Bytes of heap that a thing takes, for each value.
// By what the allocator has handed out, its own heads and rounding included: that is what a process pays.
template <class Make> double HeapOf(Job const& job, Make const& make) {
    std::size_t const before = mallinfo2().uordblks;
    auto const made = make();
    return static_cast<double>(mallinfo2().uordblks - before) / static_cast<double>(job.values);
}

void HeapPerValue(benchmark::State& state) {
    Job& job = Job::Of(state.range(0));
    for ([[maybe_unused]] auto _ : state) {
        state.counters["zantrel"] =
            HeapOf(job, [&] { return std::make_unique<ParameterDatabase>(job.database); });
        state.counters["json"] = HeapOf(job, [&] { return json::parse(job.json); });
        state.counters["zantrel_index"] = HeapOf(job, [&] {
            auto list = std::make_unique<ContentList>();
            job.database.GetProfileEditor().CreateContentList(*list);
            return list;
        });
        state.counters["pugixml"] = HeapOf(job, [&] {
            auto document = std::make_unique<pugi::xml_document>();
            document->load_file(std::filesystem::path(job.path).c_str());
            return document;
        });
    }
}

void Sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->RangeMultiplier(10)->Range(10'000, 1'000'000)->Iterations(1)->Unit(benchmark::kSecond);
}

BENCHMARK_CAPTURE(Read, cold, false)->Apply(Sizes);
BENCHMARK_CAPTURE(Read, warm, true)->Apply(Sizes);
BENCHMARK(Write)->Apply(Sizes);
BENCHMARK(LookUp)->Apply(Sizes);
BENCHMARK(HeapPerValue)->Apply(Sizes);

} // namespace
