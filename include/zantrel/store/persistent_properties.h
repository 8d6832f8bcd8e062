// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>
#include <zantrel/store/persistent_property.h>

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>

namespace Zantrel {

struct BagInside;
class NameCopier;

/// One entry of a bag, as an iterator gives it. Both members live as long as the entry.
struct NamedProperty {
    std::wstring_view name;
    IPersistentProperty* property = nullptr; ///< never null in a bag, which owns it
};

} // namespace Zantrel

/// A bag: an ordered multi-map from name to an owned property. Names order by UTF-16 code unit; entries of
/// one name stay in the order of insertion, and the first of them is the one that lookups find.
///
/// Pointers to properties, and through them to values and inner bags, stay good while their entry lives:
/// until it is removed, the bag ends, or something is assigned to the bag or to one around it. Bags may be
/// nested as deep as memory lasts; copying, comparing, merging and ending them takes no stack in the depth.
///
/// The templates take the classes that PersistentProperty names. Names may be any text, also an empty one. A
/// bag belongs to one thread at a time with all it stands in (its database or ticket), also for reading:
/// lookups write the deleted mark, and bags share names. Wherever memory runs out, std::bad_alloc passes
/// through and the bag is as it was.
class ZANTREL_EXPORT PersistentProperties : public IMergeablePropertyValue {
public:
    /// Walks the entries in order, giving pairs of name and property. Good until an entry of the bag is added
    /// or removed, or the bag's sequence exchanged (IndexedProperties::Swap).
    class ZANTREL_EXPORT Iterator {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = Zantrel::NamedProperty;
        using difference_type = std::ptrdiff_t;
        using pointer = void;
        using reference = Zantrel::NamedProperty;

        /// The end of every bag.
        Iterator() noexcept = default;
        /// The entry, by value. Not at the end.
        Zantrel::NamedProperty operator*() const noexcept;
        /// To the next entry. Not at the end.
        Iterator& operator++() noexcept;
        Iterator operator++(int) noexcept {
            Iterator old = *this;
            ++*this;
            return old;
        }
        bool operator==(Iterator const& other) const noexcept { return m_at == other.m_at; }
        bool operator!=(Iterator const& other) const noexcept { return m_at != other.m_at; }

    private:
        friend struct Zantrel::BagInside;
        Iterator(std::uintptr_t entries, void const* at) noexcept : m_entries(entries), m_at(at) {}
        std::uintptr_t m_entries = 0;
        void const* m_at = nullptr; ///< null at the end
    };

    PersistentProperties() noexcept = default;
    /// Copies deeply, the deleted marks too. The copy shares nothing with `other` and may go to another
    /// thread.
    PersistentProperties(PersistentProperties const& other);
    /// The same in place of what stood here, which ends last: `other` may stand within this bag.
    PersistentProperties& operator=(PersistentProperties const& other);
    /// Ends all entries, at any depth.
    ~PersistentProperties() override;

    /// The same names in the same order, each with equal values. Flags of properties don't count.
    /// Properties of a host's own class are asked by IsEqual. Throws std::bad_alloc.
    bool operator==(PersistentProperties const& other) const;
    bool operator!=(PersistentProperties const& other) const { return !(*this == other); }

    /// Per name of `other`: assigns where a property of the same class stands, otherwise adds a clone. With
    /// `overwrite` false, values that stand here are kept. Nothing when `other` is no bag. Where memory runs
    /// out, what was merged up to there stays.
    /// `other` may stand within this bag or around it.
    void Merge(IMergeablePropertyValue const& other, bool overwrite) override;

    /// Adds an entry and takes ownership of `property`, a heap object, also when this throws. A name may
    /// stand in a bag several times; the new entry comes behind. Null adds nothing.
    /// It must stand in no other bag.
    void AddProperty(std::wstring const& name, IPersistentProperty* property);
    /// Ends all properties of this name, or the first one only.
    /// Nothing happens when there is none. `name` may be the value of a property that goes. Iterators of the
    /// bag and pointers into what ended are bad afterwards.
    void RemoveProperty(std::wstring const& name, bool firstOnly);

