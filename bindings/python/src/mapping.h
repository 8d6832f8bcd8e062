// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "bindings.h"
#include "updates.h"
#include "values.h"

namespace ZantrelPython {

using NodePointer = Held<Node>;
using DatabasePointer = Held<DatabaseHandle>;

py::list KeysOf(Node& node);
/// KeyError for a list that has no profile.
std::wstring FirstProfile(Node& profiles);
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
/// gives the node of what it is called on. The views of it are made in zantrel/_protocols.py.
template <class Self, class Class, class ToNode> void BindMapping(Class& type, ToNode toNode) {
    type.def("_ipython_key_completions_", [=](Self const& self) { return KeysOf(*toNode(self)); });
    type.def("__iter__", [=](Self const& self) { return py::iter(KeysOf(*toNode(self))); });
    type.def("__len__", [=](Self const& self) { return NamesIn(*toNode(self)).size(); });
    type.def("__contains__",
             [=](Self const& self, Text const& name) { return Contains(*toNode(self), name.value); });
    type.def("__contains__", [](Self const&, py::object const&) { return false; });
    auto const getItem = [=](Self const& self, Text const& name) {
        return ValueOrNode(NodeNamed(*toNode(self), name.value));
    };
    type.def("__getitem__", getItem, py::arg("name"));
    auto const setItem = [=](Self const& self, Text const& name, py::object const& value) {
        UpdateNamed(*toNode(self), name.value, value, false);
    };
    type.def("__setitem__", setItem, py::arg("name"), py::arg("value"));
    auto const get = [=](Self const& self, Text const& name, py::object const& fallback) {
        NodePointer const node = toNode(self);
        return Contains(*node, name.value) ? ValueOrNode(NodeNamed(*node, name.value)) : fallback;
    };
    type.def("get", get, py::arg("key"), py::arg("default") = py::none());
    auto const node = [=](Self const& self, Text const& name) {
        return NodeNamed(*toNode(self), name.value);
    };
    type.def("node", node, py::arg("name"));
    auto const update = [=](Self const& self, py::object const& values, bool force, py::kwargs const& named) {
        UpdateAll(*toNode(self), values, named, force);
    };
    type.def("update", update, py::arg("values") = py::none(), py::pos_only(), py::kw_only(),
             py::arg("force") = false);
    auto const toDict = [=](Self const& self, bool defaults) { return ContentOf(*toNode(self), defaults); };
    type.def("to_dict", toDict, py::kw_only(), py::arg("default_profiles") = false);
}

} // namespace ZantrelPython
