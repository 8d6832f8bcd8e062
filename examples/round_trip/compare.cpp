// SPDX-License-Identifier: Apache-2.0
//
// Comparing two databases place by place, to name the first difference. A host that needs only yes or no
// calls ParameterDatabase::IsEqual.
//
// To look at: Walk over a ParameterView, which reads and adds nothing; VisitValue and FindValue for values of
// any type; GetProfiles and GetSize for what a container holds.

#include "trees.h"

#include "common/cursors.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

namespace RoundTrip {

namespace {

using namespace Zantrel;
using Places = Walk<ParameterView>;

void Require(bool holds, Places const& at, wchar_t const* what, wchar_t const* word = L"") {
    if (!holds) {
        std::wstring const path(at.Depth() == 0 ? at.Name() : at.Path());
        std::wstring const sentence = path + L" differs after reading back: " + what + word;
        throw std::runtime_error(StringConversion::NativeToUtf8(sentence));
    }
}

template <class T> bool AreSame(T const& first, T const& second) { return first == second; }
bool AreSame(double first, double second) {
    return first == second ||
           (std::isnan(first) && std::isnan(second)); // a file can say NaN, and == denies it
}

void CompareFlags(Places const& first, ParameterView const& second, Equalities& found) {
    for (Host::Flag const& flag : Host::FlagsOf(first.Node())) {
        Require((first.Node().*flag.get)() == (second.*flag.get)(), first, L"the flag ", flag.words);
        ++found.flags;
    }
}

void CompareValue(Places const& first, ParameterView const& second, Equalities& found) {
    bool const hasValue = VisitValue(first.Node(), [&](auto const& value) {
        auto const* const other = second.FindValue<std::decay_t<decltype(value)>>();
        Require(other != nullptr, first, L"only one has a value");
        Require(AreSame(value, *other), first, L"the value");
        ++found.values;
    });
    Require(hasValue || !VisitValue(second, [](auto const&) {}), first, L"only one has a value");
}

std::vector<std::wstring> ProfilesOf(ParameterView const& list) {
    std::vector<std::wstring> names;
    list.GetProfiles(names);
    return names;
}

/// When this holds, both walks go on to places of the same names.
void CompareEntries(Places const& first, ParameterView const& second, Equalities& found) {
    Require(first.Node().GetSize() == second.GetSize(), first, L"the number of entries");
    found.entries += second.GetSize();
    if (first.Kind() == PlaceKind::ProfileList) {
        std::vector<std::wstring> const names = ProfilesOf(first.Node());
        Require(names == ProfilesOf(second), first, L"the names of the profiles");
        Require(std::adjacent_find(names.begin(), names.end()) == names.end(), first,
                L"two profiles have one name, and the file holds the first of them twice");
    }
}

} // namespace

Equalities Compare(ParameterView const& first, ParameterView const& second) {
    Equalities found;
    Places walk(first), other(second);
    // Side by side only as long as all was equal so far: the first difference throws, so that both walks
    // stand on places of the same name.
    while (walk.Next() && other.Next()) {
        Require(walk.Node().IsValid() == other.Node().IsValid(), walk, L"only one has content");
        if (!walk.Node().IsValid()) {
            walk.SkipContent();
            other.SkipContent();
            continue;
        }
        CompareFlags(walk, other.Node(), found);
        if (walk.Node().IsContainer()) {
            CompareEntries(walk, other.Node(), found);
        } else {
            CompareValue(walk, other.Node(), found);
        }
    }
    return found;
}

} // namespace RoundTrip
