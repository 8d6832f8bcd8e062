// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "layout_files/layout_read.h"

#include <string>

/// Makes nodes of the elements "PropertyNode" of a property template. Its sections lead to anchors; an
/// element that is neither is looked through.
class ParameterLayoutIOPropertyTemplateRead : public Zantrel::LayoutRead {
public:
    using LayoutRead::LayoutRead;

private:
    bool ReadElement(std::string const& tag, KelSAX::ISAXReader& reader) override;
    void HandleEndTag(std::string_view tag) override;

    bool EnterSection(std::string_view tag);
    bool ReadPropertyNode(KelSAX::ISAXReader& reader);
};

/// Compares the name of the root, and takes nothing. Without a root, as in no file at all, nothing is valid.
class ParameterLayoutIOPropertyTemplateValidityCheck : public ISAXPersistHelper {
public:
    bool HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) override;

    bool m_valid = false;
};
