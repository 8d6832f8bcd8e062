// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

/// All that the library asks of the operating system. The sources that end with _posix and _windows answer it
/// on their platform; beside them only the export macro and the width of a character depend on it.
namespace Zantrel::Io {

/// A path as the system takes it: wide on Windows, elsewhere bytes.
#ifdef _WIN32
using NativePath = std::wstring;
#else
using NativePath = std::string;
#endif
using NativePathView = std::basic_string_view<NativePath::value_type>;

/// 0, or the system's own number for what went wrong. Nothing here throws for an error of the system, but
/// where that is said.
using Error = int;
/// Of what needs more memory than there is.
#ifdef _WIN32
inline constexpr Error NoMemory = 8; // ERROR_NOT_ENOUGH_MEMORY, without the system's header
#else
inline constexpr Error NoMemory = ENOMEM;
#endif

/// What went wrong in the system's words, without a full stop.
std::wstring Describe(Error error);

/// Nothing when no file can have this path: at a lone surrogate, a NUL, or when it is empty. The locale and
/// the code page don't matter, and on Windows neither does the length.
std::optional<NativePath> ToNativePath(std::wstring_view path);

/// The other way, for any text that the system gives as a path. What is no character here becomes lone
/// surrogates, so that ToNativePath gives nothing instead of another path.
std::wstring FromNativePath(NativePath const& path);

/// Whether something has this path; a link leads on. `error` is set where the system can't tell.
bool Exists(NativePath const& path, Error& error);

/// Bits that nobody can foretell.
Error RandomBits(std::uint32_t& bits) noexcept;

/// An open file, closed with its object, without a word about what closing it says: who wants to know calls
/// Close. Moving leaves nothing open behind. The operations need an open file.
class File {
public:
    File() = default;
    explicit File(std::intptr_t handle) noexcept : m_handle(handle) {}
    File(File&& other) noexcept : m_handle(std::exchange(other.m_handle, None)) {}
    File& operator=(File&& other) noexcept {
        Close();
        m_handle = std::exchange(other.m_handle, None);
        return *this;
    }
    ~File() { Close(); }

    bool IsOpen() const noexcept { return m_handle != None; }
    /// The descriptor or handle; None where nothing is open.
    std::intptr_t Handle() const noexcept { return m_handle; }

    /// From the beginning. A folder is refused.
    Error OpenToRead(NativePath const& path);
    /// `got` is 0 at the end of the file.
    Error Read(char* into, std::size_t size, std::size_t& got) noexcept;
    /// Writes all the bytes. A pipe without a reader and a limit of the process are errors, never signals.
    Error Write(std::string_view bytes) noexcept;
    /// Cuts off what the file has behind the bytes that were written last.
    Error EndHere() noexcept;
    /// Returns when the bytes are safe on the disk.
    Error Flush() noexcept;
    Error Close() noexcept;
    /// Leaves it open for whoever has taken the handle over.
    void Release() noexcept { m_handle = None; }

    static constexpr std::intptr_t None = -1;

private:
    std::intptr_t m_handle = None;
};

/// What of a file its replacement hasn't, though the content is there. Bits of a sum.
enum Loss : unsigned {
    OwnerLost = 1 << 0,
    AccessListLost = 1 << 1,
    AttributesLost = 1 << 2,
    LinksLost = 1 << 3,      ///< other names of the old file, which go on to have the old content
    DurabilityLost = 1 << 4, ///< the move may be undone by a power loss
};

/// A file that is to be replaced as a whole: a new one is made beside it and moved over it at last. A new
/// file that hasn't been moved goes with this object; it has to be closed before. The calls come in the order
/// in which they stand here, once each, but CreateBeside until a name is free; after an error none follows
/// but OpenDirectly.
class Target {
public:
    /// What the system doesn't let anyone do who may write the file: its folder takes no new one, or nothing
    /// can be moved over it.
    enum class Refusal { None, NewFile, Move };

    Target() = default;
    Target(Target const&) = delete;
    Target& operator=(Target const&) = delete;
    ~Target();

    /// Finds the file that `path` leads to, or the place where it will be.
    Error Find(NativePath const& path);
    /// False for what can only be written to: a pipe, a device.
    bool IsReplaceable() const noexcept { return m_isReplaceable; }
    /// Opens the file itself, whose content stays.
    Error OpenDirectly(File& file) const;
    /// Removes what writers that were killed have left in the target's folder: files of such names, but the
    /// target itself, that are older than ten minutes and that no writer has open. Only among the first
    /// thousands of the folder, so that a save takes no longer the more files a folder has. What can't be
    /// removed stays.
    void RemoveLeftovers(bool (*isTemporary)(NativePathView name)) noexcept;
    /// Makes the new file, with what a move wouldn't keep of the old one: its permissions, which are never
    /// wider than they were, and what Losses doesn't tell. The name is one in the target's folder. Here or in
    /// Find it turns out when the old file may not be written.
    Error CreateBeside(NativePath const& name, File& file);
    /// Whether CreateBeside failed because another file has the name.
    static bool IsTaken(Error error) noexcept;
    /// Moves the new file, which is closed, over the old one. Where an open file can't be replaced (Windows),
    /// it tries for half a second.
    Error Replace();

    /// Whether the last error was of that kind, and there is a file that might be written in place.
    Refusal WhatIsRefused() const noexcept { return m_refusal; }
    /// Bits of Loss.
    unsigned Losses() const noexcept { return m_losses; }

private:
    File m_folder;       ///< of the target; not on Windows, where files are found by their whole path alone
    NativePath m_target; ///< its name in the folder; its whole path where it isn't replaceable and on Windows
    NativePath m_temporary; ///< the new file's, alike; empty where there is none
    bool m_exists = false;
    bool m_isReplaceable = true;
    Refusal m_refusal = Refusal::None;
    unsigned m_losses = 0;
};

} // namespace Zantrel::Io
