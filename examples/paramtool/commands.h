// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace Paramtool {

/// What the command line said. Each command looks at its own.
struct Arguments {
    std::wstring layout = L"sample";
    std::wstring file;
    std::wstring second; ///< the other file of diff, the output of convert and set
    std::wstring path;
    std::wstring text;
    std::wstring contains;
    std::wstring format;
    bool changed = false;
    bool force = false;
};

/// What the program ends with.
enum Status { Same = 0, Different = 1, Failed = 2 };

// Each gives a status, or throws what made it fail.
int Show(Arguments const& arguments);
int Check(Arguments const& arguments);
int Query(Arguments const& arguments);
int Set(Arguments const& arguments);
int Diff(Arguments const& arguments);
int Convert(Arguments const& arguments);

} // namespace Paramtool
