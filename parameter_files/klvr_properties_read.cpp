// SPDX-License-Identifier: Apache-2.0
#include "parameter_files/klvr_properties_read.h"

#include <zantrel/sax/sax_reader.h>
#include <zantrel/text/string_conversion.h>

#include <utility>

using namespace Zantrel;
namespace Word = Zantrel::ParameterFileWord;

namespace {

constexpr ReadFlagTables NoFlags{};

} // namespace

ParameterNodeReadKlvrProperties::ParameterNodeReadKlvrProperties(
    ParameterNode const& node, std::shared_ptr<ParameterFileValidity> validity)
    : NodeRead(node, std::move(validity), NoFlags) {}

NodeRead* ParameterNodeReadKlvrProperties::MakeHandler(ParameterNode const& node) const {
    return new ParameterNodeReadKlvrProperties(node, GetValidity());
}

bool ParameterNodeReadKlvrProperties::ReadElement(std::string const& tag, KelSAX::ISAXReader& reader) {
    if (ReadEntry(tag, reader)) {
        return true;
    }
    if (tag != Word::Property) {
        return ReportUnhandled(tag); // the root too
    }
    if (!reader.ReadAttribute(m_name, Word::Name)) {
        reader.NoteDropped(L"A property without a name was passed over.");
        return false;
    }
    if (LayoutNode const* child = FindChild(m_name)) {
        ReadChild(*child, reader);
        return true;
    }
    if (reader.GetDepth() == 0) {
        return true;
    }
    if (reader.HasReport()) {
        reader.NoteDropped(L"The parameter \"" + StringConversion::Utf8ToNative(m_name) +
                           L"\" is not known here and was passed over.");
    }
    return ReportInvalid(tag); // which is the same word for all, and not the name
}
