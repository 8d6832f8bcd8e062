// SPDX-License-Identifier: Apache-2.0
#include <zantrel/sax/read_report.h>

#include "sax/report_texts.h"
#include "text/sentences.h"

#include <utility>

namespace Zantrel {

void ReadReport::Add(Entry entry) {
    if (HasRoomFor(entry.kind)) {
        m_entries.push_back(std::move(entry));
    } else {
        ++m_leftOut;
    }
}

// Kinds that end a read come once in it, so that what is kept beyond the limit is bounded, too.
bool ReadReport::HasRoomFor(Kind kind) const noexcept {
    bool const failsTheRead =
        kind == Kind::CannotRead || kind == Kind::DocumentError || kind == Kind::RefusedDocument;
    return failsTheRead || m_entries.size() < m_limit;
}

std::wstring ReadReport::Format(Entry const& entry) {
    std::wstring const text = Sax::WithPath(entry.sentence, entry.path);
    return entry.line == 0 ? text
                           : Text::Fill(L"{0}:{1}: {2}",
                                        {std::to_wstring(entry.line), std::to_wstring(entry.column), text});
}

} // namespace Zantrel
