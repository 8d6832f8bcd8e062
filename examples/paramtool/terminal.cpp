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

void Print(std::wstring const& line, Look look) {
    static bool const isColoured = IsColoured();
    if (isColoured && look != Look::Plain) {
        std::cout << "\x1b[" << static_cast<int>(look) << 'm' << Printable(line) << "\x1b[0m\n";
    } else {
        std::cout << Printable(line) << '\n';
    }
}

void Note(std::wstring const& heading, std::vector<std::wstring> const& lines) {
    std::cout.flush();
    std::cerr << "paramtool: " << Printable(heading) << '\n';
    for (std::wstring const& line : lines) {
        std::cerr << "  " << Printable(line) << '\n';
    }
}

} // namespace Paramtool
