// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/database/parameter_node.h>
#include <zantrel/parameter_files/io_filtering.h>
#include <zantrel/sax/sax_persist.h>

/// Writes the content of one node as a generic parameter file has it.
class ParameterNodeWrite : public ISAXPersistHelper {
public:
    ParameterNodeWrite(Zantrel::ParameterNode const& node, Zantrel::ParameterDatabaseIOFiltering filtering)
        : m_node(node), m_filtering(filtering) {}
    bool Write(KelSAX::ISAXWriter& writer) const override;

private:
    Zantrel::ParameterNode m_node;
    Zantrel::ParameterDatabaseIOFiltering m_filtering;
};
