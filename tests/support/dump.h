// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "parameter_files/node_value_sax.h"
#include "text/numbers.h"

#include <zantrel/database/parameter_database.h>
#include <zantrel/layout/parameter_layout.h>
#include <zantrel/text/string_conversion.h>

#include <string>
#include <utility>
#include <vector>

/// Values as one line of text, as cursors give them:
///
///     name{child child}         a group
///     name=5  name='text'       a leaf; a file is 'name':hexadecimal bytes, no value is "?", no bag "-"
///     name[template; item item] a list
///     name<default; 'a'profile> a profile list
///
/// Flags follow the name: !r ReadOnly, !h Hidden, !a DisableAddRemove, !n NameReadOnly, !d CanBeDeleted,
/// !u UserDefaultProfile.
namespace TestSupport {

using namespace Zantrel;

inline std::string Print(std::int32_t value) { return std::to_string(value); }
inline std::string Print(bool value) { return value ? "True" : "False"; }
inline std::string Print(std::wstring const& value) {
    return '\'' + StringConversion::NativeToUtf8(value) + '\'';
}
inline std::string Print(double value) {
    char text[Text::NumberRoom];
    return {text, Text::PrintDouble(text, value, 17)};
}
inline std::string Print(KelAM::FileContent const& value) {
    std::string text = Print(value.m_name) + ':';
    for (std::byte const byte : value.m_data) {
        text += "0123456789ABCDEF"[std::to_integer<int>(byte >> 4)];
        text += "0123456789ABCDEF"[std::to_integer<int>(byte & std::byte(15))];
    }
    return text;
}

inline std::string DumpContent(ParameterNode const& node);

inline std::string DumpFlags(ParameterNode const& node) {
    bool const isProfile = node.m_pNode->m_isProfileList && !node.m_isContainer;
    bool const isList = node.m_pNode->m_isProfileList || node.m_pNode->m_isList;
    return std::string(node.GetReadOnly() ? "!r" : "") + (node.GetHidden() ? "!h" : "") +
           (isList && node.GetDisableAddRemove() ? "!a" : "") +
           (isProfile && node.GetNameReadOnly() ? "!n" : "") +
           (isProfile && node.GetCanBeDeleted() ? "!d" : "") +
           (isProfile && node.GetUserDefaultProfile() ? "!u" : "");
}

/// One node without its name.
inline std::string Dump(ParameterNode const& node) {
    return node.m_pNode != nullptr && node.IsValid() ? DumpFlags(node) + DumpContent(node) : "-";
}

inline std::string DumpChildren(ParameterNode const& node) {
    std::string text;
    for (LayoutNode const* const child : node.m_pNode->m_children) {
        text +=
            (text.empty() ? "" : " ") + StringConversion::NativeToUtf8(child->m_name) + Dump(node.Get(child));
    }
    return '{' + text + '}';
}

inline std::string DumpContent(ParameterNode const& node) {
    LayoutNode const& layout = *node.m_pNode;
    if (node.m_isContainer && layout.m_isProfileList) {
        std::string text = '<' + Dump(node.GetDefault()) + ';';
        std::vector<std::wstring> names;
        node.GetProfiles(names);
        for (std::wstring const& name : names) {
            text += ' ' + Print(name) + Dump(node.GetProfile(name.c_str()));
        }
        return text + '>';
    }
    if (node.m_isContainer) {
        std::string text = '[' + Dump(node.GetDefault()) + ';';
        for (unsigned long long i = 0; i < node.GetSize(); ++i) {
            text += ' ' + Dump(node.GetListNode(i));
        }
        return text + ']';
    }
    return VisitValueType(layout.m_type, [&]<class T>(TypeTag<T>) {
        if constexpr (std::is_same_v<T, NoValue>) {
            return DumpChildren(node);
        } else {
            T const* const value = node.FindValue<T>();
            return '=' + (value != nullptr ? Print(*value) : "?");
        }
    });
}

inline std::string Dump(ParameterDatabase& database) { return Dump(database.GetProfileEditor()); }

inline void AppendChanges(ParameterNode const& now, ParameterNode const& before, std::string const& path,
                          std::string& text) {
    if (Dump(now) == Dump(before)) {
        return;
    }
    bool const isGroup =
        now.IsValid() && before.IsValid() && !now.m_isContainer && now.m_pNode->m_type == Group;
    if (!isGroup || DumpFlags(now) != DumpFlags(before)) {
        text += (text.empty() ? "" : " ") + path + (isGroup ? DumpFlags(now) : Dump(now));
    }
    for (LayoutNode const* const child : now.m_pNode->m_children) {
        if (isGroup) {
            std::string const name = StringConversion::NativeToUtf8(child->m_name);
            AppendChanges(now.Get(child), before.Get(child), path + (path.empty() ? "" : "/") + name, text);
        }
    }
}

/// What is not as formatting makes it, as in "G!r G/I=5": leaves, lists and flags, with the groups that they
/// stand in.
inline std::string DumpChanges(ParameterDatabase& database) {
    ParameterDatabase untouched(database.GetLayout());
    std::string text;
    AppendChanges(database.GetProfileEditor(), untouched.GetProfileEditor(), "", text);
    return text;
}

} // namespace TestSupport
