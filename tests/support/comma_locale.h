// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <locale>
#include <string>

namespace TestSupport {

/// Numbers as in "1.234,5", and a word for true that no file has.
template <class Char> struct CommaNumbers : std::numpunct<Char> {
    Char do_decimal_point() const override { return ','; }
    Char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
    std::basic_string<Char> do_truename() const override { return {'w', 'a', 'h', 'r'}; }
};

/// While it lives, streams write and read so.
class CommaLocale {
public:
    CommaLocale() {
        std::locale const narrow(m_old, new CommaNumbers<char>);
        std::locale::global(std::locale(narrow, new CommaNumbers<wchar_t>));
    }
    CommaLocale(CommaLocale const&) = delete;
    CommaLocale& operator=(CommaLocale const&) = delete;
    ~CommaLocale() { std::locale::global(m_old); }

private:
    std::locale m_old;
};

} // namespace TestSupport
