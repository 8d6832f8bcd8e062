// SPDX-License-Identifier: Apache-2.0
#include "parameter_files/repeated_profiles.h"

#include "sax/report_texts.h"
#include "text/sentences.h"

#include <zantrel/text/string_conversion.h>

namespace Zantrel {

std::vector<std::wstring> RepeatedProfiles::Notes() const {
    if (m_count == 0) {
        return {};
    }
    return {
        Text::Fill(L"{0} profiles have the name of an earlier one in their list, \"{1}\" first; for each the "
                   L"content of that earlier one was written again.",
                   {std::to_wstring(m_count), Sax::Excerpt(StringConversion::NativeToUtf8(m_first))})};
}

bool ConcludeWrite(bool succeeded, std::vector<std::wstring> const& notes, WriteReport* report) noexcept {
    if (succeeded && report != nullptr) {
        try {
            report->m_notes.insert(report->m_notes.end(), notes.begin(), notes.end());
        } catch (...) { // a file that has been replaced isn't told to be as it was
        }
    }
    return succeeded;
}

} // namespace Zantrel
