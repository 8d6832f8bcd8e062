// SPDX-License-Identifier: Apache-2.0
//
// Output for a terminal, where a text from a file must not act as a command.

#include "terminal.h"

#include <zantrel/zantrel.h>

#include <cstdlib>
#include <iostream>

#ifdef _WIN32
#include <windows.h>
#else
#include <unistd.h>
#endif

namespace Paramtool {

namespace {

bool IsErrorTerminal() {
#ifdef _WIN32
    DWORD mode = 0; // which consoles alone have
    return GetConsoleMode(GetStdHandle(STD_ERROR_HANDLE), &mode) != 0;
#else
    return isatty(STDERR_FILENO) != 0;
#endif
}

bool IsColoured() {
#ifdef _WIN32
    HANDLE const out = GetStdHandle(STD_OUTPUT_HANDLE);
    DWORD mode = 0; // which consoles alone have
    bool const isTerminal =
        GetConsoleMode(out, &mode) && SetConsoleMode(out, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
#else
    bool const isTerminal = isatty(STDOUT_FILENO) != 0;
#endif
    char const* noColour = std::getenv("NO_COLOR");
    return isTerminal && (noColour == nullptr || *noColour == '\0');
}

/// Of one line, so that a line end in a value is a control character like the others. Those from 0x80 on have
/// no pictures, and some terminals obey them, too.
std::string Printable(std::wstring text) {
    for (wchar_t& unit : text) {
        if (unit < 0x20) {
            unit = static_cast<wchar_t>(0x2400 + unit); // its picture
        } else if (unit >= 0x7F && unit < 0xA0) {
            unit = L'\uFFFD';
        }
    }
    return StringConversion::NativeToUtf8(text);
}

} // namespace

void Print(std::wstring const& line, Style style) {
    // Asked once: on Windows asking also switches the console's handling of colours on.
    static bool const isColoured = IsColoured();
    if (isColoured && style != Style::Plain) {
        std::cout << "\x1b[" << static_cast<int>(style) << 'm' << Printable(line) << "\x1b[0m\n";
    } else {
        std::cout << Printable(line) << '\n';
    }
}

void PrintError(std::wstring const& line) {
    std::cout.flush();
    std::cerr << Printable(line) << '\n';
}

// On the standard error, so that a result that goes elsewhere has none of it; and only there is looked
// whether anybody watches.
Progress::Progress(std::size_t all) : m_all(all), m_isShown(all > 1 && IsErrorTerminal()) {}

Progress::~Progress() { Clear(); }

void Progress::Clear() const {
    if (m_isShown && m_done != 0) {
        std::cerr << "\r\x1b[K" << std::flush;
    }
}

void Progress::Step(std::wstring const& what) {
    Clear();
    ++m_done;
    if (m_isShown) {
        std::cout.flush();
        std::cerr << m_done << " of " << m_all << ": " << Printable(what).substr(0, 60) << std::flush;
    }
}

} // namespace Paramtool
