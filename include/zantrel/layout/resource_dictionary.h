// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>
#include <zantrel/store/persistent_properties.h>

#include <string>

namespace Zantrel {

/// The translations of a layout's display strings: for a key, one text for each language. Content is a bag of
/// bags: the outer names are the keys, the inner names the languages.
///
/// A host owns it, gives it to the layout with ParameterLayout::SetResourceDictionary, and lets a meta file
/// fill it. Filled by one thread; belongs to one thread at a time, also for reading.
///
/// Keys are the texts that nodes have, as a rule display names and descriptions. Nothing is translated in the
/// nodes: who shows one looks its text up, and shows the key where no translation is found.
class ZANTREL_EXPORT ResourceDictionary : public PersistentProperties {
public:
    ResourceDictionary();
    /// Copies deeply. Moving is copying.
    ResourceDictionary(ResourceDictionary const& source);
    ResourceDictionary& operator=(ResourceDictionary const& source);
    ~ResourceDictionary() override;

    /// Stores `text` for `key` in `language`, in place of the one that stood there. An empty text is a
    /// translation too.
    void AddTranslation(std::wstring const& key, std::wstring const& language, std::wstring const& text);

    /// The text of exactly this key in exactly this language, or null: nothing falls back to another
    /// language. Good until the dictionary changes.
    std::wstring const* GetTranslation(std::wstring const& key, std::wstring const& language) const;
};

} // namespace Zantrel
