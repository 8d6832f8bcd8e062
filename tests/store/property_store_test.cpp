// SPDX-License-Identifier: Apache-2.0
#include <zantrel/io/mfile.h>
#include <zantrel/sax/sax_utilities.h>
#include <zantrel/store/external_properties.h>
#include <zantrel/store/file_content.h>
#include <zantrel/store/indexed_properties.h>
#include <zantrel/store/persistent_properties.h>
#include <zantrel/store/property_creator.h>
#include <zantrel/store/property_filter.h>
#include <zantrel/store/sub_properties.h>

#include "tests/support/failing_allocator.h"
#include "tests/support/sax_test_support.h"
#include "text/utf16_order.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <random>
#include <sstream>
#include <stdexcept>

/// A value of a host's own, in a property class of its own.
struct HostValue {
    std::wstring text;
    bool operator==(HostValue const& other) const { return text == other.text; }
};

template <> std::wstring GetTypeOfProperty(HostValue const&) { return L"PositionMatrix"; }
template <> bool WriteValueOfProperty(HostValue const& value, KelSAX::ISAXWriter& writer) {
    writer.WriteValue(std::wstring_view(value.text));
    return true;
}
template <> bool HandleValueOfProperty(HostValue& value, KelSAX::ISAXReader& reader) {
    return reader.ReadValue(value.text);
}
template <> void WriteValueOfProperty(HostValue const& value, MFile& file) {
    WriteValueOfProperty(value.text, file);
}
template <> void ReadValueOfProperty(HostValue& value, MFile& file) { ReadValueOfProperty(value.text, file); }

namespace {

using Bag = PersistentProperties;
using Bags = IndexedProperties<PersistentProperties>;

/// A host's class that is a text to the library, apart from its name.
struct HostText : PersistentProperty<std::wstring> {
    using PersistentProperty::PersistentProperty;
    HostText* Clone() const override { return new HostText(m_value); }
    std::wstring GetType() const override { return L"PositionMatrix"; }
};

/// Throws std::bad_cast where it is of another class.
template <class T> T const& ValueOf(IPersistentProperty const* property) {
    return dynamic_cast<PersistentProperty<T> const&>(*property).m_value;
}

/// Takes out of a bag what is not to be kept.
struct Keeping : IPersistentPropertyFilter {
    std::function<bool(IPersistentProperty*)> m_isKept;

