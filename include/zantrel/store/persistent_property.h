// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>
#include <zantrel/store/property_values.h>

#include <cstdint>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <utility>

/// A property value that is more than a plain datum: a bag or a sequence of bags.
/// It says only that: callers find the class behind it by a dynamic_cast.
class ZANTREL_EXPORT IPersistentPropertyPolymorphicValue {
public:
    IPersistentPropertyPolymorphicValue() = default;
    IPersistentPropertyPolymorphicValue(IPersistentPropertyPolymorphicValue const&) = default;
    IPersistentPropertyPolymorphicValue& operator=(IPersistentPropertyPolymorphicValue const&) = default;
    virtual ~IPersistentPropertyPolymorphicValue();
};

/// A value that can take over the content of another one of its class.
class ZANTREL_EXPORT IMergeablePropertyValue : public IPersistentPropertyPolymorphicValue {
public:
    /// Takes over `other`. With `overwrite` false, what stands here already is kept. Nothing happens when
    /// `other` is of another class.
    /// `other` may be this value itself. Where memory runs out, std::bad_alloc passes through.
    virtual void Merge(IMergeablePropertyValue const& other, bool overwrite) = 0;
};

/// One property of a bag. A bag owns its properties and ends them through the virtual destructor. A property
/// belongs to one thread at a time, also for reading: lookups in the bag write the deleted mark.
///
/// A host may derive a class of its own, from here or from a PersistentProperty<T>. Bags hold it as any
/// other: they copy it by Clone, compare it by IsEqual, take it over by Assign and end it by its destructor.
/// Whatever bags such a class holds are then its own affair, their depth too.
///
/// The order of the functions is part of the binary interface.
class ZANTREL_EXPORT IPersistentProperty {
public:
    IPersistentProperty() = default;
    IPersistentProperty(IPersistentProperty const&) = default;
    IPersistentProperty& operator=(IPersistentProperty const&) = default;
    virtual ~IPersistentProperty();

    /// A new heap copy of value and deleted mark, owned by the caller; the other flags start afresh.
    /// Bags are copied deeply. Throws std::bad_alloc.
    virtual IPersistentProperty* Clone() const = 0;
    /// Whether `other` has the same class and an equal value. Flags don't count.
    /// False for null. Doesn't change either of the two.
    virtual bool IsEqual(IPersistentProperty const* other) const = 0;
    /// Takes value and deleted mark of `other`; nothing happens when it is null or of another class.
    /// `other` may be this property, or stand within its value. It must not be relied on afterwards in the
    /// latter case: it may have ended with what it replaced.
    virtual void Assign(IPersistentProperty const* other) = 0;

    /// The deleted mark, false at first. A marked property counts as absent to all lookups that don't ask to
    /// create, and isn't written to files; what creates takes the mark away and leaves the value.
    virtual bool IsDeleted() const = 0;
    /// Marking keeps the value and all pointers to it; only removing the entry ends them.
    virtual void SetDeleted(bool deleted) = 0;

    /// Two flags for the host, true at first. The library looks at neither. They aren't copied by Clone.
    virtual bool GetFirstAuxFlag() const = 0;
    virtual void SetFirstAuxFlag(bool value) = 0;
    virtual bool GetSecondAuxFlag() const = 0;
    virtual void SetSecondAuxFlag(bool value) = 0;

    /// Two further flags for the host that can also be absent, as they are at first: Has... tells whether one
    /// was ever set, and Get... is false until then. The library looks at neither. They aren't copied by
    /// Clone.
    virtual bool GetFirstOverride() const = 0;
    virtual bool HasFirstOverride() const = 0;
    virtual void SetFirstOverride(bool value) = 0;
    virtual bool GetSecondOverride() const = 0;
    virtual bool HasSecondOverride() const = 0;
    virtual void SetSecondOverride(bool value) = 0;

