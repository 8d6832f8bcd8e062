// SPDX-License-Identifier: Apache-2.0
#if !defined(_WIN32) && !defined(__wasi__)
#include "io/take_over_posix.h"

#include "io/system_calls_posix.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <string_view>
#include <unistd.h>
#ifdef __linux__
#include <sys/xattr.h>
#endif

// Nobody gets a right that the old file didn't give, whichever call fails. What makes that less than plain:
//
// - Of a file with an access control list the group's bits of the mode are the list's mask, the most that
//   any entry but owner and others can give. Set on a file without the list they would give the owning group
//   what its entry doesn't. And set on a file with another list, which the folder may have given to the new
//   file, they would put that one's entries into force.
// - A list may give less to one user than others have. Without it, that user is one of the others.
// - Where the group is another than before, members of either are among those whom the other bits now mean.
namespace Zantrel::Io {

namespace {

constexpr unsigned All = 7; // of the three rights of a class

mode_t WithRights(mode_t mode, unsigned group, unsigned others) noexcept {
    return (mode & ~mode_t{077}) | static_cast<mode_t>(group << 3 | others);
}

/// The permissions for a file whose owner or group isn't the old one's.
mode_t ForOthers(mode_t mode, bool isSameOwner, bool isSameGroup) noexcept {
    mode &= isSameOwner ? ~mode_t{0} : ~mode_t{S_ISUID};
    if (isSameGroup) {
        return mode;
    }
    unsigned const common = mode >> 3 & mode & All;
    return WithRights(mode & ~mode_t{S_ISGID}, common, common);
}

#ifdef __linux__

constexpr char AccessListName[] = "system.posix_acl_access";
constexpr std::size_t MostBytes = std::size_t(64) * 1024; ///< of a value, and of all names, in Linux

/// The attributes of a file that may be one which can be written to and not read.
class Attributes {
public:
    Attributes(int folder, NativePath const& name)
        : m_file(::openat(folder, name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC | O_NOCTTY)),
          m_path("/proc/self/fd/" + std::to_string(folder) + '/' + name) {}

    /// `value` becomes empty where there is none.
    Error Get(char const* attribute, std::string& value) const {
        return Fill(value, [&](char* into, std::size_t size) {
            return m_file.IsOpen() ? ::fgetxattr(Descriptor(m_file), attribute, into, size)
                                   : ::lgetxattr(m_path.c_str(), attribute, into, size);
        });
    }
    /// Each name ends with a NUL.
    Error GetNames(std::string& names) const {
        return Fill(names, [&](char* into, std::size_t size) {
            return m_file.IsOpen() ? ::flistxattr(Descriptor(m_file), into, size)
                                   : ::llistxattr(m_path.c_str(), into, size);
        });
    }
    /// File systems and systems without attributes have none.
    static bool SaysNone(Error error) noexcept {
        return error == ENODATA || error == EOPNOTSUPP || error == ENOSYS;
    }

private:
    template <class Call> static Error Fill(std::string& bytes, Call const& call) {
        bytes.resize(MostBytes);
        ssize_t const size = RepeatWhenInterrupted([&] { return call(bytes.data(), bytes.size()); });
        Error const error = size < 0 && !SaysNone(errno) ? errno : 0;
        bytes.resize(size < 0 ? 0 : static_cast<std::size_t>(size));
        return error;
    }

