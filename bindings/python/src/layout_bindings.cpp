// SPDX-License-Identifier: Apache-2.0
#include "bindings.h"
#include "documents.h"
#include "errors.h"
#include "layout_node.h"
#include "records.h"

#include <zantrel/editing/layout_differences.h>
#include <zantrel/editing/lint.h>
#include <zantrel/sample/sample_layout.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace ZantrelPython {

using namespace Zantrel;

namespace {

using LayoutClass = py::class_<LayoutHandle, std::shared_ptr<LayoutHandle>>;

/// With what a meta file carries; the library's own copies lean on their sources. Conditions and profile
/// lists then name nodes of the copy, as they do in a layout that was read.
std::shared_ptr<LayoutHandle> CopyOf(LayoutPointer const& layout) {
    py::object const bytes = SaveLayout(layout, std::nullopt, L"meta");
    ReadOptions options;
    options.notes = py::list();
    auto copy = ReadLayout({L"", py::cast<std::string>(bytes)}, options);
    copy->m_isOfTemplate = layout->m_isOfTemplate;
    copy->m_path = layout->m_path;
    return copy;
}

/// What a layout has is nearly all here, and so the layout itself is a mapping of it.
LayoutNodeOf ProfileEditor(LayoutPointer const& layout) {
    return {layout, layout->Get().m_profileEditor.GetNode()};
}

/// The sections, and the profile editor's children as those of the layout itself.
void BindSections(LayoutClass& type) {
    using pNode = ParameterLayout::pNode;
    static constexpr struct {
        char const* name;
        pNode ParameterLayout::*anchor;
    } sections[] = {{"profile_editor", &ParameterLayout::m_profileEditor},
                    {"platform_options", &ParameterLayout::m_platformOptions},
                    {"part_options", &ParameterLayout::m_partOptions},
                    {"part_configurator", &ParameterLayout::m_partConfigurator},
                    {"version_node", &ParameterLayout::m_versionNode}};
    for (auto const& section : sections) {
        type.def_property_readonly(section.name, [anchor = section.anchor](LayoutPointer const& layout) {
            return LayoutNodeOf(layout, (layout->Get().*anchor).GetNode());
        });
    }
    type.def_property_readonly(
        "root", [](LayoutPointer const& layout) { return LayoutNodeOf(layout, &layout->Get()); });
    // By calls of Python's, so that a layout and its profile editor never answer differently.
    auto const getItem = [](LayoutPointer const& layout, Text const& name) {
        return py::cast(ProfileEditor(layout)).attr("__getitem__")(name);
    };
    type.def("__getitem__", getItem, py::arg("name"));
    for (char const* const name : {"__iter__", "__len__", "__contains__", "_ipython_key_completions_"}) {
        type.def(name, [name](LayoutPointer const& layout, py::args const& arguments) {
            return py::cast(ProfileEditor(layout)).attr(name)(*arguments);
        });
    }
    type.def("__bool__", [](LayoutPointer const&) { return true; }); // also without a parameter
    auto const add = [](LayoutPointer const& layout, Text const& name, std::int32_t nodeType,
                        py::object const& value) {
        return AddNode(ProfileEditor(layout), name, nodeType, value);
    };
    type.def("add", add, py::arg("name"), py::arg("type") = 0, py::arg("default") = py::none());
    auto const addGroup = [](LayoutPointer const& layout, Text const& name) {
        return AddNode(ProfileEditor(layout), name, Group, py::none());
    };
    type.def("add_group", addGroup, py::arg("name"));
}

void BindTranslations(LayoutClass& type) {
    auto const translate = [](LayoutPointer const& layout, Text const& key, Text const& language) -> py::str {
        std::wstring const* const text =
            layout->Get().GetResourceDictionary()->GetTranslation(key.value, language.value);
        return StrOf(text != nullptr ? *text : key.value);
    };
    // A key that nobody has translated is what a user reads, as in a host.
    type.def("translate", translate, py::arg("key"), py::arg("language"));
    auto const add = [](LayoutPointer const& layout, Text const& key, Text const& language,
                        Text const& text) {
        layout->Change().GetResourceDictionary()->AddTranslation(key.value, language.value, text.value);
    };
    type.def("add_translation", add, py::arg("key"), py::arg("language"), py::arg("text"));
}

void BindMaking(LayoutClass& type) {
    auto const make = [](Text const& name) {
        auto made = std::make_unique<ParameterLayout>();
        made->SetName(NameOf(name));
        return std::make_shared<LayoutHandle>(std::move(made));
    };
    type.def(py::init(make), py::arg("name") = Text{L"Parameters"});
    auto const load = [](FilePath const& path, py::object const& notes, py::object const& limits) {
        ReadLimits const read = LimitsOf(limits);
        return LoadLayout(DocumentOf(path, read), {L"", read, notes});
    };
    type.def_static("load", load, py::arg("path"), py::kw_only(), py::arg("notes") = py::none(),
                    py::arg("limits") = py::none());
    auto const loads = [](Data const& data, py::object const& notes, py::object const& limits) {
        return LoadLayout(DocumentOf(data), {L"", LimitsOf(limits), notes});
    };
    type.def_static("loads", loads, py::arg("data"), py::kw_only(), py::arg("notes") = py::none(),
                    py::arg("limits") = py::none());
    // What the library's own tests and examples stand on, for who has no machine at hand.
    auto const sample = [](int level) {
        auto made = std::make_unique<Sample::ParameterLayout>(level);
        made->AddCategoryNodeIfNeeded();
        return std::make_shared<LayoutHandle>(std::move(made));
    };
    type.def_static("sample", sample, py::arg("level") = 2);
    type.def("__copy__", &CopyOf);
    type.def("__deepcopy__", [](LayoutPointer const& self, py::object const&) { return CopyOf(self); });
    RefusePickling(type, "a layout isn't pickled: pickle layout.dumps(), which Layout.loads() takes");
}

void BindSaving(LayoutClass& type) {
    auto const save = [](LayoutPointer const& self, FilePath const& path, Text const& format) {
        SaveLayout(self, path, format.value);
    };
    type.def("save", save, py::arg("path"), py::kw_only(), py::arg("format") = Text{L"meta"});
    auto const dumps = [](LayoutPointer const& self, Text const& format) {
        return SaveLayout(self, std::nullopt, format.value);
    };
    type.def("dumps", dumps, py::kw_only(), py::arg("format") = Text{L"meta"});
    auto const saveSchema = [](LayoutPointer const& self, FilePath const& path) { SaveSchema(self, path); };
    type.def("save_schema", saveSchema, py::arg("path"));
    type.def_property_readonly("notes", [](LayoutPointer const& self) { return self->m_notes; });
    type.def_property_readonly("path", [](LayoutPointer const& self) { return StrOf(self->m_path); });
}

void BindFindings(LayoutClass& type) {
    // Used, not busy: several threads may look at a layout at once, and none may change it meanwhile.
    type.def("lint", [](LayoutPointer const& self) {
        LayoutUse const use(self);
        std::vector<Editing::LintFinding> findings;
        {
            Unlocked const unlocked;
            findings = Editing::Lint(*use);
        }
        return RecordsOf(findings);
    });
    auto const diff = [](LayoutPointer const& self, LayoutPointer const& other) {
        LayoutUse const first(self), second(other);
        std::vector<Editing::LayoutDifference> differences;
        {
            Unlocked const unlocked;
            differences = Editing::LayoutDifferences(*first, *second);
        }
        return RecordsOf(differences);
    };
    type.def("diff", diff, py::arg("other"));
}

} // namespace

void BindLayouts(py::module_& module) {
    LayoutClass type(module, "Layout");
    BindLayoutNodes(module);
    BindMaking(type);
    BindSaving(type);
    BindFindings(type);
    BindSections(type);
    BindTranslations(type);
    type.def("add_category_node_if_needed",
             [](LayoutPointer const& self) { self->Change().AddCategoryNodeIfNeeded(); });
    type.def_property(
        "name", [](LayoutPointer const& self) { return StrOf(self->Get().m_name); },
        [](LayoutPointer const& self, Text const& name) { self->Change().SetName(NameOf(name)); });
    type.def("__repr__", [](LayoutPointer const& self) {
        return StrOf(L"<Layout " + self->Get().m_name +
                     (self->m_path.empty() ? L"" : L" of " + self->m_path) + L'>');
    });
}

} // namespace ZantrelPython
