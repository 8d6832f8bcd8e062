// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/sax_test_support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

/// Holds documents against the library's schemas, with xmllint.
namespace TestSupport {

using Documents = std::vector<std::string>;

inline std::string Quoted(std::string const& text) { return '"' + text + '"'; }

/// What tells xmllint of a schema of the library's.
inline std::string XmlSchema(std::string const& file) {
    return "--schema " + Quoted(ZANTREL_SCHEMAS "/" + file);
}
inline std::string RelaxNgSchema(std::string const& file) {
    return "--relaxng " + Quoted(ZANTREL_SCHEMAS "/" + file);
}

/// What xmllint says about each document: "validates", "fails to validate", or nothing where it is no XML.
inline std::vector<std::string> VerdictsOn(Documents const& documents, std::string const& schema) {
    TemporaryFolder const folder;
    std::string command = Quoted(ZANTREL_XMLLINT) + " --noout --nonet " + schema;
    std::vector<std::string> paths;
    for (std::string const& document : documents) {
        auto const path = folder / (std::to_string(paths.size()) + ".xml").c_str();
        Fill(path, document);
        paths.push_back(path.string());
        command += ' ' + Quoted(paths.back());
    }
    auto const said = folder / "said.txt";
    static_cast<void>(std::system((command + " 2>" + Quoted(said.string())).c_str()));

    std::map<std::string, std::string> verdicts;
    std::istringstream lines(ContentOf(said));
    for (std::string line; std::getline(lines, line);) {
        for (std::string const verdict : {"validates", "fails to validate"}) {
            if (line.ends_with(' ' + verdict)) {
                verdicts[line.substr(0, line.size() - verdict.size() - 1)] = verdict;
            }
        }
    }
    std::vector<std::string> inOrder;
    for (std::string const& path : paths) {
        inOrder.push_back(verdicts[path]);
    }
    return inOrder;
}

inline void ExpectAllValid(Documents const& documents, std::string const& schema) {
    std::vector<std::string> const verdicts = VerdictsOn(documents, schema);
    for (std::size_t i = 0; i < documents.size(); ++i) {
        EXPECT_EQ(verdicts[i], "validates") << documents[i].substr(0, 20000);
    }
}

/// A valid document with some of its text replaced by a mistake; ' stands for ".
struct Mistake {
    std::string name;
    std::vector<std::pair<std::string, std::string>> replacements;
};

inline void ExpectAllRefused(std::string const& valid, std::vector<Mistake> const& mistakes,
                             std::string const& schema) {
    Documents documents = {valid};
    for (Mistake const& mistake : mistakes) {
        documents.push_back(valid);
        for (auto [from, to] : mistake.replacements) {
            std::replace(from.begin(), from.end(), '\'', '"');
            std::replace(to.begin(), to.end(), '\'', '"');
            std::size_t const at = documents.back().find(from);
            ASSERT_NE(at, std::string::npos) << mistake.name << ": no " << from << " in\n" << valid;
            ASSERT_NE(from, to) << mistake.name;
            documents.back().replace(at, from.size(), to);
        }
    }
    std::vector<std::string> const verdicts = VerdictsOn(documents, schema);
    EXPECT_EQ(verdicts[0], "validates");
    for (std::size_t i = 0; i < mistakes.size(); ++i) {
        EXPECT_EQ(verdicts[i + 1], "fails to validate") << mistakes[i].name;
    }
}

} // namespace TestSupport
