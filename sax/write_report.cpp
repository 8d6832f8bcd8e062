// SPDX-License-Identifier: Apache-2.0
#include <zantrel/sax/write_report.h>

#include "sax/report_texts.h"

namespace Zantrel {

std::wstring WriteReport::Format() const {
    std::wstring text = Sax::WithPath(m_sentence, m_path);
    for (std::wstring const& note : m_notes) {
        text.append(text.empty() ? L"" : L"\n").append(note);
    }
    return text;
}

} // namespace Zantrel
