// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>

#include <cstdint>
#include <string>

/// Formats numbers and flags as text, whatever the locale: integers in plain decimal, flags as "true" and
/// "false". Takes the listed types and no other, so that a pointer can't print as a flag nor a double lose
/// its fraction. What is formatted is appended; str() gives all of it. A value that belongs to one thread at
/// a time.
template <class Char> class MStreamTextOut;

/// Into narrow text, which is ASCII.
template <> class ZANTREL_EXPORT MStreamTextOut<char> {
public:
    /// Each call appends and gives the stream itself, so that calls chain. They throw std::bad_alloc only.
    MStreamTextOut& operator<<(bool value);
    MStreamTextOut& operator<<(unsigned long long value);
    /// Refused while compiling, so that no type is converted on the way.
    template <class T> MStreamTextOut& operator<<(T const&) = delete;

    /// A copy of all that was formatted so far; formatting may go on.
    std::string str() const { return m_text; }

private:
    std::string m_text;
};

/// Into wide text; also takes a 32-bit integer with its sign.
template <> class ZANTREL_EXPORT MStreamTextOut<wchar_t> {
public:
    /// As for narrow text.
    MStreamTextOut& operator<<(bool value);
    MStreamTextOut& operator<<(unsigned long long value);
    MStreamTextOut& operator<<(std::int32_t value);
    template <class T> MStreamTextOut& operator<<(T const&) = delete;

    /// A copy of all that was formatted so far; formatting may go on.
    std::wstring str() const { return m_text; }

private:
    std::wstring m_text;
};
