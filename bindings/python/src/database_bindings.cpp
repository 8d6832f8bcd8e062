// SPDX-License-Identifier: Apache-2.0
#include "documents.h"
#include "mapping.h"
#include "records.h"

#include <zantrel/editing/differences.h>
#include <zantrel/editing/migration.h>

#include <optional>
#include <utility>

namespace ZantrelPython {

using namespace Zantrel;
using namespace Zantrel::Editing;

namespace {

using LayoutPointer = Held<LayoutHandle>;
using DatabaseClass = py::class_<DatabaseHandle, std::shared_ptr<DatabaseHandle>>;

// Of one and the same there are none, and it couldn't be taken twice.
py::list DifferencesOf(DatabasePointer const& first, DatabasePointer const& second) {
    if (first == second) {
        return py::list();
    }
    Busy const one(*first), other(*second);
    std::vector<Difference> differences;
    {
        Unlocked const unlocked;
        differences = Differences(*one, *other);
    }
    return RecordsOf(differences);
}

// The new database isn't known to anyone yet, and so is filled without being taken. The renamings are made
// into texts first: afterwards nothing of Python's may be touched.
py::object Migrated(DatabasePointer const& from, LayoutPointer const& layout, py::object const& renamings) {
    std::vector<Renaming> pairs;
    if (!renamings.is_none()) {
        for (auto const& [old, now] : py::dict(renamings)) {
            for (py::handle const path : {old, now}) {
                if (PyUnicode_Check(path.ptr()) == 0) {
                    throw py::type_error(std::string("renamings are of str to str, not ") +
                                         Py_TYPE(path.ptr())->tp_name);
                }
            }
            pairs.push_back({WideOf(old), WideOf(now)});
        }
    }
    // The new values stand on the new layout alone: whoever keeps them need not keep the old database.
    auto database = std::make_shared<DatabaseHandle>(layout);
    std::vector<MigrationStep> steps;
    {
        Busy const busy(*from);
        Unlocked const unlocked;
        Migration migration = Migrate(*busy, layout->Get(), pairs);
        database->Fill(migration.database);
        steps = std::move(migration.steps);
    }
    return TypeNamed("Migration")(database, RecordsOf(steps));
}

/// With a list of notes of its own, since scripts append to them.
DatabasePointer CopyOf(DatabasePointer const& source) {
    auto copy = std::make_shared<DatabaseHandle>(source->Layout());
    {
        Busy const busy(*source);
        Unlocked const unlocked;
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

void BindLoading(py::module_& module) {
    auto const load = [](FilePath const& path, LayoutPointer const& layout, Text const& format,
                         py::object const& notes, py::object const& limits) {
        ReadOptions const options = OptionsOf(format, notes, limits);
        return LoadDatabase(layout, DocumentOf(path, options.limits), options);
    };
    module.def("load", load, py::arg("path"), py::arg("layout"), py::kw_only(), py::arg("format") = Text{},
               py::arg("notes") = py::none(), py::arg("limits") = py::none());
    auto const loads = [](Data const& data, LayoutPointer const& layout, Text const& format,
                          py::object const& notes, py::object const& limits) {
        return LoadDatabase(layout, DocumentOf(data), OptionsOf(format, notes, limits));
    };
    module.def("loads", loads, py::arg("data"), py::arg("layout"), py::kw_only(), py::arg("format") = Text{},
               py::arg("notes") = py::none(), py::arg("limits") = py::none());
    auto const check = [](FilePath const& path, LayoutPointer const& layout, py::object const& limits) {
        ReadLimits const read = LimitsOf(limits);
        return Check(layout, DocumentOf(path, read), read);
    };
    module.def("check", check, py::arg("path"), py::arg("layout"), py::kw_only(),
               py::arg("limits") = py::none());
    module.def(
        "root_of", [](FilePath const& path) { return StrOf(RootOf(DocumentOf(path))); }, py::arg("path"));
    module.def("_root_of_bytes", [](Data const& data) { return StrOf(RootOf(DocumentOf(data))); });
    auto const edit = [](FilePath const& path, LayoutPointer const& layout, Text const& format,
                         py::dict const& texts) {
        return EditTexts(layout, path.value, format.value, texts);
    };
    module.def("_edit_texts", edit, py::arg("path"), py::arg("layout"), py::arg("format"), py::arg("texts"));
}

void BindFiles(DatabaseClass& type) {
    auto const read = [](DatabasePointer const& self, FilePath const& path, Text const& format,
                         py::object const& notes, py::object const& limits) {
        DatabasePointer const copy = CopyOf(self); // so that a read that fails changes nothing
        {
            Busy const busy(*self); // what were changed meanwhile would be lost
            ReadOptions const options = OptionsOf(format, notes, limits);
            ReadInto(*copy, DocumentOf(path, options.limits), options);
        }
        self->TakeOver(*copy);
    };
    type.def("read", read, py::arg("path"), py::kw_only(), py::arg("format") = Text{},
             py::arg("notes") = py::none(), py::arg("limits") = py::none());
    auto const save = [](DatabasePointer const& self, FilePath const& path, Text const& format,
                         bool inPlace) { SaveDatabase(*self, path, format.value, inPlace); };
    type.def("save", save, py::arg("path"), py::kw_only(), py::arg("format") = Text{},
             py::arg("in_place") = false);
    auto const dumps = [](DatabasePointer const& self, Text const& format) {
        return SaveDatabase(*self, std::nullopt, format.value, false);
    };
    type.def("dumps", dumps, py::kw_only(), py::arg("format") = Text{});
    type.def_property_readonly("notes", [](DatabasePointer const& self) { return self->m_notes; });
    type.def_property_readonly("path", [](DatabasePointer const& self) { return StrOf(self->m_path); });
    type.def_property_readonly("format", [](DatabasePointer const& self) { return StrOf(self->m_format); });
}

// A database is its root, and most scripts never see that: each call makes its node anew where nobody holds
// it.
void BindPlaces(DatabaseClass& type) {
    BindMapping<DatabasePointer>(type,
                                 [](DatabasePointer const& self) -> NodePointer { return Node::Root(self); });
    type.def("__bool__", [](DatabasePointer const&) { return true; }); // also without a parameter
    type.def_property_readonly("root", [](DatabasePointer const& self) { return Node::Root(self); });
    auto const at = [](DatabasePointer const& self, Text const& path) {
        return NodeAt(*Node::Root(self), path.value);
    };
    type.def("at", at, py::arg("path"));
    auto const set = [](DatabasePointer const& self, Text const& path, py::object const& value, bool force) {
        Update(*NodeAt(*Node::Root(self), path.value), value, force);
    };
    type.def("set", set, py::arg("path"), py::arg("value"), py::kw_only(), py::arg("force") = false);
    type.def("walk", [](DatabasePointer const& self) { return NodeWalk(Node::Root(self)); });
    type.def("rows", [](DatabasePointer const& self) { return RowsOf(*Node::Root(self)); });
    type.def("validate", [](DatabasePointer const& self) { return FindingsOf(*Node::Root(self)); });
}

void BindWhole(DatabaseClass& type) {
    type.def_property_readonly("layout", [](DatabasePointer const& self) { return self->Layout(); });
    type.def("diff", &DifferencesOf, py::arg("other"));
    type.def("migrate", &Migrated, py::arg("layout"), py::arg("renamings") = py::none());
    type.def("copy", &CopyOf);
    type.def("__copy__", &CopyOf);
    type.def("__deepcopy__", [](DatabasePointer const& self, py::object const&) { return CopyOf(self); });
    // With flags, as files have them; paths, formats and notes play no part.
    auto const equal = [](DatabasePointer const& self, DatabasePointer const& other) {
        return DifferencesOf(self, other).empty();
    };
    type.def("__eq__", equal, py::is_operator());
    type.attr("__hash__") = py::none();
    type.def("__repr__", [](DatabasePointer const& self) {
        return StrOf(L"<Database " + self->Layout()->Get().m_name +
                     (self->m_path.empty() ? L"" : L" of " + self->m_path) + L'>');
    });
    RefusePickling(type,
                   "a database isn't pickled: pickle database.dumps() and layout.dumps(), which loads() and "
                   "Layout.loads() take");
}

} // namespace

void BindDatabases(py::module_& module) {
    DatabaseClass type(module, "Database");
    auto const make = [](LayoutPointer const& layout) {
        auto database = std::make_shared<DatabaseHandle>(layout);
        database->Fill();
        return database;
    };
    type.def(py::init(make), py::arg("layout"));
    BindLoading(module);
    BindFiles(type);
    BindPlaces(type);
    BindWhole(type);
}

} // namespace ZantrelPython
