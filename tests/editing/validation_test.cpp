// SPDX-License-Identifier: Apache-2.0
#include "tests/editing/generated.h"

#include <zantrel/database/visit_value.h>
#include <zantrel/editing/choices.h>
#include <zantrel/editing/validation.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <optional>
#include <regex>

namespace {

using namespace Zantrel;
using namespace Zantrel::Editing;
using EditingTests::Generated, EditingTests::Make, EditingTests::TextsIn;
using testing::ElementsAre;

/// A finding in short, as tests compare it.
std::wstring Short(FindingKind kind, std::wstring_view path, std::wstring_view limit) {
    return std::to_wstring(static_cast<int>(kind)) + L" " + std::wstring(path) + L" | " + std::wstring(limit);
}
std::vector<std::wstring> Short(std::vector<Finding> const& findings) {
    std::vector<std::wstring> shorts;
    for (Finding const& finding : findings) {
        shorts.push_back(Short(finding.kind, finding.path, finding.limit));
    }
    return shorts;
}

/// Where the two begin to differ.
std::wstring FirstApart(std::vector<std::wstring> left, std::vector<std::wstring> right) {
    left.resize(std::max(left.size(), right.size()), L"nothing");
    right.resize(left.size(), L"nothing");
    auto const [a, b] = std::mismatch(left.begin(), left.end(), right.begin());
    return a == left.end() ? L"" : *a + L" and not " + *b;
}

/// The same rules once more, by looking at everything for everything.
class Model {
public:
    explicit Model(ParameterDatabase const& database)
        : m_editor(*database.GetProfileEditor().GetLayoutNode()) {
        std::vector<std::size_t> around;
        for (Walk walk(database.GetProfileEditor()); walk.Next();) {
            if (!walk.Node().IsValid()) { // the second of a name that has no content of its own
                walk.SkipContent();
                continue;
            }
            around.resize(walk.Depth());
            around.push_back(m_places.size());
            m_places.push_back(
                {walk.Node(), &walk.Layout(), walk.Kind(), walk.IsLeaf(), std::wstring(walk.Path()), around});
        }
    }

    /// What speaks against the place of that number in the order of a walk.
    std::vector<std::wstring> FindingsAt(std::size_t number) const {
        At const& at = m_places[number];
        LayoutNode const& layout = *at.layout;
        std::vector<std::wstring> found;
        auto const add = [&](bool isFound, FindingKind kind, std::wstring_view limit) {
            isFound ? found.push_back(Short(kind, at.path, limit)) : void();
        };
        if (!at.isLeaf) {
            if (at.node.IsContainer()) {
                auto const size = at.node.GetSize();
                add(size < layout.m_multiplicityMin, FindingKind::TooFewItems,
                    std::to_wstring(layout.m_multiplicityMin));
                add(layout.m_multiplicityMax != 0 && size > layout.m_multiplicityMax,
                    FindingKind::TooManyItems, std::to_wstring(layout.m_multiplicityMax));
            }
            return found;
        }
        if (!VisitValue(at.node, [](auto const&) {}) && layout.m_type != StandardOptions) {
            return found; // one of another type stands there, of a sibling of that name
        }
        std::wstring const text = TextOf(at.node);
        if (layout.m_type == Int || layout.m_type == Double || layout.m_type == Distance) {
            double const value = std::stod(text);
            add(!std::isfinite(value), FindingKind::NoNumber, L"");
            add(std::isfinite(value) && value < Limit(layout.m_min, -INFINITY), FindingKind::BelowMinimum,
                layout.m_min == L" 3 " ? L"3" : layout.m_min);
            add(std::isfinite(value) && value > Limit(layout.m_max, INFINITY), FindingKind::AboveMaximum,
                layout.m_max);
        } else if (layout.m_type != Bool && layout.m_type != Group) {
            add(text.empty() && IsNoted(layout), FindingKind::Empty, L"");
            auto const& options = layout.m_optionValues;
            bool const isChoice = layout.m_type == Options && !options.empty() && !text.empty();
            add(isChoice && std::count(options.begin(), options.end(), text) == 0, FindingKind::NoOption,
                Listed(options));
            add(!text.empty() && IsUnknownProfile(at, text), FindingKind::NoSuchProfile,
                ListOf(layout) != nullptr ? ListOf(layout)->m_name : L"");
            if (layout.m_type != FileAttachment && !text.empty()) {
                bool const isTooLong = layout.m_maxLength != 0 && text.size() > layout.m_maxLength;
                add(isTooLong, FindingKind::TooLong, std::to_wstring(layout.m_maxLength));
                bool const isPattern = !isTooLong && !layout.m_regex.empty() && layout.m_regex != L"(";
                add(isPattern && !std::regex_match(text, std::wregex(layout.m_regex)),
                    FindingKind::AgainstPattern,
                    layout.m_regexUserFriendly.empty() ? layout.m_regex : layout.m_regexUserFriendly);
            }
        }
        std::optional<std::size_t> const same = SameValue(number);
        add(same.has_value(), FindingKind::NotUnique, same ? m_places[*same].path : L"");
        return found;
    }

