// SPDX-License-Identifier: Apache-2.0
#include "tests/support/sax_test_support.h"
#include "tests/support/small_parameter_file.h"

#include <gtest/gtest.h>

#include <csignal>

using namespace TestSupport;
namespace fs = std::filesystem;

namespace {

/// That the file and its folder are as they were.
void ExpectUntouched(TemporaryFolder const& folder) {
    EXPECT_EQ(ContentOf(folder / "file"), "old");
    EXPECT_EQ(folder.CountEntries(), 1);
}

} // namespace

TEST(FailedWrite, OfWhatXmlCannotCarryLeavesTheOldFile) {
    struct Row {
        std::function<void(ParameterNode)> change; // of the profile editor's cursor
        wchar_t const* path;
    };
    auto const text = [](wchar_t const* path, std::wstring const& value) {
        return [=](ParameterNode editor) { editor.Get(L"G").Get(path).SetValue(value); };
    };
    Row const rows[] = {
        {text(L"S", L"\x01"), L"Root/G/S"},
        {text(L"O", L"a\xFFFF"), L"Root/G/O"},
        {text(L"F", L"\xD800"), L"Root/G/F"},
        {text(L"P", L"\xDE00\xD83D"), L"Root/G/P"},
        {text(L"S", L"cut \xD83D"), L"Root/G/S"},
        {[](ParameterNode editor) { editor.Get(L"Z").AddProfile(L"cut \xD83D", true); }, L"Root/Z/Both"},
        {text(L"S", std::wstring(3, L'\0')), L"Root/G/S"},
        {[](ParameterNode editor) { editor.Get(L"G").Get(L"X").SetValueFromText(L"\xFFFE"); }, L"Root/G/X"},
        {[](ParameterNode editor) {
             KelAM::FileContent const file(L"\x1F", {});
             editor.Get(L"AS").AddListNode(true).SetValue(file);
         },
         L"Root/AS/Item/Name"},
        {[](ParameterNode editor) { editor.Get(L"Z").AddProfile(L"\x7", true); }, L"Root/Z/Both"},
    };
    SmallLayout const layout;
    TemporaryFolder const folder;
    Fill(folder / "file", "old");
    EXPECT_FALSE(
        WriteFile(ParameterDatabase(nullptr), (folder / "file").wstring(), L"")); // a root of no name
    ExpectUntouched(folder);
    for (Row const& row : rows) {
        ParameterDatabase database(&layout);
        row.change(database.GetProfileEditor());
        WriteReport report;
        EXPECT_FALSE(WriteFile(database, (folder / "file").wstring(), L"", &report));
        EXPECT_EQ(report.m_path, row.path);
        EXPECT_FALSE(report.m_sentence.empty());
        ExpectUntouched(folder);
    }
}

TEST(FailedWrite, OfANameThatIsNoXmlNameLeavesTheOldFile) {
    for (wchar_t const* name :
         {L"", L"1", L"a b", L"-a", L"a\n", L"<", L"a\xD83D", L"a\x2028", L"\xD7", L"\U00020000"}) {
        for (int place = 0; place < 4; ++place) {
            ParameterLayout layout;
            layout.m_name = place == 0 ? name : L"Root";
            LayoutNode& group = *layout.m_profileEditor->AddNode(place == 1 ? name : L"G");
            group.AddNode(L"P")->SetProfile(true, place == 2 ? name : L"Profile");
            group.AddNode(L"N", Int, 1)->SetList(true, place == 3 ? name : L"Item", L"")->SetMultiplicity(1);
            ParameterDatabase database(&layout);
            database.GetProfileEditor().Get(&group).Get(L"P").AddProfile(L"p", true);
            TemporaryFolder const folder;
            Fill(folder / "file", "old");
            EXPECT_FALSE(WriteFile(database, (folder / "file").wstring(), L"")) << name << place;
            ExpectUntouched(folder);
        }
    }
}

TEST(FailedWrite, ToAStreamIsNoticed) {
    struct Full : std::streambuf {
        std::streamsize xsputn(char const*, std::streamsize size) override { return size - 1; }
    } full;
    struct Throwing : std::streambuf {
        std::streamsize xsputn(char const*, std::streamsize) override { throw std::runtime_error("broken"); }
    } throwing;
    struct Unflushed : std::stringbuf {
        int sync() override { return -1; }
    } unflushed;
    SmallLayout const layout;
    ParameterDatabase const database(&layout);
    KelAM::SaxUtilities::WriteOptions options;
    options.m_rootTag = "Root";
    for (std::streambuf* buffer :
         {static_cast<std::streambuf*>(&full), static_cast<std::streambuf*>(&throwing),
          static_cast<std::streambuf*>(&unflushed), static_cast<std::streambuf*>(nullptr)}) {
        std::ostream out(buffer);
        std::unique_ptr<ISAXPersist> const handler(_CreateSaxHandlerForWriting(database, L""));
        EXPECT_FALSE(KelAM::SaxUtilities::WriteStream(out, *handler, options));
        EXPECT_TRUE(out.bad());
    }
}

#ifndef _WIN32
#include <sys/resource.h>

TEST(FailedWrite, ToATargetThatTakesNoFileLeavesItAsItWas) {
    SmallLayout const layout;
    ParameterDatabase const database(&layout);
    TemporaryFolder const folder;
    Fill(folder / "file", "old");
    fs::create_directory(folder / "sub");
    fs::create_symlink("round", folder / "round");
    fs::create_symlink("/dev/full", folder / "full");
    for (fs::path const& target :
         {fs::path(), folder / "none" / "file", folder / "file" / "below", folder / "sub",
          folder / "sub" / "", folder / "round", folder / "full", fs::path("/dev/full")}) {
        WriteReport report;
        EXPECT_FALSE(WriteFile(database, target.wstring(), L"", &report)) << target;
        EXPECT_FALSE(report.m_sentence.empty()) << target;
        EXPECT_EQ(folder.CountEntries(), 4) << target;
        EXPECT_TRUE(fs::is_empty(folder / "sub") && fs::is_symlink(folder / "full"));
        EXPECT_EQ(ContentOf(folder / "file"), "old");
    }
}

TEST(FailedWrite, OnAFullDiskLeavesTheOldFile) {
    SmallLayout const layout;
    ParameterDatabase database(&layout);
    database.GetProfileEditor().Get(L"G").Get(L"S").SetValue(std::wstring(600000, L'x'));
    std::size_t const size = WriteText(database).size();
    auto const oldAction = std::signal(SIGXFSZ, SIG_IGN);
    rlimit oldLimit{};
    getrlimit(RLIMIT_FSIZE, &oldLimit);
    for (std::size_t const room : {std::size_t{3}, std::size_t{262144}, size / 2, size - 1, size}) {
        TemporaryFolder const folder;
        Fill(folder / "file", "old");
        rlimit const limit{room, oldLimit.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
        bool const isWritten = WriteFile(database, (folder / "file").wstring(), L"");
        setrlimit(RLIMIT_FSIZE, &oldLimit);
        EXPECT_EQ(isWritten, room == size);
        EXPECT_EQ(ContentOf(folder / "file").size(), isWritten ? size : 3);
        EXPECT_EQ(folder.CountEntries(), 1);
    }
    std::signal(SIGXFSZ, oldAction);
}
#endif
