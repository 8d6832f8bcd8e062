// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "database/value_access.h"

#include <zantrel/database/parameter_node.h>
#include <zantrel/database/value_type.h>
#include <zantrel/layout/layout_node.h>
#include <zantrel/sax/prepared_tag.h>
#include <zantrel/sax/sax_reader.h>
#include <zantrel/sax/sax_writer.h>

namespace Zantrel {

/// Said of what a file holds for a cursor that has no bag, or no value of the layout's type.
inline constexpr std::wstring_view NoPlace = L"The database has no place for this; it was passed over.";

/// Takes the text of the element into the value of a leaf. What has no place to go is noted on the reader.
template <class T> void ReadLeafValue(ParameterNode const& leaf, KelSAX::ISAXReader& reader);

/// The value of a leaf that holds nothing else and so has no flags, as nearly every leaf; null for all
/// others, and where there is no content. Found without a look-up.
IPersistentProperty const* FindSoleValue(ParameterNode const& leaf);

/// Writes the value of a leaf as content of the open element; nothing where the leaf has no value. The writer
/// knows when it can't be written.
void WriteLeafValue(ParameterNode const& leaf, KelSAX::ISAXWriter& writer);

/// The same with the element around it, which has no attributes beyond the tag's; in one go where the value
/// is a plain one.
void WriteLeafElement(KelSAX::PreparedTag const& tag, ParameterNode const& leaf, KelSAX::ISAXWriter& writer);

/// The same for a property of the class that leaves of one type have, which isn't asked for. False, and
/// nothing is written, where it is marked deleted.
using PlainElement = bool (*)(KelSAX::PreparedTag const& tag, IPersistentProperty const& value,
                              KelSAX::ISAXWriter& writer);
/// Null for a type that has no value.
PlainElement PlainElementOf(eTypeLayoutNode type);

} // namespace Zantrel
