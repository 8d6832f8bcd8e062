// SPDX-License-Identifier: Apache-2.0
#include "sax/report_texts.h"

#include "text/numbers.h"
#include "text/sentences.h"
#include "text/unicode.h"

namespace Zantrel::Sax {

std::wstring Excerpt(std::string_view utf8) {
    std::wstring text;
    Text::AppendWide(Text::Shorten(utf8), text);
    return text;
}

void AppendStep(PathStep step, std::wstring& path) {
    path.append(path.empty() ? L"" : L"/");
    Text::AppendWide(Text::Shorten(step.tag, LongestName), path);
    if (!step.name.empty()) {
        path.append(L" \"");
        Text::AppendWide(Text::Shorten(step.name, LongestName), path);
        path.push_back(L'"');
    }
}

std::wstring WithPath(std::wstring_view sentence, std::wstring_view path) {
    return path.empty() ? std::wstring(sentence) : Text::Fill(L"{0} ({1})", {sentence, path});
}

void Restart(WriteReport* report) {
    if (report != nullptr) {
        bool const mayWriteInPlace = report->m_mayWriteInPlace;
        *report = WriteReport();
        report->m_mayWriteInPlace = mayWriteInPlace;
    }
}

void NoteStrayText(KelSAX::ISAXReader& reader) {
    if (reader.HasReport() && !Text::Trim(reader.GetText()).empty()) {
        reader.NoteDropped(L"The element holds elements only; its text was passed over.");
    }
}

} // namespace Zantrel::Sax