    explicit Keeping(decltype(m_isKept) isKept) : m_isKept(std::move(isKept)) {}
    bool Filter(std::wstring const&, IPersistentProperty* property) override { return m_isKept(property); }
    static void In(Bag& bag, decltype(m_isKept) const& isKept) {
        std::shared_ptr<IPersistentPropertyFilter> filter = std::make_shared<Keeping>(isKept);
        PersistentPropertyFilter::FilterProperties(bag, filter);
    }
};

Bag& Inner(Bag& bag, wchar_t const* name) { return *bag.GetValuePointer<Bag>(name, true); }
Bags& Sequence(Bag& bag, wchar_t const* name) { return *bag.GetValuePointer<Bags>(name, true); }
double Number(Bag const& bag, wchar_t const* name) { return bag.GetValueOr<double>(name, 0); }

/// One property of every class, with values that a wrong conversion would lose.
void FillWithEveryClass(Bag& bag) {
    bag.SetValue<std::int32_t>(L"integer", std::numeric_limits<std::int32_t>::min());
    bag.SetValue<double>(L"double", 0.1);
    bag.SetValue<bool>(L"bool", true);
    bag.SetValue<std::wstring>(L"text", L" a\u00e4\u4e00 ");
    bag.SetValue<KelAM::FileContent>(L"file", {L"n", {std::byte{0}, std::byte{255}}});
    Inner(bag, L"bag").SetValue<double>(L"Value", 2.5);
    bag.GetValuePointer<KelAM::SubProperties>(L"set", true)->SetValue<bool>(L"inner", false);
    for (int i = 0; i < 5; ++i) {
        Sequence(bag, L"sequence").AddProperty().SetValue<std::int32_t>(L"i", i);
    }
}

TEST(Bag, LooksAtTheFirstEntryOfANameButSetsTheFirstOfAClass) {
    Bag bag;
    bag.CreateValue<double>(L"n", true);
    bag.CreateValue<std::wstring>(L"n", true)->m_value = L"old";
    EXPECT_EQ(bag.GetValuePointer<std::wstring>(L"n", false), nullptr);
    EXPECT_FALSE(bag.HasValue<std::wstring>(L"n"));
    bag.SetValue<std::wstring>(L"n", L"new");
    EXPECT_EQ(bag.GetNumProperties(), 2u);
    auto second = ++bag.begin();
    EXPECT_EQ(ValueOf<std::wstring>((*second).property), L"new");
}

TEST(Bag, RevivesADeletedValueOnlyWhenAskedToCreate) {
    Bag bag;
    bag.SetValue<std::int32_t>(L"n", 7);
    bag.FindProperty(L"n")->SetDeleted(true);
    EXPECT_EQ(bag.GetValuePointer<std::int32_t>(L"n", false), nullptr);
    EXPECT_EQ(bag.GetValueOr<std::int32_t>(L"n", -1), -1);
    ASSERT_NE(bag.GetValuePointer<std::int32_t>(L"n", true), nullptr);
    EXPECT_EQ(bag.GetValueOr<std::int32_t>(L"n", -1), 7);
}

TEST(Bag, SettingAValueStartsItsFlagsAfresh) {
    Bag bag;
    auto* property = bag.CreateValue<double>(L"n", true);
    property->SetFirstAuxFlag(false);
    property->SetSecondOverride(true);
    property->SetDeleted(true);
    bag.SetValue<double>(L"n", 1.0);
    EXPECT_TRUE(property->GetFirstAuxFlag() && !property->HasSecondOverride() && !property->IsDeleted());
}

TEST(Bag, CreatesBehindExistingEntriesOrReplacesOnlyTheFirst) {
    Bag bag;
    auto* first = bag.CreateValue<double>(L"n", true);
    auto* second = bag.CreateValue<double>(L"n", true);
    EXPECT_EQ(bag.FindProperty(L"n"), first);
    auto* third = bag.CreateValue<double>(L"n", false);
    EXPECT_EQ(bag.GetNumProperties(), 2u);
    EXPECT_EQ(bag.FindProperty(L"n"), second);
    EXPECT_EQ((*++bag.begin()).property, third);
    auto* only = bag.CreateValue<double>(L"o", false);
    EXPECT_EQ(bag.FindProperty(L"o"), only);
}

TEST(Property, CopiesCarryTheDeletedMarkAndNoOtherFlag) {
    PersistentProperty<double> property(1.5);
    property.SetDeleted(true);
    property.SetFirstOverride(true);
    std::unique_ptr<IPersistentProperty> const copy(property.Clone());
    EXPECT_TRUE(copy->IsDeleted());
    EXPECT_FALSE(copy->HasFirstOverride());
    PersistentProperty<double> live(1.5);
    EXPECT_TRUE(live.IsEqual(&property));
    PersistentProperty<std::int32_t> other(1);
    other.Assign(&property);
    EXPECT_FALSE(other.IsDeleted());
    EXPECT_FALSE(PersistentProperty<double>(std::nan("")).IsEqual(&property));
}

TEST(Property, OverridesKeepTheirBits) {
    PersistentProperty<bool> property;
    property.SetFirstOverride(false);
    EXPECT_EQ(property.m_overrides, 2u);
    property.SetSecondOverride(true);
    EXPECT_EQ(property.m_overrides, 14u);
    property.SetFirstOverride(true);
    property.SetSecondOverride(false);
    EXPECT_EQ(property.m_overrides, 11u);
}

struct ByUtf16Unit {
    bool operator()(std::wstring const& left, std::wstring const& right) const {
        return Zantrel::Text::Compare(left, right) < 0;
    }
};

/// A bag beside the multi-map that it is to behave like.
class BagModel {
public:
    void Add(std::wstring const& name, int value) {
        m_bag.CreateValue<std::int32_t>(name, true)->m_value = value;
        m_model.emplace(name, value);
    }
    void RemoveFirst(std::wstring const& name) {
        m_bag.RemoveProperty(name, true);
        if (auto const at = m_model.lower_bound(name); at != m_model.end() && at->first == name) {
            m_model.erase(at);
        }
    }
    void DropMultiplesOf(int divisor) {
        Keeping::In(m_bag, [divisor](IPersistentProperty* property) {
            return ValueOf<std::int32_t>(property) % divisor != 0;
        });
        std::erase_if(m_model, [divisor](auto const& entry) { return entry.second % divisor == 0; });
    }
    void Check() const {
        Entries entries;
        for (auto const& [name, property] : m_bag) {
            entries.emplace_back(name, ValueOf<std::int32_t>(property));
        }
        EXPECT_EQ(entries, Entries(m_model.begin(), m_model.end()));
        EXPECT_EQ(m_bag.GetNumProperties(), m_model.size());
        Bag const copy(m_bag);
        EXPECT_TRUE(copy == m_bag);
    }

private:
    using Entries = std::vector<std::pair<std::wstring, int>>;

