// SPDX-License-Identifier: Apache-2.0
#include "tests/support/generated_layout.h"

#include <zantrel/editing/editing.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>

namespace {

using namespace Zantrel;
using namespace Zantrel::Editing;

using Kind = LayoutDifference::Kind;
using Lines = std::vector<std::wstring>;

std::string TextOfFile(char const* path) {
    std::ifstream file(std::filesystem::path(ZANTREL_TESTS) / ".." / path);
    return {std::istreambuf_iterator<char>(file), {}};
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

TEST(LayoutDifferencesTest, LeaveNoFieldOutNorDoesThePageOfAttributes) {
    std::string const catalogue = TextOfFile("editing/layout_differences.cpp");
    std::string const page = TextOfFile("docs/layout_attributes.md");
    std::string const header = TextOfFile("include/zantrel/layout/layout_node_attributes.h");
    std::regex const field("\n    [A-Za-z][^/\n;=]* (m_[A-Za-z]+)[ ;=]");
    std::size_t fields = 0;
    for (std::sregex_iterator at(header.begin(), header.end(), field), end; at != end; ++at, ++fields) {
        EXPECT_NE(catalogue.find("<&Node::" + at->str(1) + ">"), catalogue.npos) << at->str(1);
        EXPECT_TRUE(std::regex_search(page, std::regex("\n\\|[^|]*`" + at->str(1) + "`"))) << at->str(1);
    }
    EXPECT_GE(fields, 60U);
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
