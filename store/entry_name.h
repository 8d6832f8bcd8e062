// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "store/prefetch.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace Zantrel {

/// The name of a bag's entry. Names repeat endlessly, so this is one word: the address of a text that
/// outlives every bag that names it (a literal of the library, the name of a node of a layout that outlives
/// its databases), or of a counted text. The count isn't atomic: the entries of one tree share a text, two
/// trees never do, and a tree belongs to one thread at a time.
class EntryName {
public:
    /// `text` must outlive every entry of this name and keep its content.
    static EntryName Borrow(std::wstring const& text) noexcept;
    /// A text of its own, or the library's own literal of the same text. Throws std::bad_alloc.
    static EntryName Own(std::wstring_view text);

    /// Shares the text, so within one tree only. From tree to tree names go through a NameCopier.
    EntryName(EntryName const& other) noexcept : m_word(other.m_word) {
        if (IsCounted()) {
            Share();
        }
    }
    /// What was moved from names nothing: it may end or be assigned to.
    EntryName(EntryName&& other) noexcept : m_word(std::exchange(other.m_word, 0)) {}
    EntryName& operator=(EntryName other) noexcept {
        std::swap(m_word, other.m_word);
        return *this;
    }
    ~EntryName() {
        if (IsCounted()) {
            Release();
        }
    }

    /// Good while the text lives: a counted one as long as any entry bears it.
    std::wstring_view View() const noexcept { return Text(); }
    /// Says that the text is soon read, which then waits less for memory.
    void Announce() const noexcept { Prefetch(reinterpret_cast<void const*>(m_word)); }
    /// Whether this is the very text that `text` names, told without looking at it.
    bool Borrows(std::wstring const& text) const noexcept {
        return m_word == reinterpret_cast<std::uintptr_t>(&text);
    }
    /// Whether both name one text, told without looking at it; two texts may be equal all the same.
    bool IsSame(EntryName const& other) const noexcept { return m_word == other.m_word; }
    /// Whether the text goes with the last entry that bears it; otherwise it was borrowed.
    bool IsCounted() const noexcept { return (m_word & CountedBit) != 0; }

private:
    /// Free, as texts stand at even addresses.
    static constexpr std::uintptr_t CountedBit = 1;

    /// A text that the entries of one tree share.
    struct CountedText;

    explicit EntryName(std::uintptr_t word) noexcept : m_word(word) {}
    std::wstring const& Text() const noexcept {
        return *reinterpret_cast<std::wstring const*>(m_word & ~CountedBit);
    }
    CountedText& Counted() const noexcept;
    void Share() const noexcept;
    void Release() noexcept;

    std::uintptr_t m_word;
};

/// The strict order of names: by UTF-16 code unit, a prefix first. Never allocates.
struct EntryNameLess {
    bool operator()(std::wstring_view left, std::wstring_view right) const noexcept;
};

} // namespace Zantrel