    /// Writes the value as content of the element now open. False when it can't be written.
    /// Name and type are attributes of that element, which the caller has written before. A fault of the
    /// document is the writer's to tell.
    virtual bool WriteValue(KelSAX::ISAXWriter& writer) const = 0;
    /// Takes the value from the element now being handled. False, and the value is as it was, when it doesn't
    /// parse.
    /// A file, a bag or a sequence pushes a handler instead and is filled as the children come, so the
    /// property must live until the element's end. To be called while HandleTag runs.
    virtual bool HandleValue(KelSAX::ISAXReader& reader) = 0;
    /// The type name, the word by which IPersistentPropertyCreator makes such a property.
    /// What a class of a host's own gives is written to documents in its place, and only a reader of the
    /// host's knows it.
    virtual std::wstring GetType() const = 0;
    /// The value, where it is a bag or a sequence of bags; otherwise null. Owned by the property.
    /// A file is none. The pointer is good while the property lives.
    virtual IPersistentPropertyPolymorphicValue const* GetPolymorphicValue() const = 0;
    virtual IPersistentPropertyPolymorphicValue* GetPolymorphicValue() = 0;
};

/// The binary side of a property.
/// A base beside IPersistentProperty: who has only a property finds it by a dynamic_cast. Belongs to one
/// thread at a time, as the property.
class ZANTREL_EXPORT IPersistentPropertyUndo {
public:
    IPersistentPropertyUndo() = default;
    IPersistentPropertyUndo(IPersistentPropertyUndo const&) = default;
    IPersistentPropertyUndo& operator=(IPersistentPropertyUndo const&) = default;
    virtual ~IPersistentPropertyUndo();

    /// Appends the binary form of the value, without flags and name. Throws std::runtime_error for bags
    /// nested deeper than 1,024 levels and for a bag with a property of a host's own class, which have none.
    /// When this throws, a part may have been appended.
    virtual void Write(MFile& file) const = 0;
    /// Throws std::runtime_error when the file's bytes are no such value; the value is then as it was.
    /// Takes from the file's position on, which then stands behind the value; when this throws, the position
    /// may stand anywhere in it.
    virtual void Read(MFile& file) = 0;
};

