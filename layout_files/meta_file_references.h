// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/layout/parameter_layout.h>
#include <zantrel/sax/read_report.h>
#include <zantrel/sax/sax_reader.h>

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace Zantrel {

/// What the nodes of a meta file say of each other: conditions name nodes by identifiers, choices name
/// profile lists. A file may name a node before it comes, so that what is named is looked up at its end. The
/// cost is that of the texts, whatever names what.
class MetaFileReferences {
public:
    using Conditions = std::vector<LayoutNodeSource> LayoutNodeDisplaySettings::*;

    /// `report` is that of the read, or null; it hears, behind all else, of what wasn't found.
    explicit MetaFileReferences(ReadReport* report) : m_report(report) {}

    /// Of several nodes with one identifier the first is meant; the others are noted.
    void AddIdentifier(std::wstring const& identifier, LayoutNode& node, KelSAX::ISAXReader& reader);
    /// Both texts are lists with ";" in between, which correspond by position. What isn't there is an empty
    /// text; of too many values the last takes the rest, as a value may hold ";".
    void AddConditions(LayoutNode& node, Conditions field, std::wstring sources, std::wstring values,
                       KelSAX::ISAXReader& reader);
    /// A choice among the profiles of the list that m_profileName names.
    void AddChoice(LayoutNode& node, KelSAX::ISAXReader& reader);

    /// Gives the nodes what they named. A condition whose source is missing keeps its place and its value.
    void Resolve(ParameterLayout const& layout);

private:
    struct Condition {
        LayoutNode* node;
        Conditions field;
        std::wstring sources, values;
        std::optional<ReadReport::Entry> place; ///< where a source is still unknown, and only with a report
    };
    struct Choice {
        LayoutNode* node;
        std::optional<ReadReport::Entry> place; ///< only with a report
    };

    /// Says what is wrong with them, and keeps the place of those of which more may have to be said.
    void Judge(Condition& added, KelSAX::ISAXReader& reader) const;
    LayoutNode* Find(std::wstring const& identifier) const;
    void Resolve(Condition& condition);
    void ResolveChoices(ParameterLayout const& layout);

    ReadReport* m_report;
    std::unordered_map<std::wstring, LayoutNode*> m_identifiers;
    std::vector<Condition> m_conditions;
    std::vector<Choice> m_choices;
};

} // namespace Zantrel
