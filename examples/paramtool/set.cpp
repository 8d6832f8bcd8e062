// SPDX-License-Identifier: Apache-2.0
//
// The command that changes a value. The library takes any value of the right type, and writes files that
// say less than was read; a tool for people has to ask first.
//
// To look at: VisitValueType, which turns the type that the layout declares into one of C++; SetValue and
// SetValueFromText; the limits and options of a LayoutNode, which bind only those who look at them.

#include "commands.h"
#include "common/cursors.h"
#include "common/host.h"
#include "files.h"
#include "layout_source.h"
#include "parameter_source.h"
#include "terminal.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <type_traits>
#include <utility>

namespace Paramtool {

namespace {

using namespace Zantrel;

/// Nothing when the text as a whole is no number of this type: the library's own conversion would give 0.
template <class Number> std::optional<Number> NumberIn(std::wstring const& text) {
    std::string const digits = StringConversion::NativeToUtf8(text);
    Number number{};
    auto const [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    bool const isWhole = error == std::errc() && end == digits.data() + digits.size();
    return isWhole ? std::optional(number) : std::nullopt;
}

/// What a text has to be.
template <class T> constexpr wchar_t const* Wanted = L"number";
template <> constexpr wchar_t const* Wanted<std::int32_t> = L"whole number of 32 bits";
template <> constexpr wchar_t const* Wanted<bool> = L"flag; say true or false";
template <> constexpr wchar_t const* Wanted<KelAM::FileContent> = L"file that can be read";

/// The value that a text says; nothing when it says none.
template <class T> std::optional<T> ValueIn(std::wstring const& text) {
    if constexpr (std::is_same_v<T, bool>) {
        bool const isTrue = text == L"true" || text == L"True";
        return isTrue || text == L"false" || text == L"False" ? std::optional(isTrue) : std::nullopt;
    } else if constexpr (std::is_same_v<T, KelAM::FileContent>) {
        KelAM::FileContent content;
        return content.LoadFile(text) ? std::optional(std::move(content)) : std::nullopt;
    } else {
        return NumberIn<T>(text);
    }
}

/// Writes the value. Gives the reason when the text is none.
std::wstring SetText(ParameterNode leaf, std::wstring const& text) {
    return VisitValueType(leaf.m_pNode->m_type, [&](auto tag) -> std::wstring {
        using T = typename decltype(tag)::Type;
        if constexpr (std::is_same_v<T, NoValue>) {
            return L"can't be kept: the place is an empty group, which has no value";
        } else if constexpr (std::is_same_v<T, std::wstring>) {
            leaf.SetValueFromText(text);
            return {};
        } else {
            std::optional<T> const value = ValueIn<T>(text);
            if (!value) {
                return std::wstring(L"is no ") + Wanted<T>;
            }
            leaf.SetValue(*value);
            return {};
        }
    });
}

/// What the layout has against the value, or nothing. The library keeps any.
std::wstring ObjectionTo(ParameterNode const& leaf) {
    LayoutNode const& layout = *leaf.m_pNode;
    if (layout.m_readOnly || leaf.GetReadOnly()) {
        return L"is not taken: the parameter is read-only";
    }
    auto const& options = layout.m_optionValues;
    std::wstring const text = Host::PlainText(leaf);
    if (layout.m_type == Options && std::find(options.begin(), options.end(), text) == options.end()) {
        std::wstring choices;
        for (std::wstring const& option : options) {
            choices += (choices.empty() ? L"" : L", ") + option;
        }
        return L"is none of the layout's options: " + choices;
    }
    auto const number = NumberIn<double>(text), minimum = NumberIn<double>(layout.m_min),
               maximum = NumberIn<double>(layout.m_max);
    if ((minimum && !(number >= minimum)) || (maximum && !(number <= maximum))) {
        return L"is out of the layout's range, " + layout.m_min + L" to " + layout.m_max;
    }
    return {};
}

/// What the file said and would no longer say, once it is written anew.
std::vector<std::wstring> LossesOf(ParameterFile& file) {
    std::vector<std::wstring> losses = file.m_passedOver;
    ScratchFile const scratch;
    for (Change const& change : file.Write(scratch.Path(), file.m_format)) {
        losses.push_back(change.Line());
    }
    return losses;
}

} // namespace

int Set(Arguments const& arguments) {
    LayoutSource const source(arguments.layout);
    ParameterFile file(*source.m_layout, arguments.file);
    ParameterNode const leaf = file.Find(arguments.path);

    std::wstring reason = SetText(leaf, arguments.text);
    bool const isHopeless = !reason.empty();
    if (!isHopeless) {
        reason = ObjectionTo(leaf);
    }
    if (isHopeless || (!reason.empty() && !arguments.force)) {
        Host::Fail(L"Can't set " + arguments.path + L" in " + arguments.file + L": \"" + arguments.text +
                   L"\" " + reason + (isHopeless ? L"" : L" (--force sets it all the same)"));
    }

    std::wstring const& target = arguments.second.empty() ? file.m_path : arguments.second;
    // Before the target is touched: it may be the only copy of what would be lost.
    std::vector<std::wstring> const losses = LossesOf(file);
    if (!losses.empty()) {
        Note(L"Writing what was read of " + file.m_path + L" loses:", losses);
        if (!arguments.force) {
            Host::Fail(target + L" is not written, because of these losses; --force accepts them");
        }
    }
    file.Write(target, file.m_format);
    return Same;
}

} // namespace Paramtool
