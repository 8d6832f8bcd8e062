// SPDX-License-Identifier: Apache-2.0
#include "layout_files/meta_file_references.h"

#include "layout_files/read_values.h"
#include "sax/report_texts.h"
#include "text/sentences.h"

#include <zantrel/text/string_conversion.h>

#include <algorithm>
#include <iterator>
#include <utility>

// Nothing is looked up before all nodes are there, so the order of a file plays no part, and a file that ends
// early leaves no condition half made. A report hears of what is missing by places that were kept when the
// elements were read: only then there is a place to tell.

namespace Zantrel {

namespace {

std::wstring Quoted(std::wstring const& text) { return Sax::Excerpt(StringConversion::NativeToUtf8(text)); }

using Lists = std::unordered_map<std::wstring_view, LayoutNode const*>;

/// One walk finds all lists, in the order in which FindProfileList looks for one: at each node first among
/// its children, of which the latest of a name counts.
void AddLists(LayoutNode const& top, Lists& lists) {
    std::vector<LayoutNode const*> open{&top};
    while (!open.empty()) {
        LayoutNode const& node = *open.back();
        open.pop_back();
        for (LayoutNode const* const child : node.m_children) {
            if (child->m_isProfileList && node.GetNode(child->m_name) == child) {
                lists.emplace(child->m_name, child);
            }
        }
        std::reverse_copy(node.m_children.begin(), node.m_children.end(), std::back_inserter(open));
    }
}

} // namespace

void MetaFileReferences::AddIdentifier(std::wstring const& identifier, LayoutNode& node,
                                       KelSAX::ISAXReader& reader) {
    LayoutNode const* const named = m_identifiers.emplace(identifier, &node).first->second;
    if (named != &node && reader.HasReport()) {
        reader.NoteDropped(
            Text::Fill(L"\"{0}\" is the identifier of an earlier node, too; conditions mean that one.",
                       {Quoted(identifier)}));
    }
}

/// A list says its conditions twice, on the container and on its item; the second counts, as it does for all
/// that both have.
void MetaFileReferences::AddConditions(LayoutNode& node, Conditions field, std::wstring sources,
                                       std::wstring values, KelSAX::ISAXReader& reader) {
    Condition added{&node, field, std::move(sources), std::move(values), std::nullopt};
    if (reader.HasReport()) {
        Judge(added, reader);
    }
    std::size_t const few = std::min<std::size_t>(m_conditions.size(), 2); // of each kind one
    auto const same =
        std::find_if(m_conditions.end() - static_cast<std::ptrdiff_t>(few), m_conditions.end(),
                     [&](Condition const& other) { return other.node == &node && other.field == field; });
    if (same != m_conditions.end()) {
        *same = std::move(added);
    } else {
        m_conditions.push_back(std::move(added));
    }
}

void MetaFileReferences::Judge(Condition& added, KelSAX::ISAXReader& reader) const {
    std::vector<std::wstring_view> const identifiers = Split(added.sources);
    std::size_t const values = Split(added.values).size();
    if (values != identifiers.size() && identifiers.size() != 1) {
        reader.NoteDropped(Text::Fill(L"The conditions have {0} sources and {1} values.",
                                      {std::to_wstring(identifiers.size()), std::to_wstring(values)}));
    }
    // A report's place costs texts of its own, and is kept only where it may be needed: the source may still
    // come.
    bool const isUnknown =
        std::any_of(identifiers.begin(), identifiers.end(), [this](std::wstring_view identifier) {
            return !identifier.empty() && Find(std::wstring(identifier)) == nullptr;
        });
    if (isUnknown) {
        added.place = reader.GetPlace();
    }
}

void MetaFileReferences::AddChoice(LayoutNode& node, KelSAX::ISAXReader& reader) {
    m_choices.push_back({&node, std::nullopt});
    if (reader.HasReport()) {
        m_choices.back().place = reader.GetPlace();
    }
}

LayoutNode* MetaFileReferences::Find(std::wstring const& identifier) const {
    auto const found = m_identifiers.find(identifier);
    return found != m_identifiers.end() ? found->second : nullptr;
}

void MetaFileReferences::Resolve(ParameterLayout const& layout) {
    for (Condition& condition : m_conditions) {
        Resolve(condition);
    }
    if (!m_choices.empty()) {
        ResolveChoices(layout);
    }
}

void MetaFileReferences::Resolve(Condition& condition) {
    std::vector<std::wstring_view> const identifiers = Split(condition.sources);
    std::vector<std::wstring_view> values = Split(condition.values, identifiers.size());
    // Missing ones are empty texts. There are no more, as the last one has taken the rest.
    values.resize(identifiers.size());
    std::vector<LayoutNodeSource> resolved;
    resolved.reserve(identifiers.size());
    for (std::size_t i = 0; i < identifiers.size(); ++i) {
        std::wstring const identifier(identifiers[i]);
        LayoutNode* const source = identifier.empty() ? nullptr : Find(identifier);
        resolved.push_back({source, std::wstring(values[i])});
        if (source == nullptr && !identifier.empty() && condition.place) {
            ReadReport::Entry entry = *condition.place;
            entry.sentence =
                Text::Fill(L"No node has the identifier \"{0}\"; the condition is left without a source.",
                           {Quoted(identifier)});
            m_report->Add(std::move(entry));
        }
    }
    condition.node->*condition.field = std::move(resolved);
}

/// In the editor, where choices look for their lists, before anywhere else.
void MetaFileReferences::ResolveChoices(ParameterLayout const& layout) {
    Lists lists;
    if (LayoutNode const* const editor = layout.m_profileEditor.GetNode()) {
        AddLists(*editor, lists);
    }
    AddLists(layout, lists);
    for (Choice& choice : m_choices) {
        auto const found = lists.find(choice.node->m_profileName);
        if (found != lists.end()) {
            choice.node->m_profileNode = found->second;
        } else if (choice.place) {
            choice.place->sentence = Text::Fill(L"There is no profile list \"{0}\" to choose from.",
                                                {Quoted(choice.node->m_profileName)});
            m_report->Add(std::move(*choice.place));
        }
    }
}

} // namespace Zantrel
