// SPDX-License-Identifier: Apache-2.0
#include "io/system.h"
#include "tests/support/sax_test_support.h"

#include <zantrel/io/mfile.h>
#include <zantrel/io/path.h>
#include <zantrel/sax/sax_utilities.h>
#include <zantrel/store/file_content.h>

#include <gtest/gtest.h>

using namespace Zantrel;
namespace fs = std::filesystem;

TEST(Path, OfTheStandardLibraryBecomesTheSameWideTextWhateverTheLocale) {
    EXPECT_EQ(WidePath({}), L"");
    EXPECT_EQ(WidePath(fs::path(u8"\u00F6/\u65E5 \U0001F600")), L"\x00F6/\x65E5 \U0001F600");
}

#ifndef _WIN32
TEST(Path, WithBytesThatAreNoUtf8LeadsToNoFile) {
    using Row = std::pair<char const*, std::wstring>;
    for (auto const& [bytes, wide] : {Row{"a\xFFz", L"a\xDCFFz"}, Row{"\xC3", L"\xDCC3"},
                                      Row{"\xED\xA0\xBD\xED\xB8\x80", // no pair, either
                                          L"\xDCED\xDCA0\xDCBD\xDCED\xDCB8\xDC80"}}) {
        EXPECT_EQ(WidePath(fs::path(bytes)), wide);
        EXPECT_FALSE(Io::ToNativePath(WidePath(fs::path(bytes))));
    }
}
#endif

TEST(Path, OfTheStandardLibraryIsTakenWhereAWideTextIs) {
    TemporaryFolder const folder;
    fs::path const path = folder / "" / fs::path(u8"\u65E5");
    ISAXPersistHelper handler;
    KelAM::SaxUtilities::WriteOptions options;
    options.m_rootTag = "r";
    EXPECT_TRUE(KelAM::SaxUtilities::WriteFile(path, handler, options) &&
                KelAM::SaxUtilities::ReadFile(path, handler));
    KelAM::FileContent content;
    MFile file;
    EXPECT_TRUE(content.LoadFile(path) && file.ReadFromFile(path));
    EXPECT_EQ(content.m_name, L"\x65E5");
    EXPECT_EQ(content.m_data, file.GetBytes());
    EXPECT_TRUE(content.SaveFile(folder / "b") && file.WriteToFile(folder / "c"));
    EXPECT_EQ(ContentOf(folder / "b") + ContentOf(folder / "c"), ContentOf(path) + ContentOf(path));
}
