// SPDX-License-Identifier: Apache-2.0
//
// Comparing two databases, to name the first difference. A host that needs only yes or no calls
// ParameterDatabase::IsEqual.
//
// To look at: Editing::Differences, which tells path by path what differs; Walk, which comes to all
// that stands below a cursor.

#include "trees.h"

#include <zantrel/editing/differences.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace RoundTrip {

using namespace Zantrel;

Equalities Compare(ParameterDatabase const& first, ParameterDatabase const& second) {
    std::vector<Editing::Difference> const differences = Editing::Differences(first, second);
    if (!differences.empty()) {
        Editing::Difference const& one = differences.front();
        std::wstring const sentence = one.path + L" differs after reading back: " + one.what + L" \"" +
                                      one.before + L"\" was written and \"" + one.after + L"\" read";
        throw std::runtime_error(StringConversion::NativeToUtf8(sentence));
    }
    Equalities found;
    for (Walk walk(first.GetProfileEditor()); walk.Next();) {
        if (walk.Kind() == PlaceKind::Item || walk.Kind() == PlaceKind::Profile) {
            ++found.entries;
        }
        VisitValue(walk.Node(), [&](auto const&) { ++found.values; });
    }
    return found;
}

} // namespace RoundTrip
