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
    MStreamTextOut& operator<<(bool value);
    MStreamTextOut& operator<<(unsigned long long value);
    template <class T> MStreamTextOut& operator<<(T const&) = delete;

    std::string str() const { return m_text; }

private:
    std::string m_text;
};

/// Into wide text; also takes a 32-bit integer with its sign.
template <> class ZANTREL_EXPORT MStreamTextOut<wchar_t> {
public:
    MStreamTextOut& operator<<(bool value);
    MStreamTextOut& operator<<(unsigned long long value);
    MStreamTextOut& operator<<(std::int32_t value);
    template <class T> MStreamTextOut& operator<<(T const&) = delete;

    std::wstring str() const { return m_text; }

private:
    std::wstring m_text;
};
