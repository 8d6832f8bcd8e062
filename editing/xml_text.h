// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

/// What XML takes, as the library's writers have it.
namespace Zantrel::Editing {

/// Whether every reader takes the name for an element, those that know namespaces included: no colon.
bool IsElementName(std::wstring_view name);

/// Whether a document can hold the text at all.
bool IsXmlText(std::wstring_view text);

} // namespace Zantrel::Editing
