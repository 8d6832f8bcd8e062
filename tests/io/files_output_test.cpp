// SPDX-License-Identifier: Apache-2.0
#include "io/input_file.h"
#include "io/output_file.h"
#include "tests/support/sax_test_support.h"

#include <zantrel/io/mfile.h>

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <thread>

using namespace Zantrel::Io;
namespace fs = std::filesystem;

TEST(OutputFile, LeavesTheOldFileUntilItIsCommitted) {
    TemporaryFolder const folder;
    Fill(folder / "a", "old");
    {
        OutputFile file;
        ASSERT_TRUE(file.Open((folder / "a").wstring()) && file.Write("new"));
        EXPECT_EQ(ContentOf(folder / "a"), "old");
    }
    EXPECT_EQ(ContentOf(folder / "a"), "old");
    EXPECT_EQ(folder.CountEntries(), 1);
    EXPECT_TRUE(WriteWholeFile((folder / "a").wstring(), "new"));
    EXPECT_EQ(ContentOf(folder / "a"), "new");
    EXPECT_EQ(folder.CountEntries(), 1);
}

TEST(OutputFile, SaysWhyAPathCannotBeWritten) {
    TemporaryFolder const folder;
    fs::path const path = folder / "none" / "a";
    OutputFile file;
    EXPECT_FALSE(file.Open(path.wstring()));
    EXPECT_THAT(file.FailureText(), IsSentence(L"Can't write \"" + path.wstring() + L"\": "));
}

TEST(OutputFile, RefusesFoldersAndPathsThatNoFileCanHave) {
    TemporaryFolder const folder;
    std::wstring const base = (folder / "").wstring();
    for (std::wstring const& path :
         {std::wstring(), base, base + L"\xD800", base + L'\0' + L"a", base + std::wstring(300, L'n')}) {
        std::vector<std::byte> bytes;
        EXPECT_FALSE(WriteWholeFile(path, "new"));
        EXPECT_FALSE(ReadWholeFile(path, bytes));
    }
    EXPECT_EQ(folder.CountEntries(), 0);
}

TEST(OutputFile, TakesAnyUnicodeNameWhateverTheLocale) {
    TemporaryFolder const folder;
    std::wstring const path = (folder / "").wstring() + L"\x00F6\x00DF \x65E5 \U0001F600";
    std::vector<std::byte> bytes;
    ASSERT_TRUE(WriteWholeFile(path, "new"));
    EXPECT_TRUE(fs::directory_iterator(folder / "")->path().filename().u8string() ==
                u8"\u00F6\u00DF \u65E5 \U0001F600");
    EXPECT_TRUE(ReadWholeFile(path, bytes));
    EXPECT_EQ(bytes.size(), 3u);
}

TEST(OutputFile, TakesALongPath) {
    TemporaryFolder const folder;
    fs::path const deep = folder / "" / std::string(200, 'a') / std::string(200, 'b');
    fs::create_directories(AtAnyLength(deep));
    fs::path const path = deep / ".." / std::string(200, 'b') / "c";
    std::vector<std::byte> bytes;
    EXPECT_TRUE(WriteWholeFile(path.wstring(), "1") && WriteWholeFile(path.wstring(), "23"));
    EXPECT_EQ(ContentOf(AtAnyLength(deep / "c")), "23");
    EXPECT_TRUE(ReadWholeFile(path.wstring(), bytes));
    EXPECT_EQ(bytes.size(), 2u);
    for (fs::path const& made :
         {deep / "c", deep, deep.parent_path()}) { // too long for remove_all on Windows
        fs::remove(AtAnyLength(made));
    }
}

TEST(OutputFile, MayBeOneOfSeveralForOneTarget) {
    TemporaryFolder const folder;
    std::wstring const path = (folder / "a").wstring();
    std::atomic<int> failures = 0;
    std::vector<std::thread> writers;
    for (char letter = 'a'; letter < 'e'; ++letter) {
        writers.emplace_back([&, letter] {
            for (int turn = 0; turn < 25; ++turn) {
                failures += WriteWholeFile(path, std::string(1000, letter)) ? 0 : 1;
            }
        });
    }
    for (std::thread& writer : writers) {
        writer.join();
    }
    EXPECT_EQ(failures, 0);
    EXPECT_EQ(folder.CountEntries(), 1);
    std::string const content = ContentOf(folder / "a");
    EXPECT_EQ(content, std::string(1000, content.empty() ? '-' : content.front()));
}