/// A typed property. `T` is std::int32_t, double, bool, std::wstring, KelAM::FileContent,
/// PersistentProperties, KelAM::SubProperties, IndexedProperties<PersistentProperties> or
/// KelAM::ExternalProperties. A host may use a class of its own for which it specialises the functions of
/// property_values.h.
/// The members are open: who knows `T` reads and writes them as they stand, and the functions serve those
/// who have only the interface. Nothing watches a change.
template <class T> class PersistentProperty : public IPersistentProperty, public IPersistentPropertyUndo {
    static_assert(
        !std::is_same_v<T, long> && !std::is_same_v<T, unsigned long>,
        "integer properties hold std::int32_t, the same on every platform: use std::int32_t, not long");

public:
    /// The default value: 0, 0.0, false, an empty text, file, bag or sequence.
    PersistentProperty() = default;
    /// Copies the value; the flags are those of a new property.
    explicit PersistentProperty(T const& value);
    /// With the value go all flags, also those that Clone leaves out.
    PersistentProperty(PersistentProperty const&) = default;
    PersistentProperty(PersistentProperty&&) = default;
    /// Takes value and flags. `other` may stand within the value that it replaces.
    PersistentProperty& operator=(PersistentProperty const& other);
    PersistentProperty& operator=(PersistentProperty&& other);

    /// By the copy constructor of `T`, and passes through what that throws.
    IPersistentProperty* Clone() const override;
    bool IsEqual(IPersistentProperty const* other) const override;
    void Assign(IPersistentProperty const* other) override;

    /// The mark and the flags, which are the members below.
    bool IsDeleted() const override;
    void SetDeleted(bool deleted) override;
    bool GetFirstAuxFlag() const override;
    void SetFirstAuxFlag(bool value) override;
    bool GetSecondAuxFlag() const override;
    void SetSecondAuxFlag(bool value) override;
    /// Setting one notes that it was given, which only an assignment of the whole property takes back.
    bool GetFirstOverride() const override;
    bool HasFirstOverride() const override;
    void SetFirstOverride(bool value) override;
    bool GetSecondOverride() const override;
    bool HasSecondOverride() const override;
    void SetSecondOverride(bool value) override;

    /// As text, and by its name, through the functions of property_values.h for `T`.
    bool WriteValue(KelSAX::ISAXWriter& writer) const override;
    bool HandleValue(KelSAX::ISAXReader& reader) override;
    std::wstring GetType() const override;
    /// The address of m_value, or null, told by `T` alone.
    IPersistentPropertyPolymorphicValue const* GetPolymorphicValue() const override;
    IPersistentPropertyPolymorphicValue* GetPolymorphicValue() override;

    /// A sequence of bags by its own functions, any other value by those of property_values.h.
    void Write(MFile& file) const override;
    void Read(MFile& file) override;

    T m_value{}; ///< read and written in place; a bag's lookups give pointers to it
    /// Changing m_value in place leaves it.
    bool m_deleted = false;
    bool m_firstAuxFlag = true;  ///< for the host
    bool m_secondAuxFlag = true; ///< for the host
    std::uint32_t m_overrides =
        0; ///< bit 0 and 2: the overrides' values; bit 1 and 3: set once one was given

private:
    template <class Other> PersistentProperty& Take(Other&& other) {
        // The flags are read before the value is assigned, with which `other` may end.
        bool const deleted = other.m_deleted;
        bool const firstAuxFlag = other.m_firstAuxFlag;
        bool const secondAuxFlag = other.m_secondAuxFlag;
        std::uint32_t const overrides = other.m_overrides;
        m_value = std::forward<Other>(other).m_value;
        m_deleted = deleted;
        m_firstAuxFlag = firstAuxFlag;
        m_secondAuxFlag = secondAuxFlag;
        m_overrides = overrides;
        return *this;
    }
};

/// The checked cast by which everything finds a property's class: null when `property` is null or of another
/// class.
/// A class that derives from PersistentProperty<T> counts as that. Takes and gives no ownership.
template <class T> PersistentProperty<T>* PropertyCast(IPersistentProperty* property) {
    if (property == nullptr) {
        return nullptr;
    }
    if (&typeid(*property) == &typeid(PersistentProperty<T>)) { // spares nearly every lookup the dynamic_cast
        return static_cast<PersistentProperty<T>*>(property);
    }
    return dynamic_cast<PersistentProperty<T>*>(property);
}

/// The same for one that must not change.
template <class T> PersistentProperty<T> const* PropertyCast(IPersistentProperty const* property) {
    return PropertyCast<T>(const_cast<IPersistentProperty*>(property));
}

// Outside the class, since a DLL exports nothing of a template that is defined inside.
template <class T> PersistentProperty<T>::PersistentProperty(T const& value) : m_value(value) {}

template <class T> PersistentProperty<T>& PersistentProperty<T>::operator=(PersistentProperty const& other) {
    return Take(other);
}

template <class T> PersistentProperty<T>& PersistentProperty<T>::operator=(PersistentProperty&& other) {
    return Take(std::move(other));
}

// The mark goes with the value; the flags are a host's word about this very property.
template <class T> IPersistentProperty* PersistentProperty<T>::Clone() const {
    auto* copy = new PersistentProperty(m_value);
    copy->m_deleted = m_deleted;
    return copy;
}

template <class T> bool PersistentProperty<T>::IsEqual(IPersistentProperty const* other) const {
    auto const* same = PropertyCast<T>(other);
    return same != nullptr && m_value == same->m_value;
}

