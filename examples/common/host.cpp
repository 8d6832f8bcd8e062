// SPDX-License-Identifier: Apache-2.0
//
// What every host needs around the library: arguments and paths in the texts that it takes, its reports as
// lines for a user, failures as one sentence.
//
// To look at: ReadReport::Format and the entries of a report; StringConversion, between the library's wide
// texts and UTF-8.

#include "common/host.h"

#include <exception>
#include <iostream>
#include <stdexcept>
#include <system_error>

#ifdef _WIN32
#include <windows.h>

#include <shellapi.h>
#endif

namespace Host {

using StringConversion::NativeToUtf8;
using Zantrel::ReadReport;

void Fail(std::wstring const& sentence) { throw std::runtime_error(NativeToUtf8(sentence)); }

// UTF-8 is a text of char in C++17 and of char8_t from C++20 on, where paths take that and deprecate u8path.
using Utf8 = decltype(std::filesystem::path().u8string());

std::filesystem::path PathOf(std::string const& argument) {
    Utf8 const text(argument.begin(), argument.end());
#ifdef __cpp_char8_t
    return text;
#else
    return std::filesystem::u8path(text);
#endif
}

std::wstring Wide(std::filesystem::path const& path) {
    Utf8 const text = path.u8string();
    return StringConversion::Utf8ToNative(std::string(text.begin(), text.end()));
}

void RefuseToReplace(std::filesystem::path const& input, std::filesystem::path const& output) {
    std::error_code ignored; // where nothing can be found out, the two are not one file
    if (std::filesystem::equivalent(input, output, ignored)) {
        Fail(L"The result would replace the file that is read: " + Wide(output));
    }
}

std::wstring TextOf(std::wstring const& path, ReadReport::Entry const& entry) {
    std::wstring const text = ReadReport::Format(entry);
    return entry.line == 0 ? text : path + L':' + text;
}

void FailToRead(std::wstring const& path, ReadReport const& report) {
    // The cause ends the read, so it stands last.
    Fail(report.m_entries.empty() ? L"Can't read " + path : TextOf(path, report.m_entries.back()));
}

void ShowPassedOver(std::wstring const& path, ReadReport const& report, std::ostream& out) {
    if (report.m_entries.empty()) {
        out << "Everything in it was taken.\n";
        return;
    }
    out << "Passed over:\n";
    for (ReadReport::Entry const& entry : report.m_entries) {
        out << "  " << NativeToUtf8(TextOf(path, entry)) << '\n';
    }
    if (report.m_leftOut != 0) {
        out << "  and " << report.m_leftOut << " more\n";
    }
}

namespace {

#ifdef _WIN32
/// Those that main is given are in a code page that lacks most characters.
Arguments ReadArguments(int, char const* const*) {
    int count = 0;
    wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &count);
    Arguments arguments;
    for (int i = 1; i < count; ++i) {
        arguments.push_back(NativeToUtf8(wide[i]));
    }
    LocalFree(wide);
    SetConsoleOutputCP(CP_UTF8);
    return arguments;
}
#else
Arguments ReadArguments(int argc, char const* const* argv) { return {argv + (argc > 0), argv + argc}; }
#endif

} // namespace

int Main(char const* name, int argc, char const* const* argv, int (*run)(Arguments const&), int failure) {
    try {
        int const status = run(ReadArguments(argc, argv));
        if (!std::cout.flush()) {
            throw std::runtime_error("Can't write to the standard output");
        }
        return status;
    } catch (std::exception const& error) {
        std::cout.flush();
        std::cerr << name << ": " << error.what() << '\n';
        return failure;
    }
}

} // namespace Host
