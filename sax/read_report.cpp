// SPDX-License-Identifier: Apache-2.0
#include <zantrel/sax/read_report.h>

#include "sax/report_texts.h"
#include "text/sentences.h"

#include <utility>

namespace Zantrel {

void ReadReport::Add(Entry entry) {
    if (HasRoomFor(entry.kind)) {
        std::size_t const size = (entry.path.size() + entry.sentence.size()) * sizeof(wchar_t);
        std::size_t const before = m_entries.empty() ? 0 : m_bytes;
        m_entries.push_back(std::move(entry));
        m_bytes = before + size;
    } else {
        ++m_leftOut;
    }
}

// Kinds that end a read come once in it, so that what is kept beyond the limit is bounded, too.
bool ReadReport::HasRoomFor(Kind kind) const noexcept {
    bool const failsTheRead =
        kind == Kind::CannotRead || kind == Kind::DocumentError || kind == Kind::RefusedDocument;
    std::size_t const bytes = m_entries.empty() ? 0 : m_bytes;
    return failsTheRead || (m_entries.size() < m_limit && bytes < m_byteLimit);
}

std::wstring ReadReport::Format(Entry const& entry) {
    std::wstring const text = Sax::WithPath(entry.sentence, entry.path);
    return entry.line == 0 ? text
                           : Text::Fill(L"{0}:{1}: {2}",
                                        {std::to_wstring(entry.line), std::to_wstring(entry.column), text});
}

} // namespace Zantrel
