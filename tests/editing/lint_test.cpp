// SPDX-License-Identifier: Apache-2.0
#include <zantrel/editing/lint.h>
#include <zantrel/sample/sample_layout.h>
#include <zantrel/zantrel.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

using namespace Zantrel;
using namespace Zantrel::Editing;
using enum LintKind;

namespace {

using Found = std::vector<std::pair<LintKind, std::wstring>>;

Found KindsAndPaths(ParameterLayout const& layout) {
    Found found;
    for (LintFinding const& finding : Lint(layout)) {
        found.emplace_back(finding.kind, finding.path);
        EXPECT_TRUE(finding.sentence.size() > 20 && finding.sentence.back() == L'.');
        EXPECT_EQ(finding.node == nullptr, finding.kind == ForeignAnchor);
    }
    return found;
}

/// A layout with one fault, and what is to be found.
struct Case {
    char const* what;
    std::function<void(ParameterLayout& layout, LayoutNode& editor)> make;
    Found found;
};

LayoutNode* Number(LayoutNode& parent, wchar_t const* text, eTypeLayoutNode type = Double) {
    LayoutNode* const node = parent.AddNode(L"N", type, text);
    return node;
}

constexpr wchar_t const* N = L"ProfileEditor/N";

Case const Cases[] = {
    {"nothing",
     [](auto&, auto& e) {
         Number(e, L" 2.5 ")->m_max = L"200.5000";
         e.AddNode(L"I", Int, L"+7")->SetRange(0.0, 10.0);
         e.AddNode(L"G")->SetList(true, L"Default", L"")->SetMultiplicity(1)->SetMultiplicityMin(1);
         e.AddNode(L"GenericParameters");
     },
     {}},
    {"two", [](auto&, auto& e) { e.AppendNode(L"N")->AppendNode(L"N"); }, {{SameName, N}}},
    {"one twice", [](auto&, auto& e) { e.AppendNode(e.AddNode(L"N")); }, {{SameName, N}}},
    {"no name", [](auto&, auto& e) { e.AddNode(L"1"); }, {{BadName, L"ProfileEditor/1"}}},
    {"prefix", [](auto&, auto& e) { e.AddNode(L"a:b"); }, {{BadName, L"ProfileEditor/a:b"}}},
    {"root", [](auto& l, auto&) { l.SetName(L""); }, {{BadName, L""}}},
    {"like the root", [](auto& l, auto& e) { e.AddNode(L"N"), l.SetName(L"N"); }, {{FormatWord, N}}},
    {"left out by filters",
     [](auto&, auto& e) { e.AddNode(L"G")->AddNode(L"GenericParameters"); },
     {{FormatWord, L"ProfileEditor/G/GenericParameters"}}},
    {"words beside and in the job",
     [](auto& l, auto& e) {
         e.AddNode(L"N")->SetList(true, L"JobConfigurator", L"");
         l.m_jobConfigurator = l.AddNode(L"JobConfigurator");
         l.m_jobConfigurator->AddNode(L"PartConfigurator");
     },
     {{FormatWord, N}, {FormatWord, L"JobConfigurator/PartConfigurator"}}},
    {"like choices",
     [](auto& l, auto&) {
         l.m_partOptions->AddNode(L"Options")->SetIdentifier(L"x");
         LayoutNode* const text = l.m_partOptions->AddNode(L"N", String, L"");
         text->AddNode(L"Options")->AddNode(L"Option");
         l.m_partOptions->AddNode(L"M", String, L"")->AddNode(L"Options")->AddNode(L"Other");
     },
     {{FormatWord, L"PlatformConfigurator/PartOptions/N/Options"}}},
    {"list",
     [](auto& l, auto& e) {
         e.AddNode(L"P")->SetProfile(true, L"E");
         l.m_partOptions->AddNode(L"N", OptionsFromProfiles, L"")->SetProfileName(L"P");
     },
     {}},
    {"below a leaf",
     [](auto&, auto& e) { Number(e, L"1", Int)->AddNode(L"G")->AddNode(L"L", Double, L"x"); },
     {{Unreached, L"ProfileEditor/N/G"}}},
    {"beside", [](auto& l, auto&) { l.AddNode(L"G")->AddNode(L"L", Int, 1); }, {{Unreached, L"G"}}},
    {"a second version", [](auto& l, auto&) { l.AddNode(L"Version"); }, {}},
    {"identifiers",
     [](auto& l, auto& e) { Number(e, L"1")->SetIdentifier(L"x"), l.m_partOptions->SetIdentifier(L"x"); },
     {{SameIdentifier, L"PlatformConfigurator/PartOptions"}}},
    {"property names",
     [](auto& l, auto& e) {
         Number(e, L"1")->SetPropName(L"x");
         l.m_partConfigurator->AddNode(L"A")->SetPropName(L"x");
         l.m_platformOptions->AddNode(L"A")->SetPropName(L"x");
         l.m_partOptions->AddNode(L"A")->SetPropName(L"x");
     },
     {{SamePropertyName, L"PlatformConfigurator/PartOptions/A"}}},
    {"no editor", [](auto& l, auto&) { l.m_profileEditor = nullptr; }, {{ForeignAnchor, L""}}},
};

/// A node with one fault.
struct NodeCase {
    eTypeLayoutNode type;
    wchar_t const* text;
    std::function<void(LayoutNode& node)> make;
    std::optional<LintKind> kind;
};

NodeCase const NodeCases[] = {
    {Double, L"1.0", [](auto& n) { n.m_max = L"200,5000"; }, BadLimit},
    {Int, L"1", [](auto& n) { n.m_max = L"2.5"; }, BadLimit},
    {Double, L"1 mm", [](auto&) {}, BadDefault},
    {Int, L"1.0", [](auto&) {}, BadDefault},
    {Double, L"INF", [](auto&) {}, BadDefault},
    {Bool, L"true", [](auto&) {}, BadDefault},
    {Double, L"", [](auto& n) { n.SetRange(0.5, 2.0); }, DefaultOutOfRange},
    {Double, L"1.0", [](auto& n) { n.SetRange(5.0, 2.0); }, EmptyRange},
    {Double, L"0.00004", [](auto&) {}, DefaultCut},
    {Double, L"0.00004", [](auto& n) { n.SetPrecision(5); }, {}},
    {Group, L"", [](auto& n) { n.SetIsList(true)->SetMultiplicityMin(3)->SetMultiplicityMax(2); },
     EmptyRange},
    {Group, L"", [](auto& n) { n.SetIsList(true)->SetMultiplicity(3)->SetMultiplicityMax(2); },
     DefaultOutOfRange},
    {Options, L"", [](auto&) {}, NoOptions},
    {Options, L"a", [](auto& n) { n.AddOption(L"a", L"")->AddOption(L"a", L""); }, NoOptions},
    {Options, L"b", [](auto& n) { n.AddOption(L"a", L""); }, DefaultNoOption},
    {String, L"abc", [](auto& n) { n.m_maxLength = 2; }, DefaultOutOfRange},
    {String, L"", [](auto& n) { n.m_regex = L"(a"; }, BadPattern},
    {String, L"b", [](auto& n) { n.m_regex = L"a"; }, DefaultOutOfRange},
    {OptionsFromProfiles, L"", [](auto& n) { n.SetProfileName(L"P"); }, MissingProfileList},
    {Int, L"1", [](auto& n) { n.SetProfile(true, L"E"); }, Unreached},
    {Group, L"", [](auto& n) { n.SetIsList(true)->SetIsProfileList(true); }, TwoContainers},
    {Group, L"", [](auto& n) { n.SetList(true, L"a b", L""); }, BadName},
};

} // namespace

