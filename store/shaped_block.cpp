// SPDX-License-Identifier: Apache-2.0
#include "store/shaped_block.h"

#include "store/bag_inside.h"

#include <new>
#include <type_traits>
#include <variant>

namespace Zantrel {

// One allocation with the room of all properties. They are made in it one by one, and `made` says at any time
// how many there are to end.
ShapedBlock* ShapedBlock::MakeEmpty(BagShape const& shape) {
    return ::new (::operator new(shape.Bytes())) ShapedBlock{&shape};
}

ShapedBlock* ShapedBlock::Make(BagShape const& shape) {
    PersistentProperties ended; // with what is there when memory runs out
    ShapedBlock* const block = MakeEmpty(shape);
    BagInside::SetWord(ended, WordOf(ShapedForm{block}));
    for (BagShape::Slot const& slot : shape.Slots()) {
        if (slot.flagBit != 0) {
            block->PassFlag();
        } else {
            block->AddBag(slot);
        }
    }
    BagInside::TakeWord(ended);
    return block;
}

void ShapedBlock::Free(ShapedBlock* block) noexcept { ::operator delete(block); }

void ShapedBlock::AddBag(BagShape::Slot const& slot) {
    auto* const place = reinterpret_cast<std::byte*>(this) + slot.place;
    auto* const bag = ::new (place) Bag;
    std::visit(
        [bag, place]<class T>(T const& value) {
            if constexpr (!std::is_same_v<T, std::monostate>) {
                auto* const property = ::new (place + ValueOffset) PersistentProperty<T>(value);
                BagInside::SetWord(bag->m_value, WordOf(SingleForm{PropertyHandle::Placed(property)}));
            }
        },
        slot.model);
    ++made; // only now: a value that can't be made leaves a bag that holds nothing and needs no end
}

ShapedBlock::Bag& ShapedBlock::AddCopy(Bag const& source, IPersistentProperty const* value) {
    auto* const bag = ::new (PlaceOf(made)) Bag;
    bag->SetDeleted(source.m_deleted);
    std::visit(
        [&]<class T>(T const&) {
            if constexpr (!std::is_same_v<T, std::monostate>) {
                // A value that lies in a block has the class of its slot's model: others lie elsewhere.
                if (auto const* typed = static_cast<PersistentProperty<T> const*>(value)) {
                    auto* const property = ::new (ValuePlaceOf(made)) PersistentProperty<T>(typed->m_value);
                    property->SetDeleted(typed->m_deleted);
                    BagInside::SetWord(bag->m_value, WordOf(SingleForm{PropertyHandle::Placed(property)}));
                }
            }
        },
        shape->At(made).model);
    ++made;
    return *bag;
}

} // namespace Zantrel
