// SPDX-License-Identifier: Apache-2.0
#include "commands.h"
#include "common/cursors.h"
#include "common/host.h"
#include "files.h"
#include "layout_source.h"
#include "parameter_source.h"
#include "terminal.h"

#include <algorithm>
#include <charconv>
#include <optional>

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

std::optional<bool> FlagIn(std::wstring const& text) {
    bool const isTrue = text == L"true" || text == L"True";
    return isTrue || text == L"false" || text == L"False" ? std::optional(isTrue) : std::nullopt;
}

template <class T>
std::wstring Store(ParameterNode& leaf, std::optional<T> const& value, wchar_t const* what) {
    if (!value) {
        return std::wstring(L"is no ") + what;
    }
    leaf.SetValue(*value);
    return {};
}

/// Writes the value. Gives the reason when the text is none.
std::wstring SetText(ParameterNode leaf, std::wstring const& text) {
    switch (leaf.m_pNode->m_type) { // no default: the compiler names a type that is forgotten
    case Group:
        return L"can't be kept: the place is an empty group, which has no value";
    case Int:
        return Store(leaf, NumberIn<std::int32_t>(text), L"whole number of 32 bits");
    case Double:
    case Distance:
        return Store(leaf, NumberIn<double>(text), L"number");
    case Bool:
        return Store(leaf, FlagIn(text), L"flag; say true or false");
    case FileAttachment: {
        KelAM::FileContent content;
        return content.LoadFile(text) ? Store(leaf, std::optional(content), L"")
                                      : L"is no file that can be read";
    }
    case String:
    case Options:
    case OptionsFromProfiles:
    case FileAbsolute:
    case StandardOptions:
        leaf.SetValueFromText(text);
        return {};
    }
    return {};
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
