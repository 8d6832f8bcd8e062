// SPDX-License-Identifier: Apache-2.0
#include "store/entry_table.h"

#include <algorithm>
#include <memory>

namespace Zantrel {

namespace {

/// Ends a property that no table took over.
class PropertyGuard {
public:
    explicit PropertyGuard(PropertyHandle property) : m_property(property) {}
    PropertyGuard(PropertyGuard const&) = delete;
    PropertyGuard& operator=(PropertyGuard const&) = delete;
    ~PropertyGuard() {
        if (m_armed) {
            m_property.End();
        }
    }
    PropertyHandle Release() noexcept {
        m_armed = false;
        return m_property;
    }

private:
    PropertyHandle m_property;
    bool m_armed = true;
};

// Most bags that are no leaves have a few entries, and a block grows by doubling.
constexpr std::size_t FirstCapacity = 2;

} // namespace

// Reading

std::size_t EntryReader::Size() const noexcept {
    return VisitForm(m_word, [](auto form) { return form.Size(); });
}

EntryPlace EntryReader::First() const noexcept {
    return VisitForm(m_word, [](auto form) { return form.First(); });
}

EntryPlace EntryReader::Next(EntryPlace place) const noexcept {
    return VisitForm(m_word, [place](auto form) { return form.Next(place); });
}

EntryPlace EntryReader::Find(std::wstring_view name) const noexcept {
    return VisitForm(m_word, [name](auto form) { return form.Find(name); });
}

bool EntryReader::EndsBefore(std::wstring_view name) const noexcept {
    return VisitForm(m_word,
                     ByForm{[name](TreeForm form) { return form.Size() != 0 && form.tree->EndsBefore(name); },
                            [](auto) { return false; }});
}

EntryPlace EntryReader::FindBorrowed(std::wstring const& name) const noexcept {
    return VisitForm(m_word, [&name](auto form) { return form.FindBorrowed(name); });
}

NamedProperty EntryReader::At(EntryPlace place) const noexcept {
    return VisitForm(m_word, [place](auto form) { return form.At(place); });
}

EntryName EntryReader::NameAt(EntryPlace place) const noexcept {
    return VisitForm(m_word, [place](auto form) { return form.NameAt(place); });
}

IPersistentProperty* EntryReader::Sole() const noexcept {
    return VisitForm(m_word, ByForm{[](SingleForm form) { return form.property.Get(); },
                                    [](auto) -> IPersistentProperty* { return nullptr; }});
}

// Changing. What may throw comes before the first change of the word, so that a table is never half of one
// form and half of another.

/// Moves the entries to a new block of this capacity. Not for a tree.
EntryBlock* EntryTable::Grow(std::size_t capacity, std::size_t bytes) {
    EntryBlock* const block =
        VisitForm(m_word, ByForm{[&](EmptyForm) { return EntryBlock::Make(capacity, bytes, 0); },
                                 [&](SingleForm form) {
                                     EntryBlock* const made = EntryBlock::Make(capacity, bytes, 0);
                                     made->Insert(EntryName::Borrow(Reserved().value), form.property);
                                     return made;
                                 },
                                 [&](ShapedForm form) {
                                     EntryBlock* const made = EntryBlock::Make(capacity, bytes, WordOf(form));
                                     for (EntryPlace at = form.First(); at != nullptr; at = form.Next(at)) {
                                         made->Insert(form.NameAt(at), form.HandleAt(at));
                                     }
                                     return made;
                                 },
                                 [&](BlockForm form) {
                                     EntryBlock* const old = form.block;
                                     // Properties that lie in the old block can't move: hosts hold pointers
                                     // to them. It is kept behind the new one, and only entries move.
                                     std::uintptr_t const kept = old->MustStay() ? m_word : 0;
                                     EntryBlock* const made = EntryBlock::Make(capacity, bytes, kept);
                                     std::uninitialized_move(old->begin(), old->end(), made->begin());
                                     std::destroy(old->begin(), old->end());
                                     made->size = old->size;
                                     if (kept == 0) {
                                         EntryBlock::FreeChain(m_word);
                                     }
                                     return made;
                                 },
                                 [](TreeForm) -> EntryBlock* { return nullptr; }});
    m_word = WordOf(BlockForm{block});
    return block;
}

RecordRoom EntryTable::Reserve(std::size_t count, std::size_t bytes) {
    std::size_t const needed = Reader().Size() + count;
    // A tree allocates each entry by itself, and so has no use for room.
    if (count == 0 || needed > BlockLimit || (m_word & TreeBit) != 0) {
        return {};
    }
    std::byte* const room = Grow(needed, bytes)->Room();
    return {room, room + bytes};
}

/// Of a block, shaped or not. The names are copied and not moved: while the tree is built, which may fail,
/// the block stays as it is.
EntryTree* EntryTable::TurnIntoTree() {
    auto tree = std::make_unique<EntryTree>();
    auto const insertAll = [&tree](auto form) {
        for (EntryPlace at = form.First(); at != nullptr; at = form.Next(at)) {
            tree->Insert(form.NameAt(at), form.HandleAt(at));
        }
    };
    VisitForm(m_word, ByForm{[&](ShapedForm form) {
                                 insertAll(form);
                                 tree->KeepOlder(m_word);
                             },
                             [&](BlockForm form) {
                                 insertAll(form);
                                 std::destroy(form.block->begin(), form.block->end());
                                 if (form.block->MustStay()) {
                                     tree->KeepOlder(m_word);
                                 } else {
                                     EntryBlock::FreeChain(m_word);
                                 }
                             },
                             [](auto) {}});
    m_word = WordOf(TreeForm{tree.get()});
    return tree.release();
}

/// So that single entries can come and go.
void EntryTable::LeaveShape() {
    if (std::size_t const size = Reader().Size(); size <= BlockLimit) {
        Grow(size, 0);
    } else {
        TurnIntoTree();
    }
}

void EntryTable::Insert(EntryName name, PropertyHandle property) {
    // Disarmed at last: until an entry has it, nobody else would end the property.
    PropertyGuard guard(property);
    VisitForm(
        m_word,
        ByForm{[&](EmptyForm) {
                   if (name.Borrows(Reserved().value)) {
                       m_word = WordOf(SingleForm{property});
                   } else {
                       Grow(FirstCapacity, 0)->Insert(std::move(name), property);
                   }
               },
               [&](SingleForm) { Grow(FirstCapacity, 0)->Insert(std::move(name), property); },
               [&](ShapedForm form) {
                   if (std::size_t const size = form.Size(); size < BlockLimit) {
                       Grow(size + 1, 0)->Insert(std::move(name), property);
                   } else {
                       TurnIntoTree()->Insert(std::move(name), property);
                   }
               },
               [&](BlockForm form) {
                   std::size_t const size = form.Size();
                   if (size == BlockLimit) {
                       TurnIntoTree()->Insert(std::move(name), property);
                   } else if (size == form.block->capacity) {
                       std::size_t const wanted = std::max(2 * size, FirstCapacity);
                       Grow(std::min(wanted, std::size_t(BlockLimit)), 0)->Insert(std::move(name), property);
                   } else {
                       form.block->Insert(std::move(name), property, m_before);
                   }
               },
               [&](TreeForm form) { form.tree->Insert(std::move(name), property); }});
    guard.Release();
}

bool EntryTable::RemoveFirst(std::wstring_view name) {
    if (Reader().Find(name) == nullptr) {
        return false;
    }
    if (IsShaped()) {
        LeaveShape();
    }
    // Sought once more: leaving the shape has moved the entries.
    EntryPlace const place = Reader().Find(name);
    // Taken out first: what ends may look at the bag.
    PropertyHandle property =
        VisitForm(m_word, ByForm{[&](SingleForm form) {
                                     m_word = 0;
                                     return form.property;
                                 },
                                 [&](BlockForm form) {
                                     auto const index =
                                         static_cast<Entry const*>(place) - form.block->begin();
                                     return form.block->Take(form.block->begin() + index);
                                 },
                                 [&](TreeForm form) { return form.tree->TakeFirst(name); },
                                 [](auto) { return PropertyHandle::Heap(nullptr); }}); // have none
    property.End();
    return true;
}

void EntryTable::RemoveWhere(EntryJudge const& drops) {
    if (IsShaped()) {
        LeaveShape();
    }
    auto const isDropped = [&drops](Entry const& entry) {
        return drops({entry.name.View(), entry.property.Get()});
    };
    VisitForm(m_word, ByForm{[&](SingleForm form) {
                                 if (drops(form.At(form.First()))) {
                                     m_word = 0;
                                     form.property.End();
                                 }
                             },
                             [&](BlockForm form) {
                                 for (Entry* at = form.block->begin(); at != form.block->end();) {
                                     if (isDropped(*at)) {
                                         form.block->Take(at).End();
                                     } else {
                                         ++at;
                                     }
                                 }
                             },
                             [&](TreeForm form) {
                                 form.tree->TakeWhere(isDropped,
                                                      [](PropertyHandle property) { property.End(); });
                             },
                             [](auto) {}});
}

bool EntryTable::IsShaped() const noexcept {
    return VisitForm(m_word, ByForm{[](ShapedForm) { return true; }, [](auto) { return false; }});
}

void EntryTable::SetName(EntryPlace place, EntryName name) noexcept {
    VisitForm(m_word, ByForm{[&](BlockForm) {
                                 const_cast<Entry*>(static_cast<Entry const*>(place))->name = std::move(name);
                             },
                             [&](TreeForm) {
                                 const_cast<TreeEntry*>(static_cast<TreeEntry const*>(place))->name =
                                     std::move(name); // the same text, so the order stays
                             },
                             [](auto) {}}); // "Value" is a literal for ever
}

} // namespace Zantrel
