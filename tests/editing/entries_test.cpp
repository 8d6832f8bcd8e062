// SPDX-License-Identifier: Apache-2.0
#include "tests/editing/generated.h"
#include "tests/support/failing_allocator.h"

#include <zantrel/editing/items.h>
#include <zantrel/editing/profiles.h>
#include <zantrel/editing/value_text.h>
#include <zantrel/zantrel.h>

#include <gtest/gtest.h>

#include <iterator>
#include <map>
#include <random>
#include <set>
#include <string>

namespace {

using namespace Zantrel;
using namespace Zantrel::Editing;
using EditingTests::TextsIn;
using Texts = std::map<std::wstring, std::wstring>;

/// Materials, each with a choice among them; printers with tools of their own, each with a choice among
/// these; jobs with a choice of a material.
struct Workshop : ParameterLayout {
    Workshop() {
        materials->AddNode(L"Power", Double, 200.0);
        materials->AddNode(L"Base", OptionsFromProfiles, L"")->SetTypeFromProfiles(materials);
        tools->AddNode(L"Width", Int, std::int32_t{1});
        printers->AddNode(L"Tool", OptionsFromProfiles, L"")->SetTypeFromProfiles(L"Tools");
        jobs->AddNode(L"Material", OptionsFromProfiles, L"")->SetTypeFromProfiles(materials);
        jobs->AddNode(L"Number", Int, std::int32_t{0});
        AddCategoryNodeIfNeeded();
    }
    LayoutNode* materials = m_profileEditor->AddNode(L"Materials")->SetProfile(true, L"P");
    LayoutNode* printers = m_profileEditor->AddNode(L"Printers")->SetProfile(true, L"P");
    LayoutNode* tools = printers->AddNode(L"Tools")->SetProfile(true, L"P");
    LayoutNode* jobs = m_profileEditor->AddNode(L"Jobs")->SetList(true, L"J", L"")->SetUserCanSort(true);
};

bool StandsIn(std::wstring const& entry, std::wstring const& path) {
    return path.compare(0, entry.size() + 1, entry + L'_') == 0;
}

/// Makes the same changes to a database, with each allocation failing in turn, and to a model: paths and
/// texts.
class Session {
public:
    explicit Session(unsigned seed) : m_random(seed) {
        EXPECT_TRUE(AddProfile(Place(m_database).Get(L"Printers"), L"x"));
        m_texts = TextsIn(m_database);
    }
    void Step() {
        m_random() % 3 == 0 ? ChangeItems() : ChangeProfiles();
        ASSERT_EQ(TextsIn(m_database), m_texts);
        for (auto& [path, text] : m_texts) {
            bool const isChoice =
                path.ends_with(L"Base") || path.ends_with(L"Tool") || path.ends_with(L"Material");
            if (isChoice && m_random() % 2 == 0) {
                text = Name();
                EXPECT_FALSE(SetText(*Place::Find(m_database, path), text));
            }
        }
    }

private:
    static bool IsName(std::wstring const& name) { return name == L"a" || name == L"b" || name == L"c"; }
    std::wstring Name() {
        static wchar_t const* const names[] = {L"a",       L"b", L"c",     L"a",      L"b",          L"c",
                                               L"Default", L"",  L"Value", L"\xD800", L"::Default::"};
        return names[m_random() % std::size(names)];
    }
    bool Has(std::wstring const& entry) const {
        auto const at = m_texts.lower_bound(entry + L'_');
        return at != m_texts.end() && StandsIn(entry, at->first);
    }
    void Copy(std::wstring const& from, std::wstring const& to) {
        for (auto const& [path, text] : Texts(m_texts)) {
            if (StandsIn(from, path)) {
                m_texts[to + path.substr(from.size())] = text;
            }
        }
    }
    void Erase(std::wstring const& entry) {
        std::erase_if(m_texts, [&](auto const& at) { return StandsIn(entry, at.first); });
    }
    template <class Action> EntryChange WithFailures(Action action) {
        ParameterDatabase const before(m_database);
        EntryChange change;
        TestSupport::FailEachAllocation([&] { change = action(); },
                                        [&](std::size_t nth, bool completed) {
                                            EXPECT_TRUE(completed || m_database.IsEqual(before)) << nth;
                                        });
        return change;
    }
    /// Of the choices from a list of which these are: that those with the name are told; and gives them a new
    /// one.
    void Refer(EntryChange const& change, std::wstring const& around, bool isTool, std::wstring const& name,
               std::wstring const& newName) {
        std::set<std::wstring> told, expected;
        for (Finding const& finding : change.references) {
            told.insert(finding.path);
        }
        for (auto& [path, text] : m_texts) {
            bool const isOfList =
                isTool ? path == around + L"_Tool" : path.ends_with(L"_Base") || path.ends_with(L"_Material");
            if (isOfList && text == name) {
                expected.insert(path);
                text = newName;
            }
        }
        EXPECT_EQ(told, expected);
    }

