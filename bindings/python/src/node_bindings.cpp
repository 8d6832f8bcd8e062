// SPDX-License-Identifier: Apache-2.0
#include "documents.h"
#include "mapping.h"
#include "records.h"

#include <zantrel/database/parameter_misuse.h>
#include <zantrel/editing/choices.h>
#include <zantrel/editing/items.h>
#include <zantrel/editing/look.h>
#include <zantrel/editing/profiles.h>
#include <zantrel/editing/validation.h>
#include <zantrel/editing/value_text.h>

#include <algorithm>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace ZantrelPython {

using namespace Zantrel;
using namespace Zantrel::Editing;

namespace {

/// Asks or tells the cursor of a flag; AttributeError where it has none, so that hasattr and getattr with a
/// default work as they do with any attribute.
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
    auto const getFlag = [get](NodePointer const& node) {
        return UseFlag(*node, [get](ParameterNode& cursor) { return (cursor.*get)(); });
    };
    auto const setFlag = [set](NodePointer const& node, bool value) {
        UseFlag(*node, [set, value](ParameterNode& cursor) { (cursor.*set)(value); });
    };
    // Without conversion, since "False" would be converted to a true one.
    type.def_property(name, getFlag,
                      py::cpp_function(setFlag, py::is_method(type), py::arg("value").noconvert()));
}

/// For shells and messages: what it is, where, and what is in it, cut off where that is long.
std::wstring ReprOf(Node& node) {
    std::wstring const path = node.Path();
    LayoutNode const& layout = node.Layout();
    if (dynamic_cast<ParameterNodeOf*>(&node) != nullptr) {
        return L"<Parameter " + path + L" = " + WideOf(py::repr(ValueOf(node.Cursor()))) +
               (layout.m_postfix.empty() ? L"" : L' ' + layout.m_postfix) + L'>';
    }
    if (node.Kind() == PlaceKind::List) {
        return L"<List " + path + L" of " + std::to_wstring(node.Cursor().GetSize()) + L" x " +
               layout.m_nodeName + L'>';
    }
    std::vector<std::wstring> const names = NamesIn(node);
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

/// By content, and so of nodes of different databases, too: `row == {"X": 1}` is what tests and scripts ask.
/// Flags play no part; databases compare those, too.
bool AreEqual(NodePointer const& node, py::object const& other) {
    py::object const theirs =
        py::isinstance<Node>(other) ? ContentOf(*py::cast<NodePointer>(other), false) : other;
    return HaveSameContent(ContentOf(*node, false), theirs);
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
    type.def("validate", [](NodePointer const& node) { return FindingsOf(*node); });
    type.def("walk", [](NodePointer const& node) { return NodeWalk(node); });
    type.def("rows", [](NodePointer const& node) { return RowsOf(*node); });
    type.def("__eq__", &AreEqual);
    type.attr("__hash__") = py::none(); // equal by what can change
    // Python would take an empty list or group for false, and `if node:` is asked of what may be None.
    type.def("__bool__", [](NodePointer const&) { return true; });
    type.def("__repr__", [](NodePointer const& node) {
        try {
            return StrOf(ReprOf(*node));
        } catch (std::exception const&) { // gone, or in use by another thread: shells and logs show it still
            return StrOf(L"<Node " + node->Name() + L", which can't be seen now>");
        }
    });
    RefusePickling(
        type, "a node isn't pickled or copied: take its value, its to_dict(), or a copy of its database");
}

using ParameterClass = py::class_<ParameterNodeOf, Node, std::shared_ptr<ParameterNodeOf>>;

/// Of the layout, which has texts: None where there is no limit, and where the text is no value of the type,
/// which Layout.lint tells.
void BindLimits(ParameterClass& type) {
    static constexpr struct {
        char const* name;
        std::wstring LayoutNodeAttributes::*field;
    } texts[] = {{"min", &LayoutNodeAttributes::m_min},
                 {"max", &LayoutNodeAttributes::m_max},
                 {"default", &LayoutNodeAttributes::m_defaultValue}};
    for (auto const& row : texts) {
        type.def_property_readonly(row.name, [field = row.field](NodePointer const& node) -> py::object {
            bool const isLimit = field != &LayoutNodeAttributes::m_defaultValue;
            return (isLimit ? LimitOfText : ValueOfText)(node->Layout().m_type, node->Layout().*field);
        });
    }
}

void BindParameter(py::module_& module) {
    ParameterClass type(module, "Parameter");
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
    BindLimits(type);
    type.def_property_readonly("choices",
                               [](NodePointer const& node) { return RecordsOf(ChoicesOf(node->Place())); });
    // Asked anew each time: of a choice from profiles they come and go.
    type.def_property_readonly("options", [](NodePointer const& node) {
        py::list options;
        for (Choice const& choice : ChoicesOf(node->Place())) {
            options.append(StrOf(choice.value));
        }
        return options;
    });
    auto const objections = [](NodePointer const& node, Text const& text) {
        return RecordsOf(Objections(node->Place(), text.value));
    };
    type.def("objections", objections, py::arg("text"));
}

void BindGroup(py::module_& module) {
    py::class_<GroupNode, Node, std::shared_ptr<GroupNode>> type(module, "Group");
    RefuseMaking(type);
    BindMapping<NodePointer>(type, [](NodePointer const& node) { return node; });
    // A profile is a group as any other, but for these; others raise.
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
            Move(list, static_cast<py::ssize_t>(item->Index()), to);
        }
    } catch (...) {
        // What the value is may have run Python code, and moved or removed the item. Its node knows where it
        // stands now.
        std::size_t const now = item->Index();
        if (!item->IsGone() && RemoveItem(list->Place(), now)) {
            list->ItemRemoved(now);
        }
        throw;
    }
    return item;
}

