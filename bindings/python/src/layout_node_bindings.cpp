// SPDX-License-Identifier: Apache-2.0
#include "bindings.h"
#include "errors.h"
#include "layout_node.h"
#include "node.h"
#include "values.h"

#include <functional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace ZantrelPython {

using namespace Zantrel;

namespace {

using NodeClass = py::class_<LayoutNodeOf>;

// A field of any of these kinds is bound by one template, and the kinds differ here alone.

py::object ToPython(std::wstring const& text) { return StrOf(text); }
py::object ToPython(std::vector<std::wstring> const& texts) {
    py::list list;
    for (std::wstring const& text : texts) {
        list.append(StrOf(text));
    }
    return list;
}
template <class Number> py::object ToPython(Number number) { return py::cast(number); }

/// What a field is made of in Python, for who gives something else.
char const* KindOf(std::wstring const&) { return "str"; }
char const* KindOf(std::vector<std::wstring> const&) { return "a list of str"; }
char const* KindOf(bool) { return "bool"; }
template <class Number> char const* KindOf(Number) { return "int"; }

/// Throws py::cast_error for what isn't of the field's kind.
void FromPython(std::wstring& field, py::handle value) { field = py::cast<Text>(value).value; }
void FromPython(std::vector<std::wstring>& field, py::handle value) {
    if (PyUnicode_Check(value.ptr())) {
        throw py::cast_error(); // of which each character would be one
    }
    for (py::handle const text : value) {
        if (!PyUnicode_Check(text.ptr())) {
            throw py::type_error(std::string("the texts are str, not ") + Py_TYPE(text.ptr())->tp_name);
        }
        field.push_back(WideOf(text));
    }
}
template <class Number> void FromPython(Number& field, py::handle value) {
    py::detail::make_caster<Number> number;
    bool const mayConvert = !std::is_same_v<Number, bool>; // which anything would be converted to
    if (!number.load(value, mayConvert)) {
        if (mayConvert && PyLong_Check(value.ptr())) {
            throw py::value_error(py::cast<std::string>(py::str(value)) + " is out of range");
        }
        throw py::cast_error();
    }
    field = py::detail::cast_op<Number>(number);
}

/// Databases are built on the sections as the groups that they are. ValueError for one of them, and for what
/// they stand in, where it is to be a container.
void RequireNoSection(LayoutNodeOf const& node, bool const& isContainer) {
    ParameterLayout const& layout = node.Layout()->Get();
    for (ParameterLayout::pNode const& section :
         {layout.m_profileEditor, layout.m_platformOptions, layout.m_partOptions, layout.m_partConfigurator,
          layout.m_versionNode}) {
        for (LayoutNode const* at = section.GetNode(); isContainer && at != nullptr; at = at->Parent()) {
            if (at == &node.Get()) {
                RaiseValueError(at->m_name +
                                L" is a section of the layout, and can't be a list or a profile list");
            }
        }
    }
}

/// A property, and a setter that gives the node, so that one expression declares a parameter.
template <class Base, class Field>
void Attribute(NodeClass& type, char const* name, Field Base::*field,
               void (*require)(LayoutNodeOf const&, Field const&) = nullptr) {
    auto const get = [field](LayoutNodeOf const& node) { return ToPython(node.Get().*field); };
    // pybind11 would tell a wrong value by the forms of a lambda; so it comes as an object and is told here.
    auto const set = [field, name, require](LayoutNodeOf const& node, py::object const& value) {
        Field wanted{}; // made before anything is changed: what is given may run Python code
        try {
            FromPython(wanted, value);
        } catch (py::cast_error const&) {
            throw py::type_error(std::string(name) + " must be " + KindOf(wanted) + ", not " +
                                 Py_TYPE(value.ptr())->tp_name);
        }
        if (require != nullptr) {
            require(node, wanted);
        }
        node.Change().*field = std::move(wanted);
        return node;
    };
    type.def_property(name, get,
                      [set](LayoutNodeOf const& node, py::object const& value) { set(node, value); });
    type.def((std::string("set_") + name).c_str(), set, py::arg("value"));
}

// One row for each attribute. A name that is changed here is changed in _zantrel.pyi and _docs.py, too, which
// the tests compare with what is bound.

void BindContainerAttributes(NodeClass& type) {
    using Fields = LayoutNodeListSettings;
    Attribute(type, "is_list", &Fields::m_isList, &RequireNoSection);
    Attribute(type, "is_profile_list", &Fields::m_isProfileList, &RequireNoSection);
    Attribute(type, "is_category_list", &Fields::m_isCategoryList, &RequireNoSection);
    Attribute(type, "user_can_add_remove", &Fields::m_userCanAddRemove);
    Attribute(type, "user_can_sort", &Fields::m_userCanSort);
    Attribute(type, "user_can_remove_any_element", &Fields::m_userCanRemoveAnyElement);
    Attribute(type, "can_be_transformed", &Fields::m_canBeTransformed);
    Attribute(type, "node_name", &Fields::m_nodeName);
    Attribute(type, "node_display_name", &Fields::m_nodeDisplayName);
    Attribute(type, "container_display_name", &Fields::m_containerDisplayName);
    Attribute(type, "container_description", &Fields::m_containerDescription);
    Attribute(type, "multiplicity", &Fields::m_multiplicity);
    Attribute(type, "multiplicity_max", &Fields::m_multiplicityMax);
    Attribute(type, "multiplicity_min", &Fields::m_multiplicityMin);
    Attribute(type, "multiplicity_max_message", &Fields::m_multiplicityMaxMessage);
    Attribute(type, "multiplicity_min_message", &Fields::m_multiplicityMinMessage);
}

void BindDisplayAttributes(NodeClass& type) {
    using Fields = LayoutNodeDisplaySettings;
    Attribute(type, "visible", &Fields::m_visible);
    Attribute(type, "read_only", &Fields::m_readOnly);
    Attribute(type, "expanded", &Fields::m_expanded);
    Attribute(type, "hide_name", &Fields::m_hideName);
    Attribute(type, "perform_transform", &Fields::m_performTransform);
    Attribute(type, "precision", &Fields::m_precision);
    Attribute(type, "display_name", &Fields::m_displayName);
    Attribute(type, "option_display_names", &Fields::m_optionDisplayNames);
    Attribute(type, "prefix", &Fields::m_prefix);
    Attribute(type, "postfix", &Fields::m_postfix);
    Attribute(type, "unit", &Fields::m_postfix); // which it is as a rule
    Attribute(type, "description", &Fields::m_description);
    Attribute(type, "image_description", &Fields::m_imageDescription);
    Attribute(type, "image_stretch", &Fields::m_imageStretch);
    Attribute(type, "display_name_shared_size_group", &Fields::m_displayNameSharedSizeGroup);
    Attribute(type, "postfix_shared_size_group", &Fields::m_postfixSharedSizeGroup);
}

void BindValueAttributes(NodeClass& type) {
    using Fields = LayoutNodeAttributes;
    Attribute(type, "allow_empty", &Fields::m_allowEmpty);
    Attribute(type, "is_value_unique", &Fields::m_isValueUnique);
    Attribute(type, "enable_multi_line", &Fields::m_enableMultiLine);
    Attribute(type, "write_to_parameter_file", &Fields::m_writeToParameterFile);
    Attribute(type, "children_write_to_parameter_file", &Fields::m_childrenWriteToParameterFile);
    Attribute(type, "disable_for_parents", &Fields::m_disableForParents);
    Attribute(type, "disable_for_sub_parts", &Fields::m_disableForSubParts);
    Attribute(type, "show_only_parts_selected_in_tessra", &Fields::m_showOnlyPartsSelectedInTessra);
    Attribute(type, "identifier", &Fields::m_identifier);
    Attribute(type, "profile_name", &Fields::m_profileName);
    Attribute(type, "request_name", &Fields::m_requestName);
    Attribute(type, "trigger_property_name", &Fields::m_triggerPropertyName);
    Attribute(type, "file_filter", &Fields::m_fileFilter);
    Attribute(type, "option_values", &Fields::m_optionValues);
    Attribute(type, "visibility_request", &Fields::m_visibilityRequest);
    Attribute(type, "regex", &Fields::m_regex);
    Attribute(type, "regex_user_friendly", &Fields::m_regexUserFriendly);
    Attribute(type, "max_length", &Fields::m_maxLength);
    Attribute(type, "profile_editing_policy", &Fields::m_profileEditingPolicy);
    Attribute(type, "editor_license_checks", &Fields::m_editorLicenseChecks);
    Attribute(type, "prop_name", &Fields::m_propName);
}

/// A property for what the library keeps as a text and Python has as a value; the text where it is none.
/// No typed one would do: the type may be set after the value.
void BindTextAttribute(NodeClass& type, char const* name, std::wstring LayoutNodeAttributes::*field) {
    type.def_property(
        name,
        [field](LayoutNodeOf const& node) {
            bool const isLimit = field != &LayoutNodeAttributes::m_defaultValue;
            std::wstring const& text = node.Get().*field;
            py::object const value =
                text.empty() ? py::none() : (isLimit ? LimitOfText : ValueOfText)(node.Get().m_type, text);
            return value.is_none() && !text.empty() ? StrOf(text) : value;
        },
        [field](LayoutNodeOf const& node, py::object const& value) {
            std::wstring text = LayoutTextOf(value);
            node.Change().*field = std::move(text);
        });
}

// Their setters have the names that the library's have, and so aren't those of the properties.
void BindValues(NodeClass& type) {
    BindTextAttribute(type, "default", &LayoutNodeAttributes::m_defaultValue);
    BindTextAttribute(type, "min", &LayoutNodeAttributes::m_min);
    BindTextAttribute(type, "max", &LayoutNodeAttributes::m_max);
    type.def_property(
        "type", [](LayoutNodeOf const& node) { return TypeOf(node.Get()); },
        [](LayoutNodeOf const& node, std::int32_t number) {
            node.Change().SetType(static_cast<eTypeLayoutNode>(number));
        });
    auto const setType = [](LayoutNodeOf const& node, std::int32_t number) {
        node.Change().SetType(static_cast<eTypeLayoutNode>(number));
        return node;
    };
    type.def("set_type", setType, py::arg("type"));
    auto const setDefault = [](LayoutNodeOf const& node, py::object const& value) {
        std::wstring text = LayoutTextOf(value);
        node.Change().m_defaultValue = std::move(text);
        return node;
    };
    type.def("set_default_value", setDefault, py::arg("value"));
    auto const setRange = [](LayoutNodeOf const& node, py::object const& min, py::object const& max) {
        // Both before either is set, as the second may be refused.
        std::wstring least = LayoutTextOf(min), greatest = LayoutTextOf(max);
        node.Change().m_min = std::move(least);
        node.Change().m_max = std::move(greatest);
        return node;
    };
    type.def("set_range", setRange, py::arg("min"), py::arg("max"));
}

/// A node that is to be named by another one: of the same layout, since none outlives its own.
LayoutNode* SameLayout(LayoutNodeOf const& node, LayoutNodeOf const& other) {
    if (node.Layout() != other.Layout()) {
        throw py::value_error("the nodes are of two layouts");
    }
    return &other.Change();
}

/// A source may be missing: of a layout from a file that names one which isn't there.
py::list Conditions(LayoutNodeOf const& node, std::vector<LayoutNodeSource> const& sources) {
    py::list conditions;
    for (LayoutNodeSource const& source : sources) {
        conditions.append(py::make_tuple(source.m_source != nullptr ? py::cast(node.Other(source.m_source))
                                                                    : py::object(py::none()),
                                         StrOf(source.m_value)));
    }
    return conditions;
}

void BindConditions(NodeClass& type) {
    type.def_property_readonly("visibility_sources", [](LayoutNodeOf const& node) {
        return Conditions(node, node.Get().m_visibilitySources);
    });
    type.def_property_readonly("editability_sources", [](LayoutNodeOf const& node) {
        return Conditions(node, node.Get().m_editabilitySources);
    });
    auto const show = [](LayoutNodeOf const& node, LayoutNodeOf const& source, py::object const& value) {
        node.Change().AddVisibilitySource(SameLayout(node, source), LayoutTextOf(value));
        return node;
    };
    type.def("add_visibility_source", show, py::arg("source"), py::arg("value"));
    auto const allow = [](LayoutNodeOf const& node, LayoutNodeOf const& source, py::object const& value) {
        node.Change().AddEditabilitySource(SameLayout(node, source), LayoutTextOf(value));
        return node;
    };
    type.def("add_editability_source", allow, py::arg("source"), py::arg("value"));
    auto const addLicense = [](LayoutNodeOf const& node, Text const& license) {
        node.Change().AddLicenseCheckForEditorVisibility(license.value);
        return node;
    };
    type.def("add_license_check_for_editor_visibility", addLicense, py::arg("license"));
    type.def("generate_source_identifier", [](LayoutNodeOf const& node) {
        node.Change().GenerateSourceIdentifier();
        return node;
    });
}

// Names come by NameOf, since these setters take them as texts that end at a null.
void BindContainers(NodeClass& type) {
    auto const setList = [](LayoutNodeOf const& node, Text const& name, bool isList, Text const& display) {
        RequireNoSection(node, isList);
        node.Change().SetList(isList, NameOf(name).c_str(), display.value);
        return node;
    };
    type.def("set_list", setList, py::arg("node_name") = Text{L"ListItem"}, py::arg("is_list") = true,
             py::arg("display_name") = Text{});
    auto const setProfile = [](LayoutNodeOf const& node, Text const& name, bool isProfile) {
        RequireNoSection(node, isProfile);
        node.Change().SetProfile(isProfile, NameOf(name).c_str());
        return node;
    };
    type.def("set_profile", setProfile, py::arg("node_name") = Text{L"Profile"},
             py::arg("is_profile") = true);
    auto const setCategory = [](LayoutNodeOf const& node, Text const& name, bool isCategory) {
        RequireNoSection(node, isCategory);
        node.Change().SetCategoryList(isCategory, NameOf(name).c_str());
        return node;
    };
    type.def("set_category_list", setCategory, py::arg("node_name") = Text{L"Category"},
             py::arg("is_category") = true);
}

void BindChoices(NodeClass& type) {
    auto const addOption = [](LayoutNodeOf const& node, Text const& value, Text const& display) {
        node.Change().AddOption(value.value, display.value);
        return node;
    };
    type.def("add_option", addOption, py::arg("value"), py::arg("display_name") = Text{});
    auto const setProfiles = [](LayoutNodeOf const& node, LayoutNodeOf const& profiles) {
        LayoutNode* const list = SameLayout(node, profiles);
        // All three: hosts, files and choices go by one of them each.
        node.Change().SetTypeFromProfiles(list)->SetProfileName(list->m_name)->SetProfileNode(list);
        return node;
    };
    type.def("set_type_from_profiles", setProfiles, py::arg("profile_list"));
    type.def_property_readonly("profile_node", [](LayoutNodeOf const& node) -> py::object {
        LayoutNode const* const list = node.Get().m_profileNode;
        return list != nullptr ? py::cast(node.Other(list)) : py::object(py::none());
    });
}

/// Of several children of a name only the one that a look-up finds, so that each name is there once.
py::list NamesBelow(LayoutNodeOf const& node) {
    py::list names;
    for (LayoutNode const* const child : ChildrenOf(node.Get())) {
        names.append(StrOf(child->m_name));
    }
    return names;
}

LayoutNodeOf ChildNamed(LayoutNodeOf const& node, Text const& name) {
    LayoutNode const* const child = node.Get().GetNode(name.value);
    if (child == nullptr) {
        std::vector<std::wstring> names;
        for (LayoutNode const* const known : ChildrenOf(node.Get())) {
            names.push_back(known->m_name);
        }
        RaiseUnknownName(name.value, node.Get().m_name, names);
    }
    return node.Other(child);
}

/// With the section in front and without the root, as lint and LayoutDifferences have it.
std::wstring PathOf(LayoutNodeOf const& node) {
    std::wstring path;
    for (LayoutNode const* at = &node.Get(); at->Parent() != nullptr; at = at->Parent()) {
        path = path.empty() ? at->m_name : at->m_name + L'/' + path;
    }
    return path;
}

void BindMapping(NodeClass& type) {
    type.def("_ipython_key_completions_", &NamesBelow);
    type.def("__iter__", [](LayoutNodeOf const& node) { return py::iter(NamesBelow(node)); });
    type.def("__len__", [](LayoutNodeOf const& node) { return ChildrenOf(node.Get()).size(); });
    type.def("__bool__", [](LayoutNodeOf const&) { return true; }); // also without a child
    type.def("__contains__", [](LayoutNodeOf const& node, Text const& name) {
        return node.Get().GetNode(name.value) != nullptr;
    });
    type.def("__contains__", [](LayoutNodeOf const&, py::object const&) { return false; });
    type.def("__getitem__", &ChildNamed, py::arg("name"));
}

void BindTree(NodeClass& type) {
    type.def_property_readonly("name", [](LayoutNodeOf const& node) { return StrOf(node.Get().m_name); });
    type.def_property_readonly("path", [](LayoutNodeOf const& node) { return StrOf(PathOf(node)); });
    type.def_property_readonly("parent", [](LayoutNodeOf const& node) -> py::object {
        LayoutNode const* const parent = node.Get().Parent();
        return parent != nullptr ? py::cast(node.Other(parent)) : py::object(py::none());
    });
    type.def_property_readonly("layout", [](LayoutNodeOf const& node) { return node.Layout(); });
    type.def("add", &AddNode, py::arg("name"), py::arg("type") = 0, py::arg("default") = py::none());
    auto const addGroup = [](LayoutNodeOf const& node, Text const& name) {
        return AddNode(node, name, Group, py::none());
    };
    type.def("add_group", addGroup, py::arg("name"));
    type.def(
        "__eq__", [](LayoutNodeOf const& node, LayoutNodeOf const& other) { return node == other; },
        py::is_operator());
    // By address, which is safe: a node stays in its layout, and the layout lives as long as one of these.
    type.def("__hash__", [](LayoutNodeOf const& node) { return std::hash<void const*>()(&node.Get()); });
    type.def("__repr__", [](LayoutNodeOf const& node) {
        py::object const kind = TypeOf(node.Get());
        // A number that is no type has no name.
        py::str const word = py::hasattr(kind, "name") ? kind.attr("name") : py::str(kind);
        std::wstring const path = PathOf(node);
        return StrOf(L"<LayoutNode " + (path.empty() ? node.Get().m_name : path) + L" of type " +
                     WideOf(word) + L'>');
    });
    RefusePickling(type, "a node of a layout isn't pickled or copied: save the layout, or copy.deepcopy it");
}

// Deeper than any file can be. Nothing here takes stack for a level; but dicts of such content nest as
// deeply, and what Python and scripts do with those does.
constexpr std::size_t DeepestNode = 1000;

} // namespace

