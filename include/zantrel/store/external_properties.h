// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>
#include <zantrel/sax/sax_persist.h>
#include <zantrel/store/persistent_properties.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace KelAM {

/// The identifier of an object: a GUID from its text, with or without braces, in any case. A text that is no
/// GUID stays itself in every form, so that no two distinct identifiers fall together.
class ZANTREL_EXPORT ExternalPropertyID {
public:
    /// The empty text, which is no GUID.
    ExternalPropertyID() = default;
    /// Takes any text. Throws std::bad_alloc.
    explicit ExternalPropertyID(std::wstring const& text);

    /// The GUID as 36 characters, or as 38 with braces; any other text as it came.
    std::wstring FormatGuid(bool braces, bool upperCase) const;

    /// Whether both name one object, however they were spelt.
    bool operator==(ExternalPropertyID const& other) const { return m_text == other.m_text; }
    bool operator!=(ExternalPropertyID const& other) const { return !(*this == other); }

private:
    std::wstring m_text; ///< a GUID without braces in lower case; any other text as it came
    bool m_isGuid = false;
};

/// The properties of one object outside of a database: a bag that knows its object. Assignment copies all of
/// it; equality is that of the bags.
class ZANTREL_EXPORT ExternalProperties : public PersistentProperties {
public:
    /// No kind, the empty identifier and no entries.
    ExternalProperties() = default;
    /// Copies kind, identifier and entries. `other` may stand within the bag that it is assigned to.
    ExternalProperties(ExternalProperties const& other);
    ExternalProperties& operator=(ExternalProperties const& other);
    ~ExternalProperties() override;

    std::int32_t m_objectKind =
        0; ///< 1 build, 2 build item, 3 object, 4 component; any other value is no kind
    /// Whose properties these are. The key in a database doesn't follow when a host changes it.
    ExternalPropertyID m_id;

private:
    friend class DatabaseExternalProperties;
    Zantrel::NameCopier* _SharedNames() const noexcept override { return m_names.get(); }

    /// Those of the database that this stands in, which ends before the bag of its stores does; no copy has
    /// them.
    std::shared_ptr<Zantrel::NameCopier> m_names;
};

/// The properties of many objects: a bag of PersistentProperty<ExternalProperties>, keyed by
/// FormatGuid(false, false), so that all spellings of one GUID meet in one store. Belongs to one thread at a
/// time.
///
/// The functions below take any spelling. Those of the bag compare names as they stand, and find an entry
/// only under FormatGuid(false, false): no braces, lower case. Components within an entry have names of
/// another form, FormatGuid(true, true).
class ZANTREL_EXPORT DatabaseExternalProperties : public PersistentProperties {
public:
    DatabaseExternalProperties() = default;
    DatabaseExternalProperties(DatabaseExternalProperties const& other);
    DatabaseExternalProperties& operator=(DatabaseExternalProperties const& other);
    ~DatabaseExternalProperties() override;

    /// The properties of `id`; null when there are none and `create` is false. A new entry gets `id` as its
    /// own. The pointer stays good while the entry lives.
    /// An entry marked deleted counts as none, but `create` takes the mark away and gives it. Entries of
    /// other classes under the same key are passed over. On std::bad_alloc nothing was added.
    ExternalProperties* GetProperties(ExternalPropertyID const& id, bool create);
    /// The same without creating; no mark is touched.
    ExternalProperties const* GetProperties(ExternalPropertyID const& id) const;
    /// Replaces `names` by the keys, in their order.
    /// Those of entries marked deleted are among them, and a key stands as often as it has entries.
    void GetAllProperties(std::vector<std::wstring>& names) const;

private:
    /// What stores add by names that others have, too, shares their texts. Made with the first store.
    std::shared_ptr<Zantrel::NameCopier> m_names;
};

/// Reads "Instance" elements, each with the attribute "uuid" and the properties of one object, into a
/// database that outlives the handler.
class ZANTREL_EXPORT DatabaseExternalPropertiesSax : public ISAXPersistHelper {
public:
    /// `database` is borrowed; with null every element is passed over.
    explicit DatabaseExternalPropertiesSax(DatabaseExternalProperties* database) : m_database(database) {}
    /// Takes an "Instance" that has a "uuid", and adds its properties to those that the object has.
    /// Any other element gives false, and its children come to this handler all the same.
    bool HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) override;

private:
    DatabaseExternalProperties* m_database;
};

} // namespace KelAM

extern template class ZANTREL_EXPORT PersistentProperty<KelAM::ExternalProperties>;
