// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "texts.h"

#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace ZantrelPython {

/// A class of zantrel/_types.py.
inline py::object TypeNamed(char const* name) { return py::module_::import("zantrel._types").attr(name); }
/// A function of zantrel/_files.py.
inline py::object FilesNamed(char const* name) { return py::module_::import("zantrel._files").attr(name); }

/// Raises the exception of _types.py with these arguments.
template <class... Arguments> [[noreturn]] void Raise(char const* name, Arguments&&... arguments) {
    py::object const type = TypeNamed(name);
    py::object const exception = type(std::forward<Arguments>(arguments)...);
    PyErr_SetObject(type.ptr(), exception.ptr());
    throw py::error_already_set();
}

/// KeyError, with those of `names` that are spelt most alike.
[[noreturn]] void RaiseUnknownName(std::wstring const& name, std::wstring const& where,
                                   std::vector<std::wstring> const& names);

/// ValueError, also with words that only UTF-16 could hold.
[[noreturn]] void RaiseValueError(std::wstring const& sentence);

/// OSError of a file that can't be read or written, of the kind that Python has for what the system said.
[[noreturn]] void RaiseFileError(std::wstring const& path, std::wstring const& sentence,
                                 std::error_code error);

/// warnings.warn at the Python line that called the extension.
void Warn(char const* category, py::str const& sentence);

/// ValueError for a name that holds a null, which the library would take for its end.
std::wstring NameOf(Text const& text);

} // namespace ZantrelPython