    std::vector<std::wstring> FindingsBelow(std::size_t top) const {
        std::vector<std::wstring> all;
        for (std::size_t i = top; i != m_places.size() && IsIn(m_places[i], top); ++i) {
            auto const some = FindingsAt(i);
            all.insert(all.end(), some.begin(), some.end());
        }
        return all;
    }

private:
    struct At {
        ParameterView node;
        LayoutNode const* layout;
        PlaceKind kind;
        bool isLeaf;
        std::wstring path;
        std::vector<std::size_t> around; ///< from the top to itself
    };

    static bool IsIn(At const& at, std::size_t place) {
        return std::count(at.around.begin(), at.around.end(), place) != 0;
    }
    bool IsEntry(std::size_t place) const {
        PlaceKind const kind = m_places[place].kind;
        return kind == PlaceKind::Item || kind == PlaceKind::Profile || kind == PlaceKind::DefaultProfile;
    }

    static double Limit(std::wstring const& text, double none) {
        bool const isNumber =
            text == L"2" || text == L"-1.5" || text == L" 3 " || text == L"5" || text == L"7.25";
        return isNumber ? std::stod(text) : none;
    }
    static bool IsNoted(LayoutNode const& layout) {
        auto const& options = layout.m_optionValues;
        bool const isChoice = layout.m_type == Options && !options.empty() &&
                              std::count(options.begin(), options.end(), L"") == 0;
        bool const isPicked = isChoice || layout.m_type == OptionsFromProfiles ||
                              layout.m_type == FileAbsolute || layout.m_type == FileAttachment;
        bool const isMissed = (layout.m_type == String || layout.m_type == StandardOptions) &&
                              (!layout.m_defaultValue.empty() || layout.m_isValueUnique);
        return !layout.m_allowEmpty && (isPicked || isMissed);
    }
    static std::wstring Listed(std::vector<std::wstring> const& options) {
        std::wstring list;
        for (std::wstring const& option : options) {
            list += (list.empty() ? L"\"" : L", \"") + option + L"\"";
        }
        return list;
    }

    LayoutNode const* ListOf(LayoutNode const& choice) const {
        LayoutNode const* const named = m_editor.FindProfileList(choice.m_profileName, true);
        return choice.m_profileNode != nullptr ? choice.m_profileNode
               : named != nullptr              ? named
                                               : m_editor.FindProfileList(choice.m_nodeName, true);
    }
    bool IsUnknownProfile(At const& at, std::wstring const& name) const {
        LayoutNode const* const list = ListOf(*at.layout);
        if (at.layout->m_type != OptionsFromProfiles || list == nullptr || name == L"Default") {
            return false;
        }
        for (At const& other : m_places) {
            bool const isSeen = std::all_of(other.around.begin(), other.around.end(), [&](std::size_t entry) {
                bool const isAside = m_places[entry].kind == PlaceKind::DefaultProfile &&
                                     !IsIn(at, m_places[entry].around.end()[-2]);
                return !IsEntry(entry) || IsIn(at, entry) || isAside;
            });
            if (other.layout == list && other.kind == PlaceKind::ProfileList && isSeen) {
                std::vector<std::wstring> names;
                other.node.GetProfiles(names);
                return std::count(names.begin(), names.end(), name) == 0;
            }
        }
        return false;
    }

