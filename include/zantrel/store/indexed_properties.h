// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>
#include <zantrel/store/persistent_properties.h>

#include <cstdint>
#include <memory>
#include <vector>

template <class Bag> class IndexedProperties;

/// An ordered sequence of bags. A reference to a bag stays good while the sequence grows, until Clear, an
/// assignment or Read. Belongs to one thread at a time.
template <> class ZANTREL_EXPORT IndexedProperties<PersistentProperties> : public IMergeablePropertyValue {
public:
    IndexedProperties() noexcept = default;
    /// Copies deeply.
    IndexedProperties(IndexedProperties const& other);
    IndexedProperties& operator=(IndexedProperties const& other);
    ~IndexedProperties() override;

    bool operator==(IndexedProperties const& other) const;
    bool operator!=(IndexedProperties const& other) const { return !(*this == other); }

    /// With `overwrite` true the sequence is replaced as a whole; with false only where it is empty. Nothing
    /// when `other` is no sequence of bags.
    void Merge(IMergeablePropertyValue const& other, bool overwrite) override;

    /// Appends an empty bag.
    PersistentProperties& AddProperty();
    /// The bag at `index`, counted from 0. Throws std::out_of_range when there is none.
    PersistentProperties& GetProperty(std::int32_t index);
    PersistentProperties const& GetProperty(std::int32_t index) const;
    unsigned long long GetNumProperties() const { return m_size; }
    void Clear() noexcept;
    /// The bags go on sharing the names of the tree that they leave, so from then on both trees belong to one
    /// thread.
    void Swap(IndexedProperties& other) noexcept;

    /// The binary form. Read replaces the content; it throws std::runtime_error on bytes that are no such
    /// form, and the sequence is then as it was.
    void Read(MFile& file);
    void Write(MFile& file) const;

    /// Copies a sequence of a database of the same layout, whose nodes the names go on naming.
    void _CopyFrom(IndexedProperties const& source, Zantrel::NameCopier& names);

private:
    PersistentProperties& At(std::size_t index) const;

    /// Pieces that are never moved: 2, 2, 4, 8 ... bags, from a certain size on all alike.
    std::vector<std::unique_ptr<PersistentProperties[]>> m_pieces;
    std::size_t m_size = 0;
};

extern template class ZANTREL_EXPORT PersistentProperty<IndexedProperties<PersistentProperties>>;
