// SPDX-License-Identifier: Apache-2.0
#ifndef _WIN32
#include "platform/files/output_file.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <optional>
#include <random>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace Zantrel::Files {

namespace {

constexpr int MostLinks = 40;
constexpr int MostNames = 100;

template <class Call> auto RepeatWhenInterrupted(Call const& call) noexcept {
    auto result = call();
    while (result < 0 && errno == EINTR) {
        result = call();
    }
    return result;
}

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

/// Follows the symbolic links that `path` itself is, not those among its folders. False with errno set when
/// they go round in circles.
bool FollowLinks(NativePath& path) {
    for (int links = 0; links <= MostLinks; ++links) {
        struct stat status {};
        if (::lstat(path.c_str(), &status) != 0 || !S_ISLNK(status.st_mode)) {
            return true; // whatever is wrong with it, opening it will tell
        }
        NativePath to(4096, '\0'); // the longest that Linux lets a link have
        ssize_t const size = ::readlink(path.c_str(), to.data(), to.size());
        if (size < 0) {
            return false;
        }
        to.resize(static_cast<std::size_t>(size));
        path = !to.empty() && to.front() == '/' ? to : Split(path).folder + '/' + to;
    }
    errno = ELOOP;
    return false;
}

int Flush(int descriptor) noexcept {
#ifdef F_FULLFSYNC
    if (::fcntl(descriptor, F_FULLFSYNC) == 0) { // there fsync leaves the bytes in the drive's cache
        return 0;
    }
#endif
    return RepeatWhenInterrupted([&] { return ::fsync(descriptor); });
}

/// Short, so that it fits wherever the target's own name does.
NativePath MakeTemporaryName() {
    std::random_device source;
    char text[16];
    std::snprintf(text, sizeof text, ".%08x.new", static_cast<unsigned>(source()));
    return text;
}

} // namespace

bool OutputFile::Open(std::wstring const& path) {
    m_path = path;
    auto const native = ToNativePath(path);
    if (!native) {
        m_badPath = true;
        return false;
    }
    struct stat status {};
    bool const exists = ::stat(native->c_str(), &status) == 0;
    if (exists && !S_ISREG(status.st_mode)) {
        return OpenDirectly(*native);
    }
    NativePath target = *native;
    struct stat found {};
    if (!FollowLinks(target)) {
        return Fail(errno);
    }
    if (exists && (::stat(target.c_str(), &found) != 0 || found.st_ino != status.st_ino ||
                   found.st_dev != status.st_dev)) {
        return Fail(ENOENT); // a link of /proc to a file that has no name any more
    }
    return OpenFolder(target) && OpenBeside();
}

bool OutputFile::OpenDirectly(NativePath const& path) {
    // Without O_CREAT a folder gives EISDIR, too.
    m_descriptor =
        RepeatWhenInterrupted([&] { return ::open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY); });
    return m_descriptor >= 0 || Fail(errno);
}

bool OutputFile::OpenFolder(NativePath const& target) {
    SplitPath split = Split(target);
    m_name = std::move(split.name);
    m_folder = RepeatWhenInterrupted(
        [&] { return ::open(split.folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); });
#ifdef O_PATH
    if (m_folder < 0 && errno == EACCES) {
        // A folder that may be written to and not listed; it can't be flushed.
        m_folder = RepeatWhenInterrupted(
            [&] { return ::open(split.folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC); });
    }
#endif
    return m_folder >= 0 || Fail(errno);
}

bool OutputFile::OpenBeside() {
    struct stat target {};
    bool const exists = ::fstatat(m_folder, m_name.c_str(), &target, AT_SYMLINK_NOFOLLOW) == 0;
    if (!exists && errno != ENOENT) {
        return Fail(errno);
    }
    if (m_name.empty() || (exists && !S_ISREG(target.st_mode))) {
        return Fail(m_name.empty() ? ENOENT : EINVAL);
    }
    // Moving a file over another asks for no right to write to that one, so it has to be asked for here.
    if (exists && ::faccessat(m_folder, m_name.c_str(), W_OK, AT_EACCESS) != 0) {
        return Fail(errno);
    }
    for (int attempt = 0; m_descriptor < 0; ++attempt) {
        m_temporary = MakeTemporaryName();
        m_descriptor = RepeatWhenInterrupted([&] {
            return ::openat(m_folder, m_temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC,
                            exists ? S_IRUSR | S_IWUSR : 0666);
        });
        if (m_descriptor < 0 && (errno != EEXIST || attempt == MostNames)) {
            m_temporary.clear();
            return Fail(errno);
        }
    }
    if (exists) {
        // Only a privileged process can give a file away; the others keep the group where they are in it.
        // Before the permissions, since it resets some of them.
        if (::fchown(m_descriptor, target.st_uid, target.st_gid) != 0) {
            [[maybe_unused]] int const ignored =
                ::fchown(m_descriptor, static_cast<uid_t>(-1), target.st_gid);
        }
        struct stat made {};
        bool const isSame =
            ::fstat(m_descriptor, &made) == 0 && ((made.st_mode ^ target.st_mode) & 07777) == 0;
        if (!isSame && ::fchmod(m_descriptor, target.st_mode & 07777) != 0) {
            return Fail(errno);
        }
    }
    return true;
}

namespace {

/// Holds SIGPIPE back while a pipe may be written to whose reader has gone: the write is to fail, not the
/// process to end.
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
        int const error = errno;
        sigset_t pending;
        ::sigpending(&pending);
        if (!m_wasPending && ::sigismember(&pending, SIGPIPE) == 1) {
            int taken = 0;
            ::sigwait(&m_signal, &taken);
        }
        ::pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
        errno = error;
    }

private:
    sigset_t m_signal;
    sigset_t m_before;
    bool m_wasPending;
};

} // namespace

bool OutputFile::Write(std::string_view bytes) noexcept {
    std::optional<WithoutPipeSignal> held;
    if (m_temporary.empty()) { // written to directly
        held.emplace();
    }
    while (m_error == 0 && !bytes.empty()) {
        ssize_t const written =
            RepeatWhenInterrupted([&] { return ::write(m_descriptor, bytes.data(), bytes.size()); });
        if (written <= 0) {
            return Fail(written < 0 ? errno : EIO);
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return m_error == 0;
}

bool OutputFile::Commit() {
    if (m_error != 0 || m_descriptor < 0) {
        return false;
    }
    bool const beside = !m_temporary.empty();
    if (beside && Flush(m_descriptor) != 0) {
        return Fail(errno);
    }
    int const closed = ::close(std::exchange(m_descriptor, -1));
    if (closed != 0 && errno != EINTR) { // an interrupted close has closed
        return Fail(errno);
    }
    if (!beside) {
        return true;
    }
    if (::renameat(m_folder, m_temporary.c_str(), m_folder, m_name.c_str()) != 0) {
        return Fail(errno);
    }
    m_temporary.clear();
    // The new content stands, and nothing could bring the old one back: that some file systems can't flush a
    // folder is no failure of the write.
    Flush(m_folder);
    return true;
}

void OutputFile::CloseAndForget() noexcept {
    if (m_descriptor >= 0) {
        ::close(m_descriptor);
    }
    if (!m_temporary.empty()) {
        ::unlinkat(m_folder, m_temporary.c_str(), 0);
    }
    if (m_folder >= 0) {
        ::close(m_folder);
    }
}

} // namespace Zantrel::Files
#endif
