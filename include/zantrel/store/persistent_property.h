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
    virtual IPersistentProperty* Clone() const = 0;
    /// Whether `other` has the same class and an equal value. Flags don't count.
    virtual bool IsEqual(IPersistentProperty const* other) const = 0;
    /// Takes value and deleted mark of `other`; nothing happens when it is null or of another class.
    virtual void Assign(IPersistentProperty const* other) = 0;

    /// The deleted mark, false at first. A marked property counts as absent to all lookups that don't ask to
    /// create, and isn't written to files; what creates takes the mark away and leaves the value.
    virtual bool IsDeleted() const = 0;
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
    virtual bool WriteValue(KelSAX::ISAXWriter& writer) const = 0;
    /// Takes the value from the element now being handled. False, and the value is as it was, when it doesn't
    /// parse.
    virtual bool HandleValue(KelSAX::ISAXReader& reader) = 0;
    /// The type name, the word by which IPersistentPropertyCreator makes such a property.
    virtual std::wstring GetType() const = 0;
    /// The value, where it is a bag or a sequence of bags; otherwise null. Owned by the property.
    virtual IPersistentPropertyPolymorphicValue const* GetPolymorphicValue() const = 0;
    virtual IPersistentPropertyPolymorphicValue* GetPolymorphicValue() = 0;
};

/// The binary side of a property.
class ZANTREL_EXPORT IPersistentPropertyUndo {
public:
    IPersistentPropertyUndo() = default;
    IPersistentPropertyUndo(IPersistentPropertyUndo const&) = default;
    IPersistentPropertyUndo& operator=(IPersistentPropertyUndo const&) = default;
    virtual ~IPersistentPropertyUndo();

    /// Appends the binary form of the value, without flags and name. Throws std::runtime_error for bags
    /// nested deeper than 1,024 levels and for a bag with a property of a host's own class, which have none.
    virtual void Write(MFile& file) const = 0;
    /// Throws std::runtime_error when the file's bytes are no such value; the value is then as it was.
    virtual void Read(MFile& file) = 0;
};

/// A typed property. `T` is std::int32_t, double, bool, std::wstring, KelAM::FileContent,
/// PersistentProperties, KelAM::SubProperties, IndexedProperties<PersistentProperties> or
/// KelAM::ExternalProperties. A host may use a class of its own for which it specialises the functions of
/// property_values.h.
template <class T> class PersistentProperty : public IPersistentProperty, public IPersistentPropertyUndo {
    static_assert(
        !std::is_same_v<T, long> && !std::is_same_v<T, unsigned long>,
        "integer properties hold std::int32_t, the same on every platform: use std::int32_t, not long");

public:
    /// The default value: 0, 0.0, false, an empty text, file, bag or sequence.
    PersistentProperty() = default;
    explicit PersistentProperty(T const& value);
    PersistentProperty(PersistentProperty const&) = default;
    PersistentProperty(PersistentProperty&&) = default;
    /// Takes value and flags. `other` may stand within the value that it replaces.
    PersistentProperty& operator=(PersistentProperty const& other);
    PersistentProperty& operator=(PersistentProperty&& other);

    IPersistentProperty* Clone() const override;
    bool IsEqual(IPersistentProperty const* other) const override;
    void Assign(IPersistentProperty const* other) override;

    bool IsDeleted() const override;
    void SetDeleted(bool deleted) override;
    bool GetFirstAuxFlag() const override;
    void SetFirstAuxFlag(bool value) override;
    bool GetSecondAuxFlag() const override;
    void SetSecondAuxFlag(bool value) override;
    bool GetFirstOverride() const override;
    bool HasFirstOverride() const override;
    void SetFirstOverride(bool value) override;
    bool GetSecondOverride() const override;
    bool HasSecondOverride() const override;
    void SetSecondOverride(bool value) override;

    bool WriteValue(KelSAX::ISAXWriter& writer) const override;
    bool HandleValue(KelSAX::ISAXReader& reader) override;
    std::wstring GetType() const override;
    IPersistentPropertyPolymorphicValue const* GetPolymorphicValue() const override;
    IPersistentPropertyPolymorphicValue* GetPolymorphicValue() override;

    void Write(MFile& file) const override;
    void Read(MFile& file) override;

    T m_value{}; ///< read and written in place; a bag's lookups give pointers to it
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
template <class T> PersistentProperty<T>* PropertyCast(IPersistentProperty* property) {
    if (property == nullptr) {
        return nullptr;
    }
    if (&typeid(*property) == &typeid(PersistentProperty<T>)) { // spares nearly every lookup the dynamic_cast
        return static_cast<PersistentProperty<T>*>(property);
    }
    return dynamic_cast<PersistentProperty<T>*>(property);
}

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

extern template class ZANTREL_EXPORT PersistentProperty<std::int32_t>;
extern template class ZANTREL_EXPORT PersistentProperty<double>;
extern template class ZANTREL_EXPORT PersistentProperty<bool>;
extern template class ZANTREL_EXPORT PersistentProperty<std::wstring>;
