// SPDX-License-Identifier: Apache-2.0
#ifndef _WIN32
#include "io/system_calls_posix.h"

#include "text/unicode.h"
#include "text/utf8.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <initializer_list>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>
#ifndef __wasi__
#include <csignal>
#include <sys/random.h>
#endif

namespace Zantrel::Io {

namespace {

#ifdef __wasi__ // has no signals
struct WithoutWriteSignals {
    static void TakeThatOf(Error) noexcept {}
};
#else
/// Holds back the signals that a write can raise: SIGPIPE, of a pipe whose reader has gone, and SIGXFSZ, at
/// the process's limit for files. The write is to fail, not the process to end. They are blocked for this
/// thread, and the one that a failed write has raised is taken before it is let through again. One that was
/// pending before belongs to somebody else and stays; so does one that somebody sends meanwhile, for which
/// another thread may be waiting: who waited for it here might wait for ever.
class WithoutWriteSignals {
public:
    WithoutWriteSignals() noexcept {
        sigset_t const held = SetOf({SIGPIPE, SIGXFSZ});
        ::sigpending(&m_pending);
        ::pthread_sigmask(SIG_BLOCK, &held, &m_before);
    }
    WithoutWriteSignals(WithoutWriteSignals const&) = delete;
    WithoutWriteSignals& operator=(WithoutWriteSignals const&) = delete;
    ~WithoutWriteSignals() { ::pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }

    /// Of a write that failed so.
    void TakeThatOf(Error error) noexcept {
        int const signal = error == EPIPE ? SIGPIPE : SIGXFSZ;
        sigset_t pending;
        ::sigpending(&pending);
        if ((error == EPIPE || error == EFBIG) && ::sigismember(&m_pending, signal) == 0 &&
            ::sigismember(&pending, signal) == 1) {
            sigset_t const raised = SetOf({signal});
            int taken = 0;
            ::sigwait(&raised, &taken);
        }
    }

private:
    static sigset_t SetOf(std::initializer_list<int> signals) noexcept {
        sigset_t set;
        ::sigemptyset(&set);
        for (int const signal : signals) {
            ::sigaddset(&set, signal);
        }
        return set;
    }

    sigset_t m_pending;
    sigset_t m_before;
};
#endif

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

Error RandomBits(std::uint32_t& bits) noexcept {
    return ErrorOf([&] { return ::getentropy(&bits, sizeof bits); });
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
    WithoutWriteSignals held;
    while (!bytes.empty()) {
        ssize_t const written =
            RepeatWhenInterrupted([&] { return ::write(Descriptor(*this), bytes.data(), bytes.size()); });
        if (written <= 0) {
            Error const error = written < 0 ? errno : EIO;
            held.TakeThatOf(error);
            return error;
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return 0;
}

Error File::EndHere() noexcept {
    return ErrorOf([&] {
        off_t const end = ::lseek(Descriptor(*this), 0, SEEK_CUR);
        return end < 0 ? -1 : ::ftruncate(Descriptor(*this), end);
    });
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

} // namespace Zantrel::Io
#endif
