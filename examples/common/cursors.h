// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/zantrel.h>

#include <string>

/// What hosts ask of any cursor, whatever its layout: which flags and which value stand there, and their
/// texts. Nothing stands on a cursor that is not valid.
namespace Host {

/// What a flag means to the user, by its word in files.
std::wstring FlagWords(std::wstring const& word);

/// The value alone: a text as it stands, a number exact in few digits. LayoutNode::FormatValue would round to
/// the node's precision, as an editor does.
std::wstring PlainText(Zantrel::ParameterView const& leaf);

/// "0.03 mm": the value between the node's prefix and postfix, as a rule its unit; a text in quotes. Empty
/// without a value, and for options of the driver also with an empty one, which files can't tell from none.
std::wstring ValueText(Zantrel::ParameterView const& leaf);

/// "read-only, hidden".
std::wstring FlagsText(Zantrel::ParameterView const& node);

} // namespace Host
