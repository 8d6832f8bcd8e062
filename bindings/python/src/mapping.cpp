// SPDX-License-Identifier: Apache-2.0
#include "mapping.h"

#include "errors.h"
#include "records.h"

#include <zantrel/database/walk.h>

#include <unordered_map>
#include <utility>

namespace ZantrelPython {

using namespace Zantrel;

namespace {

/// What rows of one layout node share, made once for all of them.
struct Column {
    py::object unit, type;
};

} // namespace

// The children of a node are looked up when the walk comes to it, so that it goes on with what is there by
// then.
NodePointer NodeWalk::Next() {
    while (!m_open.empty() && m_open.back()->HasGone()) {
        m_open.pop_back();
    }
    if (m_open.empty()) {
        throw py::stop_iteration();
    }
    std::vector<std::wstring> const names = NamesIn(*m_open.back());
    NodePointer node = std::move(m_open.back());
    m_open.pop_back();
    for (std::size_t i = names.size(); i-- != 0;) {
        m_open.push_back(node->Kind() == PlaceKind::List ? node->Item(i) : NodeNamed(*node, names[i]));
    }
    return node;
}

py::list KeysOf(Node& node) {
    py::list keys;
    for (std::wstring const& name : NamesIn(node)) {
        keys.append(StrOf(name));
    }
    return keys;
}

// The walk stops there, however many profiles follow.
std::wstring FirstProfile(Node& profiles) {
    Walk walk(profiles.Cursor(), SameNames::FirstOnly);
    while (walk.Next()) {
        if (walk.Kind() == PlaceKind::Profile) {
            return std::wstring(walk.Name());
        }
        if (walk.Depth() != 0) {
            walk.SkipContent(); // of the default profile
        }
    }
    throw py::key_error(py::cast<std::string>(StrOf(profiles.Path())) + " has no profiles");
}

// A group's names are the layout's; the cursor is asked all the same, so that a stale node raises.
bool Contains(Node& node, std::wstring const& name) {
    return node.Kind() == PlaceKind::ProfileList
               ? HasProfile(node, name)
               : (node.Cursor(), node.Layout().m_type == Group && node.Layout().GetNode(name) != nullptr);
}

py::list RowsOf(Node& top) {
    py::object const row = TypeNamed("Row");
    auto* const rowType = reinterpret_cast<PyTypeObject*>(row.ptr());
    if (PyType_Check(row.ptr()) == 0 || PyType_IsSubtype(rowType, &PyTuple_Type) == 0) {
        throw py::type_error("zantrel._types.Row must be a tuple's class"); // somebody has put another there
    }
    std::wstring const above = top.Path();
    std::unordered_map<LayoutNode const*, Column> columns;
    py::list rows;
    Walk walk(top.Cursor(), SameNames::FirstOnly);
    Busy const busy(*top.Database()); // see ContentOf
    while (walk.Next()) {
        LayoutNode const& layout = walk.Layout();
        if (!walk.IsLeaf() || layout.m_type == Group || !walk.Node().IsValid()) {
            continue;
        }
        Column& column = columns[&layout];
        if (!column.unit) {
            column = {StrOf(layout.m_postfix), TypeOf(layout)};
        }
        std::wstring path = above;
        path.append(above.empty() || walk.Path().empty() ? L"" : L"_").append(walk.Path());
        // As Row._make does it: a call of the class costs more than all the rest.
        py::tuple const fields = py::make_tuple(StrOf(path), ValueOf(walk.Node()), column.unit, column.type);
        py::tuple const arguments = py::make_tuple(fields);
        PyObject* const made = PyTuple_Type.tp_new(rowType, arguments.ptr(), nullptr);
        if (made == nullptr) {
            throw py::error_already_set();
        }
        rows.append(py::reinterpret_steal<py::object>(made));
    }
    return rows;
}

// The place is made first, under the lock: it may raise. Then nobody else gets at the database until the
// check is over, and other threads of Python go on.
py::list FindingsOf(Node& node) {
    Editing::Place const place = node.Place();
    std::vector<Editing::Finding> findings;
    {
        Busy const busy(*node.Database());
        Unlocked const unlocked;
        findings = Editing::Validate(Editing::PlaceView(place));
    }
    return RecordsOf(findings);
}

} // namespace ZantrelPython
