// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "parameter_files/node_read.h"

/// Reads the children of one element of a generic parameter file, whose tags are the names of nodes.
class ParameterNodeRead : public NodeRead {
public:
    explicit ParameterNodeRead(Zantrel::ParameterNode const& node,
                               std::shared_ptr<ParameterFileValidity> validity = nullptr);

    /// Whether this handler itself met the element "GenericParameters".
    bool HasMetGenericParameters() const { return m_hasMetGenericParameters; }

private:
    bool ReadElement(std::string const& tag, KelSAX::ISAXReader& reader) override;
    NodeRead* MakeHandler(Zantrel::ParameterNode const& node) const override;

    bool m_hasMetGenericParameters = false;
};
