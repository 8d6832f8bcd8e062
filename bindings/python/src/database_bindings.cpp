// SPDX-License-Identifier: Apache-2.0
#include "bindings.h"
#include "documents.h"
#include "records.h"
#include "values.h"

#include <zantrel/database/parameter_misuse.h>
#include <zantrel/database/walk.h>
#include <zantrel/editing/value_text.h>

#include <stdexcept>
#include <unordered_map>
#include <utility>

namespace ZantrelPython {

using namespace Zantrel;
using namespace Zantrel::Editing;

namespace {

using NodePointer = Held<Node>;
using DatabasePointer = Held<DatabaseHandle>;
using LayoutPointer = Held<LayoutHandle>;
using DatabaseClass = py::class_<DatabaseHandle, std::shared_ptr<DatabaseHandle>>;

/// A node and all below it, one after another. It holds nodes, and so what is changed meanwhile can't end it.
class NodeWalk {
public:
    explicit NodeWalk(NodePointer top) : m_open{std::move(top)} {}

    NodePointer Next() {
        if (m_open.empty()) {
            throw py::stop_iteration();
        }
        NodePointer node = std::move(m_open.back());
        m_open.pop_back();
        std::vector<std::wstring> const names = NamesIn(*node);
        for (std::size_t i = names.size(); i-- != 0;) {
            m_open.push_back(node->Kind() == PlaceKind::List ? node->Item(i) : NodeNamed(*node, names[i]));
        }
        return node;
    }

private:
    std::vector<NodePointer> m_open;
};

py::list KeysOf(Node& node) {
    py::list keys;
    for (std::wstring const& name : NamesIn(node)) {
        keys.append(StrOf(name));
    }
    return keys;
}

bool Contains(Node& node, Text const& name) {
    return node.Kind() == PlaceKind::ProfileList
               ? HasProfile(node, name.value)
               : (node.Cursor(),
                  node.Layout().m_type == Group && node.Layout().GetNode(name.value) != nullptr);
}

/// Dict's protocol, for groups, for profile lists and for a database, which is its profile editor.
template <class Class, class ToNode> void BindMapping(Class& type, ToNode toNode) {
    using Self = decltype(toNode.self);
    type.def("keys", [=](Self const& self) { return KeysOf(*toNode(self)); });
    type.def("_ipython_key_completions_", [=](Self const& self) { return KeysOf(*toNode(self)); });
    type.def("__iter__", [=](Self const& self) { return py::iter(KeysOf(*toNode(self))); });
    type.def("__len__", [=](Self const& self) { return NamesIn(*toNode(self)).size(); });
    type.def("__contains__",
             [=](Self const& self, Text const& name) { return Contains(*toNode(self), name); });
    type.def("__contains__", [](Self const&, py::object const&) { return false; });
    type.def("__getitem__", [=](Self const& self, Text const& name) {
        return ValueOrNode(NodeNamed(*toNode(self), name.value));
    });
    type.def(
        "get",
        [=](Self const& self, Text const& name, py::object const& fallback) {
            NodePointer const node = toNode(self);
            return Contains(*node, name) ? ValueOrNode(NodeNamed(*node, name.value)) : fallback;
        },
        py::arg("key"), py::arg("default") = py::none());
    type.def("node",
             [=](Self const& self, Text const& name) { return NodeNamed(*toNode(self), name.value); });
    type.def("values", [=](Self const& self) {
        NodePointer const node = toNode(self);
        py::list values;
        for (std::wstring const& name : NamesIn(*node)) {
            values.append(ValueOrNode(NodeNamed(*node, name)));
        }
        return values;
    });
    type.def("items", [=](Self const& self) {
        NodePointer const node = toNode(self);
        py::list items;
        for (std::wstring const& name : NamesIn(*node)) {
            items.append(py::make_tuple(StrOf(name), ValueOrNode(NodeNamed(*node, name))));
        }
        return items;
    });
    type.def(
        "update",
        [=](Self const& self, py::object const& values, bool force) { Update(*toNode(self), values, force); },
        py::arg("values"), py::kw_only(), py::arg("force") = false);
}

struct SelfNode {
    NodePointer self;
    NodePointer operator()(NodePointer const& node) const { return node; }
};
struct RootNode {
    DatabasePointer self;
    NodePointer operator()(DatabasePointer const& database) const { return Node::Root(database); }
};

py::list Validated(Node& node) {
    Editing::Place const place = node.Place();
    std::vector<Finding> findings;
    {
        Busy const busy(*node.Database());
        py::gil_scoped_release const unlocked;
        findings = Validate(PlaceView(place));
    }
    return RecordsOf(findings);
}

/// What rows of one layout node share.
struct Column {
    py::object unit, type;
};

py::list RowsOf(Node& top) {
    py::object const row = TypeNamed("Row");
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
        PyObject* const made =
            PyTuple_Type.tp_new(reinterpret_cast<PyTypeObject*>(row.ptr()), arguments.ptr(), nullptr);
        if (made == nullptr) {
            throw py::error_already_set();
        }
        rows.append(py::reinterpret_steal<py::object>(made));
    }
    return rows;
}

py::list DifferencesOf(DatabasePointer const& first, DatabasePointer const& second) {
    if (first == second) {
        return py::list();
    }
    Busy const one(*first), other(*second);
    std::vector<Difference> differences;
    {
        py::gil_scoped_release const unlocked;
        differences = Differences(*one, *other);
    }
    return RecordsOf(differences);
}

py::object Migrated(DatabasePointer const& from, LayoutPointer const& layout, py::object const& renamings) {
    std::vector<Renaming> pairs;
    if (!renamings.is_none()) {
        for (auto const& [old, now] : py::dict(renamings)) {
            pairs.push_back({WideOf(old), WideOf(now)});
        }
    }
    auto database = std::make_shared<DatabaseHandle>(layout);
    std::vector<MigrationStep> steps;
    {
        Busy const busy(*from);
        py::gil_scoped_release const unlocked;
        Migration migration = Migrate(*busy, layout->Get(), pairs);
        database->Fill(migration.database);
        steps = std::move(migration.steps);
    }
    return TypeNamed("Migration")(database, RecordsOf(steps));
}

DatabasePointer CopyOf(DatabasePointer const& source) {
    auto copy = std::make_shared<DatabaseHandle>(source->Layout());
    {
        Busy const busy(*source);
        py::gil_scoped_release const unlocked;
        copy->Fill(*busy);
    }
    copy->m_notes = py::list(source->m_notes);
    copy->m_path = source->m_path;
    copy->m_format = source->m_format;
    return copy;
}

ReadOptions OptionsOf(Text const& format, py::object const& notes, py::object const& limits) {
    return {format.value, LimitsOf(limits), notes};
}

void BindFiles(py::module_& module, DatabaseClass& type) {
    auto const ofFormat = py::arg("format") = Text{};
    auto const toNotes = py::arg("notes") = py::none(), ofLimits = py::arg("limits") = py::none();
    module.def(
        "load",
        [](FilePath const& path, LayoutPointer const& layout, Text const& format, py::object const& notes,
           py::object const& limits) {
            return LoadDatabase(layout, {path.value, std::nullopt}, OptionsOf(format, notes, limits));
        },
        py::arg("path"), py::arg("layout"), py::kw_only(), ofFormat, toNotes, ofLimits);
    module.def(
        "loads",
        [](py::bytes const& data, LayoutPointer const& layout, Text const& format, py::object const& notes,
           py::object const& limits) {
            return LoadDatabase(layout, {L"", py::cast<std::string>(data)}, OptionsOf(format, notes, limits));
        },
        py::arg("data"), py::arg("layout"), py::kw_only(), ofFormat, toNotes, ofLimits);
    module.def(
        "check",
        [](FilePath const& path, LayoutPointer const& layout) { return CheckFile(layout, path.value); },
        py::arg("path"), py::arg("layout"));
    module.def("root_of", [](FilePath const& path) { return StrOf(RootOf({path.value, std::nullopt})); });
    module.def(
        "_edit_texts",
        [](FilePath const& path, LayoutPointer const& layout, Text const& format, py::dict const& texts) {
            return EditTexts(layout, path.value, format.value, texts);
        },
        py::arg("path"), py::arg("layout"), py::arg("format"), py::arg("texts"));
    type.def(
        "read",
        [](DatabasePointer const& self, FilePath const& path, Text const& format, py::object const& notes,
           py::object const& limits) {
            auto const copy = CopyOf(self); // so that a read that fails changes nothing
            ReadInto(*copy, {path.value, std::nullopt}, OptionsOf(format, notes, limits));
            self->TakeOver(*copy);
        },
        py::arg("path"), py::kw_only(), ofFormat, toNotes, ofLimits);
    type.def(
        "save",
        [](DatabasePointer const& self, FilePath const& path, Text const& format, bool inPlace) {
            SaveDatabase(*self, path, format.value, inPlace);
        },
        py::arg("path"), py::kw_only(), ofFormat, py::arg("in_place") = false);
    type.def(
        "dumps",
        [](DatabasePointer const& self, Text const& format) {
            return SaveDatabase(*self, std::nullopt, format.value, false);
        },
        py::kw_only(), ofFormat);
}

void BindDatabase(py::module_& module, DatabaseClass& type) {
    type.def(py::init([](LayoutPointer const& layout) {
                 auto database = std::make_shared<DatabaseHandle>(layout);
                 database->Fill();
                 return database;
             }),
             py::arg("layout"));
    BindFiles(module, type);
    BindMapping(type, RootNode());
    type.def_property_readonly("root", [](DatabasePointer const& self) { return Node::Root(self); });
    type.def_property_readonly("layout", [](DatabasePointer const& self) { return self->Layout(); });
    type.def_property_readonly("notes", [](DatabasePointer const& self) { return self->m_notes; });
    type.def_property_readonly("path", [](DatabasePointer const& self) { return StrOf(self->m_path); });
    type.def_property_readonly("format", [](DatabasePointer const& self) { return StrOf(self->m_format); });
    type.def("at", [](DatabasePointer const& self, Text const& path) {
        return NodeAt(*Node::Root(self), path.value);
    });
    type.def(
        "set",
        [](DatabasePointer const& self, Text const& path, py::object const& value, bool force) {
            Update(*NodeAt(*Node::Root(self), path.value), value, force);
        },
        py::arg("path"), py::arg("value"), py::kw_only(), py::arg("force") = false);
    type.def("__setitem__", [](DatabasePointer const& self, Text const& name, py::object const& value) {
        Update(*NodeNamed(*Node::Root(self), name.value), value, false);
    });
    type.def("walk", [](DatabasePointer const& self) { return NodeWalk(Node::Root(self)); });
    type.def(
        "to_dict",
        [](DatabasePointer const& self, bool defaults) { return ContentOf(*Node::Root(self), defaults); },
        py::kw_only(), py::arg("default_profiles") = false);
    type.def("rows", [](DatabasePointer const& self) { return RowsOf(*Node::Root(self)); });
    type.def("validate", [](DatabasePointer const& self) { return Validated(*Node::Root(self)); });
    type.def("diff", &DifferencesOf, py::arg("other"));
    type.def("migrate", &Migrated, py::arg("layout"), py::arg("renamings") = py::none());
    type.def("copy", &CopyOf);
    type.def("__copy__", &CopyOf);
    type.def("__deepcopy__", [](DatabasePointer const& self, py::object const&) { return CopyOf(self); });
    type.def(
        "__eq__",
        [](DatabasePointer const& self, DatabasePointer const& other) {
            return DifferencesOf(self, other).empty();
        },
        py::is_operator(), py::arg("other"));
    type.attr("__hash__") = py::none();
    type.def("__repr__", [](DatabasePointer const& self) {
        return StrOf(L"<Database " + self->Layout()->Get().m_name +
                     (self->m_path.empty() ? L"" : L" of " + self->m_path) + L'>');
    });
    RefusePickling(type,
                   "a database isn't pickled: pickle database.dumps() and layout.dumps(), which loads() and "
                   "Layout.loads() take");
}

// --- Nodes ---

/// Asks or tells the cursor of a flag; AttributeError where it has none.
template <class Use> auto UseFlag(Node& node, Use use) {
    ParameterNode cursor = node.Cursor();
    try {
        return use(cursor);
    } catch (ParameterMisuse const& misuse) {
        throw py::attribute_error(misuse.what());
    }
}

template <class Class>
void BindFlag(Class& type, char const* name, bool (ParameterNode::*get)() const,
              void (ParameterNode::*set)(bool)) {
    type.def_property(
        name,
        [get](NodePointer const& node) {
            return UseFlag(*node, [get](ParameterNode& cursor) { return (cursor.*get)(); });
        },
        [set](NodePointer const& node, bool value) {
            UseFlag(*node, [set, value](ParameterNode& cursor) { (cursor.*set)(value); });
        });
}

std::wstring ReprOf(Node& node) {
    std::wstring const path = node.Path();
    LayoutNode const& layout = node.Layout();
    if (dynamic_cast<ParameterNodeOf*>(&node) != nullptr) {
        return L"<Parameter " + path + L" = " + WideOf(py::repr(ValueOf(node.Cursor()))) +
               (layout.m_postfix.empty() ? L"" : L' ' + layout.m_postfix) + L'>';
    }
    std::vector<std::wstring> const names = NamesIn(node);
    if (node.Kind() == PlaceKind::List) {
        return L"<List " + path + L" of " + std::to_wstring(names.size()) + L" x " + layout.m_nodeName + L'>';
    }
    std::wstring text = (node.Kind() == PlaceKind::ProfileList ? L"<ProfileList " : L"<Group ") +
                        (path.empty() ? node.Database()->Layout()->Get().m_name : path) + L':';
    constexpr std::size_t shown = 8;
    for (std::size_t i = 0; i < names.size() && i < shown; ++i) {
        text += (i == 0 ? L" " : L", ") + names[i];
    }
    return text + (names.size() > shown ? L", ...>" : L">");
}

py::object LookOfNode(Node& node) {
    Editing::Place const place = node.Place();
    Look const look = LookOf(place);
    py::list reasons;
    for (LookReason const& reason : look.reasons) {
        reasons.append(StrOf(SentenceOf(reason, place)));
    }
    return TypeNamed("Look")(look.isVisible, look.isEditable, reasons);
}

bool AreEqual(NodePointer const& node, py::object const& other) {
    py::object const theirs =
        py::isinstance<Node>(other) ? ContentOf(*py::cast<NodePointer>(other), false) : other;
    return ContentOf(*node, false).equal(theirs);
}

void BindNode(py::class_<Node, std::shared_ptr<Node>>& type) {
    type.def_property_readonly("name", [](NodePointer const& node) { return StrOf(node->Name()); });
    type.def_property_readonly("path", [](NodePointer const& node) { return StrOf(node->Path()); });
    type.def_property_readonly("display_name",
                               [](NodePointer const& node) { return StrOf(node->Layout().m_displayName); });
    type.def_property_readonly("description",
                               [](NodePointer const& node) { return StrOf(node->Layout().m_description); });
    type.def_property_readonly("parent", [](NodePointer const& node) { return node->Parent(); });
    type.def_property_readonly("database", [](NodePointer const& node) { return node->Database(); });
    type.def_property_readonly(
        "is_default", [](NodePointer const& node) { return node->Kind() == PlaceKind::DefaultProfile; });
    type.def_property_readonly("look", [](NodePointer const& node) { return LookOfNode(*node); });
    type.def_property_readonly("visible",
                               [](NodePointer const& node) { return LookOf(node->Place()).isVisible; });
    type.def_property_readonly("editable",
                               [](NodePointer const& node) { return LookOf(node->Place()).isEditable; });
    BindFlag(type, "read_only", &ParameterNode::GetReadOnly, &ParameterNode::SetReadOnly);
    BindFlag(type, "hidden", &ParameterNode::GetHidden, &ParameterNode::SetHidden);
    type.def("validate", [](NodePointer const& node) { return Validated(*node); });
    type.def("walk", [](NodePointer const& node) { return NodeWalk(node); });
    type.def("rows", [](NodePointer const& node) { return RowsOf(*node); });
    type.def("__eq__", &AreEqual);
    type.attr("__hash__") = py::none();
    type.def("__bool__", [](NodePointer const&) { return true; });
    type.def("__repr__", [](NodePointer const& node) { return StrOf(ReprOf(*node)); });
    RefusePickling(
        type, "a node isn't pickled or copied: take its value, its to_dict(), or a copy of its database");
}

void BindParameter(py::module_& module) {
    py::class_<ParameterNodeOf, Node, std::shared_ptr<ParameterNodeOf>> type(module, "Parameter");
    RefuseMaking(type);
    type.def_property(
        "value", [](NodePointer const& node) { return ValueOf(node->Cursor()); },
        [](NodePointer const& node, py::object const& value) { SetValue(*node, value, false); });
    type.def(
        "set",
        [](NodePointer const& node, py::object const& value, bool force) { SetValue(*node, value, force); },
        py::arg("value"), py::kw_only(), py::arg("force") = false);
    type.def_property_readonly("text", [](NodePointer const& node) { return StrOf(TextOf(node->Cursor())); });
    type.def_property_readonly("unit",
                               [](NodePointer const& node) { return StrOf(node->Layout().m_postfix); });
    type.def_property_readonly("precision",
                               [](NodePointer const& node) { return node->Layout().m_precision; });
    type.def_property_readonly("type", [](NodePointer const& node) { return TypeOf(node->Layout()); });
    static constexpr struct {
        char const* name;
        std::wstring LayoutNodeAttributes::*field;
    } texts[] = {{"min", &LayoutNodeAttributes::m_min},
                 {"max", &LayoutNodeAttributes::m_max},
                 {"default", &LayoutNodeAttributes::m_defaultValue}};
    for (auto const& row : texts) {
        type.def_property_readonly(row.name, [field = row.field](NodePointer const& node) -> py::object {
            bool const isNone =
                field != &LayoutNodeAttributes::m_defaultValue && (node->Layout().*field).empty();
            return isNone ? py::none() : ValueOfText(node->Layout().m_type, node->Layout().*field);
        });
    }
    type.def_property_readonly("choices",
                               [](NodePointer const& node) { return RecordsOf(ChoicesOf(node->Place())); });
    type.def_property_readonly("options", [](NodePointer const& node) {
        py::list options;
        for (Choice const& choice : ChoicesOf(node->Place())) {
            options.append(StrOf(choice.value));
        }
        return options;
    });
    type.def("objections", [](NodePointer const& node, Text const& text) {
        return RecordsOf(Objections(node->Place(), text.value));
    });
}

void BindGroup(py::module_& module) {
    py::class_<GroupNode, Node, std::shared_ptr<GroupNode>> type(module, "Group");
    RefuseMaking(type);
    BindMapping(type, SelfNode());
    type.def("__setitem__", [](NodePointer const& node, Text const& name, py::object const& value) {
        Update(*NodeNamed(*node, name.value), value, false);
    });
    type.def(
        "to_dict", [](NodePointer const& node, bool defaults) { return ContentOf(*node, defaults); },
        py::kw_only(), py::arg("default_profiles") = false);
    BindFlag(type, "name_read_only", &ParameterNode::GetNameReadOnly, &ParameterNode::SetNameReadOnly);
    BindFlag(type, "can_be_deleted", &ParameterNode::GetCanBeDeleted, &ParameterNode::SetCanBeDeleted);
    BindFlag(type, "user_default_profile", &ParameterNode::GetUserDefaultProfile,
             &ParameterNode::SetUserDefaultProfile);
}

void Move(NodePointer const& list, py::ssize_t from, py::ssize_t to) {
    std::size_t const begin = IndexIn(*list, from), end = IndexIn(*list, to);
    RequireDone(MoveItem(list->Place(), begin, end));
    list->ItemMoved(begin, end);
}

/// A new item, with `value` unless that is None, at `to`: all of it or, unless the list then were shorter
/// than it may be, nothing.
NodePointer Add(NodePointer const& list, py::object const& value, py::ssize_t to = -1) {
    RequireDone(AddItem(list->Place()));
    std::size_t const index = list->Cursor().GetSize() - 1;
    NodePointer const item = list->Item(index);
    try {
        if (!value.is_none()) {
            Update(*item, value, false);
        }
        if (to >= 0 && static_cast<std::size_t>(to) != index) {
            Move(list, -1, to);
        }
    } catch (...) {
        if (RemoveItem(list->Place(), index)) {
            list->ItemRemoved(index);
        }
        throw;
    }
    return item;
}

py::list Sliced(Node& list, py::slice const& slice) {
    py::ssize_t start = 0, stop = 0, step = 0, length = 0;
    if (!slice.compute(static_cast<py::ssize_t>(list.Cursor().GetSize()), &start, &stop, &step, &length)) {
        throw py::error_already_set();
    }
    py::list values;
    for (py::ssize_t i = 0; i < length; ++i) {
        values.append(ValueOrNode(list.Item(static_cast<std::size_t>(start + i * step))));
    }
    return values;
}

void BindList(py::module_& module) {
    py::class_<ListNode, Node, std::shared_ptr<ListNode>> type(module, "List");
    RefuseMaking(type);
    type.def("__len__", [](NodePointer const& list) { return list->Cursor().GetSize(); });
    type.def("__iter__", [](py::object const& list) {
        return py::reinterpret_steal<py::object>(
            PySeqIter_New(list.ptr())); // as of a list: what is added comes
    });
    type.def("__getitem__", [](NodePointer const& list, py::ssize_t index) {
        return ValueOrNode(NodeOfItem(*list, index));
    });
    type.def("__getitem__",
             [](NodePointer const& list, py::slice const& slice) { return Sliced(*list, slice); });
    type.def("node", [](NodePointer const& list, py::ssize_t index) { return NodeOfItem(*list, index); });
    type.def("__setitem__", [](NodePointer const& list, py::ssize_t index, py::object const& value) {
        Update(*NodeOfItem(*list, index), value, false);
    });
    type.def("__delitem__", [](NodePointer const& list, py::ssize_t index) {
        std::size_t const counted = IndexIn(*list, index);
        RequireDone(RemoveItem(list->Place(), counted));
        list->ItemRemoved(counted);
    });
    type.def(
        "append", [](NodePointer const& list, py::object const& value) { return Add(list, value); },
        py::arg("value") = py::none());
    type.def(
        "insert",
        [](NodePointer const& list, py::ssize_t index, py::object const& value) {
            return Add(list, value, static_cast<py::ssize_t>(IndexIn(*list, index, 1)));
        },
        py::arg("index"), py::arg("value") = py::none());
    type.def("extend", [](NodePointer const& list, py::iterable const& values) {
        for (py::handle const value : values) {
            Add(list, py::reinterpret_borrow<py::object>(value));
        }
    });
    type.def("move", &Move, py::arg("index"), py::arg("to"));
    type.def("to_list", [](NodePointer const& list) { return ContentOf(*list, false); });
    type.def(
        "update",
        [](NodePointer const& list, py::object const& values, bool force) { Update(*list, values, force); },
        py::arg("values"), py::kw_only(), py::arg("force") = false);
    type.def_property_readonly("default", [](NodePointer const& list) { return list->DefaultEntry(); });
    BindFlag(type, "disable_add_remove", &ParameterNode::GetDisableAddRemove,
             &ParameterNode::SetDisableAddRemove);
}

void Remove(NodePointer const& profiles, Text const& name, bool isForced) {
    NodePointer const profile = NodeNamed(*profiles, name.value);
    if (isForced) {
        ParameterNode cursor = profile->Cursor();
        cursor.SetCanBeDeleted(true);
    }
    RequireDone(RemoveProfile(profiles->Place(), name.value));
    profiles->ProfileRemoved(name.value);
}

void BindProfiles(py::module_& module) {
    py::class_<ProfilesNode, Node, std::shared_ptr<ProfilesNode>> type(module, "ProfileList");
    RefuseMaking(type);
    BindMapping(type, SelfNode());
    type.def("__setitem__", [](NodePointer const& profiles, Text const& name, py::object const& values) {
        py::dict one;
        one[StrOf(name.value)] = values;
        Update(*profiles, one, false);
    });
    type.def(
        "add",
        [](NodePointer const& profiles, Text const& name, std::optional<Text> const& copyOf) {
            RequireDone(copyOf ? DuplicateProfile(profiles->Place(), copyOf->value, name.value)
                               : AddProfile(profiles->Place(), name.value));
            return profiles->Profile(name.value);
        },
        py::arg("name"), py::kw_only(), py::arg("copy_of") = py::none());
    type.def("rename", [](NodePointer const& profiles, Text const& name, Text const& newName) {
        EntryChange const change = RenameProfile(profiles->Place(), name.value, newName.value);
        RequireDone(change);
        profiles->ProfileRenamed(name.value, newName.value);
        return RecordsOf(change.references);
    });
    type.def("remove", &Remove, py::arg("name"), py::kw_only(), py::arg("force") = false);
    type.def("__delitem__",
             [](NodePointer const& profiles, Text const& name) { Remove(profiles, name, false); });
    type.def(
        "to_dict", [](NodePointer const& node, bool defaults) { return ContentOf(*node, defaults); },
        py::kw_only(), py::arg("default_profiles") = false);
    type.def_property_readonly("default",
                               [](NodePointer const& profiles) { return profiles->DefaultEntry(); });
    BindFlag(type, "disable_add_remove", &ParameterNode::GetDisableAddRemove,
             &ParameterNode::SetDisableAddRemove);
}

} // namespace

void BindDatabases(py::module_& module) {
    DatabaseClass database(module, "Database");
    py::class_<Node, std::shared_ptr<Node>> node(module, "Node");
    py::class_<NodeWalk> nodeWalk(module, "_NodeWalk");
    RefuseMaking(nodeWalk);
    nodeWalk.def("__iter__", [](py::object const& walk) { return walk; }).def("__next__", [](NodeWalk& walk) {
        return walk.Next();
    });
    RefuseMaking(node);
    BindNode(node);
    BindGroup(module);
    BindList(module);
    BindProfiles(module);
    BindParameter(module);
    BindDatabase(module, database);
}

} // namespace ZantrelPython