TEST(OutputFile, ReplacesAFileWhileTheLibraryReadsIt) {
    TemporaryFolder const folder;
    Fill(folder / "a", "old");
    InputFile reader;
    ASSERT_TRUE(reader.Open((folder / "a").wstring()));
    EXPECT_TRUE(WriteWholeFile((folder / "a").wstring(), "new"));
    EXPECT_EQ(ContentOf(folder / "a"), "new");
    char got[8] = {};
    EXPECT_EQ(reader.Read(got, sizeof got), 3);
    EXPECT_STREQ(got, "old");
}

#ifdef _WIN32
#include <windows.h>

TEST(OutputFile, LeavesAFileThatAnotherProgramHolds) {
    TemporaryFolder const folder;
    fs::path const path = folder / "a";
    Fill(path, "old");
    {
        std::ifstream const reader(path); // shares reading and writing, but not replacing
        OutputFile file;
        ASSERT_TRUE(file.Open(path.wstring()) && file.Write("new"));
        EXPECT_FALSE(file.Commit());
        EXPECT_THAT(file.FailureText(), IsSentence(L"Can't write \"" + path.wstring() + L"\": "));
        EXPECT_EQ(ContentOf(path), "old");
    }
    EXPECT_EQ(folder.CountEntries(), 1);
    EXPECT_TRUE(WriteWholeFile(path.wstring(), "new"));
}

