// SPDX-License-Identifier: Apache-2.0
#include "editing/xml_text.h"

#include <zantrel/sax/prepared_tag.h>

namespace Zantrel::Editing {

// A tag that is made ready has passed all that a writer asks of it.

bool IsElementName(std::wstring_view name) {
    return name.find(L':') == name.npos && KelSAX::PreparedTag(name).IsReady();
}

bool IsXmlText(std::wstring_view text) {
    KelSAX::PreparedTag tag("a");
    tag.AddAttribute("a", text);
    return tag.IsReady();
}

} // namespace Zantrel::Editing
