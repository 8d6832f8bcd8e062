// SPDX-License-Identifier: Apache-2.0
#include "nearest.h"

#include <algorithm>
#include <cwctype>
#include <numeric>

namespace Paramtool {

namespace {

bool AreSame(wchar_t first, wchar_t second) {
    return first == second ||
           std::towlower(static_cast<wint_t>(first)) == std::towlower(static_cast<wint_t>(second));
}

/// How many characters have to be put in, left out or exchanged to come from one to the other.
std::size_t Distance(std::wstring const& from, std::wstring const& to) {
    // One row of the table is enough: of the row above it, only what hasn't been written over is asked for,
    // and the one value beside it, which is kept.
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < from.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < to.size(); ++j) {
            std::size_t const exchanged = diagonal + (AreSame(from[i], to[j]) ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({exchanged, diagonal + 1, row[j] + 1});
        }
    }
    return row[to.size()];
}

} // namespace

std::wstring Suggestion(std::wstring const& word, std::vector<std::wstring> const& known) {
    // Two slips, and one more for each eight characters; of a short word never more than half of it, as every
    // word would be near then.
    std::size_t const bound = std::min<std::size_t>(2 + word.size() / 8, word.size() / 2);
    std::size_t nearest = bound + 1;
    std::wstring const* best = nullptr;
    for (std::wstring const& one : known) {
        // Words can't be nearer than their lengths are, which spares most of a long list the table.
        if (std::max(one.size(), word.size()) - std::min(one.size(), word.size()) < nearest) {
            std::size_t const distance = Distance(word, one);
            if (distance < nearest) {
                nearest = distance;
                best = &one;
            }
        }
    }
    return best == nullptr || word.empty() ? L"" : L"; did you mean \"" + *best + L"\"?";
}

} // namespace Paramtool