    /// The container that a value is unique in.
    std::optional<std::size_t> Uniqueness(At const& at) const {
        for (std::size_t depth = at.around.size() - 1; depth != 0; --depth) {
            if (IsEntry(at.around[depth])) {
                bool const counts = m_places[at.around[depth]].kind != PlaceKind::DefaultProfile;
                return counts ? std::optional(at.around[depth - 1]) : std::nullopt;
            }
        }
        return std::nullopt;
    }
    static std::wstring Normal(ParameterView const& cursor) {
        std::wstring const text = TextOf(cursor);
        return text == L"-0" ? L"0" : text;
    }
    std::optional<std::size_t> SameValue(std::size_t number) const {
        At const& at = m_places[number];
        std::optional<std::size_t> const container = Uniqueness(at);
        std::wstring const text = Normal(at.node);
        for (std::size_t i = 0;
             container && at.layout->m_isValueUnique && !text.empty() && i != m_places.size(); ++i) {
            At const& other = m_places[i];
            if (i != number && other.isLeaf && other.layout == at.layout && Uniqueness(other) == container &&
                Normal(other.node) == text) {
                return i;
            }
        }
        return std::nullopt;
    }

    LayoutNode const& m_editor;
    std::vector<At> m_places;
};

TEST(Validation, FindsWhatAModelFindsThatLooksAtEverything) {
    std::size_t findings = 0;
    for (unsigned seed = 0; seed != 50; ++seed) {
        auto [generated, layout, database] = Make(seed);
        Model const model(database);
        ASSERT_EQ(FirstApart(Short(Validate(database)), model.FindingsBelow(0)), L"") << seed;
        findings += Validate(database).size();
        std::size_t number = 0;
        for (PlaceWalk walk(std::as_const(database)); walk.Next(); ++number) {
            if (generated.OneIn(9)) {
                ASSERT_EQ(FirstApart(Short(Validate(walk.GetPlace())), model.FindingsBelow(number)), L"");
            }
        }
    }
    EXPECT_GT(findings, 3000u);
}

TEST(Validation, ObjectsBeforeAChangeToWhatItFindsAfterwards) {
    for (unsigned seed = 0; seed != 100; ++seed) {
        auto [generated, layout, database] = Make(seed);
        std::vector<std::pair<std::size_t, Place>> leaves;
        std::size_t count = 0;
        for (PlaceWalk walk(database); walk.Next(); ++count) {
            if (walk.GetPlace().IsLeaf()) {
                leaves.emplace_back(count, walk.GetPlace());
            }
        }
        auto const& [number, place] = leaves[generated.Below(static_cast<unsigned>(leaves.size()))];
        std::wstring const text = generated.Text(*place.GetLayoutNode());
        auto const before = TextsIn(database);
        std::vector<Finding> objections = Objections(place, text);
        ASSERT_EQ(TextsIn(database), before);
        bool const isReadOnly = place.GetLayoutNode()->m_readOnly || place.GetCursor().GetReadOnly();
        ASSERT_EQ(isReadOnly, !objections.empty() && objections.front().kind == FindingKind::ReadOnly);
        objections.erase(objections.begin(), objections.begin() + (isReadOnly ? 1 : 0));
        if (std::optional<Finding> const refused = SetText(place, text)) {
            EXPECT_THAT(Short(objections), ElementsAre(Short(refused->kind, refused->path, refused->limit)));
        } else {
            EXPECT_EQ(Short(objections), Model(database).FindingsAt(number)) << seed;
        }
    }
}

/// Each kind with its sentence.
class ValidationTest : public testing::Test {
protected:
    LayoutNode* Add(wchar_t const* name, eTypeLayoutNode type) {
        return m_layout.m_profileEditor->AddNode(name, type, L"");
    }
    static std::wstring SentenceOf(std::vector<Finding> const& findings) {
        return findings.empty() ? L"" : findings.front().sentence;
    }
    /// Of the only objection.
    std::wstring Objection(wchar_t const* name, std::wstring_view text) {
        return SentenceOf(Objections(PlaceView(ParameterDatabase(&m_layout)).Get(name), text));
    }
    ParameterLayout m_layout;
};

TEST_F(ValidationTest, SaysWhatIsWrongAndWhatWouldBeRight) {
    Add(L"Power", Int)->SetRange<std::int32_t>(5, 2000000000)->SetDisplayName(L"Laser power");
    Add(L"Scale", Double)->SetRange(0.5, 1.25)->SetReadOnly(true);
    Add(L"Mode", Options)->AddOption(L"fast", L"Fast")->AddOption(L"fine", L"");
    Add(L"Many", Options);
    for (wchar_t const* option : {L"1", L"2", L"3", L"4", L"5", L"6", L"7"}) {
        m_layout.m_profileEditor->Back()->AddOption(option, L"");
    }
    Add(L"Part", String)->m_maxLength = 3;
    Add(L"Code", String)->m_regex = L"[A-Z]\\d{2,}";
    Add(L"Word", String)->m_regex = L"\\w+";
    m_layout.m_profileEditor->Back()->m_regexUserFriendly = L"letters and digits only";
    Add(L"Group", Group);
    static constexpr struct {
        wchar_t const *name, *text, *sentence;
    } rows[] = {
        {L"Power", L"4", L"4 is below the least value, 5."},
        {L"Power", L"2000000001", L"2000000001 is above the greatest value, 2000000000."},
        {L"Power", L"1.5", L"\"1.5\" is no whole number of 32 bits."},
        {L"Scale", L"1", L"\"Scale\" is read-only."},
        {L"Mode", L"Fast", L"\"Fast\" is none of the options: \"fast\", \"fine\"."},
        {L"Many", L"0", L"\"0\" is none of the options: \"1\", \"2\", \"3\", \"4\", \"5\" and 2 more."},
        {L"Mode", L"", L"\"Mode\" is empty, which the layout doesn't allow."},
        {L"Part", L"\x00E4\U0001F600\xD83D\xDE00", L""}, // a pair is one character
        {L"Part", L"abcd", L"\"abcd\" is longer than 3 characters."},
        {L"Code", L"A1", L"\"A1\" doesn't follow the rule: [A-Z]\\d{2,}"},
        {L"Code", L"A10", L""},
        {L"Code", L"", L""},
        {L"Word", L"a b", L"\"a b\" doesn't follow the rule: letters and digits only"},
        {L"Group", L"", L"\"Group\" holds no value that could be set."},
    };
    for (auto const& row : rows) {
        EXPECT_EQ(Objection(row.name, row.text), row.sentence) << row.name;
    }
}

TEST_F(ValidationTest, SaysOfSizesWhatTheLayoutSays) {
    m_layout.m_profileEditor->AddNode(L"Beams")->SetList(true, L"Beam", L"")->SetMultiplicity(3);
    m_layout.m_profileEditor->Back()->SetMultiplicityMax(2)->SetMultiplicityMaxMessage(L"Two beams at most");
    ParameterDatabase const database(&m_layout);
    EXPECT_EQ(SentenceOf(Validate(database)), L"Two beams at most");
    EXPECT_EQ(SentenceOf(Objections(PlaceView(database).Get(L"Beams").GetItem(0), L"")),
              L"\"Beam\" holds no value that could be set."); // an item has no name of its own
}

TEST_F(ValidationTest, MatchesPatternsAsTheStandardLibraryDoes) {
    static wchar_t const* const pieces[] = {L"a", L"b",   L".",   L"[ab]", L"[^a]", L"(",    L"(?:", L")",
                                            L"|", L"*",   L"+?",  L"?",    L"{2}",  L"{1,}", L"^",   L"$",
                                            L"-", L"\\b", L"\\B", L"\\d",  L"\\W",  L"\\.",  L"[b-]"};
    LayoutNode* const node = Add(L"Text", String)->SetAllowEmpty(true);
    ParameterDatabase database(&m_layout);
    Generated generated(1);
    std::size_t compared = 0;
    for (int i = 0; i != 8000; ++i) {
        node->m_regex.clear();
        bool wasRepeated = false;
        for (unsigned count = generated.Below(7); count != 0; --count) {
            std::wstring const piece = pieces[generated.Below(std::size(pieces))];
            bool const isRepeated = piece.find_first_of(L"*+?{") == 0;
            node->m_regex += isRepeated && wasRepeated ? L"" : piece; // that needs a group here
            wasRepeated = isRepeated;
        }
        std::wregex regex;
        try {
            regex = node->m_regex;
        } catch (std::regex_error const&) {
            continue;
        }
        std::wstring text(1, L'a');
        for (unsigned count = generated.Below(5); count != 0; --count) {
            text += L"ab-. 1"[generated.Below(6)];
        }
        bool const isAgainst = !Objections(PlaceView(database).Get(L"Text"), text).empty();
        bool const isMatch = node->m_regex.empty() || std::regex_match(text, regex);
        ASSERT_EQ(isAgainst, !isMatch) << node->m_regex << L" " << text;
        compared += isAgainst;
    }
    EXPECT_GT(compared, 1500u);
    for (wchar_t const* hard : {L"(a*)*b", L"(a|a?)+$b", L"((a{1,6}){1,6}){1,6}b"}) {
        node->m_regex = hard;
        EXPECT_FALSE(Objections(PlaceView(database).Get(L"Text"), std::wstring(500, L'a')).empty()) << hard;
    }
}

TEST_F(ValidationTest, OffersWhatItTakes) {
    Add(L"Mode", Options)->AddOption(L"fast", L"Fast")->AddOption(L"fine", L"");
    LayoutNode* const list = m_layout.m_profileEditor->AddNode(L"Materials")->SetProfile(true, L"Profile");
    Add(L"Material", OptionsFromProfiles)->SetProfileName(L"Materials");
    Add(L"Lost", OptionsFromProfiles)->SetProfileName(L"Nowhere");
    ParameterDatabase database(&m_layout);
    auto const offered = [&](wchar_t const* name) {
        std::wstring all;
        for (Choice const& choice : ChoicesOf(PlaceView(database).Get(name))) {
            all += choice.value + L"=" + choice.displayName + (choice.isDefaultProfile ? L"! " : L" ");
            EXPECT_THAT(Objections(PlaceView(database).Get(name), choice.value), ElementsAre());
        }
        return all;
    };
    EXPECT_EQ(offered(L"Mode"), L"fast=Fast fine=fine ");
    EXPECT_EQ(offered(L"Lost"), L"");
    ParameterNode materials = database.GetProfileEditor().Get(list);
    materials.AddProfile(L"Steel", true);
    EXPECT_EQ(offered(L"Material"), L"Default=Default! Steel=Steel ");
    materials.AddProfile(L"Default", true);
    EXPECT_EQ(offered(L"Material"), L"::DefaultProfile::=Default! Default=Default Steel=Steel ");
    EXPECT_EQ(SentenceOf(Objections(PlaceView(database).Get(L"Material"), L"Tin")),
              L"There is no profile \"Tin\" in \"Materials\".");
}

} // namespace
