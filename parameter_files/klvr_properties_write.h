// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/database/parameter_node.h>
#include <zantrel/parameter_files/machine_parameters_file.h>
#include <zantrel/sax/sax_persist.h>

/// Writes the content of one node as a machine parameters file has it. The options are borrowed.
class ParameterNodeWriteKlvrProperties : public ISAXPersistHelper {
public:
    ParameterNodeWriteKlvrProperties(Zantrel::ParameterNode const& node,
                                     Zantrel::KlvrProperties::WriteOptions const& options)
        : m_node(node), m_options(&options) {}
    bool Write(KelSAX::ISAXWriter& writer) const override;

private:
    Zantrel::ParameterNode m_node;
    Zantrel::KlvrProperties::WriteOptions const* m_options;
};
