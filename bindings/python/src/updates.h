// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "node.h"

#include <string>

namespace ZantrelPython {

/// Sets what a mapping or sequence names, or one value; adds profiles and items that aren't there. A profile
/// or item whose content is refused isn't added; what was set before stays.
void Update(Node& node, py::handle values, bool isForced);
/// The same for what stands in a group or profile list under a name; KeyError where a group has none.
void UpdateNamed(Node& node, std::wstring const& name, py::handle values, bool isForced);
/// As dict.update: `values` is None, a mapping, or pairs of a name and a value; `named` are further ones.
void UpdateAll(Node& node, py::handle values, py::dict const& named, bool isForced);

/// A list of the same, in which nodes are their content as it is by now.
py::list KeptItems(py::handle values);

/// The name that a Python object is in a mapping. TypeError where it is no str.
std::wstring NameIn(Node& mapping, py::handle name);

} // namespace ZantrelPython
