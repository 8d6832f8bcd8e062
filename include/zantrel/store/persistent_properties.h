// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>
#include <zantrel/store/entry_table.h>
#include <zantrel/store/persistent_property.h>

#include <string>
#include <string_view>
#include <typeindex>
#include <utility>

/// A bag: an ordered multi-map from name to an owned property. Names order by UTF-16 code unit; entries of
/// one name stay in the order of insertion, and the first of them is the one that lookups find.
///
/// Pointers to properties, and through them to values and inner bags, stay good while their entry lives;
/// copying into a bag ends its old entries. A bag belongs to one thread at a time with all it stands in (its
/// database or ticket), also for reading: lookups write the deleted mark, and bags share names. Wherever
/// memory runs out, std::bad_alloc passes through and the bag is as it was.
class ZANTREL_EXPORT PersistentProperties : public IMergeablePropertyValue {
public:
    using Iterator = Zantrel::EntryTable::Iterator;

    PersistentProperties() noexcept = default;
    /// Copies deeply, the deleted marks too.
    PersistentProperties(PersistentProperties const& other);
    PersistentProperties& operator=(PersistentProperties const& other);
    ~PersistentProperties() override;

    /// The same names in the same order, each with equal values. Flags of properties don't count.
    bool operator==(PersistentProperties const& other) const;
    bool operator!=(PersistentProperties const& other) const { return !(*this == other); }

    /// Per name of `other`: assigns where a property of the same class stands, otherwise adds a clone. With
    /// `overwrite` false, values that stand here are kept. Nothing when `other` is no bag. Where memory runs
    /// out, what was merged up to there stays.
    void Merge(IMergeablePropertyValue const& other, bool overwrite) override;

    /// Adds an entry and takes ownership of `property`, a heap object, also when this throws. A name may
    /// stand in a bag several times; the new entry comes behind. Null adds nothing.
    void AddProperty(std::wstring const& name, IPersistentProperty* property);
    /// Ends all properties of this name, or the first one only.
    void RemoveProperty(std::wstring const& name, bool firstOnly);

    bool IsEmpty() const { return m_entries.Size() == 0; }
    std::size_t GetNumProperties() const { return m_entries.Size(); }
    /// The entries in order, as pairs of name and property: `for (auto [name, property] : bag)`.
    Iterator begin() const { return m_entries.begin(); }
    Iterator end() const { return m_entries.end(); }
    /// The first property of this name whatever its class, or null. Doesn't allocate.
    IPersistentProperty* FindProperty(std::wstring_view name) const { return m_entries.FindFirst(name); }

    /// The value of the first entry of `name`, and its deleted mark cleared. When that entry is missing, of
    /// another class, or (with `create` false) marked deleted: null, or with `create` true a new default
    /// value in a further entry. Only creating allocates.
    template <class T> T* GetValuePointer(std::wstring_view name, bool create);

    /// Stores a value in the first entry of `name` that has this class, whatever stands in front of it, or in
    /// a new one. The property's flags start afresh. Gives the name and the property.
    template <class T>
    std::pair<std::wstring, IPersistentProperty*> SetValue(std::wstring_view name, T const& value);

    /// The value of the first entry of `name`, or `fallback` when it is missing, of another class or deleted.
    template <class T> T GetValueOr(std::wstring_view name, T fallback) const;

    /// Whether the first entry of `name` has this class and isn't deleted.
    template <class T> bool HasValue(std::wstring_view name) const;

    /// Adds a default value in a new entry behind all of that name. With `keepExisting` false the first entry
    /// of the name is ended before, whatever its class.
    template <class T> PersistentProperty<T>* CreateValue(std::wstring_view name, bool keepExisting);

    /// The library's own way to the entries.
    Zantrel::EntryTable& _Entries() { return m_entries; }
    Zantrel::EntryTable const& _Entries() const { return m_entries; }
    /// Copies a bag of a database of the same layout, whose nodes the names go on naming.
    void _AssignWithinLayout(PersistentProperties const& other);

private:
    template <class T> PersistentProperty<T>* FindLive(std::wstring_view name) const;
    template <class T> PersistentProperty<T>* Append(std::wstring_view name, T const& value);
    /// Merge for a bag of which no part lies in this one.
    void MergeApart(PersistentProperties const& source, bool overwrite);
    IPersistentProperty* FindOfClass(std::wstring_view name, std::type_index type) const;
    static void AssignApart(IPersistentProperty& target, IPersistentProperty const& source);
    void AppendOwned(std::wstring_view name, IPersistentProperty* property);
    void ReplaceFirst(std::wstring_view name, IPersistentProperty* property);

    Zantrel::EntryTable m_entries;
};

template <class T> PersistentProperty<T>* PersistentProperties::FindLive(std::wstring_view name) const {
    auto* property = PropertyCast<T>(m_entries.FindFirst(name));
    return property != nullptr && !property->IsDeleted() ? property : nullptr;
}

template <class T>
PersistentProperty<T>* PersistentProperties::Append(std::wstring_view name, T const& value) {
    auto* property = new PersistentProperty<T>(value);
    AppendOwned(name, property);
    return property;
}

template <class T> T* PersistentProperties::GetValuePointer(std::wstring_view name, bool create) {
    auto* property = PropertyCast<T>(m_entries.FindFirst(name));
    if (property == nullptr) {
        return create ? &Append<T>(name, T())->m_value : nullptr;
    }
    if (!create && property->IsDeleted()) {
        return nullptr;
    }
    property->SetDeleted(false);
    return &property->m_value;
}

template <class T>
std::pair<std::wstring, IPersistentProperty*> PersistentProperties::SetValue(std::wstring_view name,
                                                                             T const& value) {
    std::wstring ownName(name);
    for (Iterator at = m_entries.Find(name); at != end() && (*at).name == name; ++at) {
        if (auto* property = PropertyCast<T>((*at).property)) {
            *property = PersistentProperty<T>(value);
            return {std::move(ownName), property};
        }
    }
    auto* property = Append<T>(name, value);
    return {std::move(ownName), property};
}

template <class T> T PersistentProperties::GetValueOr(std::wstring_view name, T fallback) const {
    auto const* property = FindLive<T>(name);
    return property != nullptr ? property->m_value : std::move(fallback);
}

template <class T> bool PersistentProperties::HasValue(std::wstring_view name) const {
    return FindLive<T>(name) != nullptr;
}

template <class T>
PersistentProperty<T>* PersistentProperties::CreateValue(std::wstring_view name, bool keepExisting) {
    auto* property = new PersistentProperty<T>();
    if (keepExisting) {
        AppendOwned(name, property);
    } else {
        ReplaceFirst(name, property);
    }
    return property;
}

extern template class ZANTREL_EXPORT PersistentProperty<PersistentProperties>;
