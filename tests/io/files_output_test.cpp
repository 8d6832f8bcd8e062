// SPDX-License-Identifier: Apache-2.0
#include "io/input_file.h"
#include "io/output_file.h"
#include "tests/support/sax_test_support.h"

#include <zantrel/io/mfile.h>
#include <zantrel/io/path.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <stdexcept>
#include <thread>

#ifdef _WIN32
#include <windows.h>
#else
#include <csignal>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#endif
#ifdef __linux__
#include <sys/fsuid.h>
#include <sys/xattr.h>
#endif

using namespace Zantrel::Io;
using Zantrel::WidePath;
namespace fs = std::filesystem;

namespace {

bool Write(fs::path const& path, std::string const& bytes) { return WriteWholeFile(WidePath(path), bytes); }

/// The size of what can be read, or nothing.
std::optional<std::size_t> ReadSize(fs::path const& path) {
    std::vector<std::byte> bytes;
    return ReadWholeFile(WidePath(path), bytes) ? std::optional(bytes.size()) : std::nullopt;
}

/// A folder with one file that is to be replaced.
class Files : public testing::Test {
protected:
    Files() { Fill(m_file, "old"); }

    /// That the file holds this, and nothing stands beside it.
    void Expect(std::string const& content) const {
        EXPECT_EQ(ContentOf(m_file), content);
        EXPECT_EQ(m_folder.CountEntries(), 1);
    }

    TemporaryFolder const m_folder;
    fs::path const m_file = m_folder / "a";
};

/// A file as a writer has it that is at work.
#ifdef _WIN32
using HeldFile = std::ifstream; // which doesn't let it be deleted
#else
class HeldFile {
public:
    explicit HeldFile(fs::path const& path) : m_descriptor(open(path.c_str(), O_RDONLY)) {
        flock(m_descriptor, LOCK_EX);
    }
    ~HeldFile() { close(m_descriptor); }

private:
    int const m_descriptor;
};
#endif

} // namespace

TEST_F(Files, StayUntilWhatReplacesThemIsCommitted) {
    {
        OutputFile file;
        ASSERT_TRUE(file.Open(WidePath(m_file)) && file.Write("new"));
        EXPECT_EQ(ContentOf(m_file), "old");
    }
    Expect("old");
    {
        InputFile reader; // of the library itself holds nothing up
        ASSERT_TRUE(reader.Open(WidePath(m_file)));
        EXPECT_TRUE(Write(m_file, "new"));
        char got[8] = {};
        EXPECT_EQ(reader.Read(got, sizeof got), 3);
        EXPECT_STREQ(got, "old");
    }
    Expect("new"); // now, since a file that is read has its entry until it is closed on Windows
}

TEST_F(Files, AreRefusedWhereNoneCanBe) {
    std::wstring const base = WidePath(m_folder / "");
    for (std::wstring const& path : {std::wstring(), base, base + L"none/a", base + L"\xD800",
                                     base + L'\0' + L"a", base + std::wstring(300, L'n')}) {
        OutputFile file;
        InputFile reader;
        EXPECT_FALSE(reader.Open(path) || (file.Open(path) && file.Write("new") && file.Commit()));
        EXPECT_THAT(file.WhyItFailed().sentence,
                    testing::AnyOf(L"No file can have the path \"" + path + L"\".",
                                   IsSentence(L"Can't write \"" + path + L"\": ")));
    }
    Expect("old");
}

TEST_F(Files, AreFoundByAnyUnicodeNameWhateverTheLocale) {
    fs::path const path = m_folder / "" / fs::path(u8"\u00F6\u00DF \u65E5 \U0001F600");
    EXPECT_EQ(WidePath({}), L"");
    EXPECT_EQ(WidePath(path), WidePath(m_folder / "") + L"\x00F6\x00DF \x65E5 \U0001F600");
    EXPECT_TRUE(Write(path, "new"));
    EXPECT_EQ(ContentOf(path), "new");
    EXPECT_EQ(ReadSize(path), 3u);
    fs::path const relative = fs::relative(path); // none on another drive
    EXPECT_TRUE(relative.empty() || Write(relative, "newer"));
    EXPECT_EQ(ReadSize(relative.empty() ? path : relative), relative.empty() ? 3u : 5u);
}

