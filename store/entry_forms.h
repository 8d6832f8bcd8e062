// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "store/entry_block.h"
#include "store/entry_tree.h"
#include "store/reserved_names.h"
#include "store/shaped_block.h"
#include "text/same_text.h"

#include <zantrel/store/persistent_properties.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string_view>

// What a bag holds is an ordered multi-map from name to owned property, equal names in the order of
// insertion. A job holds millions of bags, most with the one entry "Value" or a few entries, so a table is
// one word in one of five forms:
//
//   empty    0
//   single   the handle of one property whose name is "Value", as every leaf of a database has it;
//            bit 1 is set, bit 0 is the handle's own
//   shaped   the address of a ShapedBlock, whose entries are those that its shape names, as formatting makes
//            them; of the three bits only bit 0 is set
//   block    the address of an EntryBlock, whose entries are sorted and at most BlockLimit
//   tree     the address of an EntryTree, for more; bit 2 is set
//
// What holds in every form:
//
// - A property stays at its address until its entry is removed. A form that is outgrown hands over names and
//   handles, never properties; a block in which properties were placed is kept behind what follows it. A
//   shaped bag becomes a block or a tree when an entry comes that its shape doesn't know, or one goes.
// - A place is the address that an entry has in its form, so that an iterator is one address, too. Places are
//   good until an entry is added or removed.
// - What is placed in a block may belong to the block's own entries or to a bag that is one of them: the
//   value of a leaf is placed with the leaf's bag. So all that hangs below a block ends before the block is
//   freed. Blocks with placed properties are kept until the table ends, also when the properties don't.
// - A name is borrowed from a text that outlives the whole tree of bags, or counted within that tree. From
//   one tree to another names pass as copies only.
//
// VisitForm alone tells the forms apart. All have the same operations; the rest is written once, on top of
// these (entry_table.cpp, ending.cpp).

namespace Zantrel {

/// The address of an entry in its table, null behind the last one.
using EntryPlace = void const*;

/// Whether an entry is to go.
using EntryJudge = std::function<bool(NamedProperty const&)>;

/// Gives no place, and so gets none either.
struct EmptyForm {
    static std::size_t Size() noexcept { return 0; }
    static EntryPlace First() noexcept { return nullptr; }
    static EntryPlace Next(EntryPlace) noexcept { return nullptr; }
    static EntryPlace Find(std::wstring_view) noexcept { return nullptr; }
    static EntryPlace FindBorrowed(std::wstring const&) noexcept { return nullptr; }
    static EntryName NameAt(EntryPlace) noexcept { return EntryName::Borrow(Reserved().value); }
    static NamedProperty At(EntryPlace) noexcept { return {}; }
};

/// Its place is the address of the property, for there is no entry.
struct SingleForm {
    PropertyHandle property;

    static std::size_t Size() noexcept { return 1; }
    EntryPlace First() const noexcept { return property.Get(); }
    static EntryPlace Next(EntryPlace) noexcept { return nullptr; }
    EntryPlace Find(std::wstring_view name) const noexcept {
        return name == Reserved().value ? First() : nullptr;
    }
    EntryPlace FindBorrowed(std::wstring const& name) const noexcept {
        return &name == &Reserved().value ? First() : Find(name);
    }
    static EntryName NameAt(EntryPlace) noexcept { return EntryName::Borrow(Reserved().value); }
    NamedProperty At(EntryPlace) const noexcept { return {Reserved().value, property.Get()}; }
};

/// Its place is the address of the name in the shape.
struct ShapedForm {
    ShapedBlock* block;

    std::size_t Size() const noexcept { return block->shape->Size() - block->CountAbsent(); }
    EntryPlace First() const noexcept { return From(0); }
    EntryPlace Next(EntryPlace place) const noexcept { return From(SlotAt(place) + 1); }
    EntryPlace Find(std::wstring_view name) const noexcept { return Present(block->shape->Find(name), name); }
    EntryPlace FindBorrowed(std::wstring const& name) const noexcept {
        return Present(block->shape->FindBorrowed(name), name);
    }
    static EntryName NameAt(EntryPlace place) noexcept { return *static_cast<EntryName const*>(place); }
    NamedProperty At(EntryPlace place) const noexcept {
        return {static_cast<EntryName const*>(place)->View(), block->At(SlotAt(place))};
    }
    PropertyHandle HandleAt(EntryPlace place) const noexcept {
        return PropertyHandle::Placed(block->At(SlotAt(place)));
    }
    std::size_t SlotAt(EntryPlace place) const noexcept {
        return static_cast<std::size_t>(static_cast<EntryName const*>(place) - block->shape->Names());
    }

private:
    EntryPlace From(std::size_t slot) const noexcept {
        while (slot < block->made && !block->Has(slot)) {
            ++slot;
        }
        return slot < block->made ? block->shape->Names() + slot : nullptr;
    }
    /// The first of this name that is there, from its first slot on.
    EntryPlace Present(std::size_t slot, std::wstring_view name) const noexcept {
        EntryPlace const place = From(slot);
        bool const isFirst = place == nullptr || SlotAt(place) == slot;
        return isFirst || static_cast<EntryName const*>(place)->View() == name ? place : nullptr;
    }
};

/// Searched from the front: there are BlockLimit entries at most.
struct BlockForm {
    EntryBlock* block;