    Bag m_bag;
    std::multimap<std::wstring, int, ByUtf16Unit> m_model;
};

TEST(Bag, BehavesLikeAMultiMapAtEverySizeAndInAnyOrder) {
    std::mt19937 random(20240711);
    std::vector<std::wstring> names = {L"Value",      L"",       L"Hidden", L"b",     L"B",
                                       L"\U0001F600", L"\uFFFD", L"Val",    L"Values"};
    for (int i = 0; i < 60; ++i) {
        names.push_back(L"n" + std::to_wstring(random() % 50));
    }
    for (std::size_t steps : {1u, 3u, 20u, 200u, 1000u}) {
        SCOPED_TRACE(steps);
        BagModel model;
        for (std::size_t i = 0; i < steps; ++i) {
            std::wstring const& name = names[random() % names.size()];
            if (random() % 4 == 0) {
                model.RemoveFirst(name);
            } else {
                model.Add(name, static_cast<int>(random() % 1000));
            }
        }
        model.Check();
        model.DropMultiplesOf(3);
        model.Check();
    }
}

TEST(Bag, TellsNamesApartThatAreOneTextInUtf16) {
    if (sizeof(wchar_t) == 2) {
        GTEST_SKIP() << "there are no such names where wchar_t has 16 bits";
    }
    std::wstring const joined = L"\U0001F600";
    std::wstring const halves = {wchar_t(0xD83D), wchar_t(0xDE00)};
    Bag bag;
    for (int i = 0; i < 40; ++i) {
        bag.SetValue<std::int32_t>(std::to_wstring(i), i);
    }
    bag.SetValue<std::int32_t>(joined + halves, 100);
    bag.SetValue<std::int32_t>(halves + joined, 101);
    EXPECT_EQ(bag.GetValueOr<std::int32_t>(joined + halves, 0), 100);
    EXPECT_EQ(bag.GetValueOr<std::int32_t>(halves + joined, 0), 101);
}

TEST(Bag, KeepsValuesInPlaceWhileItGrows) {
    Bag bag;
    std::vector<double*> values;
    for (int i = 0; i < 100; ++i) {
        std::wstring const name = i == 0 ? L"Value" : std::to_wstring(1000 - i);
        *values.emplace_back(bag.GetValuePointer<double>(name, true)) = i;
    }
    for (std::size_t i = 0; i < values.size(); ++i) {
        EXPECT_EQ(*values[i], static_cast<double>(i));
    }
}

TEST(Bag, CopiesDeeplyAlsoFromWithinItself) {
    Bag bag;
    FillWithEveryClass(bag);
    Bag copy(bag);
    EXPECT_TRUE(copy == bag);
    for (auto const& [name, property] : copy) {
        property->SetDeleted(true);
    }
    for (auto const& [name, property] : Bag(copy)) {
        EXPECT_TRUE(property->IsDeleted()) << name.size();
    }
    copy = bag;
    Inner(copy, L"bag").SetValue<double>(L"Value", 3.0);
    EXPECT_FALSE(copy == bag);

    Inner(bag, L"bag").SetValue<double>(L"deep", 4.0);
    bag = Inner(bag, L"bag");
    EXPECT_EQ(Number(bag, L"deep"), 4.0);
    EXPECT_EQ(Number(bag, L"Value"), 2.5);
    Inner(bag, L"inner") = bag;
    EXPECT_EQ(Inner(bag, L"inner").GetNumProperties(), 3u);
    bag = static_cast<Bag const&>(bag);
    EXPECT_EQ(bag.GetNumProperties(), 3u);
}

TEST(Bag, MergesPerNameAndReplacesSequencesAsAWhole) {
    Bag target;
    FillWithEveryClass(target);
    Bag source(target);
    target.SetValue<double>(L"own", 1.0);
    source.SetValue<double>(L"double", 9.0);
    Inner(source, L"bag").SetValue<double>(L"extra", 5.0);
    Sequence(source, L"sequence").Clear();
    source.SetValue<bool>(L"own", true);
    source.FindProperty(L"bag")->SetDeleted(true);
    target.Merge(source, true);
    EXPECT_TRUE(target.FindProperty(L"bag")->IsDeleted());
    EXPECT_EQ(Number(target, L"double"), 9.0);
    EXPECT_EQ(Number(target, L"own"), 1.0); // another class: a further entry
    EXPECT_EQ(target.GetNumProperties(), 10u);
    Bag& inner = Inner(target, L"bag");
    EXPECT_EQ(inner.GetNumProperties(), 2u);
    EXPECT_EQ(Sequence(target, L"sequence").GetNumProperties(), 0u);

    Inner(inner, L"bag").SetValue<double>(L"innermost", 6.0);
    target.Merge(inner, true); // what is merged lies within what it is merged into
    EXPECT_EQ(Number(inner, L"innermost"), 6.0);
    target.Merge(target, true);
}

TEST(Bag, TakesWhatEndsInTheTaking) {
    PersistentProperty<Bag> target;
    auto* const within = Sequence(target.m_value, L"s").AddProperty().CreateValue<Bag>(L"", true);
    within->SetDeleted(true);
    Sequence(within->m_value, L"s"); // replaces the sequence that all of this stands in
    within->m_value.SetValue<double>(L"z", 5.0);
    target.Assign(within);
    EXPECT_TRUE(target.IsDeleted());
    EXPECT_EQ(Number(target.m_value, L"z"), 5.0);
    EXPECT_EQ(Sequence(target.m_value, L"s").GetNumProperties(), 0u);
}

TEST(Bag, IsAsItWasWhereMemoryRunsOut) {
    void (*const changes[])(Bag&, Bag const&) = {
        [](Bag& bag, Bag const&) { bag.SetValue<std::wstring>(L"a new name", L"a new value"); },
        [](Bag& bag, Bag const&) { bag.CreateValue<std::wstring>(L"1", false)->m_value.clear(); },
        [](Bag& bag, Bag const&) { bag.AddProperty(L"a new name", new PersistentProperty<double>(1.0)); },
        [](Bag& bag, Bag const& other) { bag = other; },
    };
    Bag other;
    FillWithEveryClass(other);
    for (int const size : {0, 1, 2, 31, 32, 33}) {
        for (auto const& change : changes) {
            SCOPED_TRACE(testing::Message() << size << " entries, change " << &change - changes);
            Bag bag;
            for (int i = 0; i < size; ++i) {
                bag.SetValue<std::wstring>(std::to_wstring(i), L"an old value");
            }
            Bag const before(bag);
            EXPECT_GT(TestSupport::FailEachAllocation(
                          [&] { change(bag, other); },
                          [&](std::size_t, bool completed) { EXPECT_EQ(bag == before, !completed); }),
                      0u);
        }
    }
}

TEST(Sequence, KeepsItsBagsInPlaceWhileItGrows) {
    Bags sequence;
    std::vector<Bag*> bags(2000);
    for (Bag*& bag : bags) {
        bag = &sequence.AddProperty();
    }
    for (int i = 0; i < 2000; ++i) {
        ASSERT_EQ(&sequence.GetProperty(i), bags[static_cast<std::size_t>(i)]);
    }
    EXPECT_THROW(sequence.GetProperty(2000), std::out_of_range);
    EXPECT_THROW(sequence.GetProperty(-1), std::out_of_range);
}

TEST(BinaryForm, BringsEveryClassBackAndRefusesEveryTruncation) {
    PersistentProperty<Bag> property;
    FillWithEveryClass(property.m_value);
    property.m_value.FindProperty(L"bool")->SetDeleted(true);
    MFile file;
    property.Write(file);
    PersistentProperty<Bag> read;
    read.Read(file);
    EXPECT_TRUE(read.IsEqual(&property));
    EXPECT_TRUE(read.m_value.FindProperty(L"bool")->IsDeleted());
    EXPECT_EQ(file.GetRemaining(), 0u);

    auto const& bytes = file.GetBytes();
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        MFile truncated({bytes.data(), bytes.data() + size});
        EXPECT_THROW(read.Read(truncated), std::runtime_error) << size;
    }
    EXPECT_TRUE(read.IsEqual(&property)); // what couldn't be read changed nothing
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        auto damaged = bytes;
        damaged[i] = std::byte{0xFF};
        MFile file2(std::move(damaged));
        try {
            PersistentProperty<Bag>().Read(file2); // either is fine, as long as it ends
        } catch (std::runtime_error const&) {
        }
    }
}

