// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/sax_test_support.h"

#include <zantrel/layout_files/meta_file.h>
#include <zantrel/layout_files/property_template.h>
#include <zantrel/sax/sax_utilities.h>
#include <zantrel/text/string_conversion.h>

#include <string>

namespace TestSupport {

using namespace Zantrel;

/// How objects of a class are read and written in one format. A file is written to the disk for good, which
/// takes its time, so most tests write to a text.
template <class T> struct DocumentIo {
    char const* name;
    bool (*readFile)(T&, std::wstring const& path, ReadReport*);
    bool (*writeFile)(T const&, std::wstring const& path, WriteReport*);
    bool (*readStream)(T&, std::istream&, ReadReport*);
    bool (*writeStream)(T const&, std::ostream&, WriteReport*);
    bool hasFixedNames = false; ///< of the entries of lists, whatever the layout calls them
};
using LayoutFormat = DocumentIo<ParameterLayout>;

inline constexpr LayoutFormat MetaFile = {"MetaFile", Zantrel::ReadFile, Zantrel::WriteFile,
                                          Zantrel::ReadStream, Zantrel::WriteStream};

inline constexpr LayoutFormat WholeMetaFile = {"WholeMetaFile", Zantrel::ReadWholeFile,
                                               Zantrel::WriteWholeFile, Zantrel::ReadWholeStream,
                                               Zantrel::WriteWholeStream};

inline KlvrPropertyTemplate::WriteOptions TemplateOptions(bool profileListsOnly) {
    KlvrPropertyTemplate::WriteOptions options;
    options.m_profileListsOnly = profileListsOnly;
    return options;
}

/// Writes everything and not the profile lists alone.
inline constexpr LayoutFormat PropertyTemplate = {
    "PropertyTemplate", KlvrPropertyTemplate::ReadFile,
    [](ParameterLayout const& layout, std::wstring const& path, WriteReport* report) {
        return KlvrPropertyTemplate::WriteFile(layout, path, TemplateOptions(false), report);
    },
    KlvrPropertyTemplate::ReadStream,
    [](ParameterLayout const& layout, std::ostream& out, WriteReport* report) {
        return KlvrPropertyTemplate::WriteStream(layout, out, TemplateOptions(false), report);
    }};

inline constexpr LayoutFormat LayoutFormats[] = {MetaFile, PropertyTemplate};

inline bool ReadText(LayoutFormat const& format, ParameterLayout& layout, std::string const& document,
                     ReadReport* report = nullptr) {
    std::istringstream in(document);
    return format.readStream(layout, in, report);
}

/// The document, or nothing where it can't be written.
template <class T> std::string WriteText(DocumentIo<T> const& format, std::type_identity_t<T> const& object) {
    std::ostringstream out;
    return format.writeStream(object, out, nullptr) ? out.str() : std::string();
}

/// A node with all that is below it, as in "name:Int'5'mm[item]<profile>*(property=p){child child}"; the star
/// marks a list of categories.
inline std::string Outline(LayoutNode const& node) {
    constexpr char const* types[] = {
        "",         ":Int",      ":Double",       ":Distance",       ":Bool",           ":String",
        ":Options", ":Profiles", ":FileAbsolute", ":FileAttachment", ":StandardOptions"};
    auto const narrow = [](std::wstring const& text) { return StringConversion::NativeToUtf8(text); };
    std::string text = narrow(node.m_name) + types[node.m_type];
    text += node.m_defaultValue.empty() ? "" : '\'' + narrow(node.m_defaultValue) + '\'';
    text += narrow(node.m_postfix);
    text += node.m_isList ? '[' + narrow(node.m_nodeName) + ']' : "";
    text += node.m_isProfileList ? '<' + narrow(node.m_nodeName) + '>' : "";
    text += node.m_isCategoryList ? "*" : "";
    std::string names;
    auto const add = [&](char const* what, std::wstring const& name) {
        names += name.empty() ? "" : (names.empty() ? "" : " ") + std::string(what) + '=' + narrow(name);
    };
    add("property", node.m_propName);
    add("shown", node.m_displayName);
    add("container", node.m_containerDisplayName);
    add("item", node.m_nodeDisplayName);
    add("from", node.m_profileName);
    text += names.empty() ? "" : '(' + names + ')';
    std::string children;
    for (LayoutNode const* const child : node.m_children) {
        children += (children.empty() ? "" : " ") + Outline(*child);
    }
    return text + (children.empty() ? "" : '{' + children + '}');
}

/// The outlines of the nodes below the root that are not as a new layout has them.
inline std::string OutlineOfChanges(ParameterLayout const& layout) {
    ParameterLayout const untouched;
    std::string text;
    for (std::size_t i = 0; i < layout.Size(); ++i) {
        std::string const outline = Outline(layout.At(i));
        if (i >= untouched.Size() || outline != Outline(untouched.At(i))) {
            text += (text.empty() ? "" : " ") + outline;
        }
    }
    return text;
}

/// Sets all that a node can have beside its name, its type and its children, with "&" where a text can be
/// anything.
inline void SetEverything(LayoutNode& node, LayoutNode& source, LayoutNode& otherSource) {
    source.SetIdentifier(L"s1");
    otherSource.SetIdentifier(L"s2");
    node.SetDefaultValue<std::wstring>(L"d&")->SetRange<std::wstring>(L"1", L"9");
    node.SetIdentifier(L"id")->SetProfileName(L"pl")->SetRequestName(L"rq")->SetTriggerPropertyName(L"tr");
    node.SetFileFilter(L"*.x")->SetAllowEmpty(true)->AddVisibilityRequest(L"vr")->SetIsValueUnique(true);
    node.AddOption(L"o1", L"O&")->AddOption(L"o;2", L"")->m_optionValues.push_back(L"o3");
    node.SetUserCanSort(true)->SetNodeName(L"Item")->SetNodeDisplayName(L"in")->SetContainerDisplayName(
        L"cn");
    node.SetContainerDescription(L"cd")->SetMultiplicity(2)->SetMultiplicityMax(9)->SetMultiplicityMin(1);
    node.SetMultiplicityMaxMessage(L"mx")->SetMultiplicityMinMessage(L"mi")->SetPerformTransform(true);
    node.m_enableMultiLine = true;
    node.m_regex = L"re";
    node.m_regexUserFriendly = L"ru";
    node.m_maxLength = static_cast<std::uint64_t>(-1);
    node.SetVisible(false)->SetReadOnly(true)->SetExpanded(true)->SetHideName(true)->SetPrecision(-2);
    node.SetDisplayName(L"dn")->SetPrefix(L"pr")->SetPostfix(L"po")->SetDescription(L"<\"de")->SetPropName(
        L"pn");
    node.SetImageDescription(L"im", L"Fill")->SetDisplayNameSharedSizeGroup(L"dg");
    node.SetPostfixSharedSizeGroup(L"pg")->SetDisableForParents(true)->SetDisableForSubParts(true);
    node.SetProfileEditingPolicy(L"pp")->SetShowOnlyPartsSelectedInTessra(false);
    node.AddLicenseCheckForEditorVisibility(L"l1")->AddLicenseCheckForEditorVisibility(L"l2");
    node.AddVisibilitySource(&source, true)->AddVisibilitySource<std::wstring>(&otherSource, L"v;");
    node.AddEditabilitySource<std::wstring>(&otherSource, L"e")->AddEditabilitySource(&source, false);
}

} // namespace TestSupport
