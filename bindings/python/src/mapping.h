// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "bindings.h"
#include "updates.h"
#include "values.h"

namespace ZantrelPython {

using NodePointer = Held<Node>;
using DatabasePointer = Held<DatabaseHandle>;

py::list KeysOf(Node& node);
py::list ValuesOf(Node& node);
py::list ItemsOf(Node& node);
bool Contains(Node& node, std::wstring const& name);
py::list RowsOf(Node& node);
py::list FindingsOf(Node& node);

/// A node and all below it, one after another. It holds nodes, and so what is changed meanwhile can't end it.
class NodeWalk {
public:
    /// Throws for a node that has gone; those that go later are left out.
    explicit NodeWalk(NodePointer top) {
        top->Place();
        m_open.push_back(std::move(top));
    }
    NodePointer Next();

private:
    std::vector<NodePointer> m_open;
};

/// Dict's protocol, for groups, for profile lists and for a database, which is its profile editor; `toNode`
/// gives the node of what it is called on.
template <class Self, class Class, class ToNode> void BindMapping(Class& type, ToNode toNode) {
    type.def("keys", [=](Self const& self) { return KeysOf(*toNode(self)); });
    type.def("values", [=](Self const& self) { return ValuesOf(*toNode(self)); });
    type.def("items", [=](Self const& self) { return ItemsOf(*toNode(self)); });
    type.def("_ipython_key_completions_", [=](Self const& self) { return KeysOf(*toNode(self)); });
    type.def("__iter__", [=](Self const& self) { return py::iter(KeysOf(*toNode(self))); });
    type.def("__len__", [=](Self const& self) { return NamesIn(*toNode(self)).size(); });
    type.def("__contains__",
             [=](Self const& self, Text const& name) { return Contains(*toNode(self), name.value); });
    type.def("__contains__", [](Self const&, py::object const&) { return false; });
    type.def("__getitem__", [=](Self const& self, Text const& name) {
        return ValueOrNode(NodeNamed(*toNode(self), name.value));
    });
    type.def("__setitem__", [=](Self const& self, Text const& name, py::object const& value) {
        UpdateNamed(*toNode(self), name.value, value, false);
    });
    auto const get = [=](Self const& self, Text const& name, py::object const& fallback) {
        NodePointer const node = toNode(self);
        return Contains(*node, name.value) ? ValueOrNode(NodeNamed(*node, name.value)) : fallback;
    };
    type.def("get", get, py::arg("key"), py::arg("default") = py::none());
    type.def("node",
             [=](Self const& self, Text const& name) { return NodeNamed(*toNode(self), name.value); });
    auto const update = [=](Self const& self, py::object const& values, bool force) {
        Update(*toNode(self), values, force);
    };
    type.def("update", update, py::arg("values"), py::kw_only(), py::arg("force") = false);
    auto const toDict = [=](Self const& self, bool defaults) { return ContentOf(*toNode(self), defaults); };
    type.def("to_dict", toDict, py::kw_only(), py::arg("default_profiles") = false);
}

} // namespace ZantrelPython
