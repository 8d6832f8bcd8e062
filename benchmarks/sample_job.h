// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/database/parameter_database.h>
#include <zantrel/database/walk.h>
#include <zantrel/layout/parameter_layout.h>
#include <zantrel/sample/sample_layout.h>

#include <cstddef>
#include <random>
#include <string>

namespace ZantrelBenchmark {

/// Fills a database on the sample layout with about `leaves` values as a large job has them: categories with
/// profiles for each stage, and lists of ranges in the export profiles. All numbers have 17 digits.
inline void FillSampleJob(Zantrel::ParameterDatabase& database, std::size_t leaves) {
    using Zantrel::ParameterNode;
    std::mt19937_64 random(17);
    std::uniform_real_distribution<double> number(0.0, 100.0);
    std::size_t written = 0;
    auto const set = [&](ParameterNode const& parent, wchar_t const* name) {
        parent.Get(name).SetValue<double>(number(random));
        ++written;
    };
    ParameterNode categories = database.GetProfileEditor().Get(L"Categories");
    for (int c = 0; written < leaves; ++c) {
        ParameterNode category = categories.AddProfile((L"Category " + std::to_wstring(c)).c_str(), true);
        written += 3;
        for (int p = 0; p < 20 && written < leaves; ++p) {
            std::wstring const name = L"Profile " + std::to_wstring(p);
            ParameterNode const scaling =
                category.Get(L"PreSlicing").AddProfile(name.c_str(), false).Get(L"Scaling");
            for (wchar_t const* axis : {L"X", L"Y", L"Z"}) {
                set(scaling, axis);
            }
            ParameterNode const slicing = category.Get(L"Slicing").AddProfile(name.c_str(), false);
            set(slicing, L"SliceThickness");
            written += 13;
            ParameterNode const exporting = category.Get(L"Export").AddProfile(name.c_str(), false);
            set(exporting, L"SliceThickness");
            ++written;
            for (int i = 0; i < 50; ++i) {
                ParameterNode const range = exporting.Get(L"Ranges").AddListNode(false);
                set(range, L"Begin");
                set(range, L"End");
            }
        }
    }
}

/// Calls `visit` with each number below a cursor, in the order in which a writer comes to it.
template <class Visitor> void VisitNumbers(Zantrel::ParameterNode const& node, Visitor& visit) {
    for (Zantrel::Walk<Zantrel::ParameterNode> walk(node, Zantrel::SameNames::FirstAgain); walk.Next();) {
        if (double const* number = walk.IsLeaf() ? walk.Node().FindValue<double>() : nullptr) {
            visit(*number);
        }
    }
}

} // namespace ZantrelBenchmark
