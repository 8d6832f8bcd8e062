// SPDX-License-Identifier: Apache-2.0
#include <zantrel/parameter_files/value_edit.h>

#include "tests/support/failing_allocator.h"
#include "tests/support/small_parameter_file.h"

#include <zantrel/store/file_content.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace {

using namespace TestSupport;

class ValueEdits : public testing::Test {
protected:
    // Tests run beside each other, in one folder.
    std::string const m_path =
        testing::UnitTest::GetInstance()->current_test_info()->name() + std::string(".xml");
    ~ValueEdits() override { std::filesystem::remove(m_path); }

    std::string Edited(std::string const& document, std::vector<ValueText> const& values) {
        std::wstring const path(m_path.begin(), m_path.end());
        std::ofstream(m_path, std::ios::binary) << document;
        m_isEdited = EditValueTexts(m_layout, path, values, path, &m_report);
        std::ostringstream bytes;
        bytes << std::ifstream(m_path, std::ios::binary).rdbuf();
        return bytes.str();
    }

    SmallLayout const m_layout;
    WriteReport m_report;
    bool m_isEdited = false;
};

TEST_F(ValueEdits, ChangeTheTextAndNothingElse) {
    struct Row {
        char const* before;
        std::vector<ValueText> values;
        char const* after;
    } const rows[] = {
        {"<Root><G><D> 1.5 </D></G></Root>", {{L"G_D", L"0.06"}}, "<Root><G><D>0.06</D></G></Root>"},
        {"\xEF\xBB\xBF<Root>\r\r\n<!--<D>--><G a='>'><S b='/>' />\xC3\xA4<B>0</B></G></Root>",
         {{L"G_B", L"True"}, {L"G_S", L"<\x00E4>"}},
         "\xEF\xBB\xBF<Root>\r\r\n<!--<D>--><G a='>'><S b='/>' "
         ">&lt;\xC3\xA4&gt;</S>\xC3\xA4<B>True</B></G></Root>"},
        {"<Root><M><Item><I>1</I></Item><Item><Strange/><I>2</I></Item></M></Root>",
         {{L"M_Item[1]_I", L"3"}},
         "<Root><M><Item><I>1</I></Item><Item><Strange/><I>3</I></Item></M></Root>"},
        {"<Root><C><Default><I>1</I></Default><Profile Name='P'><I>1</I></Profile></C></Root>",
         {{L"C_Profile[P]_I", L"4"}, {L"C_Profile::Default::_I", L"5"}},
         "<Root><C><Default><I>5</I></Default><Profile Name='P'><I>4</I></Profile></C></Root>"},
    };
    for (Row const& row : rows) {
        EXPECT_EQ(Edited(row.before, row.values), row.after);
        EXPECT_TRUE(m_isEdited) << StringConversion::NativeToUtf8(m_report.Format());
    }
}

TEST_F(ValueEdits, AreRefusedWhereMoreWouldChange) {
    struct Row {
        char const* document;
        ValueText value;
        wchar_t const* reason;
    } const rows[] = {
        {"<Root><G/></Root>", {L"G_D", L"1"}, L"The file has no element for it. (G_D)"},
        {"<Root><G><D>1</D></G></Root>", {L"Nowhere", L"1"}, L"The file has no element for it. (Nowhere)"},
        {"<Root><G><D>1</D></G></Root>", {L"G_D", L"1,5"}, L"Read back, the value isn't \"1,5\". (G_D)"},
        {"<Root><G><D>1</D><D>2</D></G></Root>", {L"G_D", L"3"}, L"Read back, the value isn't \"3\". (G_D)"},
        {"<Root><G><D><![CDATA[1]]></D></G></Root>",
         {L"G_D", L"3"},
         L"The element holds more than a text. (G_D)"},
        {"<Root><G><A><Name>a</Name></A></G></Root>",
         {L"G_A", L"3"},
         L"The element holds more than a text. (G_A)"},
        {"<Root><G><S>1</S></G></Root>", {L"G_S", L"\x0001"}, L"The text holds what XML can't carry. (G_S)"},
    };
    for (Row const& row : rows) {
        EXPECT_EQ(Edited(row.document, {row.value}), row.document);
        EXPECT_EQ(m_report.Format(), row.reason);
    }
    EXPECT_FALSE(m_isEdited);
}

// A long text comes to a reader in pieces, whose ends the change moves; an edit of its own needs all of it.
TEST_F(ValueEdits, TakeLongTextsBesideThemAndForThemselves) {
    std::string const text(300000, 'x'), spaces(300000, ' ');
    std::string const before = "<Root><G><D>1.5</D><S>" + text + "&amp;</S>" + spaces + "</G></Root>";
    EXPECT_EQ(Edited(before, {{L"G_D", L"2.25"}}),
              "<Root><G><D>2.25</D>" + before.substr(before.find("<S>")));
    EXPECT_TRUE(m_isEdited);
    EXPECT_EQ(Edited(before, {{L"G_S", L"y"}}), "<Root><G><D>1.5</D><S>y</S>" + spaces + "</G></Root>");
    EXPECT_EQ(Edited("<Root><G><S/></G></Root>", {{L"G_S", std::wstring(text.begin(), text.end())}}),
              "<Root><G><S>" + text + "</S></G></Root>");
}

TEST_F(ValueEdits, LeaveTheFileWhereMemoryEnds) {
    std::string const before = "<Root><G><D>1</D><S/></G></Root>",
                      after = "<Root><G><D>2</D><S>s</S></G></Root>";
    std::wstring const path(m_path.begin(), m_path.end());
    std::vector<ValueText> const values = {{L"G_D", L"2"}, {L"G_S", L"s"}};
    auto const check = [&](std::size_t nth, bool completed) {
        std::ostringstream bytes;
        bytes << std::ifstream(m_path, std::ios::binary).rdbuf();
        EXPECT_EQ(bytes.str(), completed ? after : before) << nth;
        std::ofstream(m_path, std::ios::binary) << before;
    };
    std::ofstream(m_path, std::ios::binary) << before;
    auto const edit = [&] { EXPECT_TRUE(EditValueTexts(m_layout, path, values, path)); };
    for (auto const times : {AllocationFailure::Times::Once, AllocationFailure::Times::FromThenOn}) {
        EXPECT_GT(FailEachAllocation(edit, check, times), 100u);
    }
    EXPECT_EQ(FindValuePlaces(m_layout, path, {L"G_S"})[0].column, 18u);
}

} // namespace