TEST(BinaryForm, RefusesBagsNestedTooDeeply) {
    MFile file;
    for (int depth = 0; depth < 100000; ++depth) {
        file.WriteUnsigned64(1); // one entry, with no name, of type "Properties", not deleted
        file.WriteUnsigned64(0);
        file.WriteUnsigned64(10);
        for (char const c : std::string("Properties")) {
            file.WriteUnsigned32(static_cast<std::uint32_t>(c));
        }
        file.WriteUnsigned8(0);
    }
    EXPECT_THROW(PersistentProperty<Bag>().Read(file), std::runtime_error);
}

TEST(Creator, MakesEveryClassByItsTypeNameAndNoOther) {
    for (wchar_t const* type : {L"integer", L"double", L"bool", L"string", L"FileContent", L"Properties",
                                L"SubProperties", L"IndexedPropertySets"}) {
        std::unique_ptr<IPersistentProperty> const made(IPersistentPropertyCreator::__CreateProperty(type));
        ASSERT_NE(made, nullptr) << type;
        EXPECT_EQ(made->GetType(), type);
    }
    EXPECT_EQ(IPersistentPropertyCreator::__CreateProperty(L"PositionMatrix"), nullptr);
}

TEST(Identifier, BringsAllSpellingsOfAGuidTogetherAndNothingElse) {
    using Id = KelAM::ExternalPropertyID;
    std::wstring const lower = L"0a1b2c3d-4e5f-6071-8293-a4b5c6d7e8f9",
                       upper = L"0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9";
    for (std::wstring const& spelling : {lower, upper, L"{" + lower + L"}", L"{" + upper + L"}"}) {
        EXPECT_EQ(Id(spelling).FormatGuid(false, false), lower);
        EXPECT_EQ(Id(spelling).FormatGuid(true, true), L"{" + upper + L"}");
    }
    for (std::wstring const& text : std::initializer_list<std::wstring>{
             L"", L"Plate 7", L"PLATE 7", L"{" + lower, lower + L" ", std::wstring(36, L'-')}) {
        EXPECT_EQ(Id(text).FormatGuid(false, false), text);
        EXPECT_EQ(Id(text).FormatGuid(true, true), text);
    }
    KelAM::DatabaseExternalProperties database;
    auto* entry = database.GetProperties(Id(upper), true);
    EXPECT_EQ(database.GetProperties(Id(L"{" + lower + L"}"), false), entry);
    EXPECT_EQ(entry->m_id, Id(lower));
    EXPECT_EQ(database.GetProperties(Id(L"x"), false), nullptr);
}

