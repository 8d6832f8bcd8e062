// SPDX-License-Identifier: Apache-2.0
#ifndef _WIN32
#include "io/system.h"

#include "text/unicode.h"
#include "text/utf8.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace Zantrel::Io {

namespace {

constexpr int MostLinks = 40;

int Descriptor(File const& file) noexcept { return static_cast<int>(file.Handle()); }

template <class Call> auto RepeatWhenInterrupted(Call const& call) noexcept {
    auto result = call();
    while (result < 0 && errno == EINTR) {
        result = call();
    }
    return result;
}

/// The error of a call that gives a negative number when it fails.
template <class Call> Error ErrorOf(Call const& call) noexcept {
    return RepeatWhenInterrupted(call) < 0 ? errno : 0;
}

/// Holds SIGPIPE back while a pipe may be written to whose reader has gone: the write is to fail, not the
/// process to end. The signal is blocked for this thread, and one that the write has raised is taken before
/// it is let through again. One that was pending before belongs to somebody else and stays.
class WithoutPipeSignal {
public:
    WithoutPipeSignal() noexcept {
        sigset_t pending;
        ::sigemptyset(&m_signal);
        ::sigaddset(&m_signal, SIGPIPE);
        ::sigpending(&pending);
        m_wasPending = ::sigismember(&pending, SIGPIPE) == 1;
        ::pthread_sigmask(SIG_BLOCK, &m_signal, &m_before);
    }
    WithoutPipeSignal(WithoutPipeSignal const&) = delete;
    WithoutPipeSignal& operator=(WithoutPipeSignal const&) = delete;
    ~WithoutPipeSignal() {
        sigset_t pending;
        ::sigpending(&pending);
        if (!m_wasPending && ::sigismember(&pending, SIGPIPE) == 1) {
            int taken = 0;
            ::sigwait(&m_signal, &taken);
        }
        ::pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
    }

private:
    sigset_t m_signal;
    sigset_t m_before;
    bool m_wasPending;
};

struct SplitPath {
    NativePath folder;
    NativePath name;
};

SplitPath Split(NativePath const& path) {
    std::size_t const slash = path.rfind('/');
    if (slash == NativePath::npos) {
        return {".", path};
    }
    return {slash == 0 ? "/" : path.substr(0, slash), path.substr(slash + 1)};
}

/// Follows the symbolic links that `path` itself is, not those among its folders.
Error FollowLinks(NativePath& path) {
    for (int links = 0; links <= MostLinks; ++links) {
        struct stat status {};
        if (::lstat(path.c_str(), &status) != 0 || !S_ISLNK(status.st_mode)) {
            return 0; // whatever is wrong with it, opening it will tell
        }
        NativePath to(4096, '\0'); // the longest that Linux lets a link have
        ssize_t const size = ::readlink(path.c_str(), to.data(), to.size());
        if (size < 0) {
            return errno;
        }
        to.resize(static_cast<std::size_t>(size));
        path = !to.empty() && to.front() == '/' ? to : Split(path).folder + '/' + to;
    }
    return ELOOP;
}

/// The folder is kept open for all that follows, since names are looked up in it then and not along the path.
Error OpenFolder(NativePath const& path, File& folder) {
    auto const open = [&](int flags) {
        folder = File(RepeatWhenInterrupted([&] { return ::open(path.c_str(), flags); }));
        return folder.IsOpen() ? 0 : errno;
    };
    Error error = open(O_RDONLY | O_DIRECTORY | O_CLOEXEC);
#ifdef O_PATH
    if (error == EACCES) { // one that may be written to and not listed; it can't be flushed
        error = open(O_PATH | O_DIRECTORY | O_CLOEXEC);
    }
#endif
    return error;
}

/// Gives the new file owner, group and permissions of the one that it will replace.
Error TakeOver(struct stat const& old, int descriptor) noexcept {
    // Only a privileged process can give a file away; the others keep the group where they are in it. Before
    // the permissions, since it resets some of them.
    if (::fchown(descriptor, old.st_uid, old.st_gid) != 0) {
        [[maybe_unused]] int const ignored = ::fchown(descriptor, static_cast<uid_t>(-1), old.st_gid);
    }
    struct stat made {};
    bool const isSame = ::fstat(descriptor, &made) == 0 && ((made.st_mode ^ old.st_mode) & 07777) == 0;
    return isSame ? 0 : ErrorOf([&] { return ::fchmod(descriptor, old.st_mode & 07777); });
}

} // namespace

std::wstring Describe(Error error) {
    std::wstring words;
    Text::AppendWide(std::system_category().message(error), words);
    return words;
}

std::optional<NativePath> ToNativePath(std::wstring_view path) {
    NativePath utf8;
    if (path.empty() || path.find(L'\0') != std::wstring_view::npos || !Text::AppendUtf8(path, utf8)) {
        return std::nullopt;
    }
    return utf8;
}

// A lone low surrogate never follows a high one here, so that none of them can come back as a pair.
std::wstring FromNativePath(NativePath const& path) {
    std::wstring text;
    for (std::string_view left = path; !left.empty();) {
        Text::Utf8Character const character = Text::DecodeUtf8(left.data(), left.data() + left.size());
        if (character.size != 0) {
            Text::AppendWide(left.substr(0, character.size), text);
        } else {
            text.push_back(static_cast<wchar_t>(0xDC00 + static_cast<unsigned char>(left.front())));
        }
        left.remove_prefix(std::max<std::size_t>(character.size, 1));
    }
    return text;
}

