// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>

/// How lines reach the user: in UTF-8, with control characters of the files made visible, so that a value can
/// neither break a line nor command the terminal.
namespace Paramtool {

enum class Style { Plain = 0, Bold = 1, Red = 31, Green = 32 };

/// Prints a line to the standard output, with its look where that is a terminal and NO_COLOR isn't set.
void Print(std::wstring const& line, Style style = Style::Plain);

/// Prints a line to the standard error.
void PrintError(std::wstring const& line);

/// Shows how far long work on many files has come, in one line that goes again at the end; on a terminal
/// only.
class Progress {
public:
    explicit Progress(std::size_t all);
    Progress(Progress const&) = delete;
    Progress& operator=(Progress const&) = delete;
    ~Progress();
    /// Says what is worked on next.
    void Step(std::wstring const& what);

private:
    void Clear() const;

    std::size_t m_all, m_done = 0;
    bool m_isShown;
};

} // namespace Paramtool