/// The document whose root's content is this value.
template <class T> std::string Written(T const& value) {
    std::ostringstream out;
    KelAM::SaxUtilities::WriteOptions options;
    options.m_rootTag = "Root";
    WritingHandler const handler(
        [&](KelSAX::ISAXWriter& writer) { return WriteValueOfProperty(value, writer); });
    EXPECT_TRUE(KelAM::SaxUtilities::WriteStream(out, handler, options));
    return out.str();
}

template <class T> void ReadFrom(std::string const& document, T& value) {
    std::istringstream in(document);
    ReadingHandler handler([&](std::string const& tag, KelSAX::ISAXReader& reader) {
        return tag == "Root" && HandleValueOfProperty(value, reader);
    });
    EXPECT_TRUE(KelAM::SaxUtilities::ReadStream(in, handler)) << document;
}

TEST(XmlForm, BringsEveryClassBackButNoDeletedProperty) {
    Bag bag;
    FillWithEveryClass(bag);
    Sequence(Sequence(bag, L"sequence").GetProperty(2), L"inner").AddProperty();
    Inner(bag, L"bag").GetValuePointer<KelAM::SubProperties>(std::wstring(36, L'-'), true);
    bag.CreateValue<double>(L"text", true)->m_value = 0.1 + 0.2; // one name, two properties
    Bag read;
    ReadFrom(Written(bag), read);
    EXPECT_TRUE(read == bag);

    for (Bag* each : {&bag, &Inner(bag, L"bag")}) {
        each->SetValue<bool>(L"deleted", true);
        each->FindProperty(L"deleted")->SetDeleted(true);
    }
    Bag live;
    ReadFrom(Written(bag), live);
    EXPECT_TRUE(live == read);
}

