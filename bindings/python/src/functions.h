// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <pybind11/pybind11.h>

namespace ZantrelPython {

/// Gives what was bound its docstrings, which stand in zantrel/_docs.py, and its functions messages about
/// wrong arguments in Python's own style, by zantrel/_arguments.py. To be called when all is bound.
void FinishFunctions(pybind11::module_& module);

} // namespace ZantrelPython
