// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/layout/parameter_layout.h>
#include <zantrel/sax/sax_persist.h>

#include <string>
#include <string_view>

/// Writes a layout, which is borrowed, as the content of the root of a property template.
class ParameterLayoutIOPropertyTemplateWrite : public ISAXPersistHelper {
public:
    ParameterLayoutIOPropertyTemplateWrite(Zantrel::ParameterLayout const& layout, bool profileListsOnly)
        : m_layout(&layout), m_profileListsOnly(profileListsOnly) {}
    bool Write(KelSAX::ISAXWriter& writer) const override;

private:
    // What is written stands in the element that is open.
    void WriteChildren(Zantrel::LayoutNode const* node, KelSAX::ISAXWriter& writer) const;
    void WriteAttributes(Zantrel::LayoutNode const& node, KelSAX::ISAXWriter& writer) const;
    bool IsWanted(Zantrel::LayoutNode const& node) const;
    void WriteTranslated(std::string_view word, std::wstring const& text, KelSAX::ISAXWriter& writer) const;

    Zantrel::ParameterLayout const* m_layout;
    bool m_profileListsOnly;
};
