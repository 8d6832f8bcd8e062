// SPDX-License-Identifier: Apache-2.0
#include <zantrel/store/external_properties.h>

#include "store/bag_inside.h"
#include "store/copying.h"
#include "store/property_set_sax.h"
#include "store/property_set_words.h"
#include "text/guid.h"

#include <zantrel/sax/sax_reader.h>

#include <algorithm>
#include <memory>

namespace Word = Zantrel::PropertySetWord;

template class PersistentProperty<KelAM::ExternalProperties>;

namespace KelAM {

namespace {

// For the digits of a GUID alone; the functions of the library of C depend on the locale.
wchar_t ToLower(wchar_t c) { return c >= L'A' && c <= L'F' ? static_cast<wchar_t>(c - L'A' + L'a') : c; }
wchar_t ToUpper(wchar_t c) { return c >= L'a' && c <= L'f' ? static_cast<wchar_t>(c - L'a' + L'A') : c; }

} // namespace

// Braces and case are spellings of one identifier; other texts are taken as they are.
ExternalPropertyID::ExternalPropertyID(std::wstring const& text) : m_text(text) {
    if (std::wstring_view const guid = Zantrel::Text::FindGuid(text); !guid.empty()) {
        m_isGuid = true;
        m_text.assign(guid);
        std::transform(m_text.begin(), m_text.end(), m_text.begin(), ToLower);
    }
}

std::wstring ExternalPropertyID::FormatGuid(bool braces, bool upperCase) const {
    if (!m_isGuid) {
        return m_text;
    }
    std::wstring text = m_text;
    if (upperCase) {
        std::transform(text.begin(), text.end(), text.begin(), ToUpper);
    }
    return braces ? L"{" + text + L"}" : text;
}

ExternalProperties::ExternalProperties(ExternalProperties const& other)
    : PersistentProperties(other), m_objectKind(other.m_objectKind), m_id(other.m_id) {}

ExternalProperties& ExternalProperties::operator=(ExternalProperties const& other) {
    Zantrel::NameCopier names(Zantrel::NameCopier::Borrowed::Own);
    Zantrel::Assign(*this, other, names);
    return *this;
}

ExternalProperties::~ExternalProperties() = default;

// The names stay behind: a copy is another tree, which may go to another thread.
DatabaseExternalProperties::DatabaseExternalProperties(DatabaseExternalProperties const& other)
    : PersistentProperties(other) {}

DatabaseExternalProperties& DatabaseExternalProperties::operator=(DatabaseExternalProperties const& other) {
    PersistentProperties::operator=(other);
    return *this;
}

DatabaseExternalProperties::~DatabaseExternalProperties() = default;

namespace {

/// A host may give each property a name of its own; these would be kept after their entries.
constexpr std::size_t MaxSharedNames = 1024;

/// The first entry of the key that holds the properties of an object: a host may have put others there.
PersistentProperty<ExternalProperties>* FindStore(PersistentProperties const& stores,
                                                  std::wstring const& key) {
    for (auto at = stores.Find(key); at != stores.end() && (*at).name == key; ++at) {
        if (auto* store = PropertyCast<ExternalProperties>((*at).property)) {
            return store;
        }
    }
    return nullptr;
}

} // namespace

// As PersistentProperties::GetValuePointer does it, but past entries of other classes, which a host may have
// put under the same key.
ExternalProperties* DatabaseExternalProperties::GetProperties(ExternalPropertyID const& id, bool create) {
    std::wstring const key = id.FormatGuid(false, false);
    if (create && m_names == nullptr) {
        m_names = std::make_shared<Zantrel::NameCopier>(Zantrel::NameCopier::Borrowed::Own, MaxSharedNames);
    }
    // Stores come from a file in the order of their keys.
    bool const isNew = create && Zantrel::BagInside::Reader(*this).EndsBefore(key);
    auto* store = isNew ? nullptr : FindStore(*this, key);
    if (store == nullptr && create) {
        auto made = std::make_unique<PersistentProperty<ExternalProperties>>();
        made->m_value.m_id = id;
        store = made.release();
        AddProperty(key, store);
    }
    if (store == nullptr || (store->IsDeleted() && !create)) {
        return nullptr;
    }
    store->m_value.m_names = m_names;
    store->SetDeleted(false);
    return &store->m_value;
}

ExternalProperties const* DatabaseExternalProperties::GetProperties(ExternalPropertyID const& id) const {
    auto const* store = FindStore(*this, id.FormatGuid(false, false));
    return store != nullptr && !store->IsDeleted() ? &store->m_value : nullptr;
}

// Also those that are marked as deleted: whoever walks the stores decides about them.
void DatabaseExternalProperties::GetAllProperties(std::vector<std::wstring>& names) const {
    names.clear();
    names.reserve(GetNumProperties());
    for (auto const& entry : *this) {
        names.emplace_back(entry.name);
    }
}

bool DatabaseExternalPropertiesSax::HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) {
    std::wstring uuid;
    if (tag != Word::Instance || m_database == nullptr) {
        return false;
    }
    if (!reader.ReadAttribute(uuid, Word::Uuid)) {
        reader.NoteDropped(L"An instance without an identifier was passed over.");
        return false;
    }
    reader.PushHandler(
        new Zantrel::PropertySetRead(m_database->GetProperties(ExternalPropertyID(uuid), true)));
    return true;
}

} // namespace KelAM
