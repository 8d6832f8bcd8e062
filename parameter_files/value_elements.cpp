// SPDX-License-Identifier: Apache-2.0
#include "parameter_files/value_elements.h"

#include "parameter_files/vocabulary.h"
#include "sax/pieces_source.h"
#include "text/unicode.h"
#include "xml/tokeniser.h"

#include <zantrel/database/walk.h>

#include <map>

// Both sides put the same text together for a step of the way: what the layout and the database say of a
// place, and what the document says of an element. Where the two don't agree (a prefix before a tag, a
// parameter that stands there twice) an element isn't found, or a wrong one is, which the caller finds out by
// reading. No step holds a character of those that stand between the parts, as XML has none of them.

namespace Zantrel {

namespace {

namespace Word = ParameterFileWord;

constexpr char BetweenParts = '\x01';
constexpr char BetweenSteps = '\x02';

std::string Step(std::string_view tag, std::string_view name, bool hasName, std::size_t earlier) {
    std::string step(tag);
    if (hasName) {
        step += BetweenParts;
        step += name;
    }
    step += BetweenParts;
    return step + std::to_string(earlier) + BetweenSteps;
}

std::string Utf8(std::wstring_view text) {
    std::string utf8;
    Text::AppendUtf8Unchecked(text, utf8);
    return utf8;
}

std::string StepTo(AnyWalk const& walk, ParameterFileFormat format) {
    switch (walk.Kind()) {
    case PlaceKind::Item:
        return Step(Utf8(walk.Layout().m_nodeName), {}, false, walk.Index());
    case PlaceKind::DefaultProfile:
        return Step(Word::Default, {}, false, 0);
    case PlaceKind::Profile:
        return Step(Utf8(walk.Layout().m_nodeName), Utf8(walk.Name()), true, 0);
    default:
        return format == ParameterFileFormat::Machine ? Step(Word::Property, Utf8(walk.Name()), true, 0)
                                                      : Step(Utf8(walk.Name()), {}, false, 0);
    }
}

/// Goes through a document with the way of the element that it is in.
class ElementSearch {
public:
    ElementSearch(ElementWays const& ways, std::size_t count) : m_ways(ways), m_found(count) {
        for (auto const& [way, places] : ways) {
            m_longest = std::max(m_longest, way.size());
        }
    }

    void Open(Xml::Tokeniser const& tokeniser) {
        if (!m_open.empty()) {
            m_open.back().isPlain = false;
            // Nothing is looked for so far down, where to look each time would cost the depth of the document
            // times its size.
            if (m_way.size() <= m_longest) {
                m_way += StepOf(tokeniser);
            }
        }
        m_open.push_back({m_way.size(), tokeniser.Where(), true, {}});
    }

    void Close(Xml::Position end) {
        Element const& element = m_open.back();
        bool const mayBeOne = m_open.size() > 1 && m_way.size() <= m_longest;
        auto const found = mayBeOne ? m_ways.find(m_way) : m_ways.end();
        if (found != m_ways.end()) {
            for (std::size_t const index : found->second) {
                m_found[index] = {true, element.isPlain, element.begin, end};
            }
        }
        m_open.pop_back();
        // The one way is cut and lengthened, so that no element costs more than its own step.
        m_way.resize(m_open.empty() ? 0 : m_open.back().wayLength);
    }

    std::vector<ValueElement> Take() { return std::move(m_found); }

private:
    struct Element {
        std::size_t wayLength;
        Xml::Position begin;
        bool isPlain;
        std::map<std::string, std::size_t> met; ///< children by what tells them apart
    };

    /// The root has no step: it may be called anything.
    std::string StepOf(Xml::Tokeniser const& tokeniser) {
        std::string_view name;
        bool hasName = false;
        for (Xml::Attribute const& attribute : tokeniser.Attributes()) {
            if (attribute.name == Word::Name) {
                name = attribute.value;
                hasName = true;
            }
        }
        // Counted by tag and name together: so items go by their number, and a parameter that stands twice
        // has another step the second time, which no place of a database has.
        std::size_t const earlier = m_open.back().met[Step(tokeniser.Name(), name, hasName, 0)]++;
        return Step(tokeniser.Name(), name, hasName, earlier);
    }

    ElementWays const& m_ways;
    std::size_t m_longest = 0; ///< of them
    std::vector<ValueElement> m_found;
    std::string m_way;
    std::vector<Element> m_open; ///< from the root on
};

} // namespace

ElementWays WaysOf(ParameterDatabase const& database, std::vector<std::wstring> const& paths,
                   ParameterFileFormat format) {
    std::unordered_map<std::wstring_view, std::vector<std::size_t>> wanted;
    for (std::size_t i = 0; i < paths.size(); ++i) {
        wanted[paths[i]].push_back(i);
    }
    ElementWays ways;
    std::string way;
    std::vector<std::size_t> lengths; ///< of the way to each place on it
    for (Walk<ParameterView> walk(database.GetProfileEditor(), SameNames::FirstOnly); walk.Next();) {
        lengths.resize(walk.Depth());
        way.resize(lengths.empty() ? 0 : lengths.back());
        if (walk.Depth() != 0) {
            way += StepTo(walk, format);
            auto const found = wanted.find(walk.Path());
            if (found != wanted.end()) {
                // Of two places with one way the first stays; where that is the wrong one, reading finds it
                // out.
                ways.emplace(way, found->second);
            }
        }
        lengths.push_back(way.size());
    }
    return ways;
}

std::vector<ValueElement> FindElements(std::string_view document, ElementWays const& ways,
                                       std::size_t count) {
    Sax::PiecesSource source({document});
    Xml::Tokeniser tokeniser(source);
    ElementSearch search(ways, count);
    for (;;) {
        switch (tokeniser.NextTag()) {
        case Xml::Token::StartTag:
            search.Open(tokeniser);
            break;
        case Xml::Token::EndTag:
            search.Close(tokeniser.Where());
            break;
        case Xml::Token::End:
            return search.Take();
        case Xml::Token::Error:
            // Nothing found is better than half: the document is none, and its reader says why.
            return std::vector<ValueElement>(count);
        case Xml::Token::Text: // NextTag passes over it
            break;
        }
    }
}

} // namespace Zantrel
