// SPDX-License-Identifier: Apache-2.0
#include "bindings.h"

PYBIND11_MODULE(_zantrel, module) {
    module.doc() = "What the package zantrel is made of; see there.";
    ZantrelPython::BindLayouts(module);
    ZantrelPython::BindNodes(module);
    ZantrelPython::BindDatabases(module);
    ZantrelPython::BindTickets(module);
}
