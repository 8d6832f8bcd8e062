// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <pybind11/pybind11.h>

#include <memory>
#include <string>
#include <utility>

namespace ZantrelPython {

namespace py = pybind11;

/// A Python str as the library's wide text, also where it holds lone surrogates, as names of files do.
struct Text {
    std::wstring value;
};

/// A str, bytes or os.PathLike as the path of a file.
struct FilePath {
    std::wstring value;
};

/// What a list takes as an index: an int, or what has __index__.
struct Index {
    py::ssize_t value = 0;
};

/// Throws the Python exception that is set where there is no such text.
inline std::wstring WideOf(py::handle text) {
    Py_ssize_t size = 0;
    std::unique_ptr<wchar_t, void (*)(void*)> const wide(PyUnicode_AsWideCharString(text.ptr(), &size),
                                                         PyMem_Free);
    if (!wide) {
        throw py::error_already_set();
    }
    return std::wstring(wide.get(), static_cast<std::size_t>(size));
}

inline py::str StrOf(std::wstring_view text) {
    PyObject* const made = PyUnicode_FromWideChar(text.data(), static_cast<Py_ssize_t>(text.size()));
    if (made == nullptr) {
        throw py::error_already_set();
    }
    return py::reinterpret_steal<py::str>(made);
}

} // namespace ZantrelPython

namespace PYBIND11_NAMESPACE {
namespace detail {

template <> struct type_caster<ZantrelPython::Text> {
    PYBIND11_TYPE_CASTER(ZantrelPython::Text, const_name("str"));

    bool load(handle source, bool) {
        if (!PyUnicode_Check(source.ptr())) {
            return false;
        }
        value.value = ZantrelPython::WideOf(source);
        return true;
    }
    static handle cast(ZantrelPython::Text const& text, return_value_policy, handle) {
        return ZantrelPython::StrOf(text.value).release();
    }
};

template <> struct type_caster<ZantrelPython::Index> {
    PYBIND11_TYPE_CASTER(ZantrelPython::Index, const_name("int"));

    bool load(handle source, bool) {
        if (PyIndex_Check(source.ptr()) == 0) {
            return false;
        }
        value.value = PyNumber_AsSsize_t(source.ptr(), PyExc_IndexError);
        if (value.value == -1 && PyErr_Occurred() != nullptr) {
            throw error_already_set(); // of a number of more than 64 bits, or of its __index__
        }
        return true;
    }
    static handle cast(ZantrelPython::Index index, return_value_policy, handle) {
        return PyLong_FromSsize_t(index.value);
    }
};

template <> struct type_caster<ZantrelPython::FilePath> {
    PYBIND11_TYPE_CASTER(ZantrelPython::FilePath, const_name("str | bytes | os.PathLike[str]"));

    bool load(handle source, bool) {
        PyObject* decoded = nullptr;
        if (PyUnicode_FSDecoder(source.ptr(), &decoded) == 0) {
            if (PyErr_ExceptionMatches(PyExc_TypeError) != 0) {
                PyErr_Clear();
                return false;
            }
            throw error_already_set(); // a path with a null in it, or one whose __fspath__ raises
        }
        value.value = ZantrelPython::WideOf(reinterpret_steal<object>(decoded));
        return true;
    }
    static handle cast(ZantrelPython::FilePath const& path, return_value_policy, handle) {
        return ZantrelPython::StrOf(path.value).release();
    }
};

} // namespace detail
} // namespace PYBIND11_NAMESPACE
