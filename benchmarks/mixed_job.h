// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/database/parameter_database.h>
#include <zantrel/database/walk.h>
#include <zantrel/layout/parameter_layout.h>

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>

namespace ZantrelBenchmark {

/// Parameters of all plain types in groups, below profiles that have groups and a list of their own: what
/// a processor of some size declares.
struct MixedLayout : Zantrel::ParameterLayout {
    MixedLayout() {
        SetName(L"MixedJob");
        Zantrel::LayoutNode& machines = *m_profileEditor->AddNode(L"Machines");
        machines.SetProfile(true, L"Machine");
        for (wchar_t const* group : {L"Laser", L"Chamber", L"Recoater", L"Scanner"}) {
            AddLeaves(*machines.AddNode(group));
        }
        AddLeaves(*machines.At(0).AddNode(L"Calibration"));
        Zantrel::LayoutNode& ranges = *machines.AddNode(L"Ranges");
        ranges.SetList(true, L"Range", L"");
        ranges.AddNode(L"Begin", Zantrel::Double, L"0");
        ranges.AddNode(L"End", Zantrel::Double, L"1");
    }

private:
    static void AddLeaves(Zantrel::LayoutNode& group) {
        group.AddNode(L"Power", Zantrel::Double, L"100");
        group.AddNode(L"FocusOffset", Zantrel::Distance, L"0.5");
        group.AddNode(L"Retries", Zantrel::Int, L"3");
        group.AddNode(L"Enabled", Zantrel::Bool, L"True");
        group.AddNode(L"MaximumTemperature", Zantrel::Double, L"80");
        group.AddNode(L"Comment", Zantrel::String, L"");
        group.AddNode(L"WarmupTime", Zantrel::Double, L"20");
    }
};

/// Gives a database on such a layout about so many values, no two numbers alike.
inline void FillMixedJob(Zantrel::ParameterDatabase& database, std::size_t values) {
    std::mt19937_64 random(17);
    std::uniform_real_distribution<double> number(0.0, 100.0);
    Zantrel::ParameterNode machines = database.GetProfileEditor().Get(L"Machines");
    for (std::size_t made = 0, machine = 0; made < values; made += 45, ++machine) {
        auto const profile = machines.AddProfile((L"Machine " + std::to_wstring(machine)).c_str(), false);
        for (int range = 0; range < 5; ++range) {
            profile.Get(L"Ranges").AddListNode(false);
        }
        for (Zantrel::Walk<Zantrel::ParameterNode> walk(profile); walk.Next();) {
            Zantrel::ParameterNode at = walk.Node();
            if (at.FindValue<double>() != nullptr) {
                at.SetValue<double>(number(random));
            } else if (at.FindValue<std::int32_t>() != nullptr) {
                at.SetValue(static_cast<std::int32_t>(random() % 100));
            } else if (at.FindValue<std::wstring>() != nullptr) {
                at.SetValue(L"operator " + std::to_wstring(random() % 1000));
            }
        }
    }
}

} // namespace ZantrelBenchmark
