// SPDX-License-Identifier: Apache-2.0
#include "updates.h"

#include "records.h"
#include "values.h"

#include <zantrel/editing/items.h>
#include <zantrel/editing/profiles.h>

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace ZantrelPython {

using namespace Zantrel;
using namespace Zantrel::Editing;

namespace {

/// A dict of our own: what is set may run Python code, which may change the one that was given.
py::dict CopyOf(py::handle mapping) {
    py::dict copy;
    if (PyDict_Update(copy.ptr(), mapping.ptr()) != 0) {
        throw py::error_already_set();
    }
    return copy;
}

/// What stands at a node by now, since it may change by what is set; anything else as it is.
py::object Kept(py::handle value) {
    return py::isinstance<Node>(value) ? ContentOf(*py::cast<std::shared_ptr<Node>>(value), false)
                                       : py::reinterpret_borrow<py::object>(value);
}

py::list KeptPairs(py::handle mapping) {
    py::list pairs;
    for (auto const& [name, value] : CopyOf(mapping)) {
        pairs.append(py::make_tuple(name, Kept(value)));
    }
    return pairs;
}

/// Containers that get their content, outermost first. They stand here and not in calls within calls, since a
/// layout may be deep and the stack of a thread small.
class Filling {
public:
    explicit Filling(bool isForced) : m_isForced(isForced) {}

    /// Sets a value; a container is opened, and gets its content by the steps that follow.
    void Take(std::shared_ptr<Node> const& node, py::handle given);
    void TakeNamed(Node& node, std::wstring const& name, py::handle values);
    /// False when all is set.
    bool Step();
    /// Ends the profile or item that was being filled, if it is a new one.
    void TakeBack();

private:
    struct Level {
        std::shared_ptr<Node> node;
        py::list content; ///< the items, or pairs of a name and a value
        std::size_t size;
        std::size_t next = 0;
    };
    void Remember(std::shared_ptr<Node> const& newEntry);
    void StepInList(Node& list, py::handle value, std::size_t index);
    void EndList(Node& list, std::size_t size);

    std::vector<Level> m_levels;
    std::shared_ptr<Node> m_newEntry; ///< the outermost, with which those within it go
    std::size_t m_newDepth = 0;       ///< how many levels there were before it
    bool m_isForced;
};

void Filling::Take(std::shared_ptr<Node> const& node, py::handle given) {
    if (py::isinstance<Node>(given) && py::cast<std::shared_ptr<Node>>(given) == node) {
        return; // as after db["Rows"] += rows, where Python sets the list that has grown to itself
    }
    py::object const values = Kept(given);
    if (dynamic_cast<ParameterNodeOf*>(node.get()) != nullptr) {
        SetValue(*node, values, m_isForced);
    } else if (node->Kind() == PlaceKind::List) {
        if (PySequence_Check(values.ptr()) == 0 || PyUnicode_Check(values.ptr())) {
            RaiseWrongType(*node, "a sequence", values);
        }
        py::list items = KeptItems(values);
        std::size_t const size = items.size();
        m_levels.push_back({node, std::move(items), size});
    } else if (PyMapping_Check(values.ptr()) == 0 || !py::hasattr(values, "keys")) {
        RaiseWrongType(*node, "a mapping", values);
    } else {
        py::list pairs = KeptPairs(values);
        std::size_t const size = pairs.size();
        m_levels.push_back({node, std::move(pairs), size});
    }
}

// "::Default::" is what ContentOf calls the default profile, so that all of a dict can be set again.
void Filling::TakeNamed(Node& node, std::wstring const& name, py::handle values) {
    if (node.Kind() != PlaceKind::ProfileList) {
        Take(NodeNamed(node, name), values);
    } else if (name == DefaultProfileName) {
        Take(node.DefaultEntry(), values);
    } else {
        bool const isNew = !HasProfile(node, name);
        if (isNew) {
            RequireDone(AddProfile(node.Place(), name));
        }
        std::shared_ptr<Node> const profile = node.Profile(name);
        if (isNew) {
            Remember(profile);
        }
        Take(profile, values);
    }
}

void Filling::Remember(std::shared_ptr<Node> const& newEntry) {
    if (!m_newEntry) {
        m_newEntry = newEntry;
        m_newDepth = m_levels.size();
    }
}

bool Filling::Step() {
    if (m_newEntry && m_levels.size() == m_newDepth) {
        m_newEntry.reset(); // it is whole
    }
    if (m_levels.empty()) {
        return false;
    }
    Level& level = m_levels.back();
    bool const isList = level.node->Kind() == PlaceKind::List;
    if (level.next == level.size) {
        if (isList) {
            EndList(*level.node, level.size);
        }
        m_levels.pop_back();
        return true;
    }
    // Held here, since a level that is opened may move the others.
    std::shared_ptr<Node> const node = level.node;
    std::size_t const index = level.next++;
    py::object const next = level.content[index];
    if (isList) {
        StepInList(*node, next, index);
    } else {
        auto const pair = py::reinterpret_borrow<py::tuple>(next);
        TakeNamed(*node, NameIn(*node, pair[0]), pair[1]);
    }
    return true;
}

void Filling::StepInList(Node& list, py::handle value, std::size_t index) {
    bool const isNew = index >= list.Cursor().GetSize();
    if (isNew) {
        RequireDone(AddItem(list.Place()));
    }
    std::shared_ptr<Node> const item = list.Item(index);
    if (isNew) {
        Remember(item);
    }
    Take(item, value);
}

/// What stands behind the new items goes.
void Filling::EndList(Node& list, std::size_t size) {
    for (std::size_t now = list.Cursor().GetSize(); now > size; --now) {
        RequireDone(RemoveItem(list.Place(), now - 1));
        list.ItemRemoved(now - 1);
    }
}

void Filling::TakeBack() {
    if (!m_newEntry || m_newEntry->HasGone()) { // Python code that ran meanwhile may have removed it
        return;
    }
    Node& list = *m_newEntry->Parent();
    if (m_newEntry->Kind() == PlaceKind::Item) {
        std::size_t const index = m_newEntry->Index();
        if (RemoveItem(list.Place(), index)) {
            list.ItemRemoved(index);
        }
    } else if (std::wstring const name = m_newEntry->Name(); RemoveProfile(list.Place(), name)) {
        list.ProfileRemoved(name);
    }
}

/// What was set stays when something is refused: values may be many, and a copy of all of them would cost
/// more than most updates. Whoever wants all or nothing updates a copy of the database, or uses edit().
template <class Begin> void Fill(bool isForced, Begin begin) {
    Filling filling(isForced);
    try {
        begin(filling);
        while (filling.Step()) {
        }
    } catch (...) {
        filling.TakeBack();
        throw;
    }
}

} // namespace

// So that two items can be exchanged.
py::list KeptItems(py::handle values) {
    py::list items;
    for (py::handle const value : py::list(py::reinterpret_borrow<py::object>(values))) {
        items.append(Kept(value));
    }
    return items;
}

void Update(Node& node, py::handle values, bool isForced) {
    Fill(isForced, [&](Filling& filling) { filling.Take(node.shared_from_this(), values); });
}

void UpdateNamed(Node& node, std::wstring const& name, py::handle values, bool isForced) {
    Fill(isForced, [&](Filling& filling) { filling.TakeNamed(node, name, values); });
}

// One dict of both, so that all keys are looked at in the order in which dict.update would set them.
void UpdateAll(Node& node, py::handle values, py::dict const& named, bool isForced) {
    py::dict all;
    bool const isMapping = py::hasattr(values, "keys");
    if (!isMapping && !values.is_none() &&
        (PyUnicode_Check(values.ptr()) || !py::hasattr(values, "__iter__"))) {
        RaiseWrongType(node, "a mapping, or pairs of a name and a value", values);
    }
    int const failed = values.is_none() ? 0
                       : isMapping      ? PyDict_Update(all.ptr(), values.ptr())
                                        : PyDict_MergeFromSeq2(all.ptr(), values.ptr(), 1);
    if (failed != 0 || PyDict_Update(all.ptr(), named.ptr()) != 0) {
        throw py::error_already_set();
    }
    Update(node, all, isForced);
}

std::wstring NameIn(Node& mapping, py::handle name) {
    if (!PyUnicode_Check(name.ptr())) {
        throw py::type_error("names in " + py::cast<std::string>(StrOf(WhereIs(mapping))) + " are str, not " +
                             Py_TYPE(name.ptr())->tp_name);
    }
    return WideOf(name);
}

} // namespace ZantrelPython
