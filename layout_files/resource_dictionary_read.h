// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/layout/resource_dictionary.h>
#include <zantrel/sax/sax_persist.h>

#include <string>

/// Adds the content of an element "ResourceDictionary" to a dictionary, which is borrowed. A translation goes
/// to the key of the entry that began last, also where it stands outside of it; without one to the empty key.
class ResourceDictionaryFileRead : public ISAXPersistHelper {
public:
    explicit ResourceDictionaryFileRead(Zantrel::ResourceDictionary* dictionary) : m_dictionary(dictionary) {}
    bool HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) override;

private:
    Zantrel::ResourceDictionary* m_dictionary;
    std::wstring m_entryKey; ///< of the last "Entry"
};
