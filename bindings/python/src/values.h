// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "node.h"

#include <zantrel/database/parameter_view.h>

#include <string>

namespace ZantrelPython {

/// The value at a cursor as int, float, bool, str or Attachment; None where no value stands.
py::object ValueOf(Zantrel::ParameterView const& cursor);
/// A node's type as Type; as int where it is a number that is none.
py::object TypeOf(Zantrel::LayoutNode const& layout);
/// The value that a layout's text stands for at a node of this type; None where it is empty or no such value.
py::object ValueOfText(Zantrel::eTypeLayoutNode type, std::wstring const& text);
/// The same of the text of a least or greatest value, which may have a fraction where the type has none.
py::object LimitOfText(Zantrel::eTypeLayoutNode type, std::wstring const& text);
/// The text of a default or limit that a layout gets from Python.
std::wstring LayoutTextOf(py::handle value);

/// What a user gets for `node`: the value of a parameter, otherwise the node.
py::object ValueOrNode(std::shared_ptr<Node> const& node);
/// The content of a node as dict, list or value; with default profiles under "::Default::" where wanted.
py::object ContentOf(Node& node, bool withDefaults);

/// Sets a parameter from a Python value or a text. TypeError for a value of another kind; Refused, a
/// ValueError, for what the layout doesn't allow, unless `isForced`, and for what is no value at all.
void SetValue(Node& parameter, py::handle value, bool isForced);
/// Whether what they hold is the same; `content` is what ContentOf has given.
bool HaveSameContent(py::object const& content, py::object const& other);
/// TypeError: "Power takes a number, not list".
[[noreturn]] void RaiseWrongType(Node& node, char const* wanted, py::handle value);

} // namespace ZantrelPython
