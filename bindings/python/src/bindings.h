// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "held.h"
#include "texts.h"

#include <pybind11/stl.h>

#include <string_view>

namespace ZantrelPython {

void BindLayouts(py::module_& module);
void BindLayoutNodes(py::module_& module);
void BindNodes(py::module_& module);
void BindDatabases(py::module_& module);
void BindTickets(py::module_& module);

// An object that __new__ alone has made holds nothing, and what takes it by reference would take what isn't
// there. A class that Python may make is taken by pointer only, which is looked at; all others can't be made.

/// Makes __new__ a TypeError. What it gives holds nothing, which only Held looks at: classes that are taken
/// by reference must not be made so.
template <class Class> void RefuseMaking(Class& type) {
    reinterpret_cast<PyTypeObject*>(type.ptr())->tp_new = [](PyTypeObject* made, PyObject*,
                                                             PyObject*) -> PyObject* {
        std::string_view const name = made->tp_name;
        PyErr_Format(PyExc_TypeError, "a %s is only had from the library",
                     made->tp_name + (name.rfind('.') + 1)); // npos and 1 are 0
        return nullptr;
    };
}

/// Makes pickling a TypeError that says what to do instead.
template <class Class> void RefusePickling(Class& type, char const* sentence) {
    type.def("__reduce_ex__",
             [sentence](py::object const&, int) -> py::object { throw py::type_error(sentence); });
}

} // namespace ZantrelPython
