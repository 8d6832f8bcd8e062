// SPDX-License-Identifier: Apache-2.0
#include "tests/support/generated_layout.h"

#include <zantrel/editing/editing.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace {

using namespace Zantrel;
using namespace Zantrel::Editing;

using Kind = LayoutDifference::Kind;
using Lines = std::vector<std::wstring>;

std::string TextOfFile(char const* path) {
    std::ifstream file(std::filesystem::path(ZANTREL_TESTS) / ".." / path);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::smatch> MatchesIn(char const* path, char const* pattern) {
    static std::map<std::string, std::string> texts; // which the matches lead into
    std::string const& text = texts.try_emplace(path, TextOfFile(path)).first->second;
    std::regex const regex(pattern);
    return {std::sregex_iterator(text.begin(), text.end(), regex), {}};
}

/// The cells of its row by the name of the field.
std::map<std::string, std::vector<std::string>> const& PageOfAttributes() {
    static std::map<std::string, std::vector<std::string>> const page = [] {
        std::map<std::string, std::vector<std::string>> rows;
        for (std::smatch const& row :
             MatchesIn("docs/layout_attributes.md",
                       "\\n\\|([^|\n]*m_[^|\n]*)\\|([^|]*)\\|([^|]*)\\|([^|]*)\\|([^|]*)\\|")) {
            std::string const fields = row.str(1);
            std::regex const field("m_\\w+");
            for (std::sregex_iterator at(fields.begin(), fields.end(), field), end; at != end; ++at) {
                rows[at->str()] = {row[1], row[2], row[3], row[4], row[5]};
            }
        }
        return rows;
    }();
    return page;
}

Lines LinesOf(std::vector<LayoutDifference> const& differences) {
    static wchar_t const* const words[] = {L"added ", L"removed ", L"moved ", L""};
    Lines lines;
    for (LayoutDifference const& difference : differences) {
        lines.push_back(words[static_cast<std::size_t>(difference.kind)] + difference.path + L" " +
                        difference.what + L": " + difference.before + L" -> " + difference.after);
    }
    return lines;
}

TEST(LayoutDifferencesTest, LeaveNoFieldOut) {
    std::string const catalogue = TextOfFile("editing/layout_differences.cpp");
    std::size_t fields = 0;
    for (std::smatch const& match : MatchesIn("include/zantrel/layout/layout_node_attributes.h",
                                              "\n    [A-Za-z][^/\n;=]* (m_[A-Za-z]+)[ ;=]")) {
        EXPECT_NE(catalogue.find("<&Node::" + match.str(1) + ">"), catalogue.npos) << match.str(1);
        EXPECT_EQ(PageOfAttributes().count(match.str(1)), 1U) << match.str(1);
        ++fields;
    }
    EXPECT_GE(fields, 60U);
}

TEST(PageOfAttributesTest, HasTheSettersAndTheWordsOfFilesThatTheCodeHas) {
    auto const expect = [](std::string const& field, std::size_t cell, std::string const& name) {
        auto const row = PageOfAttributes().find(field);
        bool const isThere =
            row != PageOfAttributes().end() && row->second[cell].find('`' + name + '`') != std::string::npos;
        EXPECT_TRUE(isThere) << field << ' ' << name;
    };
    char const* const header = "include/zantrel/layout/layout_node.h";
    std::set<std::string> known{"m_nodeName"};
    for (std::smatch const& match : MatchesIn(header, "\\b((?:Set|Add)\\w+)\\(")) {
        known.insert(match.str(1));
    }
    for (std::smatch const& match : MatchesIn(header, "\\* (\\w+)\\([^;{]*\\{\\s*return Set\\((m_\\w+)")) {
        expect(match.str(2), 1, match.str(1));
    }
    std::map<std::string, std::string> words;
    for (std::smatch const& match : MatchesIn("layout_files/vocabulary.h", "(\\w+) = \"(\\w+)\"")) {
        words[match.str(1)] = match.str(2);
        known.insert(match.str(2));
    }
    for (std::smatch const& match : MatchesIn("layout_files/meta_file_attributes.cpp",
                                              "\\{Word::(\\w+), L\"[^;}]*<&Node::(m_\\w+)>\\}")) {
        expect(match.str(2), 3, words[match.str(1)]);
    }
    for (std::smatch const& match : MatchesIn("layout_files/property_template_attributes.h",
                                              "\\{LayoutWord::(\\w+), &LayoutNode::(m_\\w+)")) {
        expect(match.str(2), 4, words[match.str(1)]);
    }
    std::regex const quoted("[`\"](\\w+)[`\"]");
    for (auto const& [field, cells] : PageOfAttributes()) {
        for (std::size_t const cell : {1U, 3U, 4U}) {
            for (std::sregex_iterator at(cells[cell].begin(), cells[cell].end(), quoted), end; at != end;
                 ++at) {
                EXPECT_EQ(known.count(at->str(1)), 1U) << field << ' ' << at->str(1);
            }
        }
    }
}

/// One change of one node, and the word that it must be told by.
struct Change {
    wchar_t const* word;
    void (*apply)(LayoutNode& node);
};
Change const Changes[] = {
    {L"Min", [](LayoutNode& node) { node.m_min += L"1"; }},
    {L"Type", [](LayoutNode& node) { node.SetType(node.m_type == Int ? Bool : Int); }},
    {L"Visible", [](LayoutNode& node) { node.SetVisible(!node.m_visible); }},
    {L"Precision", [](LayoutNode& node) { ++node.m_precision; }},
    {L"MaxLength", [](LayoutNode& node) { ++node.m_maxLength; }},
    {L"Options", [](LayoutNode& node) { node.m_optionValues.push_back(L""); }},
    {L"VisibilitySource",
     [](LayoutNode& node) {
         node.m_visibilitySources.push_back({nullptr, L"x"});
     }},
    {L"EditabilitySource",
     [](LayoutNode& node) {
         node.m_editabilitySources.push_back({node.m_parent, L"x"});
     }},
    {L"ProfileNode",
     [](LayoutNode& node) { node.SetProfileNode(node.m_profileNode == &node ? nullptr : &node); }},
};

TEST(LayoutDifferencesTest, AreNoneBetweenEqualLayoutsAndOneForAnyChange) {
    for (unsigned seed = 1; seed <= 40; ++seed) {
        ParameterLayout first, second;
        TestSupport::LayoutGenerator(seed).Fill(first, 60);
        TestSupport::LayoutGenerator(seed).Fill(second, 60);
        ASSERT_EQ(LinesOf(LayoutDifferences(first, second)), Lines()) << seed;
        ASSERT_EQ(LinesOf(LayoutDifferences(first, ParameterLayout(first))), Lines()) << seed;
        LayoutNode* changed = second.m_profileEditor;
        while (changed->Size() != 0) {
            changed = changed->Back();
        }
        Change const& change = Changes[seed % std::size(Changes)];
        change.apply(*changed);
        std::vector<LayoutDifference> const differences = LayoutDifferences(first, second);
        ASSERT_EQ(differences.size(), 1U) << seed;
        EXPECT_EQ(differences[0].what, change.word);
        EXPECT_EQ(differences[0].second, changed);
        EXPECT_EQ(differences[0].first->m_name, changed->m_name);
    }
}

TEST(LayoutDifferencesTest, TellNodesThatCameWentAndMoved) {
    ParameterLayout first, second;
    LayoutNode* const old = first.m_profileEditor->AddNode(L"Laser");
    for (wchar_t const* name : {L"Power", L"Speed", L"Gone", L"Focus", L"Same", L"Same"}) {
        old->AddNode(name)->AddNode(L"Inner");
    }
    LayoutNode* const fresh = second.m_profileEditor->AddNode(L"Laser");
    for (wchar_t const* name : {L"Extra", L"Focus", L"Power", L"Speed", L"Same", L"Same"}) {
        fresh->AddNode(name)->AddNode(L"Inner");
    }
    old->At(5).SetPostfix(L"mm");
    EXPECT_EQ(
        LinesOf(LayoutDifferences(first, second)),
        (Lines{L"added ProfileEditor/Laser/Extra :  -> ", L"moved ProfileEditor/Laser/Focus : Gone -> Extra",
               L"removed ProfileEditor/Laser/Gone :  -> ", L"ProfileEditor/Laser/Same Postfix: mm -> "}));
}

} // namespace
