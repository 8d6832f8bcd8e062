// SPDX-License-Identifier: Apache-2.0
#include "editing/default_profile.h"
#include "editing/findings.h"
#include "editing/lint_report.h"
#include "editing/place_kind.h"
#include "editing/xml_text.h"

#include <string_view>

namespace Zantrel::Editing {

namespace {

// The tables below are the other side of the readers: each row stands for a tag that one of them takes for
// something else than a node at that place, or for an attribute that cursors keep under that name. Whoever
// gives a reader a new word gives it a row here.
//
// An error is what a file can't bring back; a warning what it can, unless a flag is set or a filter used.
using Test = bool (*)(LayoutNode const& node, LintPlace const& place);

bool IsAnywhere(LayoutNode const&, LintPlace const&) { return true; }
bool IsBelowRoot(LayoutNode const&, LintPlace const& place) { return place.parent == place.layout; }
bool IsBelowEditor(LayoutNode const&, LintPlace const& place) {
    return place.isInEditor && place.parent == place.layout->m_profileEditor.GetNode();
}
bool IsDeepInEditor(LayoutNode const& node, LintPlace const& place) {
    return place.isInEditor && !IsBelowEditor(node, place);
}
bool IsInJob(LayoutNode const&, LintPlace const& place) {
    return place.parent != nullptr && place.parent == place.layout->m_jobConfigurator.GetNode();
}
bool IsInEditor(LayoutNode const&, LintPlace const& place) { return place.isInEditor; }
/// A plain group in front of whose content nothing tells it from the choices of the text around it. In the
/// editor nothing below a text is reached anyway.
bool IsLikeChoices(LayoutNode const& node, LintPlace const& place) {
    bool const isBelowText =
        place.parent != nullptr && (place.parent->m_type == String || place.parent->m_type == Options);
    bool const isPlain = node.m_type == Group && !IsContainer(node) && node.m_displayName.empty();
    return isBelowText && !place.isInEditor && isPlain &&
           (node.Size() == 0 || node.m_children.At(0).m_name == L"Option");
}
bool IsInProfile(LayoutNode const&, LintPlace const& place) {
    return place.isInEditor && place.parent->m_isProfileList;
}

/// A name that means something else where it stands.
struct Word {
    std::wstring_view name;
    Test stands;
    Severity severity;
    std::wstring_view sentence;
};

constexpr std::wstring_view Dissolves = L"reading a layout file passes the element through: what it holds "
                                        L"goes to the node around it";
constexpr std::wstring_view IsSection = L"reading a layout file takes the element for another section";
constexpr std::wstring_view IsFlag = L"a flag of that name, of what is around it, can't be kept beside it";

constexpr Word NodeWords[] = {
    {L"InheritOverrides", IsAnywhere, Severity::Error, Dissolves},
    {L"OverrideEntry", IsAnywhere, Severity::Error, Dissolves},
    {L"ParameterStructure", IsBelowEditor, Severity::Error, Dissolves},
    {L"AdditionalConfiguration", IsBelowEditor, Severity::Error, Dissolves},
    {L"Entry", IsBelowRoot, Severity::Error, Dissolves},
    {L"ResourceDictionary", IsBelowRoot, Severity::Error, IsSection},
    {L"Minor", IsBelowRoot, Severity::Error, IsSection},
    {L"PlatformConfigurator", IsInJob, Severity::Error, IsSection},
    {L"PartConfigurator", IsInJob, Severity::Error, IsSection},
    {L"Options", IsLikeChoices, Severity::Error,
     L"reading a whole layout file takes the element for the choices of the text around it"},
    {L"GenericParameters", IsDeepInEditor, Severity::Warning,
     L"parameter files leave it out where it is hidden or filtered, and then it comes back with defaults"},
    {L"ReadOnly", IsInEditor, Severity::Warning, IsFlag},
    {L"Hidden", IsInEditor, Severity::Warning, IsFlag},
    {L"NameReadOnly", IsInProfile, Severity::Warning, IsFlag},
    {L"CanBeDeleted", IsInProfile, Severity::Warning, IsFlag},
    {L"UserDefaultProfile", IsInProfile, Severity::Warning, IsFlag},
};

// An entry's name is the tag of the inner of two elements. Its end tag is what sections are left by, and so
// leads out wherever it stands.
bool IsOfProfiles(LayoutNode const& node, LintPlace const&) { return node.m_isProfileList; }
bool IsBesideJobs(LayoutNode const&, LintPlace const& place) {
    return place.layout->m_jobConfigurator.GetNode() != nullptr;
}

constexpr std::wstring_view LeadsOut = L"reading a layout file takes the entry's end for that of a section";

constexpr Word EntryWords[] = {
    {DefaultProfileWord, IsOfProfiles, Severity::Error,
     L"parameter files hold the default profile under that name, and profiles are read as it"},
    {L"InheritOverrides", IsAnywhere, Severity::Error, Dissolves},
    {L"OverrideEntry", IsAnywhere, Severity::Error, Dissolves},
    {L"ProfileEditor", IsAnywhere, Severity::Error, LeadsOut},
    {L"PartConfigurator", IsAnywhere, Severity::Error, LeadsOut},
    {L"PlatformConfigurator", IsAnywhere, Severity::Error, LeadsOut},
    {L"PlatformOptions", IsAnywhere, Severity::Error, LeadsOut},
    {L"PartOptions", IsAnywhere, Severity::Error, LeadsOut},
    {L"JobConfigurator", IsBesideJobs, Severity::Error, LeadsOut},
};

template <std::size_t Count>
void LintName(std::wstring const& name, Word const (&words)[Count], std::wstring const& subject,
              LayoutNode const& node, LintPlace const& place, LintReport& report) {
    if (!IsElementName(name)) {
        report.Add(LintKind::BadName, &node, name,
                   subject + L" is called " + Quoted(name) +
                       L", which isn't a name that every reader takes for an element.");
    }
    for (Word const& word : words) {
        if (name == word.name && word.stands(node, place)) {
            report.Add(LintKind::FormatWord, &node, name,
                       subject + L" is called " + Quoted(name) + L": " + std::wstring(word.sentence) + L'.',
                       nullptr, word.severity);
        }
    }
}

} // namespace

void LintNames(LayoutNode const& node, LintPlace const& place, LintReport& report) {
    LintName(node.m_name, NodeWords, L"A node", node, place, report);
    // No word of the format, and so in no table: this one every layout chooses for itself.
    if (IsBelowEditor(node, place) && node.m_name == place.layout->m_name) {
        report.Add(LintKind::FormatWord, &node, node.m_name,
                   L"A node is called " + Quoted(node.m_name) +
                       L" like the layout: the root of a parameter file is taken for this node.");
    }
    if (IsContainer(node) || node.m_isCategoryList) {
        LintName(node.m_nodeName, EntryWords, L"An entry", node, place, report);
    }
}

} // namespace Zantrel::Editing
