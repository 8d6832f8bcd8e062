// SPDX-License-Identifier: Apache-2.0
#include "store/entry_forms.h"

#include <algorithm>
#include <memory>

namespace Zantrel {

// One allocation: header, the older block's address where there is one, places, room. All are multiples of
// eight bytes, and so is what is placed.
EntryBlock* EntryBlock::Make(std::size_t capacity, std::size_t bytes, std::uintptr_t older) {
    std::size_t const front = older != 0 ? OlderSize : 0;
    auto* memory = static_cast<std::byte*>(
        ::operator new(sizeof(EntryBlock) + front + capacity * sizeof(Entry) + bytes));
    auto* block = ::new (memory) EntryBlock;
    block->capacity = static_cast<std::uint32_t>(capacity) & CapacityMask;
    block->holdsProperties = bytes != 0;
    block->hasOlder = older != 0;
    if (older != 0) {
        ::new (block + 1) std::uintptr_t(older);
    }
    return block;
}

void EntryBlock::FreeChain(std::uintptr_t word) noexcept {
    while (word != 0) {
        std::uintptr_t older = 0;
        VisitForm(word, ByForm{[](ShapedForm form) { ShapedBlock::Free(form.block); },
                               [&older](BlockForm form) {
                                   older = form.block->Older();
                                   ::operator delete(form.block);
                               },
                               [](auto) {}});
        word = older;
    }
}

void EntryBlock::Insert(EntryName name, PropertyHandle property, EntryName const* before) noexcept {
    // From the end, since what is formatted and read comes in the layout's order, which is often the names'.
    Entry* at = end();
    // Whoever adds entries in order says behind which, and spares the comparison of texts.
    bool const isLast = before != nullptr && size != 0 && (at - 1)->name.IsSame(*before);
    while (!isLast && at != begin() && EntryNameLess()(name.View(), (at - 1)->name.View())) {
        --at;
    }
    ::new (end()) Entry{std::move(name), property};
    ++size;
    std::rotate(at, end() - 1, end());
}

// Handles and names move down; properties stay where they are.
PropertyHandle EntryBlock::Take(Entry* at) noexcept {
    PropertyHandle const property = at->property;
    std::move(at + 1, end(), at);
    std::destroy_at(end() - 1);
    --size;
    return property;
}

} // namespace Zantrel