    File m_file;
    std::string m_path;
};

Error Set(int file, char const* attribute, std::string const& value) noexcept {
    return ErrorOf([&] { return ::fsetxattr(file, attribute, value.data(), value.size(), 0); });
}

unsigned NumberAt(std::string_view bytes, std::size_t at) noexcept {
    return static_cast<unsigned char>(bytes[at]) | unsigned{static_cast<unsigned char>(bytes[at + 1])} << 8;
}

/// The permissions for a file that doesn't get this list: those that each of its entries gives. The list is
/// as Linux hands it out: four bytes, then per entry two of kind, two of rights and four of user or group.
mode_t WithoutList(std::string_view list, mode_t mode) noexcept {
    enum Kind : unsigned { User = 0x02, OwningGroup = 0x04, Group = 0x08, Mask = 0x10 };
    unsigned group = All, named = All, mask = All;
    for (std::size_t at = 4; at + 8 <= list.size(); at += 8) {
        unsigned const kind = NumberAt(list, at), rights = NumberAt(list, at + 2) & All;
        group &= kind == OwningGroup ? rights : All;
        named &= kind == User || kind == Group ? rights : All;
        mask &= kind == Mask ? rights : All;
    }
    return WithRights(mode, group & named & mask, mode & named & mask);
}

/// Gives the new file the access list of the old one, or none. `mode` becomes what it may have then.
bool TakeOverList(Attributes const& old, int made, bool mayHaveIt, mode_t& mode) {
    std::string list;
    bool const isKnown = old.Get(AccessListName, list) == 0;
    if (isKnown && mayHaveIt && !list.empty() && Set(made, AccessListName, list) == 0) {
        return true;
    }
    mode = isKnown ? (list.empty() ? mode : WithoutList(list, mode)) : WithRights(mode, 0, 0);
    // The folder may have given it one.
    Error const error = ErrorOf([&] { return ::fremovexattr(made, AccessListName); });
    bool const hasNone = error == 0 || Attributes::SaysNone(error);
    mode = hasNone ? mode : WithRights(mode, 0, mode & All);
    return isKnown && list.empty() && hasNone;
}

/// Those of users and of file systems. Those of the kernel's own keeping ("security.", "trusted.") are given
/// to a new file by the system.
bool TakeOverAttributes(Attributes const& old, int made) {
    std::string names, value;
    bool areKept = old.GetNames(names) == 0;
    for (std::size_t at = 0; at < names.size(); at += std::strlen(names.c_str() + at) + 1) {
        char const* const name = names.c_str() + at;
        std::string_view const text = name;
        if (text.substr(0, 5) == "user." || (text.substr(0, 7) == "system." && text != AccessListName)) {
            areKept = old.Get(name, value) == 0 && Set(made, name, value) == 0 && areKept;
        }
    }
    return areKept;
}

#endif

} // namespace

// Owner and group come first, since a change of them resets some of the permissions; these come last, for
// what the others ask for may be no longer allowed then.
Error TakeOver(int folder, NativePath const& name, struct stat const& old, int made, unsigned& losses) {
    // Only a privileged process can give a file away; the others keep the group where they are in it.
    if (::fchown(made, old.st_uid, old.st_gid) != 0) {
        [[maybe_unused]] int const ignored = ::fchown(made, static_cast<uid_t>(-1), old.st_gid);
    }
    struct stat now {};
    if (Error const error = ErrorOf([&] { return ::fstat(made, &now); })) {
        return error;
    }
    bool const isSameOwner = now.st_uid == old.st_uid, isSameGroup = now.st_gid == old.st_gid;
    auto const keep = [&](bool isKept, Loss loss) { losses |= isKept ? 0u : loss; };
    keep(isSameOwner && isSameGroup, OwnerLost);
    keep(old.st_nlink == 1, LinksLost);
    mode_t mode = old.st_mode & 07777;
#ifdef __linux__
    Attributes const attributes(folder, name);
    keep(TakeOverAttributes(attributes, made), AttributesLost);
    keep(TakeOverList(attributes, made, isSameGroup, mode), AccessListLost);
    if (Error const error = ErrorOf([&] { return ::fstat(made, &now); })) {
        return error;
    }
#else
    static_cast<void>(folder);
    static_cast<void>(name);
#endif
    mode = ForOthers(mode, isSameOwner, isSameGroup);
    bool const isSame = ((now.st_mode ^ mode) & 07777) == 0;
    return isSame ? 0 : ErrorOf([&] { return ::fchmod(made, mode); });
}

} // namespace Zantrel::Io
#endif