    std::size_t Size() const noexcept { return block->size; }
    EntryPlace First() const noexcept { return PlaceOf(block->begin()); }
    EntryPlace Next(EntryPlace place) const noexcept { return PlaceOf(static_cast<Entry const*>(place) + 1); }
    EntryPlace Find(std::wstring_view name) const noexcept {
        return PlaceOf(std::find_if(block->begin(), block->end(), [name](Entry const& entry) {
            return Text::IsSame(entry.name.View(), name);
        }));
    }
    EntryPlace FindBorrowed(std::wstring const& name) const noexcept {
        for (Entry *at = block->begin(), *end = block->end(); at != end; ++at) {
            if (at->name.Borrows(name)) {
                bool const isFirst = at == block->begin() || (at - 1)->name.View() != name;
                return isFirst ? at : Find(name); // an entry in front may own the same name
            }
        }
        return Find(name);
    }
    static EntryName NameAt(EntryPlace place) noexcept { return static_cast<Entry const*>(place)->name; }
    static PropertyHandle HandleAt(EntryPlace place) noexcept {
        return static_cast<Entry const*>(place)->property;
    }
    static NamedProperty At(EntryPlace place) noexcept {
        auto const* entry = static_cast<Entry const*>(place);
        return {entry->name.View(), entry->property.Get()};
    }

private:
    EntryPlace PlaceOf(Entry const* entry) const noexcept { return entry != block->end() ? entry : nullptr; }
};

/// Searched by text alone: what a name borrows says nothing of its place in the order.
struct TreeForm {
    EntryTree* tree;

    std::size_t Size() const noexcept { return tree->Size(); }
    EntryPlace First() const noexcept { return tree->First(); }
    static EntryPlace Next(EntryPlace place) noexcept { return static_cast<TreeEntry const*>(place)->next; }
    EntryPlace Find(std::wstring_view name) const noexcept { return tree->Find(name); }
    EntryPlace FindBorrowed(std::wstring const& name) const noexcept { return Find(name); }
    static EntryName NameAt(EntryPlace place) noexcept { return static_cast<TreeEntry const*>(place)->name; }
    static NamedProperty At(EntryPlace place) noexcept {
        auto const* entry = static_cast<TreeEntry const*>(place);
        return {entry->name.View(), entry->property.Get()};
    }
};

/// Bit 0 of a single one is its handle's own (PropertyHandle).
inline constexpr std::uintptr_t ShapedBit = 1;
inline constexpr std::uintptr_t SingleBit = 2;
inline constexpr std::uintptr_t TreeBit = 4;
static_assert(__STDCPP_DEFAULT_NEW_ALIGNMENT__ >= 8,
              "a table tells its forms by the three low bits of an address");

/// The word by which VisitForm finds the form again.
inline std::uintptr_t WordOf(EmptyForm) noexcept { return 0; }
inline std::uintptr_t WordOf(SingleForm form) noexcept { return form.property.Word() | SingleBit; }
inline std::uintptr_t WordOf(ShapedForm form) noexcept {
    return reinterpret_cast<std::uintptr_t>(form.block) | ShapedBit;
}
inline std::uintptr_t WordOf(BlockForm form) noexcept { return reinterpret_cast<std::uintptr_t>(form.block); }
inline std::uintptr_t WordOf(TreeForm form) noexcept {
    return reinterpret_cast<std::uintptr_t>(form.tree) | TreeBit;
}

/// Calls `visit` with the form that the word is in.
template <class Visitor> decltype(auto) VisitForm(std::uintptr_t word, Visitor&& visit) {
    if ((word & SingleBit) != 0) {
        return visit(SingleForm{PropertyHandle::FromWord(word & ~SingleBit)});
    }
    if ((word & TreeBit) != 0) {
        return visit(TreeForm{reinterpret_cast<EntryTree*>(word & ~TreeBit)});
    }
    if ((word & ShapedBit) != 0) {
        return visit(ShapedForm{reinterpret_cast<ShapedBlock*>(word & ~ShapedBit)});
    }
    return word != 0 ? visit(BlockForm{reinterpret_cast<EntryBlock*>(word)}) : visit(EmptyForm{});
}

/// Calls that one of several lambdas which takes the form.
/// A form that no lambda takes doesn't compile, so none can be forgotten.
template <class... Cases> struct ByForm : Cases... { using Cases::operator()...; };
template <class... Cases> ByForm(Cases...) -> ByForm<Cases...>;

} // namespace Zantrel
