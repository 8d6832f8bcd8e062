// SPDX-License-Identifier: Apache-2.0
#include "xml/reference.h"

#include "xml/lexemes.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace Zantrel::Xml {

namespace {

struct Entity {
    std::string_view name;
    char32_t character;
};
constexpr Entity Entities[] = {{"lt", '<'}, {"gt", '>'}, {"amp", '&'}, {"apos", '\''}, {"quot", '"'}};

/// -1 where it is no digit.
int DigitValue(char byte, int base) noexcept {
    if (byte >= '0' && byte <= '9')
        return byte - '0';
    char const lower = ToLower(byte);
    return base == 16 && lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

// The value stays at what is too large for a character, however many digits follow. A fault of the number as
// a whole is told at its '&', but where the buffer ends it is told there, so that more is read before it is
// one.
char const* ScanNumber(char const* at, char32_t& character, Stop& stop) noexcept {
    constexpr char32_t tooLarge = 0x110000;
    int const base = at[2] == 'x' ? 16 : 10;
    char const* const begin = at + (base == 16 ? 3 : 2);
    char const* end = begin;
    character = 0;
    for (int digit = 0; (digit = DigitValue(*end, base)) >= 0; ++end)
        character = std::min<char32_t>(character * static_cast<char32_t>(base) + static_cast<char32_t>(digit),
                                       tooLarge);
    if (end == begin || *end != ';')
        return stop.At(Fault::MalformedNumber, *end == '\0' ? end : at);
    ++end;
    return IsXmlCharacter(character) ? end : stop.At(Fault::NoCharacter, at, {at, end});
}

} // namespace

char const* ScanReference(char const* at, char32_t& character, Stop& stop) noexcept {
    if (at[1] == '#')
        return ScanNumber(at, character, stop);
    char const* const begin = at + 1;
    char const* const end = SkipName(begin);
    if (end == begin || *end != ';')
        return stop.At(Fault::MalformedReference, *end == '\0' ? end : at);
    std::string_view const name(begin, end);
    auto const* const entity = std::find_if(std::begin(Entities), std::end(Entities),
                                            [name](Entity const& known) { return known.name == name; });
    if (entity == std::end(Entities))
        return stop.At(Fault::UndefinedEntity, at, name);
    character = entity->character;
    return end + 1;
}

} // namespace Zantrel::Xml