TEST(Lint, FindsEachFaultWhereItIs) {
    for (Case const& one : Cases) {
        ParameterLayout layout;
        one.make(layout, *layout.m_profileEditor);
        EXPECT_EQ(KindsAndPaths(layout), one.found) << one.what;
    }
    for (NodeCase const& one : NodeCases) {
        ParameterLayout layout;
        one.make(*layout.m_profileEditor->AddNode(L"N", one.type, one.text));
        EXPECT_EQ(KindsAndPaths(layout), one.kind ? Found({{*one.kind, N}}) : Found()) << &one - NodeCases;
    }
}

TEST(Lint, KnowsWhatAConditionCanDependOn) {
    auto const gone = std::make_unique<LayoutNode>(L"Gone", Bool, L"True");
    ParameterLayout layout;
    LayoutNode& editor = *layout.m_profileEditor;
    LayoutNode* const flag = editor.AddNode(L"Flag", Bool, true);
    LayoutNode* const number = editor.AddNode(L"Number", Double, 2.0)->SetRange(0.0, 5.0);
    LayoutNode* const count = editor.AddNode(L"Count", Int, std::int32_t{2});
    LayoutNode* const mode =
        editor.AddNode(L"Mode", Options, L"a")->AddOption(L"a", L"")->AddOption(L"b", L"");
    LayoutNode* const list = editor.AddNode(L"List")->SetList(true, L"Item", L"");
    LayoutNode* const inItem = list->AddNode(L"InItem", Bool, true);
    LayoutNode* const inProfile =
        editor.AddNode(L"Profiles")->SetProfile(true, L"Profile")->AddNode(L"InProfile", Bool, true);
    LayoutNode* const ofTicket = layout.m_partOptions->AddNode(L"OfTicket", Bool, true);
    struct Row {
        LayoutNode *node, *source;
        wchar_t const* value;
        std::optional<LintKind> kind{}; ///< none: nothing is wrong
    };
    for (Row const& row : {
             Row{number, nullptr, L"True", MissingSource},
             {number, gone.get(), L"True", MissingSource},
             {number, number, L"2.0000", OwnSource},
             {list, inItem, L"True", OwnSource},
             {number, inItem, L"True", UnreachedSource},
             {number, list, L"True", UnreachedSource},
             {number, ofTicket, L"True", UnreachedSource},
             {number, flag, L"true", BadConditionValue},
             {number, mode, L"c", BadConditionValue},
             {flag, number, L"2", BadConditionValue},
             {flag, number, L"5.5000", BadConditionValue},
             {flag, count, L"02", BadConditionValue},
             {flag, number, L"2.5000"},
             {flag, count, L"-2"},
             {flag, mode, L"b"},
             {list->AddNode(L"Beside", Bool, true), inItem, L"False"},
             {flag, inProfile, L"True"},
             {ofTicket, flag, L"True"},
         }) {
        auto& sources = row.source == mode ? row.node->m_editabilitySources : row.node->m_visibilitySources;
        sources.push_back({row.source, row.value});
        std::vector<LintFinding> const found = Lint(layout);
        ASSERT_EQ(found.size(), row.kind ? 1u : 0u) << row.value;
        EXPECT_TRUE(!row.kind || (found[0].kind == *row.kind && found[0].node == row.node)) << row.value;
        sources.pop_back();
    }
}

