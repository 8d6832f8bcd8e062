// SPDX-License-Identifier: Apache-2.0
#include "bindings.h"
#include "functions.h"

#include <zantrel/version.h>

PYBIND11_MODULE(_zantrel, module) {
    module.doc() = "What the package zantrel is made of; see there.";
    module.attr("__version__") = Zantrel::Version();
    // In an order in which the forms of functions can name the classes that they take.
    ZantrelPython::BindLayouts(module);
    ZantrelPython::BindNodes(module);
    ZantrelPython::BindDatabases(module);
    ZantrelPython::BindTickets(module);
    ZantrelPython::FinishFunctions(module);
}
