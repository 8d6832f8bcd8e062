// SPDX-License-Identifier: Apache-2.0
#include "fuzz/xml_mutator.h"

#include "tests/support/document.h"

#include <iterator>
#include <vector>

namespace Fuzz {

namespace {

/// Where an element stands, in a document that need not be well-formed.
struct Place {
    std::size_t begin, nameEnd, tagEnd; ///< "<", behind the name, behind the ">" of the start tag
    std::size_t contentEnd, end;        ///< those of an empty element are tagEnd
    bool IsEmpty() const { return contentEnd == end; }
};

/// Those of elements that end.
std::vector<Place> PlacesIn(std::string_view document) {
    std::vector<Place> places, open;
    for (std::size_t at = document.find('<'); at != document.npos; at = document.find('<', at + 1)) {
        std::size_t const last = document.find('>', at);
        if (last == document.npos) {
            break;
        }
        if (document[at + 1] == '/') {
            if (!open.empty()) {
                places.push_back(open.back());
                places.back().contentEnd = at;
                places.back().end = last + 1;
                open.pop_back();
            }
        } else if (document[at + 1] != '?' && document[at + 1] != '!') {
            Place const place = {at, document.find_first_of(" />", at), last + 1, last + 1, last + 1};
            (document[last - 1] == '/' ? places : open).push_back(place);
        }
    }
    return places;
}

template <class Container> auto const& AnyOf(Container const& among, std::minstd_rand& random) {
    return *std::next(among.begin(), static_cast<std::ptrdiff_t>(random() % among.size()));
}

std::string Exchanged(std::string_view document, Place one, Place other) {
    if (other.begin < one.begin) {
        std::swap(one, other);
    }
    auto const text = [&](std::size_t begin, std::size_t end) {
        return std::string(document.substr(begin, end - begin));
    };
    std::string const second = text(other.begin, other.end);
    return one.end > other.begin // within: it takes the place of what it stands in
               ? text(0, one.begin) + second + text(one.end, document.size())
               : text(0, one.begin) + second + text(one.end, other.begin) + text(one.begin, one.end) +
                     text(other.end, document.size());
}

void Rename(std::string& document, Place const& place, std::string const& name) {
    if (!place.IsEmpty()) {
        document.replace(place.contentEnd + 2, place.end - place.contentEnd - 3, name);
    }
    document.replace(place.begin + 1, place.nameEnd - place.begin - 1, name);
}

/// Another value for one of the attributes, or one attribute more.
void ChangeAttribute(std::string& document, Place const& place, Words const& words,
                     std::minstd_rand& random) {
    std::size_t const quote = document.find_first_of("'\"", place.nameEnd);
    std::size_t const end = quote < place.tagEnd ? document.find(document[quote], quote + 1) : quote;
    if (end < place.tagEnd && random() % 2 == 0) {
        document.replace(quote + 1, end - quote - 1, AnyOf(words.texts, random));
    } else if (!words.attributes.empty()) {
        document.insert(place.nameEnd, AnyOf(words.attributes, random));
    }
}

void SetContent(std::string& document, Place const& place, std::string const& content) {
    if (!place.IsEmpty()) {
        document.replace(place.tagEnd, place.contentEnd - place.tagEnd, content);
    }
}

} // namespace

Words::Words(std::string const& example) {
    texts = {
        "", "-1", "1e999", "NaN", "99999999999", "true", "::DefaultProfile::", "&#xD800;", " 2 ", "a_b[0]"};
    for (TestSupport::Element const& element : TestSupport::ElementsOf(example)) {
        elements.emplace(element.whole);
        names.emplace(element.name);
        if (!element.hasChildren) {
            texts.emplace(element.content);
        }
        for (auto const& [word, value] : element.attributes) {
            attributes.insert(' ' + std::string(word) + "='" + std::string(value) + '\'');
            texts.emplace(value);
        }
    }
}

std::string Mutated(std::string document, Words const& words, std::minstd_rand& random) {
    std::vector<Place> const places = PlacesIn(document);
    if (places.empty()) {
        return document;
    }
    Place const &one = AnyOf(places, random), &other = AnyOf(places, random);
    std::string const whole = document.substr(one.begin, one.end - one.begin);
    switch (random() % 8) {
    case 0:
        return document.erase(one.begin, one.end - one.begin);
    case 1:
        return document.insert(one.end, TestSupport::Repeat(whole, 1 + random() % 4));
    case 2:
        return Exchanged(document, one, other);
    case 3:
        return document.insert(other.contentEnd, AnyOf(words.elements, random));
    case 4:
        return document.insert(other.contentEnd, whole);
    case 5:
        Rename(document, one, AnyOf(words.names, random));
        return document;
    case 6:
        ChangeAttribute(document, one, words, random);
        return document;
    default:
        SetContent(document, one, AnyOf(words.texts, random));
        return document;
    }
}

} // namespace Fuzz