TEST(Lint, SaysOfCopiesThatNothingIsFoundInThem) {
    Sample::ParameterLayout source(2);
    source.AddCategoryNodeIfNeeded();
    EXPECT_EQ(KindsAndPaths(source), Found());
    ParameterLayout const copy(source);
    for (auto const& [kind, path] : KindsAndPaths(copy)) {
        EXPECT_EQ(kind, ForeignAnchor);
    }
    auto ended = std::make_unique<ParameterLayout>();
    ParameterLayout const orphan(*ended);
    ended.reset();
    EXPECT_THROW(Lint(orphan), std::logic_error);
    ParameterLayout layout;
    layout.m_profileEditor->AddNode(*source.m_slicing.GetNode());
    Found const found = KindsAndPaths(layout);
    EXPECT_EQ(found.size(), source.m_slicing->Size());
    EXPECT_EQ(found.front(), std::pair(Unreached, std::wstring(L"ProfileEditor/Slicing/SliceThickness")));
}

namespace {

constexpr wchar_t const* Words =
    L"Plain InheritOverrides OverrideEntry ParameterStructure AdditionalConfiguration Entry "
    L"ResourceDictionary "
    L"JobConfigurator Minor Version ProfileEditor PlatformConfigurator PartConfigurator PlatformOptions "
    L"PartOptions "
    L"Translation Options Option Default Value ReadOnly Hidden NameReadOnly CanBeDeleted UserDefaultProfile "
    L"DisableAddRemove GenericParameters Property Profile Instance";

/// A node of that name, or with entries of that name, in one of several places, with a leaf in it and one
/// behind it.
LayoutNode* AddNamed(ParameterLayout& layout, std::wstring const& name, int place) {
    LayoutNode* const parents[] = {&layout, layout.m_profileEditor, layout.m_profileEditor->AddNode(L"G"),
                                   layout.m_partOptions, layout.m_profileEditor->AddNode(L"P")};
    parents[4]->SetProfile(true, L"Profile");
    bool const isEntry = place > 4;
    LayoutNode* const parent = parents[isEntry ? 2 : place];
    LayoutNode* const node = parent->AddNode(isEntry ? L"C" : name.c_str());
    place == 5   ? node->SetList(true, name.c_str(), L"")
    : place == 6 ? node->SetProfile(true, name.c_str())
                 : node;
    node->AddNode(L"In", Double, 1.0);
    parent->AddNode(L"Behind", Double, 1.0);
    layout.AddCategoryNodeIfNeeded(); // as a read does
    return node;
}

std::multiset<std::wstring> PathsIn(LayoutNode const& node) {
    std::multiset<std::wstring> paths;
    for (LayoutNode const* const child : node.m_children) {
        paths.insert(child->m_name);
        for (std::wstring const& path : PathsIn(*child)) {
            paths.insert(child->m_name + L'/' + path);
        }
    }
    return paths;
}

bool SurvivesItsFile(ParameterLayout const& layout) {
    std::stringstream file;
    ParameterLayout back;
    EXPECT_TRUE(WriteStream(layout, file));
    EXPECT_TRUE(ReadStream(back, file));
    std::multiset<std::wstring> read = PathsIn(back);
    for (wchar_t const* const second : {L"Version", L"Version/Major", L"Version/Minor"}) {
        read.erase(read.find(second)); // which every file adds
    }
    return read == PathsIn(layout);
}

/// Where a value and flags stand that a word may hurt.
struct Around {
    ParameterNode outer, entry;

