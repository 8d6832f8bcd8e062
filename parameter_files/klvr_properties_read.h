// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "parameter_files/node_read.h"

/// Reads the children of one element of a machine parameters file, whose "Property" elements name their
/// nodes.
class ParameterNodeReadKlvrProperties : public NodeRead {
public:
    explicit ParameterNodeReadKlvrProperties(Zantrel::ParameterNode const& node,
                                             std::shared_ptr<ParameterFileValidity> validity = nullptr);

private:
    bool ReadElement(std::string const& tag, KelSAX::ISAXReader& reader) override;
    NodeRead* MakeHandler(Zantrel::ParameterNode const& node) const override;

    std::string m_name; ///< an attribute's value; kept for its room
};
