// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/document.h"
#include "tests/support/sax_test_support.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <sstream>
#include <string>
#include <vector>

/// Holds documents against the library's schemas, with xmllint.
namespace TestSupport {

using Documents = std::vector<std::string>;

inline std::string Quoted(std::string const& text) { return '"' + text + '"'; }

/// What xmllint says about each document: "validates", "fails to validate", or nothing where it is no XML, or
/// the schema none. The schema is one of the library's, or a whole path.
inline std::vector<std::string> VerdictsOn(Documents const& documents, std::string const& schema) {
    TemporaryFolder const folder;
    for (std::size_t i = 0; i < documents.size(); ++i) {
        Fill(folder / (std::to_string(i) + ".xml").c_str(), documents[i]);
    }
    static_cast<void>(
        std::system(("cd " + Quoted((folder / "").string()) + " && " ZANTREL_XMLLINT " --noout --nonet --" +
                     (schema.ends_with(".rng") ? "relaxng " : "schema ") +
                     Quoted((std::filesystem::path(ZANTREL_SCHEMAS) / schema).string()) + " *.xml 2>said.txt")
                        .c_str()));
    std::vector<std::string> verdicts(documents.size());
    std::istringstream lines(ContentOf(folder / "said.txt"));
    for (std::string line; std::getline(lines, line);) {
        for (std::string const verdict : {"validates", "fails to validate"}) {
            if (line.ends_with(".xml " + verdict)) {
                verdicts.at(std::stoul(line)) = verdict;
            }
        }
    }
    return verdicts;
}

inline void ExpectAllValid(Documents const& documents, std::string const& schema) {
    std::vector<std::string> const verdicts = VerdictsOn(documents, schema);
    for (std::size_t i = 0; i < documents.size(); ++i) {
        EXPECT_EQ(verdicts[i], "validates") << documents[i].substr(0, 20000);
    }
}

/// What the schema takes though it is a mistake, as in "twice: A B 1/3" or "empty: all but C": a line for
/// each kind, with how often where that isn't always.
inline std::string TakenMistakes(std::string const& valid, std::string const& schema) {
    std::vector<Mistake> const mistakes = MistakesIn(valid);
    Documents documents;
    for (Mistake const& mistake : mistakes) {
        documents.push_back(mistake.In(valid));
    }
    std::vector<std::string> const verdicts = VerdictsOn(documents, schema);
    std::map<std::string, std::map<std::string, std::array<int, 2>>> counts; // of those refused and taken
    for (std::size_t i = 0; i < mistakes.size(); ++i) {
        EXPECT_NE(verdicts[i], "") << documents[i];
        ++counts[mistakes[i].what][mistakes[i].where][verdicts[i] == "validates"];
    }
    std::string text;
    for (auto const& [what, places] : counts) {
        std::array<std::string, 2> names;
        for (auto const& [where, count] : places) {
            for (std::size_t const side : {0u, 1u}) {
                std::string const often = count[1 - side] == 0 ? ""
                                                               : ' ' + std::to_string(count[side]) + '/' +
                                                                     std::to_string(count[0] + count[1]);
                names[side] += count[side] == 0 ? "" : ' ' + where + often;
            }
        }
        if (!names[1].empty()) {
            text +=
                what + ':' + (names[0].size() < names[1].size() ? " all but" + names[0] : names[1]) + '\n';
        }
    }
    return text;
}

} // namespace TestSupport