TEST_F(Files, MayHaveLongPaths) {
    fs::path const deep = m_folder / "" / std::string(200, 'a') / std::string(200, 'b');
    fs::create_directories(AtAnyLength(deep));
    fs::path const path = deep / ".." / std::string(200, 'b') / "c";
    EXPECT_TRUE(Write(path, "1") && Write(path, "23"));
    EXPECT_EQ(ContentOf(AtAnyLength(deep / "c")), "23");
    EXPECT_EQ(ReadSize(path), 2u);
    for (fs::path const& made :
         {deep / "c", deep, deep.parent_path()}) { // too long for remove_all on Windows
        fs::remove(AtAnyLength(made));
    }
}

TEST_F(Files, MayBeReplacedBySeveralAtOnce) {
    std::atomic<int> failures = 0;
    std::vector<std::thread> writers;
    for (char letter = 'a'; letter < 'e'; ++letter) {
        writers.emplace_back([&, letter] {
            for (int turn = 0; turn < 25; ++turn) {
                failures += Write(m_file, std::string(1000, letter)) ? 0 : 1;
            }
        });
    }
    for (std::thread& writer : writers) {
        writer.join();
    }
    EXPECT_EQ(failures, 0);
    Expect(std::string(1000, ContentOf(m_file).at(0)));
}

TEST_F(Files, LeftByKilledWritersGoOnceTheyAreOldAndNobodyWritesThem) {
    char const* const names[] = {".0189abef.new", ".0189abef.new.old", ".0123ABCDE.new", ".00000000.new"};
    auto const hourAgo = fs::file_time_type::clock::now() - std::chrono::hours(1);
    for (char const* const name : names) {
        Fill(m_folder / name, "left");
        fs::last_write_time(m_folder / name, hourAgo);
    }
    Fill(m_folder / ".fedcba98.new", "young");
    {
        HeldFile const held(m_folder / names[3]);
        EXPECT_TRUE(Write(m_file, "new"));
        EXPECT_FALSE(fs::exists(m_folder / names[0]));
        EXPECT_EQ(m_folder.CountEntries(), 5);
    }
    EXPECT_TRUE(Write(m_file, "newer"));
    EXPECT_FALSE(fs::exists(m_folder / names[3]));
    EXPECT_EQ(m_folder.CountEntries(), 4);
    fs::rename(m_folder / names[2], m_folder / names[0]); // old, and no leftover to who writes it
    OutputFile file;
    EXPECT_TRUE(file.Open(WidePath(m_folder / names[0])));
    EXPECT_TRUE(fs::exists(m_folder / names[0]));
}