TEST(OutputFile, LeavesAReadOnlyFile) {
    TemporaryFolder const folder;
    std::wstring const path = (folder / "a").wstring();
    Fill(path, "old");
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_FALSE(WriteWholeFile(path, "new"));
    EXPECT_EQ(ContentOf(path), "old");
    EXPECT_EQ(folder.CountEntries(), 1);
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST(OutputFile, WritesDirectlyToWhatIsNoFileOnADisk) {
    std::wstring const path = L"\\\\.\\pipe\\zantrel-" + std::to_wstring(GetCurrentProcessId());
    HANDLE const reader =
        CreateNamedPipeW(path.c_str(), PIPE_ACCESS_INBOUND, PIPE_TYPE_BYTE, 1, 64, 64, 0, nullptr);
    EXPECT_TRUE(WriteWholeFile(path, "new"));
    char got[8] = {};
    DWORD size = 0;
    ReadFile(reader, got, sizeof got, &size, nullptr);
    EXPECT_STREQ(got, "new");
    CloseHandle(reader);
    EXPECT_FALSE(WriteWholeFile(path, "lost"));
    EXPECT_TRUE(WriteWholeFile(L"NUL", "new"));
}

TEST(OutputFile, ReplacesAFileOnADiskByAnyOfItsNames) {
    TemporaryFolder const folder;
    std::wstring const path = (folder / "a").wstring();
    Fill(path, "an old and longer text");
    EXPECT_TRUE(WriteWholeFile(L"\\\\.\\" + path, "new"));
    EXPECT_EQ(ContentOf(path), "new");
    EXPECT_TRUE(WriteWholeFile(L"\\\\?\\" + path, "newer"));
    EXPECT_EQ(ContentOf(path), "newer");
    EXPECT_EQ(folder.CountEntries(), 1);
}
#else
#include <csignal>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

TEST(OutputFile, KeepsThePermissionsOfTheTarget) {
    TemporaryFolder const folder;
    Fill(folder / "a", "old");
    fs::permissions(folder / "a", fs::perms(0751));
    EXPECT_TRUE(WriteWholeFile((folder / "a").wstring(), "new"));
    EXPECT_EQ(fs::status(folder / "a").permissions(), fs::perms(0751));
}

TEST(OutputFile, FollowsLinksAndLeavesThem) {
    TemporaryFolder const folder;
    fs::create_directory(folder / "sub");
    Fill(folder / "sub" / "real", "old");
    fs::create_symlink("sub/link", folder / "a");
    fs::create_symlink("real", folder / "sub" / "link");
    fs::create_symlink("sub/made", folder / "dangling");
    fs::create_symlink("round", folder / "round");
    EXPECT_TRUE(WriteWholeFile((folder / "a").wstring(), "new"));
    EXPECT_EQ(ContentOf(folder / "sub" / "real"), "new");
    EXPECT_TRUE(fs::is_symlink(folder / "a") && fs::is_symlink(folder / "sub" / "link"));
    EXPECT_TRUE(WriteWholeFile((folder / "dangling").wstring(), "made"));
    EXPECT_EQ(ContentOf(folder / "sub" / "made"), "made");
    EXPECT_FALSE(WriteWholeFile((folder / "round").wstring(), "new"));
}

TEST(OutputFile, TakesANameAsLongAsTheSystemAllows) {
    TemporaryFolder const folder;
    fs::path const path = folder / std::string(255, 'n').c_str();
    EXPECT_TRUE(WriteWholeFile(path.wstring(), "1") && WriteWholeFile(path.wstring(), "2"));
    EXPECT_EQ(ContentOf(path), "2");
}

TEST(OutputFile, LeavesNothingWhenTheDiskFillsUp) {
    TemporaryFolder const folder;
    Fill(folder / "a", "old");
    auto const oldAction = std::signal(SIGXFSZ, SIG_IGN);
    rlimit oldLimit{};
    getrlimit(RLIMIT_FSIZE, &oldLimit);
    rlimit const limit{1000, oldLimit.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
    bool const written = WriteWholeFile((folder / "a").wstring(), std::string(5000, 'x'));
    setrlimit(RLIMIT_FSIZE, &oldLimit);
    std::signal(SIGXFSZ, oldAction);
    EXPECT_FALSE(written);
    EXPECT_EQ(ContentOf(folder / "a"), "old");
    EXPECT_EQ(folder.CountEntries(), 1);
}

TEST(OutputFile, WritesDirectlyToWhatIsNoRegularFile) {
    TemporaryFolder const folder;
    fs::path const path = folder / "pipe";
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    int const reader = open(path.c_str(), O_RDONLY | O_NONBLOCK);
    EXPECT_TRUE(WriteWholeFile(path.wstring(), "new"));
    char got[8] = {};
    EXPECT_EQ(read(reader, got, sizeof got), 3);
    OutputFile orphaned;
    ASSERT_TRUE(orphaned.Open(path.wstring()));
    close(reader);
    EXPECT_FALSE(orphaned.Write("lost")); // a failure, not the end of the process
    EXPECT_TRUE(fs::is_fifo(path));
    EXPECT_EQ(folder.CountEntries(), 1);
    EXPECT_TRUE(WriteWholeFile(L"/dev/null", "new"));
    EXPECT_FALSE(WriteWholeFile(L"/dev/full", "new"));
}
#endif

TEST(BinaryStream, KeepsNumbersLittleEndian) {
    MFile file;
    file.WriteUnsigned8(0x01);
    file.WriteUnsigned32(0x02030405);
    file.WriteUnsigned64(0x060708090A0B0C0D);
    std::vector<std::byte> expected;
    for (int const value : {1, 5, 4, 3, 2, 13, 12, 11, 10, 9, 8, 7, 6}) {
        expected.push_back(static_cast<std::byte>(value));
    }
    EXPECT_EQ(file.GetBytes(), expected);
    EXPECT_EQ(file.ReadUnsigned8(), 0x01);
    EXPECT_EQ(file.ReadUnsigned32(), 0x02030405u);
    EXPECT_EQ(file.ReadUnsigned64(), 0x060708090A0B0C0Du);
}

TEST(BinaryStream, StaysWhereItIsWhenItRunsShort) {
    MFile file;
    file.WriteUnsigned32(7);
    EXPECT_THROW(file.ReadUnsigned64(), std::runtime_error);
    EXPECT_EQ(file.ReadUnsigned32(), 7u);
    EXPECT_THROW(file.ReadUnsigned8(), std::runtime_error);
    EXPECT_THROW(file.SetPosition(5), std::out_of_range);
}

TEST(BinaryStream, GoesToAFileAndBack) {
    TemporaryFolder const folder;
    MFile file;
    for (std::uint32_t number = 0; number < 50000; ++number) { // more than one piece
        file.WriteUnsigned32(number);
    }
    MFile other;
    EXPECT_FALSE(other.ReadFromFile((folder / "a").wstring()));
    EXPECT_TRUE(file.WriteToFile((folder / "a").wstring()));
    EXPECT_TRUE(other.ReadFromFile((folder / "a").wstring()));
    EXPECT_EQ(other.GetBytes(), file.GetBytes());
}
