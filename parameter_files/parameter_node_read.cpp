// SPDX-License-Identifier: Apache-2.0
#include "parameter_files/parameter_node_read.h"

#include <zantrel/sax/sax_reader.h>

#include <utility>

using namespace Zantrel;
namespace Word = Zantrel::ParameterFileWord;

namespace {

// A profile's "Hidden" is written and not read, and a "Default" has no attributes for the reader: files rely
// on neither.
constexpr FlagAttribute NodeFlags[] = {Flag::DisableAddRemove, Flag::ReadOnly, Flag::Hidden};
constexpr FlagAttribute ProfileFlags[] = {Flag::NameReadOnly, Flag::CanBeDeleted, Flag::UserDefaultProfile,
                                          Flag::ReadOnly};
constexpr FlagAttribute ItemFlags[] = {Flag::ReadOnly, Flag::Hidden};
constexpr ReadFlagTables Flags{NodeFlags, ProfileFlags, ItemFlags};

} // namespace

ParameterNodeRead::ParameterNodeRead(ParameterNode const& node,
                                     std::shared_ptr<ParameterFileValidity> validity)
    : NodeRead(node, std::move(validity), Flags) {}

NodeRead* ParameterNodeRead::MakeHandler(ParameterNode const& node) const {
    return new ParameterNodeRead(node, GetValidity());
}

bool ParameterNodeRead::ReadElement(std::string const& tag, KelSAX::ISAXReader& reader) {
    if (ReadEntry(tag, reader)) {
        return true;
    }
    if (IsOnList() && !IsOnProfileList()) {
        return ReportUnhandled(tag);
    }
    if (LayoutNode const* child = FindChild(tag)) {
        m_hasMetGenericParameters = m_hasMetGenericParameters || child->m_name == Word::GenericParameters;
        ReadChild(*child, reader);
        return true;
    }
    return reader.GetDepth() == 0 || ReportInvalid(tag); // the root element, whatever its name
}
