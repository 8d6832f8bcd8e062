// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

/// Documents made of another document: whatever a format's example has is the vocabulary. Free of the test
/// framework, for the fuzz target.
namespace TestSupport {

/// An element, as views of the document that it stands in.
struct Element {
    struct Attribute {
        std::string_view name, value;
    };

    std::string_view whole, name;
    std::string_view tag; ///< the start tag without its end, as in "<a b='c'"
    std::string_view content;
    std::vector<Attribute> attributes;
    std::size_t at;       ///< where it begins
    std::size_t previous; ///< the place in the list of the sibling before it
    bool hasChildren = false;
};

constexpr std::size_t None = std::string_view::npos;

inline std::string_view Between(std::string_view text, std::size_t begin, std::size_t end) {
    return text.substr(begin, end - begin);
}

/// Where the attributes end that begin at `at`.
inline std::size_t TakeAttributes(std::string_view document, std::size_t at, Element& element) {
    for (; document[at] == ' '; ++at) {
        std::size_t const equals = document.find('=', at);
        std::size_t const end = document.find(document[equals + 1], equals + 2);
        element.attributes.push_back({Between(document, at + 1, equals), Between(document, equals + 2, end)});
        at = end;
    }
    return at;
}

/// The elements of a well-formed document without comments, in the order of their starts.
inline std::vector<Element> ElementsOf(std::string_view document) {
    std::vector<Element> elements;
    std::vector<std::size_t> open, last{None};
    for (std::size_t at = document.find('<'); at != None; at = document.find('<', at + 1)) {
        std::size_t const end = document.find('>', at) + 1;
        if (document[at + 1] == '/') {
            Element& element = elements[open.back()];
            element.content = Between(document, element.at + element.whole.size(), at);
            element.whole = Between(document, element.at, end);
            open.pop_back();
            last.pop_back();
        } else if (document[at + 1] != '?') {
            Element element{};
            element.at = at;
            std::size_t const nameEnd = document.find_first_of(" />", at);
            element.name = Between(document, at + 1, nameEnd);
            element.previous = last.back();
            std::size_t const tagEnd = TakeAttributes(document, nameEnd, element);
            element.tag = Between(document, at, tagEnd);
            element.content = document.substr(end, 0);
            element.whole = Between(document, at, end);
            if (!open.empty()) {
                elements[open.back()].hasChildren = true;
            }
            last.back() = elements.size();
            if (document[end - 2] != '/') {
                open.push_back(elements.size());
                last.push_back(None);
            }
            elements.push_back(std::move(element));
        }
    }
    return elements;
}

inline std::string Repeat(std::string_view text, std::size_t times) {
    std::string all;
    all.reserve(text.size() * times);
    for (; times != 0; --times) {
        all += text;
    }
    return all;
}

/// One mistake in a document: what is done to an element, or to an attribute, as in "@Name".
struct Mistake {
    std::string where, what;
    std::size_t at, size; ///< of what is replaced
    std::string with;

    std::string In(std::string document) const { return document.replace(at, size, with); }
};

/// Each element and each attribute of a document left out, misspelt, doubled, moved, and with what it can't
/// have or what others have.
inline std::vector<Mistake> MistakesIn(std::string const& document) {
    std::vector<Mistake> mistakes;
    std::vector<Element> const elements = ElementsOf(document);
    std::map<std::string, std::string> owned; // the first of each element and attribute
    for (Element const& element : elements) {
        owned.emplace(element.name, element.whole);
        for (auto const& [word, value] : element.attributes) {
            owned.emplace('@' + std::string(word),
                          ' ' + std::string(word) + "='" + std::string(value) + '\'');
        }
    }
    for (Element const& element : elements) {
        std::string const tag(element.tag), content(element.content), name(element.name);
        auto const replace = [&](std::string const& where, char const* what, std::string with) {
            mistakes.push_back({where, what, element.at, element.whole.size(), std::move(with)});
        };
        auto const retag = [&](std::string const& where, char const* what, std::string const& start,
                               std::string const& inside) {
            replace(where, what, start + '>' + inside + "</" + start.substr(1, start.find(' ') - 1) + '>');
        };
        retag(name, "misspelt", "<" + name + 'x' + tag.substr(name.size() + 1), content);
        retag(name, "text", tag, "x" + content);
        for (auto const& [word, text] : owned) {
            if (word[0] != '@') {
                retag(word, "borrowed", tag, text + content);
            } else if (tag.find(text.substr(0, text.find('=') + 1)) == None) {
                retag(word, "borrowed", tag + text, content);
            }
        }
        if (!element.hasChildren && !content.empty()) {
            retag(name, "empty", tag, "");
        }
        if (&element != &elements.front()) {
            replace(name, "missing", "");
            replace(name, "twice", std::string(element.whole) + std::string(element.whole));
            retag(name, "foreign", tag + " xmlns='x'", content);
        }
        if (element.previous != None && elements[element.previous].name != name) {
            Element const& before = elements[element.previous];
            mistakes.push_back({name, "moved", before.at, element.at + element.whole.size() - before.at,
                                std::string(element.whole) + std::string(before.whole)});
        }
        for (Element::Attribute const& attribute : element.attributes) {
            std::string_view const word = attribute.name, value = attribute.value;
            auto const begin = static_cast<std::size_t>(word.data() - element.tag.data());
            auto const change = [&](char const* what, std::string const& with) {
                std::string start = tag;
                start.replace(begin - 1, word.size() + value.size() + 4, with);
                retag('@' + std::string(word), what, start, content);
            };
            std::string const assigned = ' ' + std::string(word) + '=';
            change("missing", "");
            change("misspelt", " x" + std::string(word) + "='" + std::string(value) + '\'');
            change("=", assigned + "''");
            change("=0", assigned + "'0'");
            change("=x", assigned + "'x'");
            if (value == "True" || value == "False") {
                change("other flag", assigned + (value == "True" ? "'False'" : "'True'"));
            }
        }
    }
    return mistakes;
}

/// A document that has some of the mistakes of `example` at once. `choose(n)` gives any number below n.
template <class Choose> std::string HostileDocument(std::string const& example, Choose choose) {
    std::string document = example;
    for (std::size_t count = choose(10); count != 0; --count) {
        std::vector<Mistake> const mistakes = MistakesIn(document);
        document = mistakes[choose(mistakes.size())].In(std::move(document));
    }
    return document;
}

} // namespace TestSupport
