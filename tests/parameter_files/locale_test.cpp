// SPDX-License-Identifier: Apache-2.0
#include "tests/support/comma_locale.h"
#include "tests/support/dump.h"
#include "tests/support/generated_database.h"
#include "tests/support/small_parameter_file.h"

#include <gtest/gtest.h>

#include <clocale>

using namespace TestSupport;

TEST(Locale, ChangesNoByteOfAFile) {
    SmallLayout const layout;
    ParameterDatabase written(&layout), back(&layout);
    Generator(1).FillContent(written.GetProfileEditor());
    written.GetProfileEditor().Get(L"G").Get(L"D").SetValue(1234567.5);
    written.GetProfileEditor().Get(L"G").Get(L"I").SetValue<std::int32_t>(1234567);
    std::string const document = WriteText(written), values = Dump(written);

    CommaLocale const locale;
    for (char const* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "nl_NL.UTF-8", "German"}) {
        std::setlocale(LC_ALL, name); // where there is none, nothing happens
    }
    std::wostringstream proof;
    proof << 1234.5;
    EXPECT_EQ(proof.str(), L"1.234,5");
    EXPECT_EQ(WriteText(written), document);
    ReadReport report;
    EXPECT_TRUE(ReadText(back, document, &report) && report.m_entries.empty());
    EXPECT_EQ(Dump(back), values);
    EXPECT_TRUE(ReadText(back, "<Root><G><D>1,5</D><L>1.234,5</L><I>1.234</I></G></Root>", &report));
    EXPECT_EQ(report.m_entries.size(), 3u);
    std::setlocale(LC_ALL, "C");
}
