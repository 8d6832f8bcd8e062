// SPDX-License-Identifier: Apache-2.0
#include "values.h"

#include "errors.h"
#include "records.h"

#include <zantrel/database/visit_value.h>
#include <zantrel/database/walk.h>
#include <zantrel/text/string_conversion.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <utility>
#include <vector>

namespace ZantrelPython {

using namespace Zantrel;
using namespace Zantrel::Editing;

namespace {

// Values come out typed, and go in as texts: a text says each value exactly, and what the layout has against
// it is asked in the one way that all hosts have (Objections), before anything is changed. An attachment
// alone goes in as it is, since its text would be a path.

py::object MakeValue(std::int32_t value) { return py::int_(value); }
py::object MakeValue(double value) { return py::float_(value); }
py::object MakeValue(bool value) { return py::bool_(value); }
py::object MakeValue(std::wstring const& value) { return StrOf(value); }
/// A copy of the bytes, as of all values: what Python has stays when the database changes or ends.
py::object MakeValue(KelAM::FileContent const& value) {
    return TypeNamed("Attachment")(
        StrOf(value.m_name),
        py::bytes(reinterpret_cast<char const*>(value.m_data.data()), value.m_data.size()));
}

/// As files have it: in the fewest digits that are this number.
std::wstring TextOfNumber(double number) {
    if (!std::isfinite(number)) {
        return std::isnan(number) ? L"NaN" : number < 0 ? L"-INF" : L"INF";
    }
    char digits[32];
    return std::wstring(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

/// Without the locale, blanks at the ends and a "+", as the library reads its own texts. What isn't wholly a
/// number is none.
template <class Number> py::object NumberOfText(std::wstring const& text) {
    std::string const narrow = StringConversion::NativeToUtf8(text);
    std::string_view digits = narrow;
    digits.remove_prefix(std::min(digits.find_first_not_of(" \t\n\r"), digits.size()));
    digits = digits.substr(0, digits.find_last_not_of(" \t\n\r") + 1); // npos and 1 are 0
    bool const hasPlus = digits.size() > 1 && digits[0] == '+' && digits[1] != '-';
    digits.remove_prefix(hasPlus ? 1 : 0);
    Number number{};
    auto const end = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    bool const isWhole = end.ec == std::errc() && end.ptr == digits.data() + digits.size();
    return isWhole ? MakeValue(number) : py::none();
}

// The text for a value of each type of node. A flag is no number here, though Python has it as one: who sets
// a number to True has made a mistake. May run Python code: __index__, __float__, __fspath__.
std::wstring TextFor(Node& node, TypeTag<std::int32_t>, py::handle value) {
    if (PyBool_Check(value.ptr()) || PyIndex_Check(value.ptr()) == 0) {
        RaiseWrongType(node, "a whole number or a text", value);
    }
    PyObject* const number = PyNumber_Index(value.ptr());
    if (number == nullptr) {
        throw py::error_already_set();
    }
    return WideOf(py::str(py::reinterpret_steal<py::object>(number)));
}

std::wstring TextFor(Node& node, TypeTag<double>, py::handle value) {
    if (PyBool_Check(value.ptr()) || PyNumber_Check(value.ptr()) == 0) {
        RaiseWrongType(node, "a number or a text", value);
    }
    PyObject* const number = PyNumber_Float(value.ptr());
    if (number == nullptr) {
        if (PyErr_ExceptionMatches(PyExc_OverflowError) != 0) {
            PyErr_Clear();
            RaiseValueError(WhereIs(node) + L" takes no number that large");
        }
        throw py::error_already_set();
    }
    return TextOfNumber(PyFloat_AsDouble(py::reinterpret_steal<py::object>(number).ptr()));
}

std::wstring TextFor(Node& node, TypeTag<bool>, py::handle value) {
    py::detail::make_caster<bool> flag; // knows numpy's flags, too
    if (!flag.load(value, false)) {
        RaiseWrongType(node, "True, False or a text", value);
    }
    return py::detail::cast_op<bool>(flag) ? L"true" : L"false";
}

std::wstring TextOfPath(Node& node, char const* wanted, py::handle value) {
    py::detail::make_caster<FilePath> path;
    if (!py::hasattr(value, "__fspath__") || !path.load(value, true)) {
        RaiseWrongType(node, wanted, value);
    }
    return py::detail::cast_op<FilePath&>(path).value;
}

std::wstring TextFor(Node& node, TypeTag<std::wstring>, py::handle value) {
    return node.Layout().m_type == FileAbsolute ? TextOfPath(node, "a text or a path", value)
                                                : (RaiseWrongType(node, "a text", value), L"");
}

std::wstring TextFor(Node& node, TypeTag<KelAM::FileContent>, py::handle value) {
    return TextOfPath(node, "an Attachment or the path of a file", value);
}

std::wstring TextFor(Node& node, TypeTag<NoValue>, py::handle value) {
    RaiseWrongType(node, "no value", value);
}

/// Objections look at a value alone; what is around its place is asked here. Why a user may not change it as
/// it stands, from the outside; whether it is shown plays no part.
std::vector<Finding> ReadOnlyBy(Editing::Place const& place) {
    Look const look = LookOf(place);
    for (LookReason const& reason : look.reasons) {
        if (!reason.isAboutVisibility) {
            Finding finding;
            finding.kind = FindingKind::ReadOnly;
            finding.path = place.GetPath();
            finding.sentence = SentenceOf(reason, place);
            return {finding};
        }
    }
    return {};
}

// The bytes are copied before the database is asked for anything: making them may run Python code.
void SetAttachment(Node& node, py::handle value, bool isForced) {
    py::tuple const pair(py::reinterpret_borrow<py::object>(value));
    if (PyUnicode_Check(pair[0].ptr()) == 0) {
        RaiseWrongType(node, "an Attachment whose name is a str", pair[0]);
    }
    if (PyObject_CheckBuffer(pair[1].ptr()) == 0) {
        RaiseWrongType(node, "an Attachment whose data is bytes", pair[1]);
    }
    auto const bytes = py::reinterpret_steal<py::object>(PyBytes_FromObject(pair[1].ptr()));
    if (!bytes) {
        throw py::error_already_set();
    }
    auto const* const begin = reinterpret_cast<std::byte const*>(PyBytes_AS_STRING(bytes.ptr()));
    KelAM::FileContent content(WideOf(pair[0]), {begin, begin + PyBytes_GET_SIZE(bytes.ptr())});
    std::vector<Finding> const findings = isForced ? std::vector<Finding>() : ReadOnlyBy(node.Place());
    if (!findings.empty()) {
        RaiseRefused(findings, nullptr);
    }
    ParameterNode cursor = node.Cursor();
    cursor.SetValue(content);
}

} // namespace

py::object ValueOf(ParameterView const& cursor) {
    py::object made = py::none();
    if (cursor.IsValid() && !cursor.IsContainer()) {
        VisitValue(cursor, [&](auto const& value) { made = MakeValue(value); });
    }
    return made;
}

// A layout that is made in code, or set_type, may have a number that no file knows; it stays a number.
py::object TypeOf(LayoutNode const& layout) {
    auto const number = static_cast<std::int32_t>(layout.m_type);
    bool const isKnown = number >= Group && number <= StandardOptions;
    return isKnown ? TypeNamed("Type")(number) : py::object(py::int_(number));
}

py::object ValueOfText(eTypeLayoutNode type, std::wstring const& text) {
    return VisitValueType(type, [&](auto tag) -> py::object {
        using T = typename decltype(tag)::Type;
        if constexpr (std::is_same_v<T, std::int32_t> || std::is_same_v<T, double>) {
            return NumberOfText<T>(text);
        } else if constexpr (std::is_same_v<T, bool>) { // any other word is false
            return py::bool_(text == L"True" || text == L"true");
        } else if constexpr (std::is_same_v<T, NoValue>) {
            return py::none();
        } else {
            return StrOf(text);
        }
    });
}

// The library holds all values against a limit as doubles.
py::object LimitOfText(eTypeLayoutNode type, std::wstring const& text) {
    py::object const limit = text.empty() ? py::none() : ValueOfText(type, text);
    return limit.is_none() && type == Int && !text.empty() ? ValueOfText(Double, text) : limit;
}

// Not through str(), which subclasses define as they like.
std::wstring LayoutTextOf(py::handle value) {
    if (value.is_none()) {
        return L"";
    }
    if (PyBool_Check(value.ptr())) {
        return value.ptr() == Py_True ? L"True" : L"False";
    }
    if (PyFloat_Check(value.ptr())) {
        return TextOfNumber(PyFloat_AsDouble(value.ptr()));
    }
    if (PyUnicode_Check(value.ptr())) {
        return WideOf(value); // of a member of an Enum str() would be its name
    }
    if (PyLong_Check(value.ptr())) {
        PyObject* const digits = PyLong_Type.tp_repr(value.ptr()); // null for more than Python writes
        if (digits == nullptr) {
            throw py::error_already_set();
        }
        return WideOf(py::reinterpret_steal<py::str>(digits));
    }
    throw py::type_error(std::string("a default or limit is a number, a flag or a text, not ") +
                         Py_TYPE(value.ptr())->tp_name);
}

py::object ValueOrNode(std::shared_ptr<Node> const& node) {
    return dynamic_cast<ParameterNodeOf*>(node.get()) != nullptr ? ValueOf(node->Cursor()) : py::cast(node);
}

// Objects of the open containers stand on a stack by depth, so that no nesting of the layout takes any of
// C++.
py::object ContentOf(Node& node, bool withDefaults) {
    if (dynamic_cast<ParameterNodeOf*>(&node) != nullptr) {
        return ValueOf(node.Cursor());
    }
    Walk walk(node.Cursor(), SameNames::FirstOnly);
    Busy const busy(*node.Database()); // making objects may collect others, whose ends may run anything
    std::vector<py::object> open;
    std::unordered_map<LayoutNode const*, py::str>
        names; // each made once, and shared by all profiles and items
    while (walk.Next()) {
        PlaceKind const kind = walk.Kind();
        if (kind == PlaceKind::DefaultProfile && !withDefaults) {
            walk.SkipContent();
            continue;
        }
        bool const isLeaf = walk.IsLeaf() && walk.Layout().m_type != Group;
        py::object content = isLeaf                    ? ValueOf(walk.Node())
                             : kind == PlaceKind::List ? py::object(py::list())
                                                       : py::object(py::dict());
        open.resize(walk.Depth()); // ends the containers that the walk has left
        if (kind == PlaceKind::Item && walk.Depth() != 0) {
            py::reinterpret_borrow<py::list>(open.back()).append(content);
        } else if (walk.Depth() != 0) {
            bool const isChild = kind != PlaceKind::Profile && kind != PlaceKind::DefaultProfile;
            auto const known = isChild ? names.find(&walk.Layout()) : names.end();
            py::str const name = known != names.end()                ? known->second
                                 : kind == PlaceKind::DefaultProfile ? StrOf(DefaultProfileName)
                                                                     : StrOf(walk.Name());
            if (isChild && known == names.end()) {
                names.emplace(&walk.Layout(), name);
            }
            if (PyDict_SetItem(open.back().ptr(), name.ptr(), content.ptr()) != 0) {
                throw py::error_already_set();
            }
        }
        open.push_back(std::move(content));
    }
    return open.empty() ? py::none() : open.front();
}

// As Python's comparison of dicts and lists, but without recursion: of two that nest as deeply as a layout
// may, Python's takes more than the small stack of a thread.
bool HaveSameContent(py::object const& content, py::object const& other) {
    std::vector<std::pair<py::object, py::object>> open{{content, other}};
    while (!open.empty()) {
        auto const [one, two] = std::move(open.back());
        open.pop_back();
        bool const areDicts = PyDict_CheckExact(one.ptr()) && PyDict_CheckExact(two.ptr());
        bool const areLists = PyList_CheckExact(one.ptr()) && PyList_CheckExact(two.ptr());
        if (!areDicts && !areLists) {
            if (!one.equal(two)) {
                return false;
            }
            continue;
        }
        if (py::len(one) != py::len(two)) {
            return false;
        }
        std::size_t index = 0;
        for (py::handle const entry : one) { // of a dict the key
            PyObject* const found = areDicts ? PyDict_GetItemWithError(two.ptr(), entry.ptr())
                                             : PyList_GetItem(two.ptr(), static_cast<py::ssize_t>(index));
            if (found == nullptr) {
                if (PyErr_Occurred() != nullptr) {
                    throw py::error_already_set();
                }
                return false;
            }
            auto const theirs = py::reinterpret_borrow<py::object>(found);
            open.emplace_back(areDicts ? py::object(one[entry]) : py::reinterpret_borrow<py::object>(entry),
                              theirs);
            ++index;
        }
    }
    return true;
}

void RaiseWrongType(Node& node, char const* wanted, py::handle value) {
    throw py::type_error(py::cast<std::string>(StrOf(WhereIs(node))) + " takes " + wanted + ", not " +
                         Py_TYPE(value.ptr())->tp_name);
}

// The text first, whose making may run Python code; from there on nothing does, and the place stays what it
// is. All objections are collected, so that one exception tells a person everything at once.
void SetValue(Node& node, py::handle value, bool isForced) {
    bool const isAttachment = node.Layout().m_type == FileAttachment;
    if (isAttachment && py::isinstance(value, TypeNamed("Attachment"))) {
        SetAttachment(node, value, isForced);
        return;
    }
    std::wstring const text =
        PyUnicode_Check(value.ptr())
            ? WideOf(value)
            : VisitValueType(node.Layout().m_type, [&](auto tag) { return TextFor(node, tag, value); });
    Editing::Place const place = node.Place();
    std::vector<Finding> refusals;
    if (!isForced) {
        refusals = ReadOnlyBy(place);
        for (Finding& finding : refusals.empty() ? Objections(place, text) : std::vector<Finding>()) {
            if (finding.severity == Severity::Error) {
                refusals.push_back(std::move(finding));
            }
        }
    }
    if (refusals.empty()) {
        if (std::optional<Finding> finding = SetText(place, text)) {
            refusals.push_back(std::move(*finding));
        }
    }
    if (!refusals.empty()) {
        RaiseRefused(refusals, &node);
    }
}

} // namespace ZantrelPython
