// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/database/parameter_node.h>
#include <zantrel/parameter_files/io_filtering.h>
#include <zantrel/platform/sax_persist.h>

#include <cstddef>

/// Reads the children of one element of a generic parameter file in step with the layout: the content of a
/// group, of a list or profile list as a whole, or of one item or profile.
class ParameterNodeRead : public ISAXPersistHelper {
public:
    explicit ParameterNodeRead(Zantrel::ParameterNode const& node);
    bool HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) override;

    /// Whether this handler itself met the element "GenericParameters".
    bool HasMetGenericParameters() const { return m_filtering.m_exportGeneralParameters; }

private:
    void ReadDefault(KelSAX::ISAXReader& reader);
    void ReadProfile(KelSAX::ISAXReader& reader);
    void ReadItem(KelSAX::ISAXReader& reader);
    void ReadChild(Zantrel::LayoutNode const& child, KelSAX::ISAXReader& reader);

    Zantrel::ParameterDatabaseIOFiltering m_filtering;
    Zantrel::ParameterNode m_node;
    /// Where the next child is expected, since documents keep the layout's order.
    std::size_t m_childHint = 0;
};
