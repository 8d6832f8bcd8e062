// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "texts.h"

#include <string>
#include <utility>
#include <vector>

namespace ZantrelPython {

/// A class or function of zantrel/_types.py.
inline py::object TypeNamed(char const* name) { return py::module_::import("zantrel._types").attr(name); }

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

/// OSError of a file that can't be read or written, as Python has it, with the library's sentence.
[[noreturn]] void RaiseFileError(std::wstring const& path, std::wstring const& sentence, bool isWritten);

/// warnings.warn at the Python line that called the extension.
void Warn(char const* category, py::str const& sentence);

/// ValueError for a name that holds a null, which the library would take for its end.
std::wstring NameOf(Text const& text);

} // namespace ZantrelPython
