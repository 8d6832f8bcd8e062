// SPDX-License-Identifier: Apache-2.0
#include "store/shaped_block.h"

#include "store/bag_inside.h"

#include <new>
#include <type_traits>
#include <variant>

namespace Zantrel {

ShapedBlock* ShapedBlock::MakeEmpty(BagShape const& shape) {
    return ::new (::operator new(shape.Bytes())) ShapedBlock{&shape};
}

ShapedBlock* ShapedBlock::Make(BagShape const& shape) {
    PersistentProperties ended; // with what is there when memory runs out
    ShapedBlock* const block = MakeEmpty(shape);
    BagInside::SetWord(ended, WordOf(ShapedForm{block}));
    while (block->made != shape.Size()) {
        BagShape::Slot const& slot = shape.At(block->made);
        if (slot.flagBit != 0) {
            block->PassFlag();
        } else {
            block->AddBag(slot.model);
        }
    }
    BagInside::TakeWord(ended);
    return block;
}

void ShapedBlock::Free(ShapedBlock* block) noexcept { ::operator delete(block); }

ShapedBlock::Bag& ShapedBlock::AddBag(BagShape::Model const& model) {
    auto* const bag = ::new (PlaceOf(made)) Bag;
    std::visit(
        [&]<class T>(T const& value) {
            if constexpr (!std::is_same_v<T, std::monostate>) {
                auto* const property = ::new (ValuePlaceOf(made)) PersistentProperty<T>(value);
                BagInside::SetWord(bag->m_value, WordOf(SingleForm{PropertyHandle::Placed(property)}));
            }
        },
        model);
    ++made; // only now: a value that can't be made leaves a bag that holds nothing and needs no end
    return *bag;
}

ShapedBlock::Bag& ShapedBlock::AddCopy(Bag const& source, IPersistentProperty const* value) {
    auto* const bag = ::new (PlaceOf(made)) Bag;
    bag->SetDeleted(source.m_deleted);
    std::visit(
        [&]<class T>(T const&) {
            if constexpr (!std::is_same_v<T, std::monostate>) {
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
