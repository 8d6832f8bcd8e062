// SPDX-License-Identifier: Apache-2.0
#include "xml/start_tag.h"

#include "xml/reference.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace Zantrel::Xml {

char const* StartTag::Scan(char const* at, Stop& stop) {
    char const* const end = SkipName(at + 1);
    if (end == at + 1)
        return stop.At(Fault::NoTagName, *end == '\0' ? end : at);
    m_name = {at + 1, end};
    m_attributes.clear();
    m_isEmptyElement = false;
    return *end == '>' ? end + 1 : ScanAttributes(end, stop);
}

// Between two attributes white space must stand, in front of the end it may.
char const* StartTag::ScanAttributes(char const* at, Stop& stop) {
    m_normalised.clear();
    m_values.clear();
    while (at != nullptr) {
        char const* const begin = SkipSpace(at);
        if (*begin == '>' || *begin == '/') {
            m_isEmptyElement = *begin == '/';
            char const* const end = begin + m_isEmptyElement;
            if (*end != '>')
                return stop.At(Fault::NoTagEnd, end);
            PlaceNormalisedValues();
            return CheckNames(stop) ? end + 1 : nullptr;
        }
        if (begin == at)
            return stop.At(Fault::NoAttribute, at, m_name);
        at = ScanAttribute(begin, stop);
    }
    return nullptr;
}

// The value stands as a view of the document first, up to where it ends or first differs from what it says.
char const* StartTag::ScanAttribute(char const* at, Stop& stop) {
    char const* end = SkipName(at);
    std::string_view const name(at, end);
    if (name.empty())
        return stop.At(Fault::NoAttribute, at, m_name);
    end = SkipSpace(end);
    if (*end != '=')
        return stop.At(Fault::NoEqualsSign, end, name);
    end = SkipSpace(end + 1);
    char const quote = *end;
    if (quote != '"' && quote != '\'')
        return stop.At(Fault::NoQuote, end, name);

    char const* const value = end + 1;
    end = FindValueStop(value, quote);
    m_attributes.push_back({name, {value, end}});
    return *end == quote ? end + 1 : NormaliseValue(end, quote, stop);
}

/// Goes on at `at`, where the last attribute's value first differs from what it stands for.
char const* StartTag::NormaliseValue(char const* at, char quote, Stop& stop) {
    std::size_t const begin = m_values.size();
    m_values += m_attributes.back().value;
    while (*at != quote) {
        if (*at == '&') {
            char32_t character = 0;
            at = ScanReference(at, character, stop);
            if (at == nullptr)
                return nullptr;
            char bytes[4];
            m_values.append(bytes, Text::EncodeUtf8(character, bytes));
        } else if (IsSpace(*at)) {
            m_values += ' ';
            ++at;
        } else {
            return stop.At(Fault::LessThanInValue, at, m_attributes.back().name);
        }
        char const* const next = FindValueStop(at, quote);
        m_values.append(at, next);
        at = next;
    }
    m_normalised.push_back({m_attributes.size() - 1, begin, m_values.size() - begin});
    return at + 1;
}

/// Only at the end of the tag m_values has stopped moving.
void StartTag::PlaceNormalisedValues() noexcept {
    for (auto const& [attribute, begin, size] : m_normalised)
        m_attributes[attribute].value = {m_values.data() + begin, size};
}

// Comparing each with each is fastest for the few that most tags have; many are sorted, so that a tag with
// 100,000 attributes costs no more than n log n.
bool StartTag::CheckNames(Stop& stop) {
    constexpr std::size_t few = 16;
    if (m_attributes.size() > few)
        return CheckManyNames(stop);
    for (auto second = m_attributes.begin(); second != m_attributes.end(); ++second)
        for (auto first = m_attributes.begin(); first != second; ++first)
            if (first->name == second->name) {
                stop.At(Fault::AttributeTwice, second->name.data(), second->name);
                return false;
            }
    return true;
}

bool StartTag::CheckManyNames(Stop& stop) {
    m_sortedNames.clear();
    for (auto const& attribute : m_attributes)
        m_sortedNames.push_back(attribute.name);
    // Equal names stay in the order of the document.
    std::sort(m_sortedNames.begin(), m_sortedNames.end(), [](std::string_view a, std::string_view b) {
        if (a.size() != b.size())
            return a.size() < b.size();
        int const order = std::memcmp(a.data(), b.data(), a.size());
        return order != 0 ? order < 0 : a.data() < b.data();
    });
    auto const first = std::adjacent_find(m_sortedNames.begin(), m_sortedNames.end());
    if (first == m_sortedNames.end())
        return true;
    // Told at the second of the two, as for a tag with few.
    stop.At(Fault::AttributeTwice, std::next(first)->data(), *first);
    return false;
}

} // namespace Zantrel::Xml