TEST(XmlForm, NamesTheTypesOfItsProperties) {
    Bag bag;
    bag.SetValue<double>(L"n", 0.5);
    Inner(bag, L"c");
    bag.GetValuePointer<KelAM::SubProperties>(L"d", true)->SetValue<bool>(L"b", true);
    Sequence(bag, L"e").AddProperty();
    bag.AddProperty(L"m", new HostText(L"1 0"));
    bag.AddProperty(L"h", new PersistentProperty<HostValue>({L"0 1"}));
    EXPECT_EQ(Written(bag), R"(<?xml version="1.0" encoding="UTF-8"?>
<Root>
  <Property Name="c" Type="Complex"/>
  <Property Name="d" Type="Complex2">
    <Property Name="b" Type="bool">True</Property>
  </Property>
  <Property Name="e" Type="ComplexArray">
    <Property Type="Complex"/>
  </Property>
  <Property Name="h" Type="PositionMatrix">0 1</Property>
  <Property Name="m" Type="PositionMatrix">1 0</Property>
  <Property Name="n" Type="number">0.5</Property>
</Root>
)");
}

TEST(XmlForm, KeepsWhatItCanOfForeignDocuments) {
    Bag bag;
    bag.GetValuePointer<KelAM::SubProperties>(L"{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9}", true)
        ->SetValue<double>(L"x", 1.0);
    ReadFrom(R"(<Root>
        <Property Name="profile" Type="ProfileName">A</Property>
        <Property Name="bad" Type="number">1,5</Property>
        <Property Name="gone" Type="integer" Deleted="true">7</Property>
        <Property Name="back" Type="Complex" Deleted="false"/>
        <Property Name="foreign" Type="PositionMatrix">1</Property>
        <Property Name="untyped"><Property Name="inner" Type="bool">1</Property></Property>
        <Property Type="bool">true</Property>
        <Component uuid="0a1b2c3d-4e5f-6071-8293-a4b5c6d7e8f9"><Property Name="y" Type="bool">true</Property></Component>
        <Component><Property Name="lost child" Type="string">kept</Property></Component>
        <Other/>
      </Root>)",
             bag);
    Bag expected;
    expected.SetValue<std::wstring>(L"profile", L"A");
    expected.SetValue<double>(L"bad", 0.0);
    expected.SetValue<std::int32_t>(L"gone", 7);
    Inner(expected, L"back");
    expected.SetValue<bool>(L"inner", true); // an element that isn't kept leaves its children to the bag
    expected.SetValue<std::wstring>(L"lost child", L"kept");
    auto& component =
        *expected.GetValuePointer<KelAM::SubProperties>(L"{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9}", true);
    component.SetValue<double>(L"x", 1.0);
    component.SetValue<bool>(L"y", true);
    EXPECT_TRUE(bag == expected);
    EXPECT_TRUE(bag.FindProperty(L"gone")->IsDeleted());
}