/// The library first: where it refuses, the nodes must go on as they are.
void Remove(NodePointer const& list, std::size_t index) {
    RequireDone(RemoveItem(list->Place(), index));
    list->ItemRemoved(index);
}

/// By Python's own rules for what is missing, negative or beyond the ends.
std::vector<std::size_t> IndicesIn(Node& list, py::slice const& slice) {
    py::ssize_t start = 0, stop = 0, step = 0, length = 0;
    if (!slice.compute(static_cast<py::ssize_t>(list.Cursor().GetSize()), &start, &stop, &step, &length)) {
        throw py::error_already_set();
    }
    std::vector<std::size_t> indices;
    for (py::ssize_t i = 0; i < length; ++i) {
        indices.push_back(static_cast<std::size_t>(start + i * step));
    }
    return indices;
}

/// A list of Python's own, as a slice of a list is.
py::list GetSlice(NodePointer const& list, py::slice const& slice) {
    py::list values;
    for (std::size_t const index : IndicesIn(*list, slice)) {
        values.append(ValueOrNode(list->Item(index)));
    }
    return values;
}

/// As many as there are: others would have to be put between two items, which few layouts let a user do.
void SetSlice(NodePointer const& list, py::slice const& slice, py::iterable const& values) {
    std::vector<std::size_t> const indices = IndicesIn(*list, slice);
    py::list const wanted = KeptItems(values); // before anything is set: it may be made of the list itself
    if (wanted.size() != indices.size()) {
        throw py::value_error("a slice of " + std::to_string(indices.size()) + " items can't take " +
                              std::to_string(wanted.size()) +
                              ": append, insert, update and del change how many");
    }
    for (std::size_t i = 0; i < indices.size(); ++i) {
        auto const index = static_cast<py::ssize_t>(indices[i]);
        Update(*NodeOfItem(*list, index), py::object(wanted[i]), false);
    }
}

/// From the end, since some layouts let a user remove the last item only.
void RemoveSlice(NodePointer const& list, py::slice const& slice) {
    std::vector<std::size_t> indices = IndicesIn(*list, slice);
    std::sort(indices.begin(), indices.end(), std::greater<>());
    for (std::size_t const index : indices) {
        Remove(list, index);
    }
}

using ListClass = py::class_<ListNode, Node, std::shared_ptr<ListNode>>;

void BindSequence(ListClass& type) {
    type.def("__len__", [](NodePointer const& list) { return list->Cursor().GetSize(); });
    type.def("__iter__", [](py::object const& list) {
        return py::reinterpret_steal<py::object>(
            PySeqIter_New(list.ptr())); // as of a list: what is added comes
    });
    auto const get = [](NodePointer const& list, Index index) {
        return ValueOrNode(NodeOfItem(*list, index.value));
    };
    // Into the item that is there: it goes on to be the same one for who holds its node.
    auto const set = [](NodePointer const& list, Index index, py::object const& value) {
        Update(*NodeOfItem(*list, index.value), value, false);
    };
    auto const remove = [](NodePointer const& list, Index index) {
        Remove(list, IndexIn(*list, index.value));
    };
    type.def("__getitem__", get, py::arg("index"));
    type.def("__getitem__", &GetSlice, py::arg("index"));
    type.def("__setitem__", set, py::arg("index"), py::arg("value"));
    type.def("__setitem__", &SetSlice, py::arg("index"), py::arg("value"));
    type.def("__delitem__", remove, py::arg("index"));
    type.def("__delitem__", &RemoveSlice, py::arg("index"));
}

