// SPDX-License-Identifier: Apache-2.0
#include "difference_lines.h"

#include "common/cursors.h"

namespace Paramtool {

using Zantrel::ParameterView;
using Zantrel::Editing::Difference;

// Lines are made from the cursors, which know unit and the words of flags, documents from the texts of the
// difference, which are exact: one is for reading, the other for comparing again.

namespace {

std::wstring LineOf(Difference const& difference, ParameterView const& cursor, bool isAdded) {
    std::wstring const value = Host::ValueText(cursor);
    std::wstring const flags = Host::FlagsText(cursor);
    bool const isWhole =
        difference.kind == Difference::Kind::Added || difference.kind == Difference::Kind::Removed;
    std::wstring line = (isAdded ? L"+ " : L"- ") + difference.path;
    if (difference.kind == Difference::Kind::Flag) {
        line += L" (" + Host::FlagWords(difference.what) + L')';
    } else if (!value.empty()) {
        line += L" = " + value;
    }
    return line + (isWhole && !flags.empty() ? L" (" + flags + L')' : L"");
}

} // namespace

std::vector<DifferenceLine> LinesOf(Difference const& difference) {
    switch (difference.kind) {
    case Difference::Kind::Added:
        return {{LineOf(difference, difference.second, true), true}};
    case Difference::Kind::Removed:
        return {{LineOf(difference, difference.first, false), false}};
    case Difference::Kind::Flag: {
        // One line: a flag that went is told as removed, and not as one that is false now.
        bool const isAdded = difference.after == L"true";
        return {{LineOf(difference, difference.second, isAdded), isAdded}};
    }
    default:
        return {{LineOf(difference, difference.first, false), false},
                {LineOf(difference, difference.second, true), true}};
    }
}

Json JsonOf(Difference const& difference) {
    static constexpr char const* kinds[] = {"value", "flag", "added", "removed"};
    Json json{{"kind", kinds[static_cast<int>(difference.kind)]}, {"path", Utf8(difference.path)}};
    if (!difference.what.empty()) {
        json["what"] = Utf8(difference.what);
    }
    json["before"] = Utf8(difference.before);
    json["after"] = Utf8(difference.after);
    return json;
}

DifferenceLine LineOf(Zantrel::Editing::LayoutDifference const& difference) {
    using Kind = Zantrel::Editing::LayoutDifference::Kind;
    switch (difference.kind) {
    case Kind::Added:
        return {L"+ " + difference.path, true};
    case Kind::Removed:
        return {L"- " + difference.path, false};
    case Kind::Moved:
        return {L"~ " + difference.path + L" stood behind \"" + difference.before +
                    L"\" and stands behind \"" + difference.after + L'"',
                true};
    default:
        return {L"~ " + difference.path + L' ' + difference.what + L": \"" + difference.before + L"\" -> \"" +
                    difference.after + L'"',
                true};
    }
}

Json JsonOf(Zantrel::Editing::LayoutDifference const& difference) {
    static constexpr char const* kinds[] = {"added", "removed", "moved", "attribute"};
    return {{"kind", kinds[static_cast<int>(difference.kind)]},
            {"path", Utf8(difference.path)},
            {"what", Utf8(difference.what)},
            {"before", Utf8(difference.before)},
            {"after", Utf8(difference.after)}};
}

} // namespace Paramtool