    void ChangeProfiles() {
        bool const isTool = m_random() % 2 == 0;
        std::wstring const printer = m_random() % 2 == 0 ? L"Printers_P[x]" : L"Printers_P::Default::";
        std::wstring const path = isTool ? printer + L"_Tools" : L"Materials", name = Name(), other = Name();
        Place const list = *Place::Find(m_database, path);
        std::wstring const entry = path + L"_P[" + name + L']', otherEntry = path + L"_P[" + other + L']';
        bool const isThere = Has(entry), isFree = IsName(other) && !Has(otherEntry);
        auto const what = m_random() % 4;
        EntryChange const change = WithFailures([&] {
            return what == 0   ? AddProfile(list, other)
                   : what == 1 ? DuplicateProfile(list, name, other)
                   : what == 2 ? RenameProfile(list, name, other)
                               : RemoveProfile(list, name);
        });
        bool const isSame = what == 2 && name == other;
        ASSERT_EQ(bool(change), (what == 0 || isThere) && (what == 3 || isSame || isFree));
        if (!change || isSame) {
            return;
        }
        EXPECT_EQ(change.entry ? change.entry->GetPath() : L"", what == 3 ? L"" : otherEntry);
        if (what != 3) {
            Copy(what == 0 ? path + L"_P::Default::" : entry, otherEntry);
        }
        if (what >= 2) {
            Erase(entry);
            Refer(change, printer, isTool, name, what == 2 ? other : name);
        }
    }

    void ChangeItems() {
        Place const list = *Place::Find(m_database, L"Jobs");
        auto const entry = [](std::size_t index) { return L"Jobs_J[" + std::to_wstring(index) + L']'; };
        std::size_t const from = m_random() % 5, to = m_random() % 5;
        auto const what = m_random() % 3;
        EntryChange const change = WithFailures([&] {
            return what == 0 ? AddItem(list) : what == 1 ? MoveItem(list, from, to) : RemoveItem(list, from);
        });
        ASSERT_EQ(bool(change), what == 0 || (from < m_size && (what == 2 || to < m_size)));
        if (what == 0) {
            std::wstring const number = std::to_wstring(m_made++);
            EXPECT_FALSE(SetText(change.entry->Get(L"Number"), number));
            m_texts[entry(m_size) + L"_Number"] = number;
            m_texts[entry(m_size++) + L"_Material"] = L"";
        } else if (change) {
            std::size_t const last = what == 1 ? to : m_size - 1;
            Copy(entry(from), L"held");
            for (std::size_t at = from; at != last;) {
                std::size_t const next = at < last ? at + 1 : at - 1;
                Copy(entry(next), entry(at));
                at = next;
            }
            what == 1 ? Copy(L"held", entry(last)) : Erase(entry(last));
            Erase(L"held");
            m_size -= what == 2;
        }
    }