template <class T> void PersistentProperty<T>::Assign(IPersistentProperty const* other) {
    auto const* same = PropertyCast<T>(other);
    if (same == nullptr) {
        return;
    }
    // `other` may stand in the value and end with what it replaces, so its mark is read first.
    bool const deleted = same->IsDeleted();
    if (same != this) {
        if constexpr (std::is_base_of_v<IMergeablePropertyValue, T>) {
            // What other entries a bag has stays: it is taken over, not replaced.
            m_value.Merge(same->m_value, true);
        } else {
            m_value = same->m_value;
        }
    }
    SetDeleted(deleted);
}

template <class T> bool PersistentProperty<T>::IsDeleted() const { return m_deleted; }
template <class T> void PersistentProperty<T>::SetDeleted(bool deleted) { m_deleted = deleted; }
template <class T> bool PersistentProperty<T>::GetFirstAuxFlag() const { return m_firstAuxFlag; }
template <class T> void PersistentProperty<T>::SetFirstAuxFlag(bool value) { m_firstAuxFlag = value; }
template <class T> bool PersistentProperty<T>::GetSecondAuxFlag() const { return m_secondAuxFlag; }
template <class T> void PersistentProperty<T>::SetSecondAuxFlag(bool value) { m_secondAuxFlag = value; }
// Two bits for each override: the lower one is its value, the upper one tells that it was ever given.
template <class T> bool PersistentProperty<T>::GetFirstOverride() const { return (m_overrides & 1u) != 0; }
template <class T> bool PersistentProperty<T>::HasFirstOverride() const { return (m_overrides & 2u) != 0; }
template <class T> void PersistentProperty<T>::SetFirstOverride(bool value) {
    m_overrides = (m_overrides & ~1u) | (value ? 3u : 2u);
}
template <class T> bool PersistentProperty<T>::GetSecondOverride() const { return (m_overrides & 4u) != 0; }
template <class T> bool PersistentProperty<T>::HasSecondOverride() const { return (m_overrides & 8u) != 0; }
template <class T> void PersistentProperty<T>::SetSecondOverride(bool value) {
    m_overrides = (m_overrides & ~4u) | (value ? 12u : 8u);
}
template <class T> bool PersistentProperty<T>::WriteValue(KelSAX::ISAXWriter& writer) const {
    return WriteValueOfProperty(m_value, writer);
}
template <class T> bool PersistentProperty<T>::HandleValue(KelSAX::ISAXReader& reader) {
    return HandleValueOfProperty(m_value, reader);
}
template <class T> std::wstring PersistentProperty<T>::GetType() const {
    return GetTypeOfProperty<T>(m_value);
}

template <class T>
IPersistentPropertyPolymorphicValue const* PersistentProperty<T>::GetPolymorphicValue() const {
    if constexpr (std::is_base_of_v<IPersistentPropertyPolymorphicValue, T>) {
        return &m_value;
    } else {
        return nullptr;
    }
}

template <class T> IPersistentPropertyPolymorphicValue* PersistentProperty<T>::GetPolymorphicValue() {
    return const_cast<IPersistentPropertyPolymorphicValue*>(std::as_const(*this).GetPolymorphicValue());
}

template <class T> void PersistentProperty<T>::Write(MFile& file) const {
    if constexpr (IsIndexedProperties<T>::value) {
        m_value.Write(file);
    } else {
        WriteValueOfProperty(m_value, file);
    }
}

template <class T> void PersistentProperty<T>::Read(MFile& file) {
    if constexpr (IsIndexedProperties<T>::value) {
        m_value.Read(file);
    } else {
        ReadValueOfProperty(m_value, file);
    }
}

// The library alone makes these classes, so that each has one type information for all modules of a program.
// The other ones are declared so behind the classes of their values.
extern template class ZANTREL_EXPORT PersistentProperty<std::int32_t>;
extern template class ZANTREL_EXPORT PersistentProperty<double>;
extern template class ZANTREL_EXPORT PersistentProperty<bool>;
extern template class ZANTREL_EXPORT PersistentProperty<std::wstring>;
