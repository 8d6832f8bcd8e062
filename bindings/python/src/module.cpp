// SPDX-License-Identifier: Apache-2.0
#include "bindings.h"
#include "functions.h"

#include <zantrel/version.h>

namespace {

namespace py = pybind11;

/// Makes the instances of each class larger than those of its base. Python lets an object go over to another
/// class, by __class__ or a subclass's __bases__, where both have instances of one layout; what is in it
/// would then be taken for what it isn't. Before there is any instance or subclass.
void KeepApart(py::module_& module) {
    for (auto const& [name, thing] : py::dict(module.attr("__dict__"))) {
        if (PyType_Check(thing.ptr()) != 0) {
            auto* const type = reinterpret_cast<PyTypeObject*>(thing.ptr());
            type->tp_basicsize = type->tp_base->tp_basicsize + static_cast<py::ssize_t>(sizeof(void*));
        }
    }
}

} // namespace

PYBIND11_MODULE(_zantrel, module) {
    module.doc() = "What the package zantrel is made of; see there.";
    module.attr("__version__") = Zantrel::Version();
    // In an order in which the forms of functions can name the classes that they take.
    ZantrelPython::BindLayouts(module);
    ZantrelPython::BindNodes(module);
    ZantrelPython::BindDatabases(module);
    ZantrelPython::BindTickets(module);
    KeepApart(module);
    ZantrelPython::FinishFunctions(module);
}