LayoutNodeOf AddNode(LayoutNodeOf const& node, Text const& name, std::int32_t type,
                     py::object const& defaultValue) {
    std::wstring const known = NameOf(name);
    std::wstring text = LayoutTextOf(defaultValue);
    std::size_t depth = 0;
    for (LayoutNode const* above = &node.Get(); above != nullptr; above = above->Parent()) {
        ++depth;
    }
    if (depth >= DeepestNode) {
        PyErr_SetString(PyExc_RecursionError, "a layout has at most 1000 levels");
        throw py::error_already_set();
    }
    LayoutNode& parent = node.Change(); // last, so that nothing is refused once there is a child
    LayoutNode* const child = LayoutNode::MakeNode(known.c_str(), static_cast<eTypeLayoutNode>(type));
    child->m_defaultValue = std::move(text);
    parent.AppendNode(child);
    return node.Other(child);
}

void BindLayoutNodes(py::module_& module) {
    NodeClass type(module, "LayoutNode");
    RefuseMaking(type);
    BindTree(type);
    BindMapping(type);
    BindValues(type);
    BindContainerAttributes(type);
    BindDisplayAttributes(type);
    BindValueAttributes(type);
    BindConditions(type);
    BindContainers(type);
    BindChoices(type);
}

} // namespace ZantrelPython
