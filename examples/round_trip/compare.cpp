// SPDX-License-Identifier: Apache-2.0
#include "trees.h"

#include "common/cursors.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace RoundTrip {

namespace {

using Host::FindValue;
using Host::Flag;
using Host::FlagsOf;
using Host::VisitValueType;
using Zantrel::ParameterNode;

void Require(bool holds, std::wstring const& path, wchar_t const* what, wchar_t const* word = L"") {
    if (!holds) {
        std::wstring const sentence = path + L" differs after reading back: " + what + word;
        throw std::runtime_error(StringConversion::NativeToUtf8(sentence));
    }
}

template <class T> bool AreSame(T const& first, T const& second) { return first == second; }
bool AreSame(double first, double second) {
    return first == second ||
           (std::isnan(first) && std::isnan(second)); // a file can say NaN, and == denies it
}

/// Two cursors on the same place of two databases.
struct Pair {
    ParameterNode first;
    ParameterNode second;
    std::wstring path;
};

void CompareFlags(Pair const& at, Equalities& found) {
    for (Flag const& flag : FlagsOf(at.first)) {
        Require((at.first.*flag.get)() == (at.second.*flag.get)(), at.path, L"the flag ", flag.words);
        ++found.flags;
    }
}

void CompareValue(Pair const& at, Equalities& found) {
    VisitValueType(at.first.m_pNode->m_type, [&](auto type) {
        auto const* first = FindValue<decltype(type)>(at.first);
        auto const* second = FindValue<decltype(type)>(at.second);
        Require((first == nullptr) == (second == nullptr), at.path, L"only one has a value");
        if (first != nullptr) {
            Require(AreSame(*first, *second), at.path, L"the value");
            ++found.values;
        }
    });
}

/// What stands directly below: the children of a node, the profiles or items of a container.
std::vector<Pair> PairsBelow(Pair const& at) {
    std::vector<Pair> below;
    Zantrel::LayoutNode const& layout = *at.first.m_pNode;
    if (!at.first.m_isContainer) {
        for (std::size_t i = 0; i < layout.Size(); ++i) {
            Zantrel::LayoutNode const& child = layout.At(i);
            below.push_back({at.first.Get(&child), at.second.Get(&child), at.path + L'/' + child.m_name});
        }
    } else if (layout.m_isProfileList) {
        std::vector<std::wstring> const names = ProfilesOf(at.first);
        Require(names == ProfilesOf(at.second), at.path, L"the names of the profiles");
        Require(std::adjacent_find(names.begin(), names.end()) == names.end(), at.path,
                L"two profiles have one name, and the file holds the first of them twice");
        below.push_back({at.first.GetDefault(), at.second.GetDefault(), at.path + L"[default]"});
        for (std::wstring const& name : names) {
            below.push_back({at.first.GetProfile(name.c_str()), at.second.GetProfile(name.c_str()),
                             at.path + L'[' + name + L']'});
        }
    } else {
        Require(at.first.GetSize() == at.second.GetSize(), at.path, L"the number of entries");
        for (unsigned long long i = 0; i < at.first.GetSize(); ++i) {
            below.push_back(
                {at.first.GetListNode(i), at.second.GetListNode(i), at.path + L'#' + std::to_wstring(i + 1)});
        }
    }
    return below;
}

void ComparePair(Pair const& at, Equalities& found) {
    Require(at.first.IsValid() == at.second.IsValid(), at.path, L"only one has content");
    if (!at.first.IsValid()) {
        return;
    }
    CompareFlags(at, found);
    if (at.first.m_isContainer) {
        found.entries += at.first.GetSize();
    } else {
        CompareValue(at, found);
    }
    for (Pair const& below : PairsBelow(at)) {
        ComparePair(below, found);
    }
}

} // namespace

Equalities Compare(ParameterNode const& first, ParameterNode const& second) {
    Equalities found;
    ComparePair({first, second, first.m_pNode->m_name}, found);
    return found;
}

} // namespace RoundTrip
