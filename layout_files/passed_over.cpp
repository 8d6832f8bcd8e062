// SPDX-License-Identifier: Apache-2.0
#include "layout_files/passed_over.h"

#include "text/sentences.h"

#include <string>
#include <utility>

namespace Zantrel {

// One entry for a whole file: a reader that takes few attributes meets hundreds of others, which would hide
// what is really wrong.
void PassedOver::Report(std::wstring_view taker) const {
    if (m_counts.empty()) {
        return;
    }
    std::wstring list;
    for (auto const& [what, count] : m_counts) {
        list += list.empty() ? L"" : L", ";
        list += Text::Fill(L"{0} ({1})", {what, std::to_wstring(count)});
    }
    ReadReport::Entry entry;
    entry.kind = ReadReport::Kind::PassedOver;
    entry.sentence = Text::Fill(L"Passed over, and taken by {0}: {1}.", {taker, list});
    m_report->Add(std::move(entry));
}

} // namespace Zantrel