    /// How many entries there are, those marked deleted too.
    bool IsEmpty() const noexcept { return m_entries == 0 || GetNumProperties() == 0; }
    /// All entries of one name count.
    std::size_t GetNumProperties() const noexcept;
    /// The entries in order: `for (auto [name, property] : bag)`.
    /// Those marked deleted are among them. The bag stays as it is, but the properties may be changed.
    Iterator begin() const noexcept;
    Iterator end() const noexcept { return Iterator(); }
    /// The first entry of this name, or end(); the entries of one name follow each other. Doesn't allocate.
    /// A bag of few entries is searched from the front; one of many takes logarithmic time.
    Iterator Find(std::wstring_view name) const noexcept;
    /// The first property of this name whatever its class, or null. Doesn't allocate.
    /// One that is marked deleted is given, too, and keeps its mark.
    IPersistentProperty* FindProperty(std::wstring_view name) const noexcept;

    /// The value of the first entry of `name`, and its deleted mark cleared. When that entry is missing, of
    /// another class, or (with `create` false) marked deleted: null, or with `create` true a new default
    /// value in a further entry. Only creating allocates.
    /// The pointer is good while the entry lives, and changes made through it are the bag's.
    template <class T> T* GetValuePointer(std::wstring_view name, bool create);

    /// Stores a value in the first entry of `name` that has this class, whatever stands in front of it, or in
    /// a new one. The property's flags start afresh. Gives the name and the property.
    template <class T>
    std::pair<std::wstring, IPersistentProperty*> SetValue(std::wstring_view name, T const& value);

    /// The value of the first entry of `name`, or `fallback` when it is missing, of another class or deleted.
    /// Nothing is created and no mark cleared; what is given is a copy.
    template <class T> T GetValueOr(std::wstring_view name, T fallback) const;

    /// Whether the first entry of `name` has this class and isn't deleted.
    /// A look only: nothing is created and no mark cleared.
    template <class T> bool HasValue(std::wstring_view name) const;

    /// Adds a default value in a new entry behind all of that name. With `keepExisting` false the first entry
    /// of the name is ended before, whatever its class.
    /// The bag owns what is given, which is good while its entry lives.
    template <class T> PersistentProperty<T>* CreateValue(std::wstring_view name, bool keepExisting);

private:
    friend struct Zantrel::BagInside;

    /// Makes names for what a host adds, where the bag stands in a tree that shares them; otherwise null.
    virtual Zantrel::NameCopier* _SharedNames() const noexcept { return nullptr; }

    /// The first property of `name`, where it has this class and isn't deleted; otherwise null.
    template <class T> PersistentProperty<T>* FindLive(std::wstring_view name) const;
    template <class T> PersistentProperty<T>* Append(std::wstring_view name, T const& value);
    /// Owns the property, also when it throws.
    void AppendOwned(std::wstring_view name, IPersistentProperty* property);
    /// The same, and ends what was the first entry of the name: at last, when nothing can fail any more.
    void ReplaceFirst(std::wstring_view name, IPersistentProperty* property);

    std::uintptr_t m_entries = 0; ///< owned; what it means is the store's own affair
};

template <class T> PersistentProperty<T>* PersistentProperties::FindLive(std::wstring_view name) const {
    auto* property = PropertyCast<T>(FindProperty(name));
    return property != nullptr && !property->IsDeleted() ? property : nullptr;
}

template <class T>
PersistentProperty<T>* PersistentProperties::Append(std::wstring_view name, T const& value) {
    // A copy of the value before anything in the bag changes: it may stand in the bag.
    auto* property = new PersistentProperty<T>(value);
    AppendOwned(name, property);
    return property;
}

template <class T> T* PersistentProperties::GetValuePointer(std::wstring_view name, bool create) {
    auto* property = PropertyCast<T>(FindProperty(name));
    if (property == nullptr) {
        return create ? &Append<T>(name, T())->m_value : nullptr;
    }
    if (!create && property->IsDeleted()) {
        return nullptr;
    }
    // Who asks to create wants the value that is there, marked or not.
    property->SetDeleted(false);
    return &property->m_value;
}

template <class T>
std::pair<std::wstring, IPersistentProperty*> PersistentProperties::SetValue(std::wstring_view name,
                                                                             T const& value) {
    // First, for `name` may be a view into the value that is replaced.
    std::wstring ownName(name);
    for (Iterator at = Find(name); at != end() && (*at).name == name; ++at) {
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
