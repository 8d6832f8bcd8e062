// SPDX-License-Identifier: Apache-2.0
#include "store/entry_name.h"

#include "store/reserved_names.h"
#include "text/utf16_order.h"

namespace Zantrel {

// A wide text itself, so that to view a name nobody asks which of the two its word stands for.
struct EntryName::CountedText : std::wstring {
    using std::wstring::wstring;
    std::uint32_t count = 1;
};

EntryName EntryName::Borrow(std::wstring const& text) noexcept {
    return EntryName(reinterpret_cast<std::uintptr_t>(&text));
}

// The library's own words are literals that last as long as the program, so nobody needs a copy of them.
EntryName EntryName::Own(std::wstring_view text) {
    if (auto const* reserved = Reserved().Find(text)) {
        return Borrow(*reserved);
    }
    std::wstring const* counted = new CountedText(text);
    return EntryName(reinterpret_cast<std::uintptr_t>(counted) | CountedBit);
}

EntryName::CountedText& EntryName::Counted() const noexcept {
    return const_cast<CountedText&>(static_cast<CountedText const&>(Text()));
}

void EntryName::Share() const noexcept { ++Counted().count; }

void EntryName::Release() noexcept {
    if (--Counted().count == 0) {
        delete &Counted();
    }
}

bool EntryNameLess::operator()(std::wstring_view left, std::wstring_view right) const noexcept {
    int const order = Text::Compare(left, right);
    // Where wchar_t has 32 bits, a joined surrogate pair and its two halves are one text of UTF-16 but two
    // names.
    return order != 0 ? order < 0 : left < right;
}

} // namespace Zantrel
