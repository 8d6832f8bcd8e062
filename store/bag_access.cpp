// SPDX-License-Identifier: Apache-2.0
#include "store/bag_access.h"

#include "store/copying.h"

#include <algorithm>
#include <typeinfo>

namespace Zantrel::BagAccess {

IPersistentProperty* Find(PersistentProperties const& bag, std::wstring const& name) noexcept {
    EntryReader const reader = BagInside::Reader(bag);
    return reader.PropertyAt(reader.FindBorrowed(name));
}

// In a block of entries the properties are looked at and not the names, which lie elsewhere, each by itself:
// a profile list has as many as profiles, and no flag.
PersistentProperty<bool> const* FindFlag(PersistentProperties const& bag, std::wstring const& name) noexcept {
    ShapedBlock const* const block = BagInside::Shaped(bag);
    if (block == nullptr) {
        return BagInside::IsFew(bag) && HoldsBagsOnly(bag) ? nullptr : PropertyCast<bool>(Find(bag, name));
    }
    for (std::size_t const slot : block->shape->FlagSlots()) {
        if (block->Has(slot) && block->shape->NameAt(slot).Borrows(name)) {
            return &block->FlagAt(slot);
        }
    }
    return nullptr;
}

IPersistentProperty* FindSole(PersistentProperties const& bag) noexcept {
    return BagInside::Reader(bag).Sole();
}

// A node may have a child of a flag's name, so a shape may have both: the flag that is still missing gets its
// own place. One that is there is found as in any bag.
void SetFlag(PersistentProperties& bag, std::wstring const& name, bool value) {
    if (ShapedBlock* const block = BagInside::Shaped(bag)) {
        BagShape const& shape = *block->shape;
        for (std::size_t slot = shape.Find(name); slot < shape.Size(); ++slot) {
            if (shape.NameAt(slot).View() != name) {
                break;
            }
            if (shape.At(slot).flagBit != 0 && !block->Has(slot)) {
                block->SetFlag(slot, value);
                return;
            }
        }
    }
    bag.SetValue<bool>(name, value);
}

void Format(PersistentProperties& bag, BagShape const& shape) {
    BagInside::SetWord(bag, WordOf(ShapedForm{ShapedBlock::Make(shape)}));
}

// Null sends the caller the long way, by names: the bag may have another shape, or have been pulled apart by
// a host, and then the slot says nothing about it.
IPersistentProperty* PlainValueAt(PersistentProperties const& bag, BagShape const& shape,
                                  std::size_t slot) noexcept {
    ShapedBlock const* const block = BagInside::Shaped(bag);
    if (block == nullptr || block->shape != &shape || block->BagAt(slot).m_deleted) {
        return nullptr;
    }
    IPersistentProperty* const value = block->PlainValueAt(slot);
    return value != nullptr && !value->IsDeleted() ? value : nullptr;
}

bool HoldsBagsOnly(PersistentProperties const& bag) noexcept {
    if (ShapedBlock const* const block = BagInside::Shaped(bag)) {
        return block->flags == 0;
    }
    return std::all_of(bag.begin(), bag.end(), [](NamedProperty const& entry) {
        return &typeid(*entry.property) == &typeid(PersistentProperty<PersistentProperties>);
    });
}

void RemoveWhere(PersistentProperties& bag, EntryJudge const& drops) {
    BagInside::Table(bag).RemoveWhere(drops);
}

void Swap(PersistentProperties& left, PersistentProperties& right) noexcept { BagInside::Swap(left, right); }

void AssignWithinLayout(PersistentProperties& target, PersistentProperties const& source) {
    if (&target != &source) {
        // A copy first and then a swap: the source may lie in what is replaced, and memory may run out.
        NameCopier names(NameCopier::Borrowed::Keep);
        PersistentProperties copy;
        CopyEntries(copy, source, names);
        Swap(target, copy);
    }
}

void Assign(KelAM::ExternalProperties& target, KelAM::ExternalProperties const& source, NameCopier& names) {
    Zantrel::Assign(target, source, names);
}

// An entry of the bag shares its name, borrowed or counted, since both are of one tree.
EntryName NameFrom(PersistentProperties const* bag, std::wstring const& name, NameCopier& names) {
    if (bag != nullptr) {
        EntryReader const reader = BagInside::Reader(*bag);
        if (EntryPlace const place = reader.FindBorrowed(name)) {
            return reader.NameAt(place);
        }
    }
    return names(EntryName::Borrow(name));
}

} // namespace Zantrel::BagAccess
