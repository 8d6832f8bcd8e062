// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "texts.h"

#include <pybind11/stl.h>

namespace ZantrelPython {

void BindLayouts(py::module_& module);
void BindDatabases(py::module_& module);
void BindTickets(py::module_& module);

/// Makes pickling a TypeError that says what to do instead.
template <class Class> void RefusePickling(Class& type, char const* sentence) {
    type.def("__reduce_ex__",
             [sentence](py::object const&, int) -> py::object { throw py::type_error(sentence); });
}

} // namespace ZantrelPython