TEST(HostsProperty, KeepsItsClassInCopiesAndCountsInEqualityAndFilters) {
    IPersistentProperty* (*const makers[])() = {
        []() -> IPersistentProperty* { return new HostText(L"1"); },
        []() -> IPersistentProperty* { return new PersistentProperty<HostValue>({L"1"}); },
    };
    for (auto const make : makers) {
        Bag outer;
        Bag& bag = Inner(outer, L"inner");
        bag.AddProperty(L"matrix", make());
        Bag copy(outer);
        EXPECT_TRUE(copy == outer);
        Bag& copiedBag = Inner(copy, L"inner");
        IPersistentProperty const& original = *bag.FindProperty(L"matrix");
        IPersistentProperty const& copied = *copiedBag.FindProperty(L"matrix");
        EXPECT_EQ(typeid(copied), typeid(original));
        EXPECT_EQ(copied.GetType(), L"PositionMatrix");
        MFile file; // a bag couldn't read it back
        EXPECT_THROW(PersistentProperty<Bag>(outer).Write(file), std::runtime_error);

        copiedBag.RemoveProperty(L"matrix", true);
        EXPECT_FALSE(copy == outer);
        copy.Merge(outer, true);
        EXPECT_TRUE(copy == outer);

        auto const isNoMatrix = [](auto* property) { return property->GetType() != L"PositionMatrix"; };
        Keeping::In(outer, isNoMatrix);
        EXPECT_EQ(bag.GetNumProperties(), 1u); // the filter goes no deeper
        Keeping::In(bag, isNoMatrix);
        EXPECT_TRUE(bag.IsEmpty());
    }
}

TEST(HostsProperty, OfAValueOfItsOwnHasABinaryForm) {
    PersistentProperty<HostValue> const property({L"1 0 0"});
    MFile file;
    property.Write(file);
    PersistentProperty<HostValue> read;
    read.Read(file);
    EXPECT_TRUE(read.IsEqual(&property));
}

TEST(ExternalProperties, AreAssignedAlsoFromWithinThemselves) {
    KelAM::ExternalProperties properties;
    auto& inner = *properties.GetValuePointer<KelAM::ExternalProperties>(L"inner", true);
    inner.m_id = KelAM::ExternalPropertyID(L"an identifier that takes memory");
    inner.m_objectKind = 4;
    inner.SetValue<bool>(L"b", true);
    properties = inner;
    EXPECT_EQ(properties.m_id, KelAM::ExternalPropertyID(L"an identifier that takes memory"));
    EXPECT_EQ(properties.m_objectKind, 4);
    EXPECT_TRUE(properties.GetValueOr<bool>(L"b", false));
}

TEST(FileContent, TakesNameAndBytesOfAFileOrNothing) {
    TemporaryFolder const folder;
    Fill(folder / "a.bin", std::string("\0\xFF\r\n", 4));
    KelAM::FileContent const expected{L"a.bin", {std::byte{0}, std::byte{255}, std::byte{13}, std::byte{10}}};
    KelAM::FileContent content;
    ASSERT_TRUE(content.LoadFile((folder / "a.bin").wstring()));
    EXPECT_EQ(content, expected);
    EXPECT_FALSE(content.LoadFile((folder / "missing").wstring()));
    EXPECT_EQ(content, expected);
    EXPECT_TRUE(content.SaveFile((folder / "b.bin").wstring()));
    EXPECT_EQ(ContentOf(folder / "b.bin"), ContentOf(folder / "a.bin"));
    EXPECT_FALSE(content.SaveFile((folder / "no folder" / "b.bin").wstring()));
}

TEST(FileContent, KeepsItsBytesWhenAFileHoldsNoBase64) {
    std::pair<std::string, std::size_t> const cases[] = {
        {"<Data>AP8=</Data>", 2}, {"<Data/>", 0}, {"", 3}, {"<Data>A</Data>", 3}, {"<Data>AP8*</Data>", 3}};
    for (auto const& [data, expectedSize] : cases) {
        KelAM::FileContent content{L"old", std::vector<std::byte>(3)};
        ReadFrom("<Root><Name>new</Name><Other/>" + data + "</Root>", content);
        EXPECT_EQ(content.m_name, L"new") << data;
        EXPECT_EQ(content.m_data.size(), expectedSize) << data;
    }
}

} // namespace
