// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "layout_files/layout_read.h"
#include "layout_files/passed_over.h"

#include <string>

/// Makes nodes of the elements "PropertyNode" of a property template. Its sections lead to anchors; an
/// element that is neither is looked through.
///
/// `isWhole` takes also what writers say and the told reader passes over: precision and choices.
class ParameterLayoutIOPropertyTemplateRead : public Zantrel::LayoutRead {
public:
    /// `report` is that of the read, or null; it hears how much is passed over.
    explicit ParameterLayoutIOPropertyTemplateRead(Zantrel::ParameterLayout& layout, bool isWhole = false,
                                                   Zantrel::ReadReport* report = nullptr)
        : LayoutRead(layout), m_isWhole(isWhole), m_passedOver(report) {}

private:
    bool ReadElement(std::string const& tag, KelSAX::ISAXReader& reader) override;
    void HandleEndTag(std::string_view tag) override;
    void ResolveReferences(KelSAX::ISAXReader& reader) override;

    bool EnterSection(std::string_view tag);
    bool ReadPropertyNode(KelSAX::ISAXReader& reader);
    Zantrel::eTypeLayoutNode ReadType(KelSAX::ISAXReader& reader);
    void ReadWhole(Zantrel::LayoutNode& node, KelSAX::ISAXReader& reader);
    void CountPassedOver(KelSAX::ISAXReader& reader);

    bool m_isWhole;
    Zantrel::PassedOver m_passedOver;
    std::string m_word; ///< an attribute's value; kept for its room
};

/// Compares the name of the root, and takes nothing. Without a root, as in no file at all, nothing is valid.
class ParameterLayoutIOPropertyTemplateValidityCheck : public ISAXPersistHelper {
public:
    bool HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) override;

    bool m_valid = false;
};
