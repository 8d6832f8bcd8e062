// SPDX-License-Identifier: Apache-2.0
#include "errors.h"

#include <cerrno>

namespace ZantrelPython {

void RaiseUnknownName(std::wstring const& name, std::wstring const& where,
                      std::vector<std::wstring> const& names) {
    // Compared one by one, and so only where the list is of a size that a person would look through.
    constexpr std::size_t compared = 2000;
    std::wstring sentence = L'"' + name + L"\" isn't in " + where;
    if (names.size() <= compared) {
        py::list known;
        for (std::wstring const& one : names) {
            known.append(StrOf(one));
        }
        py::list const near = py::module_::import("difflib").attr("get_close_matches")(StrOf(name), known);
        for (std::size_t i = 0; i < near.size(); ++i) {
            sentence += (i == 0 ? L"; did you mean \"" : L", \"") + WideOf(near[i]) + L'"';
        }
        sentence += near.size() != 0 ? L"?" : L"";
    }
    PyErr_SetObject(PyExc_KeyError, StrOf(sentence).ptr());
    throw py::error_already_set();
}

void RaiseValueError(std::wstring const& sentence) {
    PyErr_SetObject(PyExc_ValueError, StrOf(sentence).ptr());
    throw py::error_already_set();
}

void RaiseFileError(std::wstring const& path, std::wstring const& sentence, std::error_code error) {
    // Python's classes go by errno, into which the standard library puts what other systems say.
    std::error_condition const condition = error.default_error_condition();
    int const number = condition.category() == std::generic_category() ? condition.value() : EIO;
    py::object const exception = FilesNamed("error_of")(number, StrOf(path), StrOf(sentence));
    PyErr_SetObject(py::type::of(exception).ptr(), exception.ptr());
    throw py::error_already_set();
}

void Warn(char const* category, py::str const& sentence) {
    // Not as bytes, which a file's name with lone surrogates hasn't.
    if (PyErr_WarnFormat(TypeNamed(category).ptr(), 1, "%U", sentence.ptr()) != 0) {
        throw py::error_already_set();
    }
}

std::wstring NameOf(Text const& text) {
    if (text.value.find(L'\0') != std::wstring::npos) {
        throw py::value_error("a name can't hold a null character");
    }
    return text.value;
}

} // namespace ZantrelPython
