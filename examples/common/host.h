// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/zantrel.h>

#include <filesystem>
#include <iosfwd>
#include <string>
#include <type_traits>
#include <vector>

/// What the hosts share: how a file is read or refused, what is told about it, and how a program ends. Texts
/// go to the terminal in UTF-8, whatever the locale.
namespace Host {

/// Throws std::runtime_error with the sentence in UTF-8.
[[noreturn]] void Fail(std::wstring const& sentence);

/// What a program was told behind its name, in UTF-8 on every system.
using Arguments = std::vector<std::string>;

std::filesystem::path PathOf(std::string const& argument);

/// A path as the wide text that the library takes.
std::wstring Wide(std::filesystem::path const& path);

/// Fails when both are one file.
void RefuseToReplace(std::filesystem::path const& input, std::filesystem::path const& output);

/// "file:line:column: sentence (path of elements)"; the sentence alone where there is no place to name.
std::wstring TextOf(std::wstring const& path, Zantrel::ReadReport::Entry const& entry);

/// Fails with the cause that ended the read.
[[noreturn]] void FailToRead(std::wstring const& path, Zantrel::ReadReport const& report);

/// Reads the file into a database or, with all that it says, into a layout, and fails when that can't be
/// done.
template <class Target> Zantrel::ReadReport Read(Target& target, std::wstring const& path) {
    Zantrel::ReadReport report;
    bool isRead = false;
    if constexpr (std::is_base_of_v<Zantrel::ParameterLayout, Target>) {
        isRead = Zantrel::ReadWholeFile(target, path, &report);
    } else {
        isRead = Zantrel::ReadFile(target, path, &report);
    }
    if (!isRead) {
        FailToRead(path, report);
    }
    return report;
}

/// Prints what the read passed over, a line for each.
void ShowPassedOver(std::wstring const& path, Zantrel::ReadReport const& report, std::ostream& out);

/// The body of main: gives the status of `run`, or prints what it throws as one sentence and gives `failure`.
int Main(char const* name, int argc, char const* const* argv, int (*run)(Arguments const&), int failure = 1);

} // namespace Host