bool Exists(NativePath const& path, Error& error) {
    struct stat status {};
    error = ErrorOf([&] { return ::stat(path.c_str(), &status); });
    bool const exists = error == 0;
    error = error == ENOENT || error == ENOTDIR ? 0 : error;
    return exists;
}

std::uint32_t RandomBits() {
    std::uint32_t bits = 0;
    if (::getentropy(&bits, sizeof bits) != 0) {
        throw std::system_error(errno, std::system_category(), "no random bits");
    }
    return bits;
}

Error File::OpenToRead(NativePath const& path) {
    *this =
        File(RepeatWhenInterrupted([&] { return ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY); }));
    if (!IsOpen()) {
        return errno;
    }
    struct stat status {};
    bool const isFolder = ::fstat(Descriptor(*this), &status) == 0 && S_ISDIR(status.st_mode);
    return isFolder ? EISDIR : 0; // which opens without complaint, and only reading fails
}

Error File::Read(char* into, std::size_t size, std::size_t& got) noexcept {
    ssize_t const result = RepeatWhenInterrupted([&] { return ::read(Descriptor(*this), into, size); });
    got = result < 0 ? 0 : static_cast<std::size_t>(result);
    return result < 0 ? errno : 0;
}

Error File::Write(std::string_view bytes) noexcept {
    WithoutPipeSignal const held;
    while (!bytes.empty()) {
        ssize_t const written =
            RepeatWhenInterrupted([&] { return ::write(Descriptor(*this), bytes.data(), bytes.size()); });
        if (written <= 0) {
            return written < 0 ? errno : EIO;
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return 0;
}

Error File::Flush() noexcept {
#ifdef F_FULLFSYNC
    if (::fcntl(Descriptor(*this), F_FULLFSYNC) == 0) { // there fsync leaves the bytes in the drive's cache
        return 0;
    }
#endif
    return ErrorOf([&] { return ::fsync(Descriptor(*this)); });
}

// A close that was interrupted has closed: doing it once more could close what another thread has opened
// since.
Error File::Close() noexcept {
    int const descriptor = static_cast<int>(std::exchange(m_handle, None));
    bool const isClosed = descriptor < 0 || ::close(descriptor) == 0 || errno == EINTR;
    return isClosed ? 0 : errno;
}

// What is replaced is the file at the end of all links, by its name in its folder. A folder that is renamed,
// or a link among the folders that is turned elsewhere, between here and Replace does no harm: the new file
// and the move are made in the folder that was found here.
Error Target::Find(NativePath const& path) {
    struct stat status {};
    m_target = path;
    m_exists = ::stat(path.c_str(), &status) == 0;
    m_isReplaceable = !m_exists || S_ISREG(status.st_mode);
    if (!m_isReplaceable) {
        return 0;
    }
    if (Error const error = FollowLinks(m_target)) {
        return error;
    }
    struct stat found {};
    if (m_exists && m_target != path &&
        (::stat(m_target.c_str(), &found) != 0 || found.st_ino != status.st_ino ||
         found.st_dev != status.st_dev)) {
        return ENOENT; // a link of /proc to a file that has no name any more
    }
    SplitPath split = Split(m_target);
    m_target = std::move(split.name);
    Error const error = OpenFolder(split.folder, m_folder);
    return error == 0 && m_target.empty() ? ENOENT : error;
}

Error Target::OpenDirectly(File& file) const {
    // Without O_CREAT a folder gives EISDIR, too.
    file = File(
        RepeatWhenInterrupted([&] { return ::open(m_target.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY); }));
    return file.IsOpen() ? 0 : errno;
}

// The file under the target's name is looked at again: since Find it may have come, gone or become another.
// It may not have become what a move would destroy and not replace, such as a link.
Error Target::CreateBeside(NativePath const& name, File& file) {
    int const folder = Descriptor(m_folder);
    struct stat old {};
    m_exists = ::fstatat(folder, m_target.c_str(), &old, AT_SYMLINK_NOFOLLOW) == 0;
    if (!m_exists && errno != ENOENT) {
        return errno;
    }
    if (m_exists && !S_ISREG(old.st_mode)) {
        return EINVAL;
    }
    // Moving a file over another asks for no right to write to that one, so it has to be asked for here.
    if (m_exists && ::faccessat(folder, m_target.c_str(), W_OK, AT_EACCESS) != 0) {
        return errno;
    }
    // Nobody else reads what replaces a file that others may not read, not even before it has its rights.
    mode_t const mode = m_exists ? S_IRUSR | S_IWUSR : 0666;
    m_temporary = name;
    file = File(RepeatWhenInterrupted(
        [&] { return ::openat(folder, name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode); }));
    if (!file.IsOpen()) {
        m_temporary.clear();
        return errno;
    }
    return m_exists ? TakeOver(old, Descriptor(file)) : 0;
}

bool Target::IsTaken(Error error) noexcept { return error == EEXIST; }

Error Target::Replace() {
    int const folder = Descriptor(m_folder);
    Error const error =
        ErrorOf([&] { return ::renameat(folder, m_temporary.c_str(), folder, m_target.c_str()); });
    if (error == 0) {
        m_temporary.clear();
        // The new content stands, and nothing could bring the old one back: that some file systems can't
        // flush a folder is no failure of the write.
        m_folder.Flush();
    }
    return error;
}

Target::~Target() {
    if (!m_temporary.empty()) {
        ::unlinkat(Descriptor(m_folder), m_temporary.c_str(), 0);
    }
}

} // namespace Zantrel::Io
#endif
