// SPDX-License-Identifier: Apache-2.0
#include "store/ending.h"

#include "store/bag_inside.h"
#include "store/visit_property.h"

#include <memory>
#include <type_traits>
#include <variant>

// A host may nest bags as deep as memory lasts, so ending them takes neither stack nor memory in the depth.
//
// What ends is taken apart from its back: a table or sequence gives its last entry or bag, and of that the
// content is taken first, so that its destructor finds nothing below. If the content is a table or sequence
// itself, the outer one is laid aside until it is done. What was laid aside is a stack whose links stand
// where there is room by then: in a block's place of the entry just taken, in members of trees and sequences.
// So all below a block has ended when the block is freed, as the properties placed in it require.
//
// A property of a class of the host's own ends what it holds by its own destructor.

namespace Zantrel {

namespace {

/// What ends is named by one word: that of a table, or with both bits the address of a sequence's content.
constexpr std::uintptr_t SequenceBits = SingleBit | TreeBit;

std::uintptr_t WordOf(SequenceContent* content) noexcept {
    return content != nullptr ? reinterpret_cast<std::uintptr_t>(content) | SequenceBits : 0;
}

/// Visits tables by their forms, and sequences.
template <class Visitor> decltype(auto) VisitEnding(std::uintptr_t word, Visitor&& visit) {
    if ((word & SequenceBits) == SequenceBits) {
        return visit(reinterpret_cast<SequenceContent*>(word & ~SequenceBits));
    }
    return VisitForm(word, visit);
}

/// Leaves the value empty; the caller ends what is given. A plain value has none.
std::uintptr_t TakeContent(IPersistentProperty& property) noexcept {
    std::uintptr_t content = 0;
    VisitProperty(property, [&content]<class Class>(Class& typed) {
        using Value = decltype(typed.m_value);
        if constexpr (std::is_base_of_v<PersistentProperties, Value>) {
            content = BagInside::TakeWord(typed.m_value);
        } else if constexpr (std::is_same_v<Value, BagInside::Sequence>) {
            content = WordOf(BagInside::TakeContent(typed.m_value));
        }
    });
    return content;
}

/// Ends a property and gives the content that it had: a block, a tree, a sequence's bags, or 0. Bags in
/// single form, as of a leaf, are ended on the way, one in the other.
std::uintptr_t EndProperty(PropertyHandle property) noexcept {
    for (;;) {
        std::uintptr_t const content = TakeContent(*property.Get());
        property.End();
        if ((content & SequenceBits) != SingleBit) {
            return content;
        }
        property = PropertyHandle::FromWord(content & ~SingleBit);
    }
}

/// The value of a leaf whose bag holds nothing else. Its bag has nothing to end then.
void EndPlainValue(IPersistentProperty& value, BagShape::Model const& model) noexcept {
    std::visit(
        [&value]<class T>(T const&) {
            if constexpr (!std::is_trivially_destructible_v<T>) {
                std::destroy_at(static_cast<PersistentProperty<T>*>(&value));
            }
        },
        model);
}

/// Ends slots from the back, up to one that has content or to the first. Gives that content.
std::uintptr_t EndSlots(ShapedBlock& block) noexcept {
    while (block.made != 0) {
        std::size_t const slot = block.made - 1;
        BagShape::Slot const& shape = block.shape->At(slot);
        IPersistentProperty* const value = shape.flagBit == 0 ? block.PlainValueAt(slot) : nullptr;
        std::uintptr_t content = 0;
        if (value != nullptr) {
            EndPlainValue(*value, shape.model);
        } else if (block.Has(slot)) {
            content = EndProperty(PropertyHandle::Placed(block.At(slot)));
        }
        block.made = static_cast<std::uint32_t>(slot);
        if (content != 0) {
            return content;
        }
    }
    return 0;
}

/// Takes the last piece of `ending` and gives the content of that piece. Sets `ending` to 0 once it has none
/// left and is freed.
std::uintptr_t TakePiece(std::uintptr_t& ending) noexcept {
    return VisitEnding(ending, ByForm{[&](SingleForm form) {
                                          ending = 0;
                                          return EndProperty(form.property);
                                      },
                                      [&](ShapedForm form) -> std::uintptr_t {
                                          std::uintptr_t const content = EndSlots(*form.block);
                                          if (content == 0) {
                                              ShapedBlock::Free(form.block);
                                              ending = 0;
                                          }
                                          return content;
                                      },
                                      [&](BlockForm form) -> std::uintptr_t {
                                          if (form.Size() != 0) {
                                              return EndProperty(form.block->Take(form.block->end() - 1));
                                          }
                                          EntryBlock::FreeChain(ending);
                                          return ending = 0;
                                      },
                                      [&](TreeForm form) -> std::uintptr_t {
                                          if (form.Size() != 0) {
                                              return EndProperty(form.tree->TakeLast());
                                          }
                                          delete form.tree;
                                          return ending = 0;
                                      },
                                      [&](SequenceContent* content) -> std::uintptr_t {
                                          if (content->Size() != 0) {
                                              return BagInside::TakeWord(content->TakeLast());
                                          }
                                          SequenceContent::Free(content);
                                          return ending = 0;
                                      },
                                      [](EmptyForm) -> std::uintptr_t { return 0; }});
}

/// The place for the link of something that is laid aside; a block has just given an entry.
std::uintptr_t* LinkOf(std::uintptr_t word) noexcept {
    return VisitEnding(
        word, ByForm{[](ShapedForm form) {
                         // The place of the entry just taken.
                         return static_cast<std::uintptr_t*>(form.block->PlaceOf(form.block->made));
                     },
                     [](BlockForm form) { return reinterpret_cast<std::uintptr_t*>(form.block->end()); },
                     [](TreeForm form) { return &form.tree->m_pending; },
                     [](SequenceContent* content) { return &content->m_pending; },
                     [](auto) -> std::uintptr_t* { return nullptr; }}); // these end in one step
}

/// `ending` is what is being taken apart, `laidAside` the stack of those around it, innermost first. A
/// piece's content goes next; what holds that piece is laid aside unless the piece was its last step.
void EndAll(std::uintptr_t ending) noexcept {
    std::uintptr_t laidAside = 0;
    while (ending != 0) {
        std::uintptr_t const content = TakePiece(ending);
        if (content != 0) {
            if (ending != 0) {
                ::new (LinkOf(ending)) std::uintptr_t(laidAside);
                laidAside = ending;
            }
            ending = content;
        } else if (ending == 0 && laidAside != 0) {
            ending = laidAside;
            laidAside = *LinkOf(ending);
        }
    }
}

} // namespace

void EndEntries(std::uintptr_t word) noexcept { EndAll(word); }
void EndSequence(SequenceContent* content) noexcept { EndAll(WordOf(content)); }

} // namespace Zantrel