    std::mt19937 m_random;
    Workshop m_layout;
    ParameterDatabase m_database{&m_layout};
    Texts m_texts;
    std::size_t m_size = 0, m_made = 0;
};

TEST(EntriesTest, ChangeWhatTheyNameAndNothingWhereMemoryRunsOut) {
    for (unsigned seed = 0; seed < 12; ++seed) {
        Session session(seed);
        for (unsigned step = 0; step < 60 && !testing::Test::HasFatalFailure(); ++step) {
            SCOPED_TRACE(testing::Message() << seed << ' ' << step);
            session.Step();
        }
    }
}

/// A refusal: what the layout and the values have, and what is told then.
struct Refusal {
    EntryChange (*change)(Place const& materials, Place const& jobs);
    FindingKind kind;
    wchar_t const* path;
    void (*prepareLayout)(Workshop& layout);
    void (*prepareValues)(ParameterNode materials, ParameterNode jobs) = [](ParameterNode, ParameterNode) {};
};

TEST(EntriesTest, TellWhatAUserMayNot) {
    using P = Place const&;
    using N = ParameterNode;
    constexpr auto add = [](P materials, P) { return AddProfile(materials, L"new"); };
    constexpr auto rename = [](P materials, P) { return RenameProfile(materials, L"a", L"b"); };
    constexpr auto remove = [](P materials, P) { return RemoveProfile(materials, L"a"); };
    constexpr auto addItem = [](P, P jobs) { return AddItem(jobs); };
    constexpr auto move = [](P, P jobs) { return MoveItem(jobs, 0, 1); };
    constexpr auto removeItem = [](P, P jobs) { return RemoveItem(jobs, 0); };
    constexpr auto none = [](Workshop&) {};
    using enum FindingKind;
    Refusal const refusals[] = {
        {add, ReadOnly, L"Materials", [](Workshop& l) { l.materials->SetReadOnly(true); }},
        {rename, ReadOnly, L"Materials", [](Workshop& l) { l.m_profileEditor->SetReadOnly(true); }},
        {add, NotAllowed, L"Materials", [](Workshop& l) { l.materials->SetUserCanAddRemove(false); }},
        {add, TooManyItems, L"Materials", [](Workshop& l) { l.materials->SetMultiplicityMax(1); }},
        {remove, TooFewItems, L"Materials", [](Workshop& l) { l.materials->SetMultiplicityMin(1); }},
        {addItem, TooManyItems, L"Jobs", [](Workshop& l) { l.jobs->SetMultiplicityMax(2); }},
        {addItem, TooManyItems, L"Jobs", [](Workshop& l) { l.jobs->SetMultiplicityMax(4); },
         [](N, N j) { j.AddListNode(true), j.AddListNode(true); }},
        {removeItem, TooFewItems, L"Jobs", [](Workshop& l) { l.jobs->SetMultiplicityMin(2); }},
        {move, NotAllowed, L"Jobs", [](Workshop& l) { l.jobs->SetUserCanSort(false); }},
        {removeItem, NotAllowed, L"Jobs", [](Workshop& l) { l.jobs->m_userCanRemoveAnyElement = false; }},
        {remove, NotAllowed, L"Materials", none, [](N m, N) { m.SetDisableAddRemove(true); }},
        {rename, NotAllowed, L"Materials_P[a]", none,
         [](N m, N) { m.GetProfile(L"a").SetNameReadOnly(true); }},
        {remove, NotAllowed, L"Materials_P[a]", none,
         [](N m, N) { m.GetProfile(L"a").SetCanBeDeleted(false); }},
        {rename, NameInUse, L"Materials", none, [](N m, N) { m.AddProfile(L"b", true); }},
        {rename, NoSuchProfile, L"Materials", none, [](N m, N) { m.Clear(); }},
        {removeItem, ReadOnly, L"Jobs_J[0]", none, [](N, N j) { j.GetListNode(0).SetReadOnly(true); }},
        {move, OutOfRange, L"Jobs", none, [](N, N j) { j.Clear(); }},
    };
    for (Refusal const& refusal : refusals) {
        for (bool const isRefused : {false, true}) {
            SCOPED_TRACE(&refusal - refusals);
            Workshop layout;
            isRefused ? refusal.prepareLayout(layout) : void();
            ParameterDatabase database(&layout);
            Place const materials = Place(database).Get(L"Materials"), jobs = Place(database).Get(L"Jobs");
            ParameterNode(materials.GetCursor()).AddProfile(L"a", true).SetCanBeDeleted(true);
            jobs.GetCursor().AddListNode(true);
            jobs.GetCursor().AddListNode(true);
            isRefused ? refusal.prepareValues(materials.GetCursor(), jobs.GetCursor()) : void();
            ParameterDatabase const before(database);
            EntryChange const change = refusal.change(materials, jobs);
            ASSERT_EQ(bool(change), !isRefused);
            if (isRefused) {
                EXPECT_EQ(change.finding->kind, refusal.kind);
                EXPECT_EQ(change.finding->path, refusal.path);
                EXPECT_TRUE(database.IsEqual(before));
            }
        }
    }
}

/// Flags bind the profile that has them; of two of one name the first is meant; templates keep up.
TEST(EntriesTest, KeepWhatCountsForOthers) {
    Workshop layout;
    ParameterDatabase database(&layout);
    Place const materials = Place(database).Get(L"Materials");
    ParameterNode cursor = materials.GetCursor();
    ParameterNode first = cursor.AddProfile(L"a", true);
    first.SetReadOnly(true);
    first.SetUserDefaultProfile(true);
    ParameterNode const second = cursor.AddProfile(L"a", true);
    EntryChange const copy = DuplicateProfile(materials, L"a", L"copy");
    ASSERT_TRUE(copy);
    EXPECT_FALSE(copy.entry->GetCursor().GetReadOnly() || copy.entry->GetCursor().GetUserDefaultProfile());
    Place const jobs = Place(database).Get(L"Jobs");
    jobs.GetCursor().GetDefault().Get(L"Material").SetValue<std::wstring>(L"a");
    EntryChange const item = AddItem(jobs);
    EXPECT_EQ(AddProfile(jobs, L"b").finding->kind, FindingKind::NotAllowed);
    EXPECT_EQ(AddItem(materials).finding->kind, FindingKind::NotAllowed);

    EntryChange const renamed =
        RenameProfile(materials, item.entry->Get(L"Material").GetCursor().GetValue<std::wstring>(), L"b");
    ASSERT_TRUE(renamed);
    EXPECT_TRUE(renamed.entry->GetCursor().GetReadOnly());
    EXPECT_EQ(renamed.references.size(), 1u);
    EXPECT_EQ(AddItem(jobs).entry->Get(L"Material").GetCursor().GetValue<std::wstring>(), L"b");
    EXPECT_EQ(cursor.GetProfile(L"a").m_pProperties, second.m_pProperties);
    EXPECT_FALSE(RemoveProfile(materials, L"b")); // nobody has said that it can be
    ParameterNode(renamed.entry->GetCursor()).SetCanBeDeleted(true);
    EXPECT_EQ(RemoveProfile(materials, L"b").references.size(), 2u);
}

} // namespace