#ifdef _WIN32
TEST_F(Files, StayWhereAnotherProgramHoldsThem) {
    {
        std::ifstream const reader(m_file); // shares reading and writing, but not replacing
        OutputFile file;
        ASSERT_TRUE(file.Open(WidePath(m_file)) && file.Write("new"));
        EXPECT_FALSE(file.Commit());
        EXPECT_THAT(file.WhyItFailed().sentence, IsSentence(L"Can't write \"" + WidePath(m_file) + L"\": "));
    }
    Expect("old");
    EXPECT_TRUE(Write(m_file, "new"));
    SetFileAttributesW(m_file.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_FALSE(Write(m_file, "newer"));
    Expect("new");
    SetFileAttributesW(m_file.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(Files, ThatAreOnNoDiskAreWrittenDirectly) {
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

TEST_F(Files, AreReplacedByAnyOfTheirNames) {
    EXPECT_TRUE(WriteWholeFile(L"\\\\.\\" + WidePath(m_file), "new"));
    Expect("new");
    EXPECT_TRUE(WriteWholeFile(L"\\\\?\\" + WidePath(m_file), "newer"));
    Expect("newer");
}
#else
TEST_F(Files, KeepTheirPermissionsAndNamesAsLongAsTheSystemAllows) {
    fs::path const path = m_folder / std::string(255, 'n').c_str();
    EXPECT_TRUE(Write(path, "old"));
    fs::permissions(path, fs::perms(0751));
    EXPECT_TRUE(Write(path, "new"));
    EXPECT_EQ(ContentOf(path), "new");
    EXPECT_EQ(fs::status(path).permissions(), fs::perms(0751));
}

TEST_F(Files, AreReplacedBehindLinksWhichStay) {
    fs::create_directory(m_folder / "sub");
    fs::create_symlink("sub/link", m_folder / "link");
    fs::create_symlink("../a", m_folder / "sub" / "link");
    fs::create_symlink("sub/made", m_folder / "dangling");
    fs::create_symlink("round", m_folder / "round");
    EXPECT_TRUE(Write(m_folder / "link", "new") && Write(m_folder / "dangling", "made"));
    EXPECT_EQ(ContentOf(m_file) + ContentOf(m_folder / "sub" / "made"), "newmade");
    EXPECT_TRUE(fs::is_symlink(m_folder / "link") && fs::is_symlink(m_folder / "sub" / "link"));
    EXPECT_FALSE(Write(m_folder / "round", "new"));
    fs::path target = "a";
    for (int link = 1; link <= 40; ++link) { // as many as the system follows
        fs::create_symlink(std::exchange(target, std::to_string(link)),
                           m_folder / std::to_string(link).c_str());
    }
    EXPECT_TRUE(Write(m_folder / "40", "newer"));
    EXPECT_EQ(ContentOf(m_file), "newer");
}

TEST_F(Files, StayWhenTheDiskFillsUp) {
    rlimit oldLimit{}; // whose signal ends a process that doesn't hold it back
    getrlimit(RLIMIT_FSIZE, &oldLimit);
    rlimit const limit{1000, oldLimit.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
    bool const isWritten = Write(m_file, std::string(5000, 'x'));
    setrlimit(RLIMIT_FSIZE, &oldLimit);
    EXPECT_FALSE(isWritten);
    Expect("old");
}

TEST_F(Files, TellWhichNamesKeepTheOldContent) {
    fs::create_hard_link(m_file, m_folder / "other");
    OutputFile file;
    EXPECT_TRUE(file.Open(WidePath(m_file)) && file.Write("new") && file.Commit());
    EXPECT_THAT(file.Notes(), testing::ElementsAre(IsSentence(L"Other names of the file (hard links)")));
}

TEST_F(Files, ThatAreNotRegularAreWrittenDirectly) {
    fs::path const path = m_folder / "pipe";
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    int const reader = open(path.c_str(), O_RDONLY | O_NONBLOCK);
    EXPECT_TRUE(Write(path, "new"));
    char got[8] = {};
    EXPECT_EQ(read(reader, got, sizeof got), 3);
    OutputFile orphaned;
    ASSERT_TRUE(orphaned.Open(WidePath(path)));
    close(reader);
    EXPECT_FALSE(orphaned.Write("lost")); // a failure, not the end of the process
    EXPECT_TRUE(fs::is_fifo(path));
    EXPECT_EQ(m_folder.CountEntries(), 2);
    EXPECT_TRUE(Write("/dev/null", "new"));
    EXPECT_FALSE(Write("/dev/full", "new"));
}

TEST_F(Files, LeaveASignalToWhomItIsSentWhileTheyAreWritten) {
    fs::path const path = m_folder / "pipe";
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    sigset_t signal, before, pending;
    sigemptyset(&signal);
    sigaddset(&signal, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &signal, &before);
    std::string const bytes(300'000, 'x'); // more than a pipe holds
    std::thread writer([&] { EXPECT_TRUE(Write(path, bytes)); });
    std::ifstream reader(path);
    reader.get(); // so the write has begun, and can't have ended
    kill(getpid(), SIGPIPE);
    EXPECT_EQ(std::string(std::istreambuf_iterator(reader), {}).size() + 1, bytes.size());
    writer.join();
    sigpending(&pending);
    ASSERT_EQ(sigismember(&pending, SIGPIPE), 1);
    int taken = 0;
    sigwait(&signal, &taken);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

#ifdef __linux__
namespace {

/// An access list as Linux has it: per entry what it is for and what it gives.
std::string AccessList(std::vector<std::pair<char, char>> const& entries) {
    std::string list("\2\0\0\0", 4);
    for (auto const& [kind, rights] : entries) {
        list += {kind, 0, rights, 0};
        list += kind == 2 ? std::string("\1\0\0\0", 4) : std::string(4, '\xFF'); // user 1, or nobody's
    }
    return list;
}

std::string AttributeOf(fs::path const& path, char const* name) {
    char value[128];
    ssize_t const size = getxattr(path.c_str(), name, value, sizeof value);
    return {value, value + std::max<ssize_t>(size, 0)};
}

/// To files another user than root, who has no part in any group but its own. It stands in the folder, as it
/// may have no right to come there.
class AsUser1 {
public:
    explicit AsUser1(fs::path const& folder) : m_before(fs::current_path()) {
        fs::current_path(folder);
        m_group = setfsgid(1);
        m_user = setfsuid(1);
    }
    AsUser1(AsUser1 const&) = delete;
    ~AsUser1() {
        setfsuid(static_cast<uid_t>(m_user));
        setfsgid(static_cast<gid_t>(m_group));
        fs::current_path(m_before);
    }
    static bool IsPossible() {
        AsUser1 const user(".");
        return setfsuid(static_cast<uid_t>(-1)) == 1;
    }

private:
    fs::path const m_before;
    int m_group = 0, m_user = 0;
};

} // namespace

TEST_F(Files, ThatCannotBeReplacedAreWrittenInPlaceWhereTheHostAllowsIt) {
    if (!AsUser1::IsPossible()) {
        GTEST_SKIP() << "only root can be another user";
    }
    fs::permissions(m_file, fs::perms(0666));
    struct Row {
        unsigned folder;
        bool mayWriteInPlace;
        wchar_t const* end; ///< of the first note, or of the failure
    };
    for (Row const& row :
         {Row{0777, true, L"than before."}, Row{0755, true, L"left a part of it."},
          Row{01777, true, L"left a part of it."}, Row{0755, false, L"as a whole asks for)."},
          Row{01777, false, L"folder's rights don't allow it)."}}) {
        Fill(m_file, "old content");
        ASSERT_EQ(chown(m_file.c_str(), 0, 0), 0);
        fs::permissions(m_folder / "", fs::perms(row.folder));
        {
            OutputFile file(row.mayWriteInPlace);
            AsUser1 const user(m_folder / "");
            bool const isWritten = file.Open(L"a") && file.Write("new") && file.Commit();
            EXPECT_EQ(isWritten, row.mayWriteInPlace);
            EXPECT_THAT(isWritten ? file.Notes().at(0) : file.WhyItFailed().sentence,
                        testing::EndsWith(row.end));
        }
        Expect(row.mayWriteInPlace ? "new" : "old content");
    }
}

TEST_F(Files, GiveNobodyMoreThanBeforeWhereAnotherUserReplacesThem) {
    if (!AsUser1::IsPossible()) {
        GTEST_SKIP() << "only root can be another user";
    }
    fs::permissions(m_folder / "", fs::perms(0777));
    struct Row {
        gid_t group;
        mode_t before, after;
        std::string list = {};
    };
    for (Row const& row : {Row{1, 06775, 02775}, Row{2, 06757, 0755}, Row{2, 0626, 0622}, Row{2, 0666, 0666},
                           Row{2, 0, 0644, AccessList({{1, 6}, {2, 6}, {4, 4}, {16, 6}, {32, 6}})},
                           Row{2, 0, 0622, AccessList({{1, 6}, {2, 2}, {4, 6}, {16, 6}, {32, 6}})},
                           Row{2, 0, 0622, AccessList({{1, 6}, {2, 6}, {4, 6}, {16, 2}, {32, 6}})},
                           Row{2, 0, 0600, AccessList({{1, 6}, {2, 6}, {4, 4}, {16, 6}, {32, 0}})}}) {
        fs::remove(m_file);
        Fill(m_file, "old");
        ASSERT_EQ(chown(m_file.c_str(), 0, row.group) + chmod(m_file.c_str(), row.before), 0);
        if (!row.list.empty() &&
            setxattr(m_file.c_str(), "system.posix_acl_access", row.list.data(), row.list.size(), 0) != 0) {
            continue; // the file system has none
        }
        {
            AsUser1 const user(m_folder / "");
            EXPECT_TRUE(Write("a", "")); // a write would have the system take marks from the mode
        }
        struct stat status {};
        EXPECT_EQ(stat(m_file.c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 07777, row.after) << std::oct << row.before;
        EXPECT_EQ(status.st_uid, 1u);
        EXPECT_EQ(AttributeOf(m_file, "system.posix_acl_access"), "");
    }
}

TEST_F(Files, KeepTheirAccessListAndAttributes) {
    constexpr char List[] = "system.posix_acl_access", Default[] = "system.posix_acl_default";
    std::string const narrow = AccessList({{1, 6}, {2, 6}, {4, 4}, {16, 6}, {32, 0}});
    std::string const wide = AccessList({{1, 7}, {2, 7}, {4, 7}, {16, 7}, {32, 7}});
    if (setxattr(m_file.c_str(), List, narrow.data(), narrow.size(), 0) != 0 ||
        setxattr(m_file.c_str(), "user.a", "x", 1, 0) != 0) {
        GTEST_SKIP() << "the file system has none";
    }
    ASSERT_EQ(setxattr((m_folder / "").c_str(), Default, wide.data(), wide.size(), 0), 0);
    EXPECT_TRUE(Write(m_file, "new"));
    EXPECT_EQ(AttributeOf(m_file, List), narrow);
    EXPECT_EQ(AttributeOf(m_file, "user.a"), "x");
    // What the folder gives to new files isn't for one that had no list.
    removexattr(m_file.c_str(), List);
    fs::permissions(m_file, fs::perms(0640));
    EXPECT_TRUE(Write(m_file, "newer"));
    EXPECT_EQ(AttributeOf(m_file, List), "");
    EXPECT_EQ(fs::status(m_file).permissions(), fs::perms(0640));
}
#endif

TEST_F(Files, ThatBreakOffLeaveWhatTheyWereReadInto) {
    MFile file;
    file.WriteUnsigned8(7);
    EXPECT_FALSE(file.ReadFromFile(fs::path("/proc/self/mem"))); // opens, but has nothing at its beginning
    EXPECT_EQ(file.ReadUnsigned8(), 7);
}

TEST_F(Files, WithPathsThatAreNoUtf8AreNotTakenForOthers) {
    using Row = std::pair<char const*, std::wstring>;
    for (auto const& [bytes, wide] :
         {Row{"a\xFFz", L"a\xDCFFz"}, Row{"\xC3", L"\xDCC3"}, // and no pair comes of surrogates:
          Row{"\xED\xA0\xBD\xED\xB8\x80", L"\xDCED\xDCA0\xDCBD\xDCED\xDCB8\xDC80"}}) {
        EXPECT_EQ(WidePath(bytes), wide);
        EXPECT_FALSE(ToNativePath(WidePath(bytes)));
    }
}
#endif

TEST(BinaryStream, KeepsNumbersLittleEndianAndStaysWhereItIsWhenItRunsShort) {
    MFile file;
    file.WriteUnsigned8(0x01);
    file.WriteUnsigned32(0x02030405);
    file.WriteUnsigned64(0x060708090A0B0C0D);
    for (int const value : {1, 5, 4, 3, 2, 13, 12, 11, 10, 9, 8, 7, 6}) {
        EXPECT_EQ(file.ReadUnsigned8(), value);
    }
    file.SetPosition(0);
    EXPECT_EQ(file.ReadUnsigned8(), 0x01);
    EXPECT_EQ(file.ReadUnsigned32(), 0x02030405u);
    EXPECT_EQ(file.ReadUnsigned64(), 0x060708090A0B0C0Du);
    file.SetPosition(10);
    EXPECT_THROW(file.ReadUnsigned32(), std::runtime_error);
    EXPECT_EQ(file.ReadUnsigned8(), 8);
    file.SetPosition(13);
    EXPECT_THROW(file.ReadUnsigned8(), std::runtime_error);
    EXPECT_THROW(file.SetPosition(14), std::out_of_range);
}

TEST(BinaryStream, GoesToAFileAndBack) {
    TemporaryFolder const folder;
    MFile file, other;
    for (std::uint32_t number = 0; number < 50'000; ++number) { // more than one piece
        file.WriteUnsigned32(number);
    }
    EXPECT_FALSE(other.ReadFromFile(folder / "a"));
    EXPECT_TRUE(file.WriteToFile(folder / "a") && other.ReadFromFile(folder / "a"));
    EXPECT_EQ(other.GetBytes(), file.GetBytes());
}