// Each is the library's change first, and then that of the nodes that are held: see Node.
void BindEntries(ListClass& type) {
    auto const append = [](NodePointer const& list, py::object const& value) { return Add(list, value); };
    type.def("append", append, py::arg("value") = py::none());
    auto const insert = [](NodePointer const& list, Index index, py::object const& value) {
        auto const size = static_cast<py::ssize_t>(list->Cursor().GetSize());
        py::ssize_t const counted = index.value < 0 ? index.value + size : index.value;
        return Add(list, value, std::clamp<py::ssize_t>(counted, 0, size)); // as list.insert
    };
    type.def("insert", insert, py::arg("index"), py::arg("value") = py::none());
    auto const extend = [](NodePointer const& list, py::iterable const& values) {
        // What is iterated here grows with what is added, so of itself it takes what it has by now.
        py::object const taken = values.is(py::cast(list)) ? py::list(values) : py::object(values);
        for (py::handle const value : taken) {
            Add(list, py::reinterpret_borrow<py::object>(value));
        }
    };
    type.def("extend", extend, py::arg("values"));
    auto const move = [](NodePointer const& list, Index index, Index to) {
        Move(list, index.value, to.value);
    };
    type.def("move", move, py::arg("index"), py::arg("to"));
}

void BindList(py::module_& module) {
    ListClass type(module, "List");
    RefuseMaking(type);
    BindSequence(type);
    auto const node = [](NodePointer const& list, Index index) { return NodeOfItem(*list, index.value); };
    type.def("node", node, py::arg("index"));
    BindEntries(type);
    type.def("to_list", [](NodePointer const& list) { return ContentOf(*list, false); });
    auto const update = [](NodePointer const& list, py::object const& values, bool force) {
        Update(*list, values, force);
    };
    type.def("update", update, py::arg("values"), py::kw_only(), py::arg("force") = false);
    type.def_property_readonly("default", [](NodePointer const& list) { return list->DefaultEntry(); });
    BindFlag(type, "disable_add_remove", &ParameterNode::GetDisableAddRemove,
             &ParameterNode::SetDisableAddRemove);
}

/// A profile that neither a file nor the library has marked can't be deleted, as the library has it; scripts
/// may, when they say so.
void RemoveNamed(NodePointer const& profiles, Text const& name, bool isForced) {
    NodePointer const profile = NodeNamed(*profiles, name.value);
    ParameterNode cursor = profile->Cursor();
    bool const isUnlocked = isForced && !cursor.GetCanBeDeleted();
    if (isUnlocked) {
        cursor.SetCanBeDeleted(true);
    }
    EntryChange const change = RemoveProfile(profiles->Place(), name.value);
    if (!change && isUnlocked) {
        cursor.SetCanBeDeleted(false); // something else is against it, and then nothing may have changed
    }
    RequireDone(change);
    profiles->ProfileRemoved(name.value);
}

void BindProfiles(py::module_& module) {
    py::class_<ProfilesNode, Node, std::shared_ptr<ProfilesNode>> type(module, "ProfileList");
    RefuseMaking(type);
    BindMapping<NodePointer>(type, [](NodePointer const& node) { return node; });
    type.def(
        "add",
        [](NodePointer const& profiles, Text const& name, std::optional<Text> const& copyOf) {
            if (copyOf) {
                NodeNamed(*profiles,
                          copyOf->value); // KeyError where there is none: the library has a finding
            }
            RequireDone(copyOf ? DuplicateProfile(profiles->Place(), copyOf->value, name.value)
                               : AddProfile(profiles->Place(), name.value));
            return profiles->Profile(name.value);
        },
        py::arg("name"), py::kw_only(), py::arg("copy_of") = py::none());
    auto const rename = [](NodePointer const& profiles, Text const& name, Text const& newName) {
        NodeNamed(*profiles, name.value); // KeyError, with the names most alike
        EntryChange const change = RenameProfile(profiles->Place(), name.value, newName.value);
        RequireDone(change);
        profiles->ProfileRenamed(name.value, newName.value);
        return RecordsOf(change.references);
    };
    type.def("rename", rename, py::arg("name"), py::arg("new_name"));
    type.def("remove", &RemoveNamed, py::arg("name"), py::kw_only(), py::arg("force") = false);
    auto const remove = [](NodePointer const& profiles, Text const& name) {
        RemoveNamed(profiles, name, false);
    };
    type.def("__delitem__", remove, py::arg("name"));
    // For popitem, which would otherwise list all names for each that it takes.
    type.def("_first", [](NodePointer const& profiles) { return StrOf(FirstProfile(*profiles)); });
    type.def_property_readonly("default",
                               [](NodePointer const& profiles) { return profiles->DefaultEntry(); });
    BindFlag(type, "disable_add_remove", &ParameterNode::GetDisableAddRemove,
             &ParameterNode::SetDisableAddRemove);
}

} // namespace

void BindNodes(py::module_& module) {
    py::class_<Node, std::shared_ptr<Node>> node(module, "Node");
    RefuseMaking(node);
    BindNode(node); // before those that derive from it
    BindGroup(module);
    BindList(module);
    BindProfiles(module);
    BindParameter(module);
    py::class_<NodeWalk> walk(module, "_NodeWalk");
    RefuseMaking(walk);
    walk.def("__iter__", [](py::object const& self) { return self; });
    walk.def("__next__", [](NodeWalk& self) { return self.Next(); });
}

} // namespace ZantrelPython
