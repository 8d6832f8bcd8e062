// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/layout/parameter_layout.h>
#include <zantrel/sax/sax_persist.h>

/// Writes a layout, which is borrowed, as the content of the root of a property template. With
/// `profileListsOnly` a node below "ProfileEditor" that is no profile list is left out with all below it.
class ParameterLayoutIOPropertyTemplateWrite : public ISAXPersistHelper {
public:
    ParameterLayoutIOPropertyTemplateWrite(Zantrel::ParameterLayout const& layout, bool profileListsOnly)
        : m_layout(&layout), m_profileListsOnly(profileListsOnly) {}
    bool Write(KelSAX::ISAXWriter& writer) const override;

private:
    Zantrel::ParameterLayout const* m_layout;
    bool m_profileListsOnly;
};
