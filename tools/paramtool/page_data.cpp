// SPDX-License-Identifier: Apache-2.0
//
// A layout and values as the data of a page. What can be asked of the layout for itself is told here; what
// depends on values (looks, findings, choices) the page works out anew at each change, by the same rules.

#include "page_data.h"

#include <zantrel/database/visit_value.h>
#include <zantrel/database/walk.h>
#include <zantrel/editing/editing.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <stdexcept>
#include <type_traits>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace Paramtool {

using namespace Zantrel;
using nlohmann::json;
using StringConversion::NativeToUtf8;

namespace {

/// Beyond this the page, which goes through a layout by recursion, could not be shown.
constexpr std::size_t DeepestNode = 100;

// The scripts of the page know types by these words: one that is changed here is changed there, too.
char const* WordOf(eTypeLayoutNode type) {
    switch (type) { // no default: the compiler names a type that is forgotten
    case eTypeLayoutNode::Group:
        return "Group";
    case eTypeLayoutNode::Int:
        return "Int";
    case eTypeLayoutNode::Double:
        return "Double";
    case eTypeLayoutNode::Distance:
        return "Distance";
    case eTypeLayoutNode::Bool:
        return "Bool";
    case eTypeLayoutNode::String:
        return "String";
    case eTypeLayoutNode::Options:
        return "Options";
    case eTypeLayoutNode::OptionsFromProfiles:
        return "OptionsFromProfiles";
    case eTypeLayoutNode::FileAbsolute:
        return "FileAbsolute";
    case eTypeLayoutNode::FileAttachment:
        return "FileAttachment";
    case eTypeLayoutNode::StandardOptions:
        return "StandardOptions";
    }
    return "Group"; // a number that is no type has no value
}

char const* WordOf(Editing::Severity severity) {
    switch (severity) {
    case Editing::Severity::Note:
        return "note";
    case Editing::Severity::Warning:
        return "warning";
    case Editing::Severity::Error:
        return "error";
    }
    return "error";
}

// Default values

/// The number exactly, in the fewest digits, as Editing::TextOf has it.
std::string TextOf(double value) {
    if (!std::isfinite(value)) {
        return std::isnan(value) ? "NaN" : value < 0 ? "-INF" : "INF";
    }
    std::array<char, 32> digits;
    return {digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr};
}

/// What formatting gives the node.
std::string DefaultOf(LayoutNode const& node) {
    std::wstring const& text = node.m_defaultValue;
    switch (node.m_type) {
    case eTypeLayoutNode::Int:
        return std::to_string(node.GetValue<std::int32_t>(text));
    case eTypeLayoutNode::Double:
    case eTypeLayoutNode::Distance:
        return TextOf(node.GetValue<double>(text));
    case eTypeLayoutNode::Bool:
        return node.GetValue<bool>(text) ? "true" : "false";
    case eTypeLayoutNode::Options:
        return NativeToUtf8(text.empty() && !node.m_optionValues.empty() ? node.m_optionValues.front()
                                                                         : text);
    case eTypeLayoutNode::FileAttachment:
    case eTypeLayoutNode::StandardOptions:
        return {};
    default:
        return NativeToUtf8(text);
    }
}

// Nodes

// The tables say which fields a page gets, under which word. What is as a new node has it isn't written, as
// most fields are; nodes.js has the same plain node.
struct TextField {
    char const* word;
    std::wstring LayoutNode::*field;
};
constexpr TextField TextFields[] = {
    {"displayName", &LayoutNode::m_displayName},
    {"description", &LayoutNode::m_description},
    {"prefix", &LayoutNode::m_prefix},
    {"postfix", &LayoutNode::m_postfix},
    {"min", &LayoutNode::m_min},
    {"max", &LayoutNode::m_max},
    {"profileName", &LayoutNode::m_profileName},
    {"regexText", &LayoutNode::m_regexUserFriendly},
    {"propName", &LayoutNode::m_propName},
    {"image", &LayoutNode::m_imageDescription},
    {"request", &LayoutNode::m_requestName},
    {"visibilityRequest", &LayoutNode::m_visibilityRequest},
    {"fileFilter", &LayoutNode::m_fileFilter},
    {"entryDisplayName", &LayoutNode::m_nodeDisplayName},
    {"containerDisplayName", &LayoutNode::m_containerDisplayName},
    {"containerDescription", &LayoutNode::m_containerDescription},
    {"leastMessage", &LayoutNode::m_multiplicityMinMessage},
    {"mostMessage", &LayoutNode::m_multiplicityMaxMessage},
};

struct FlagField {
    char const* word;
    bool LayoutNode::*field;
};
constexpr FlagField FlagFields[] = {
    {"visible", &LayoutNode::m_visible},
    {"readOnly", &LayoutNode::m_readOnly},
    {"hideName", &LayoutNode::m_hideName},
    {"allowEmpty", &LayoutNode::m_allowEmpty},
    {"unique", &LayoutNode::m_isValueUnique},
    {"multiLine", &LayoutNode::m_enableMultiLine},
    {"canAddRemove", &LayoutNode::m_userCanAddRemove},
    {"canSort", &LayoutNode::m_userCanSort},
    {"canRemoveAny", &LayoutNode::m_userCanRemoveAnyElement},
};

struct NumberField {
    char const* word;
    std::uint64_t LayoutNode::*field;
};
constexpr NumberField NumberFields[] = {
    {"maxLength", &LayoutNode::m_maxLength},
    {"leastItems", &LayoutNode::m_multiplicityMin},
    {"mostItems", &LayoutNode::m_multiplicityMax},
    {"initialItems", &LayoutNode::m_multiplicity},
};

json OptionsOf(LayoutNode const& node) {
    json options = json::array();
    for (std::size_t i = 0; i < node.m_optionValues.size(); ++i) {
        // A layout may give fewer names than options.
        bool const isNamed = i < node.m_optionDisplayNames.size();
        options.push_back({{"value", NativeToUtf8(node.m_optionValues[i])},
                           {"displayName", isNamed ? NativeToUtf8(node.m_optionDisplayNames[i]) : ""}});
    }
    return options;
}

/// The nodes of a layout under the numbers that they have in the page: their places in the list.
class Nodes {
public:
    explicit Nodes(ParameterLayout const& layout) : m_lint(Editing::Lint(layout)) {
        Add(layout, nullptr, 0);
        AddLists(*m_nodes[RequiredIdOf(layout.m_profileEditor)]);
        for (Editing::LintFinding const& finding : m_lint) {
            if (finding.kind == Editing::LintKind::BadPattern) {
                m_badPatterns.insert(finding.node);
            }
        }
    }

