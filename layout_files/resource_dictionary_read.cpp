// SPDX-License-Identifier: Apache-2.0
#include "layout_files/resource_dictionary_read.h"

#include "layout_files/vocabulary.h"

#include <zantrel/sax/sax_reader.h>

namespace Word = Zantrel::LayoutWord;

/// Entries aren't nested into handlers of their own: a translation belongs to the entry met last.
bool ResourceDictionaryFileRead::HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) {
    if (tag == Word::Entry) {
        m_entryKey.clear(); // so that without a key its texts don't go to the entry before it
        bool const hasKey = reader.ReadAttribute(m_entryKey, Word::Key);
        if (!hasKey) {
            reader.NoteDropped(L"The entry has no key; its translations go to the empty one.");
        }
        return hasKey;
    }
    std::wstring language;
    if (tag != Word::Translation) {
        return false;
    }
    if (!reader.ReadAttribute(language, Word::Language)) {
        reader.NoteDropped(L"A translation without a language was passed over.");
        return false;
    }
    std::wstring text;
    reader.ReadValue(text);
    m_dictionary->AddTranslation(m_entryKey, language, text);
    return true;
}
