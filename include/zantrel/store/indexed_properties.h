// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>
#include <zantrel/store/persistent_properties.h>

#include <cstdint>

template <class Bag> class IndexedProperties;

namespace Zantrel {
class SequenceContent;
}

/// An ordered sequence of bags, as a list of a database holds its items. A reference to a bag stays good
/// while the sequence grows, until Clear, an assignment or Read; MoveProperty and RemoveProperty change which
/// content it has. Belongs to one thread at a time.
template <> class ZANTREL_EXPORT IndexedProperties<PersistentProperties> : public IMergeablePropertyValue {
public:
    IndexedProperties() noexcept = default;
    /// Copy deeply. What stood here ends last: `other` may stand within one of the bags.
    IndexedProperties(IndexedProperties const& other);
    IndexedProperties& operator=(IndexedProperties const& other);
    ~IndexedProperties() override;

    /// Whether both have as many bags, each equal to the other's at its place.
    bool operator==(IndexedProperties const& other) const;
    bool operator!=(IndexedProperties const& other) const { return !(*this == other); }

    /// With `overwrite` true the sequence is replaced as a whole; with false only where it is empty. Nothing
    /// when `other` is no sequence of bags.
    void Merge(IMergeablePropertyValue const& other, bool overwrite) override;

    /// Appends an empty bag.
    /// On std::bad_alloc the sequence is as it was.
    PersistentProperties& AddProperty();
    /// The bag at `index`, counted from 0. Throws std::out_of_range when there is none.
    PersistentProperties& GetProperty(std::int32_t index);
    PersistentProperties const& GetProperty(std::int32_t index) const;
    /// How many bags there are. This and GetProperty take the same time however many.
    unsigned long long GetNumProperties() const noexcept;
    /// Takes the content of the bag at `from` to where it then stands at `to`; those between move up by one.
    /// Pointers to properties stay good, a reference to a bag means what then stands at its place. Copies
    /// nothing; takes time in the distance. Throws std::out_of_range when there is no such bag.
    void MoveProperty(std::int32_t from, std::int32_t to);
    /// Ends the content of the bag at `index`; those behind move up by one, as MoveProperty has it. Throws
    /// std::out_of_range when there is none.
    void RemoveProperty(std::int32_t index);
    /// Ends all bags.
    /// References to them are bad from here on.
    void Clear() noexcept;
    /// Exchanges the bags, which stay where they are. Where they had names of a layout or of the tree that
    /// they leave, they get names of their own; std::bad_alloc passes through before anything is exchanged.
    /// Nothing happens when one lies within the other. Pointers to properties stay good; iterators of the
    /// bags end.
    void Swap(IndexedProperties& other);

    /// The binary form. Read replaces the content; it throws std::runtime_error on bytes that are no such
    /// form, and the sequence is then as it was.
    void Read(MFile& file);
    void Write(MFile& file) const;

private:
    friend struct Zantrel::BagInside;

    Zantrel::SequenceContent* m_content = nullptr; ///< owned; null where there are no bags
};

extern template class ZANTREL_EXPORT PersistentProperty<IndexedProperties<PersistentProperties>>;
