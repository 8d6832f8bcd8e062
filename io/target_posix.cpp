// SPDX-License-Identifier: Apache-2.0
#ifndef _WIN32
#include "io/system_calls_posix.h"
#include "io/take_over_posix.h"

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace Zantrel::Io {

namespace {

constexpr int MostLinks = 40;
constexpr int MostEntries = 5000;
constexpr std::time_t OldAge =
    std::time_t(10) * 60; ///< in seconds; longer than a clock of another machine is wrong

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

/// Removes a file that is old and that no writer has locked.
void RemoveLeftover(int folder, char const* name, std::time_t now) noexcept {
    struct stat status {};
    if (::fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) != 0 || !S_ISREG(status.st_mode) ||
        now - status.st_mtime < OldAge) {
        return;
    }
    File const file(::openat(
        folder, name, O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC | O_NOCTTY)); // write: NFS asks it
    if (file.IsOpen() && ::flock(Descriptor(file), LOCK_EX | LOCK_NB) == 0) {
        ::unlinkat(folder, name, 0);
    }
}

bool SaysNoToTheFolder(Error error) noexcept {
    return error == EACCES || error == EPERM || error == EROFS || error == EBUSY;
}

} // namespace

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
    int const folder = m_folder.IsOpen() ? Descriptor(m_folder) : AT_FDCWD;
    int const flags = O_WRONLY | O_CLOEXEC | O_NOCTTY | (m_isReplaceable ? O_NOFOLLOW : 0);
    file = File(RepeatWhenInterrupted([&] { return ::openat(folder, m_target.c_str(), flags); }));
    return file.IsOpen() ? 0 : errno;
}

// A writer has its new file locked until it is closed. That this needs a moment after the file was made, and
// is let go a moment before the move, is what the age is for.
void Target::RemoveLeftovers(bool (*isTemporary)(NativePathView name)) noexcept {
    int const folder = Descriptor(m_folder);
    File listed(::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    struct CloseFolder {
        void operator()(DIR* open) const noexcept { ::closedir(open); }
    };
    std::unique_ptr<DIR, CloseFolder> const entries(listed.IsOpen() ? ::fdopendir(Descriptor(listed))
                                                                    : nullptr);
    if (entries == nullptr) {
        return;
    }
    listed.Release();
    std::time_t const now = std::time(nullptr);
    for (int left = MostEntries; left > 0; --left) {
        dirent const* const entry = ::readdir(entries.get());
        if (entry == nullptr) {
            return;
        }
        if (isTemporary(entry->d_name) && entry->d_name != m_target) {
            RemoveLeftover(folder, entry->d_name, now);
        }
    }
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
        Error const error = errno;
        m_temporary.clear();
        m_refusal = m_exists && SaysNoToTheFolder(error) ? Refusal::NewFile : Refusal::None;
        return error;
    }
    ::flock(Descriptor(file), LOCK_EX | LOCK_NB); // not everywhere, and then nobody removes it either
    return m_exists ? TakeOver(folder, m_target, old, Descriptor(file), m_losses) : 0;
}

bool Target::IsTaken(Error error) noexcept { return error == EEXIST; }

Error Target::Replace() {
    int const folder = Descriptor(m_folder);
    Error const error =
        ErrorOf([&] { return ::renameat(folder, m_temporary.c_str(), folder, m_target.c_str()); });
    if (error == 0) {
        m_temporary.clear();
        // The new content stands, so that what follows is no failure of the write.
        m_losses |= m_folder.Flush() != 0 ? DurabilityLost : 0u;
    }
    m_refusal = m_exists && SaysNoToTheFolder(error) ? Refusal::Move : Refusal::None;
    return error;
}

Target::~Target() {
    if (!m_temporary.empty()) {
        ::unlinkat(Descriptor(m_folder), m_temporary.c_str(), 0);
    }
}

} // namespace Zantrel::Io
#endif