    Around(ParameterDatabase& database, LayoutNode const& node, bool isNew) {
        ParameterNode const editor = database.GetProfileEditor();
        outer = node.Parent() == editor.m_pNode ? editor : EntryOf(editor.Get(node.Parent()), isNew);
        entry = EntryOf(outer.Get(&node), isNew);
    }
    static ParameterNode EntryOf(ParameterNode at, bool isNew) {
        LayoutNode const& of = *at.m_pNode;
        return of.m_isProfileList  ? isNew ? at.AddProfile(L"x", true) : at.GetProfile(L"x")
                : !of.m_isList ? at
               : isNew             ? at.AddListNode(true)
               : at.GetSize() != 0 ? at.GetListNode(0)
                                   : ParameterNode();
    }
    bool IsInProfile() const { return outer.m_pNode->m_isProfileList; }
    void Set() {
        entry.Get(L"In").SetValue(5.0);
        outer.SetReadOnly(true);
        outer.SetHidden(true);
        if (IsInProfile()) {
            outer.SetNameReadOnly(true);
            outer.SetCanBeDeleted(true);
            outer.SetUserDefaultProfile(true);
        }
    }
    bool HasValue() const {
        double const* const value = entry.IsValid() ? entry.Get(L"In").FindValue<double>() : nullptr;
        return value != nullptr && *value == 5.0;
    }
    bool HasFlags() const {
        bool const hasBoth = outer.GetReadOnly() && outer.GetHidden();
        return hasBoth && (!IsInProfile() || (outer.GetNameReadOnly() && outer.GetCanBeDeleted() &&
                                              outer.GetUserDefaultProfile()));
    }
};

/// Whether the value in the node comes back, and whether the flags of what is around it can be kept.
std::pair<bool, bool> SurviveTheirFile(ParameterLayout const& layout, LayoutNode const& node) {
    ParameterDatabase database(&layout), back(&layout);
    Around written(database, node, true);
    written.Set();
    bool const areSet = written.HasFlags();
    std::stringstream file;
    EXPECT_TRUE(WriteStream(database, file));
    EXPECT_TRUE(ReadStream(back, file));
    return {Around(back, node, false).HasValue(), areSet};
}

} // namespace

/// The words are the readers' and writers': each in each place, where Lint has it and where not.
TEST(Lint, KnowsTheWordsThatBreakFiles) {
    std::wistringstream words(Words);
    for (std::wstring word; words >> word;) {
        for (int place = 0; place < 7; ++place) {
            ParameterLayout layout;
            LayoutNode const& node = *AddNamed(layout, word, place);
            bool isError = false, isFlag = false;
            for (LintFinding const& finding : Lint(layout)) {
                bool const isOfNames = finding.kind == FormatWord || finding.kind == SameName;
                isError = isError || (isOfNames && finding.severity == Severity::Error);
                isFlag = isFlag || finding.sentence.find(L" a flag ") != std::wstring::npos;
            }
            bool const isKept = SurvivesItsFile(layout);
            auto const [isValueKept, areFlagsKept] = node.Parent() == &layout || place == 3
                                                         ? std::pair(true, true)
                                                         : SurviveTheirFile(layout, node);
            EXPECT_EQ(isError, !isKept || !isValueKept) << word << place << isKept << isValueKept;
            EXPECT_EQ(isFlag, !areFlagsKept) << word << place;
        }
    }
}