    /// In a copy the anchors lead to nodes of the source, which have no number here.
    std::size_t RequiredIdOf(LayoutNode const* node) const {
        auto const found = m_ids.find(node);
        if (found == m_ids.end()) {
            throw std::runtime_error("The layout is a copy, or has no profile editor");
        }
        return found->second;
    }
    json IdOf(LayoutNode const* node) const {
        auto const found = m_ids.find(node);
        return found != m_ids.end() ? json(found->second) : json();
    }
    json Lint() const;
    json All() const {
        json all = json::array();
        for (LayoutNode const* node : m_nodes) {
            all.push_back(DataOf(*node));
        }
        return all;
    }

private:
    void Add(LayoutNode const& node, LayoutNode const* parent, std::size_t depth);
    void AddLists(LayoutNode const& editor);
    LayoutNode const* ListOf(LayoutNode const& choice) const;
    json DataOf(LayoutNode const& node) const;
    void AddReferences(json& data, LayoutNode const& node) const;
    json ConditionsOf(std::vector<LayoutNodeSource> const& conditions) const;

    std::vector<Editing::LintFinding> m_lint;
    std::vector<LayoutNode const*> m_nodes;
    std::unordered_map<LayoutNode const*, std::size_t> m_ids;
    std::unordered_map<LayoutNode const*, LayoutNode const*> m_parents;
    std::unordered_set<LayoutNode const*> m_badPatterns;
    std::unordered_set<LayoutNode const*> m_lists;                     ///< of profiles, below the editor
    std::unordered_map<std::wstring, LayoutNode const*> m_listsByName; ///< the one that is found by a name
};

// By recursion: the bound, which the page needs as well, keeps it short.
void Nodes::Add(LayoutNode const& node, LayoutNode const* parent, std::size_t depth) {
    if (depth > DeepestNode) {
        throw std::runtime_error("The layout is too deep for a page: nodes stand more than " +
                                 std::to_string(DeepestNode) + " levels in each other");
    }
    if (!m_ids.emplace(&node, m_nodes.size()).second) {
        return; // listed twice
    }
    m_nodes.push_back(&node);
    m_parents.emplace(&node, parent);
    for (LayoutNode const* child : node.m_children) {
        Add(*child, &node, depth + 1);
    }
}

/// The profile lists below the editor. All children of a node come before what stands below them, and of
/// siblings of one name the last, as a search by name finds them.
void Nodes::AddLists(LayoutNode const& editor) {
    std::vector<LayoutNode const*> open{&editor};
    while (!open.empty()) {
        LayoutNode const& node = *open.back();
        open.pop_back();
        for (std::size_t i = node.Size(); i-- != 0;) {
            LayoutNode const& child = node.At(i);
            open.push_back(&child);
            if (child.m_isProfileList) {
                m_lists.insert(&child);
                m_listsByName.emplace(child.m_name, &child);
            }
        }
    }
}

/// By which a choice from profiles is made; null where there is none.
LayoutNode const* Nodes::ListOf(LayoutNode const& choice) const {
    if (choice.m_type != eTypeLayoutNode::OptionsFromProfiles) {
        return nullptr;
    }
    // By address only, as it may be a node of another layout that has ended.
    if (m_lists.count(choice.m_profileNode) != 0) {
        return choice.m_profileNode;
    }
    auto found =
        choice.m_profileName.empty() ? m_listsByName.end() : m_listsByName.find(choice.m_profileName);
    found = found == m_listsByName.end() ? m_listsByName.find(choice.m_nodeName) : found;
    return found != m_listsByName.end() ? found->second : nullptr;
}

json Nodes::ConditionsOf(std::vector<LayoutNodeSource> const& conditions) const {
    json data = json::array();
    for (LayoutNodeSource const& condition : conditions) {
        data.push_back({{"source", IdOf(condition.m_source)}, {"value", NativeToUtf8(condition.m_value)}});
    }
    return data;
}

/// The fields that aren't as a new node has them.
void AddFields(json& data, LayoutNode const& node) {
    static LayoutNode const plain(L"", eTypeLayoutNode::Group, L"");
    for (auto const& [word, field] : TextFields) {
        if (!(node.*field).empty()) {
            data[word] = NativeToUtf8(node.*field);
        }
    }
    for (auto const& [word, field] : FlagFields) {
        if (node.*field != plain.*field) {
            data[word] = node.*field;
        }
    }
    for (auto const& [word, field] : NumberFields) {
        if (node.*field != 0) {
            data[word] = node.*field;
        }
    }
    if (node.m_precision != plain.m_precision) {
        data["precision"] = node.m_precision;
    }
    if (!node.m_optionValues.empty()) {
        data["options"] = OptionsOf(node);
    }
    if (node.m_isProfileList || node.m_isList) {
        data["container"] = node.m_isProfileList ? "profiles" : "list";
        data["entryName"] = NativeToUtf8(node.m_nodeName);
    }
}

/// What names other nodes.
void Nodes::AddReferences(json& data, LayoutNode const& node) const {
    if (LayoutNode const* list = ListOf(node)) {
        data["profileList"] = IdOf(list);
    }
    if (!node.m_visibilitySources.empty()) {
        data["visibleWhere"] = ConditionsOf(node.m_visibilitySources);
    }
    if (!node.m_editabilitySources.empty()) {
        data["editableWhere"] = ConditionsOf(node.m_editabilitySources);
    }
    if (node.m_type == eTypeLayoutNode::Group && node.Size() != 0) {
        json& children = data["children"] = json::array();
        for (LayoutNode const* child : node.m_children) {
            children.push_back(IdOf(child));
        }
    }
}

json Nodes::DataOf(LayoutNode const& node) const {
    // What stands below anything but a group is never formatted, and is no place.
    // A node with children holds no value in files, whatever its type.
    bool const isGroup = node.m_type == eTypeLayoutNode::Group || node.Size() != 0;
    json data{{"id", m_ids.at(&node)},
              {"parent", IdOf(m_parents.at(&node))},
              {"name", NativeToUtf8(node.m_name)},
              {"type", isGroup ? "Group" : WordOf(node.m_type)}};
    AddFields(data, node);
    AddReferences(data, node);
    if (!isGroup) {
        data["default"] = DefaultOf(node);
        data["emptyIsTold"] = Editing::IsEmptyNoted(node);
    }
    if (!node.m_regex.empty()) {
        data[m_badPatterns.count(&node) != 0 ? "badRegex" : "regex"] = NativeToUtf8(node.m_regex);
    }
    return data;
}

json Nodes::Lint() const {
    json data = json::array();
    for (Editing::LintFinding const& finding : m_lint) {
        data.push_back({{"severity", WordOf(finding.severity)},
                        {"path", NativeToUtf8(finding.path)},
                        {"node", IdOf(finding.node)},
                        {"sentence", NativeToUtf8(finding.sentence)}});
    }
    return data;
}

// Values

json FlagsOf(ParameterView const& cursor) {
    struct Flag {
        char const* word;
        bool (ParameterView::*get)() const;
    };
    // A cursor throws when it is asked for a flag that its place can't have.
    constexpr Flag common[] = {{"readOnly", &ParameterView::GetReadOnly},
                               {"hidden", &ParameterView::GetHidden}};
    constexpr Flag ofProfiles[] = {{"nameReadOnly", &ParameterView::GetNameReadOnly},
                                   {"canBeDeleted", &ParameterView::GetCanBeDeleted},
                                   {"userDefault", &ParameterView::GetUserDefaultProfile}};
    json data = json::object();
    auto const add = [&](Flag const& flag) {
        if ((cursor.*flag.get)()) {
            data[flag.word] = true;
        }
    };
    std::for_each(std::begin(common), std::end(common), add);
    if (cursor.IsContainer()) {
        add({"disableAddRemove", &ParameterView::GetDisableAddRemove});
    } else if (cursor.GetLayoutNode()->m_isProfileList) {
        std::for_each(std::begin(ofProfiles), std::end(ofProfiles), add);
    }
    return data;
}

void AddValue(json& data, ParameterView const& cursor) {
    VisitValue(cursor, [&](auto const& value) {
        data["text"] = NativeToUtf8(Editing::TextOf(cursor));
        if constexpr (std::is_same_v<std::decay_t<decltype(value)>, KelAM::FileContent>) {
            data["bytes"] = value.m_data.size();
        }
    });
}

/// What stands at a place and below it. Null where there is nothing: the page keeps what is formatted.
json ValuesAt(ParameterView const& top) {
    if (!top.IsValid()) {
        return {};
    }
    json data{{"flags", FlagsOf(top)}};
    // A walk tells of each place what it is and gives the entries; what stands below an entry gets a walk of
    // its own, so that this goes as deep as the layout does, which Nodes has bounded.
    Walk<ParameterView> walk(top);
    walk.Next();
    if (walk.IsLeaf()) {
        AddValue(data, top);
        return data;
    }
    bool const isList = walk.Kind() == PlaceKind::List;
    bool const isProfileList = walk.Kind() == PlaceKind::ProfileList;
    char const* const below = isList ? "items" : isProfileList ? "profiles" : "children";
    data[below] = json::array();
    if (isList) {
        data["template"] = ValuesAt(top.GetDefault());
    }
    while (walk.Next()) {
        json value = ValuesAt(walk.Node());
        walk.SkipContent();
        if (walk.Kind() == PlaceKind::DefaultProfile) {
            data["default"] = std::move(value);
            continue;
        }
        if (walk.Kind() == PlaceKind::Profile) {
            value["name"] = NativeToUtf8(std::wstring(walk.Name()));
        }
        data[below].push_back(std::move(value));
    }
    return data;
}

// The dictionary

json DictionaryOf(ResourceDictionary const* dictionary, json& languages) {
    json data = json::object();
    std::unordered_set<std::string> known;
    languages = json::array();
    if (dictionary == nullptr) {
        return data;
    }
    for (auto const& [key, property] : *dictionary) {
        auto const* const texts = PropertyCast<PersistentProperties>(property);
        if (texts == nullptr) {
            continue;
        }
        json& translations = data[NativeToUtf8(std::wstring(key))];
        for (auto const& [language, text] : texts->m_value) {
            if (auto const* const translation = PropertyCast<std::wstring>(text)) {
                std::string const word = NativeToUtf8(std::wstring(language));
                translations[word] = NativeToUtf8(translation->m_value);
                if (known.insert(word).second) {
                    languages.push_back(word);
                }
            }
        }
    }
    return data;
}

} // namespace

json PageData(PageSource const& source) {
    ParameterLayout const& layout = source.layout;
    Nodes const nodes(layout);
    json sections = json::array();
    for (auto const& anchor : {layout.m_platformOptions, layout.m_partOptions, layout.m_partConfigurator}) {
        json id = nodes.IdOf(anchor.GetNode());
        if (!id.is_null()) {
            sections.push_back(std::move(id));
        }
    }
    json languages;
    json dictionary = DictionaryOf(layout.GetResourceDictionary(), languages);
    bool const hasValues = source.values != nullptr;
    return {
        {"layout",
         {{"name", NativeToUtf8(layout.m_name)},
          {"profileEditor", nodes.RequiredIdOf(layout.m_profileEditor)},
          {"sections", std::move(sections)},
          {"nodes", nodes.All()}}},
        {"values", hasValues ? ValuesAt(Editing::PlaceView(*source.values).GetCursor()) : json()},
        {"valuesFile", NativeToUtf8(source.valuesFile)},
        {"dictionary", std::move(dictionary)},
        {"languages", std::move(languages)},
        {"language", NativeToUtf8(source.language)},
        {"lint", nodes.Lint()},
    };
}

} // namespace Paramtool
