// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/generated_database.h"

#include <zantrel/layout/parameter_layout.h>

#include <cstdint>
#include <iterator>
#include <limits>
#include <string>
#include <vector>

namespace TestSupport {

/// Grows a layout that uses every attribute, every type and every kind of container, with texts that are hard
/// to carry. The names of nodes are names of elements, and no two are the same but those of some groups
/// "Options".
class LayoutGenerator {
public:
    explicit LayoutGenerator(unsigned seed) : m_random(seed) {}

    /// With `nodes` nodes below the sections, the first eleven of which have all types.
    void Fill(ParameterLayout& layout, std::size_t nodes) {
        layout.SetName(Name())->SetDisplayName(m_random.Text());
        m_parents = {layout.m_profileEditor, layout.m_platformOptions, layout.m_partOptions,
                     layout.m_partConfigurator};
        for (LayoutNode* section : m_parents) {
            section->SetDescription(m_random.Text())->SetExpanded(Chance(2));
        }
        std::vector<LayoutNode*> all;
        while (all.size() < nodes) {
            auto const type = all.size() < 11 ? all.size() : Chance(3) ? 0 : m_random.Below(11);
            all.push_back(AddNode(static_cast<eTypeLayoutNode>(type)));
        }
        for (LayoutNode* node : all) {
            AddConditions(*node, all);
        }
        layout.AddCategoryNodeIfNeeded();
    }

private:
    bool Chance(unsigned oneIn) { return m_random.Below(oneIn) == 0; }

    template <class Range> auto& AnyOf(Range& range) {
        return range[m_random.Below(static_cast<unsigned>(std::size(range)))];
    }

    std::wstring Name() {
        static wchar_t const* const starts[] = {L"a", L"_", L"Z.-", L"\x00C4\x00DF", L"\x65E5\x672C"};
        return AnyOf(starts) + std::to_wstring(++m_names);
    }

    LayoutNode* AddNode(eTypeLayoutNode type) {
        LayoutNode* const parent = Chance(3) ? m_parents.back() : AnyOf(m_parents);
        bool const isNamedLikeAWord = type == Group && Chance(8) && parent->GetNode(L"Options") == nullptr;
        LayoutNode* const node = parent->AddNode(isNamedLikeAWord ? L"Options" : Name().c_str(), type, L"");
        SetAttributes(*node);
        SetContent(*node);
        SetContainer(*node);
        if (type == Group || Chance(8)) {
            m_parents.push_back(node);
        }
        return node;
    }

    void Change(std::wstring& text) { text = m_random.Text(); }
    void Change(bool& flag) { flag = !flag; }
    void Change(std::uint64_t& count) {
        count = std::numeric_limits<std::uint64_t>::max() - m_random.Below(9);
    }

    template <class... Fields> void ChangeSome(unsigned oneIn, Fields&... fields) {
        ((Chance(oneIn) ? Change(fields) : void()), ...);
    }

    /// Those that any node may have, whether its type has a use for them or not.
    void SetAttributes(LayoutNode& node) {
        unsigned const rarity = Chance(2) ? 12 : 2; // half of the nodes plain, as in layouts of hosts
        ChangeSome(rarity, node.m_min, node.m_max, node.m_profileName, node.m_requestName,
                   node.m_triggerPropertyName, node.m_fileFilter, node.m_visibilityRequest,
                   node.m_nodeDisplayName, node.m_containerDisplayName, node.m_containerDescription,
                   node.m_multiplicityMaxMessage, node.m_multiplicityMinMessage, node.m_regex,
                   node.m_regexUserFriendly, node.m_displayName, node.m_prefix, node.m_postfix,
                   node.m_description, node.m_imageDescription, node.m_imageStretch,
                   node.m_displayNameSharedSizeGroup, node.m_postfixSharedSizeGroup,
                   node.m_profileEditingPolicy, node.m_propName);
        ChangeSome(rarity, node.m_allowEmpty, node.m_isValueUnique, node.m_userCanAddRemove,
                   node.m_userCanSort, node.m_userCanRemoveAnyElement, node.m_canBeTransformed,
                   node.m_enableMultiLine, node.m_visible, node.m_readOnly, node.m_expanded, node.m_hideName,
                   node.m_performTransform, node.m_disableForParents, node.m_disableForSubParts,
                   node.m_showOnlyPartsSelectedInTessra, node.m_writeToParameterFile,
                   node.m_childrenWriteToParameterFile);
        ChangeSome(rarity, node.m_multiplicityMax, node.m_multiplicityMin, node.m_maxLength);
        node.SetPrecision(static_cast<std::int32_t>(m_random.Below(21)) - 3);
        if (Chance(rarity)) {
            node.AddLicenseCheckForEditorVisibility(Name())->AddLicenseCheckForEditorVisibility(L"<");
        }
    }

    void SetContent(LayoutNode& node) {
        bool const isNumber = node.m_type == Int || node.m_type == Double || node.m_type == Distance;
        node.m_defaultValue = isNumber              ? std::to_wstring(m_random.Below(1000))
                              : node.m_type == Bool ? node.FormatValue(Chance(2))
                                                    : m_random.Text();
        for (unsigned count = node.m_type == Options ? m_random.Below(4) : 0; count != 0; --count) {
            std::wstring const value = m_random.Text();
            node.AddOption(value, m_random.Text());
        }
        if (Chance(4)) { // a host may write to the values alone
            node.m_optionValues.push_back(m_random.Text());
        }
    }

    void SetContainer(LayoutNode& node) {
        node.SetMultiplicity(m_random.Below(3))->SetIsList(Chance(4));
        node.SetNodeName(Chance(2) ? Name() : node.m_nodeName);
        if (node.m_type == Group && Chance(4)) {
            Chance(4) ? node.SetCategoryList(true, L"Category") : node.SetProfile(true, L"Profile");
            if (node.m_name != L"Options") { // of which a name finds any
                m_profileLists.push_back(&node);
            }
        } else if (node.m_type == OptionsFromProfiles && !m_profileLists.empty()) {
            LayoutNode const* const list = AnyOf(m_profileLists);
            node.SetTypeFromProfiles(list)->SetProfileName(list->m_name);
        }
    }

    void AddConditions(LayoutNode& node, std::vector<LayoutNode*> const& sources) {
        while (Chance(3)) {
            LayoutNode* const source = Source(sources);
            node.AddVisibilitySource(source, m_random.Text());
            node.AddEditabilitySource(source, Chance(2));
        }
    }

    /// With an identifier that is the same in each run.
    LayoutNode* Source(std::vector<LayoutNode*> const& sources) {
        LayoutNode* const source = AnyOf(sources);
        return source->m_identifier.empty() ? source->SetIdentifier(Name()) : source;
    }

    Generator m_random;
    std::vector<LayoutNode*> m_parents;
    std::vector<LayoutNode*> m_profileLists;
    unsigned m_names = 0;
};

} // namespace TestSupport
