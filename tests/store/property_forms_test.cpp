// SPDX-License-Identifier: Apache-2.0
#include "tests/store/bags.h"

#include <zantrel/io/mfile.h>
#include <zantrel/sax/sax_utilities.h>
#include <zantrel/store/external_properties.h>
#include <zantrel/store/property_creator.h>

#include "tests/support/sax_test_support.h"

#include <gtest/gtest.h>

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

/// A host's class that is a text to the library, apart from its name.
struct HostText : PersistentProperty<std::wstring> {
    using PersistentProperty::PersistentProperty;
    HostText* Clone() const override { return new HostText(m_value); }
    std::wstring GetType() const override { return L"PositionMatrix"; }
};

/// What is read from the binary form of a property.
template <class T> PersistentProperty<T> ThroughBinaryForm(PersistentProperty<T> const& property) {
    MFile file;
    property.Write(file);
    PersistentProperty<T> read;
    read.Read(file);
    EXPECT_TRUE(read.IsEqual(&property));
    EXPECT_EQ(file.GetRemaining(), 0u);
    return read;
}

TEST(BinaryForm, BringsEveryClassBackAndRefusesEveryTruncation) {
    ThroughBinaryForm(PersistentProperty<HostValue>({L"1 0 0"}));
    PersistentProperty<Bags> bags;
    FillWithEveryClass(bags.m_value.AddProperty());
    ThroughBinaryForm(bags);
    PersistentProperty<Bag> property(bags.m_value.GetProperty(0));
    property.m_value.FindProperty(L"bool")->SetDeleted(true);
    auto read = ThroughBinaryForm(property);
    EXPECT_TRUE(read.m_value.FindProperty(L"bool")->IsDeleted());

    MFile file;
    property.Write(file);
    for (std::size_t at = 0; at < file.GetBytes().size(); ++at) {
        auto bytes = file.GetBytes();
        MFile truncated({bytes.data(), bytes.data() + at});
        EXPECT_THROW(read.Read(truncated), std::runtime_error) << at;
        bytes[at] = std::byte{0xFF};
        MFile damaged(std::move(bytes));
        try {
            PersistentProperty<Bag>().Read(damaged); // either is fine, as long as it ends
        } catch (std::runtime_error const&) {
        }
    }
    EXPECT_TRUE(read.IsEqual(&property)); // what couldn't be read changed nothing
}

TEST(BinaryForm, RefusesBagsNestedTooDeeply) {
    MFile file;
    for (int depth = 0; depth < 100000; ++depth) {
        file.WriteUnsigned64(1); // one entry, with no name, of type "Properties", not deleted
        WriteValueOfProperty(std::wstring(), file);
        WriteValueOfProperty(std::wstring(L"Properties"), file);
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
    for (bool const isText : {true, false}) {
        Bag outer;
        Bag& bag = Inner(outer, L"inner");
        if (isText) {
            bag.AddProperty(L"matrix", new HostText(L"1"));
        } else {
            bag.AddProperty(L"matrix", new PersistentProperty<HostValue>({L"1"}));
        }
        Bag copy(outer);
        EXPECT_TRUE(copy == outer);
        Bag& copiedBag = Inner(copy, L"inner");
        EXPECT_EQ(copiedBag.FindProperty(L"matrix")->GetType(), L"PositionMatrix");
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

TEST(ExternalProperties, KnowTheirObjectAlsoAssignedFromWithinThemselvesAndReadBack) {
    PersistentProperty<KelAM::ExternalProperties> property;
    auto& inner = *property.m_value.GetValuePointer<KelAM::ExternalProperties>(L"inner", true);
    inner.m_id = KelAM::ExternalPropertyID(L"an identifier that takes memory");
    inner.m_objectKind = 4;
    inner.SetValue<bool>(L"b", true);
    property.m_value = inner;
    KelAM::ExternalProperties const read = ThroughBinaryForm(property).m_value;
    EXPECT_EQ(read.m_id, KelAM::ExternalPropertyID(L"an identifier that takes memory"));
    EXPECT_EQ(read.m_objectKind, 4);
    EXPECT_TRUE(read.GetValueOr<bool>(L"b", false));
}

TEST(ExternalProperties, AreReadFromInstancesWithAnIdentifier) {
    std::istringstream in(R"(<Objects>
        <Instance uuid="{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9}"><Property Name="b" Type="bool">1</Property></Instance>
        <Instance><Property Name="lost" Type="bool">1</Property></Instance>
      </Objects>)");
    KelAM::DatabaseExternalProperties database;
    KelAM::DatabaseExternalPropertiesSax handler(&database);
    EXPECT_TRUE(KelAM::SaxUtilities::ReadStream(in, handler));
    KelAM::DatabaseExternalProperties expected;
    KelAM::ExternalPropertyID const id(L"0a1b2c3d-4e5f-6071-8293-a4b5c6d7e8f9");
    expected.GetProperties(id, true)->SetValue<bool>(L"b", true);
    EXPECT_TRUE(database == expected);
    EXPECT_EQ(database.GetProperties(id, false)->m_id, id);
    EXPECT_EQ(database.GetProperties(KelAM::ExternalPropertyID(L"x"), false), nullptr);
}

TEST(FileContent, TakesNameAndBytesOfAFileOrNothing) {
    TemporaryFolder const folder;
    Fill(folder / "a.bin", std::string("\0\xFF\r\n", 4));
    KelAM::FileContent const expected{L"a.bin", {std::byte{0}, std::byte{255}, std::byte{13}, std::byte{10}}};
    KelAM::FileContent content;
    EXPECT_TRUE(content.LoadFile(folder / "a.bin") && !content.LoadFile((folder / "missing").wstring()));
    EXPECT_EQ(content, expected);
    EXPECT_TRUE(content.SaveFile(folder / "b.bin"));
    EXPECT_EQ(ContentOf(folder / "b.bin"), ContentOf(folder / "a.bin"));
    EXPECT_FALSE(content.SaveFile((folder / "no folder" / "b.bin").wstring()));
}

TEST(FileContent, ComesThroughFilesOfAnySize) {
    for (std::size_t const size : {0u, 1u, 48u * 1024, 48u * 1024 + 1, 300'001u}) {
        KelAM::FileContent content{L"large", std::vector<std::byte>(size)}, read;
        for (std::size_t at = 0; at < size; ++at) {
            content.m_data[at] = static_cast<std::byte>(at * 7919 >> 8);
        }
        std::string document = Written(content);
        ReadFrom(document, read);
        EXPECT_EQ(read, content) << size;
        if (size != 0) {
            document[document.find("<Data>") + 6] = '-';
            read.m_data.resize(3);
            ReadFrom(document, read);
            EXPECT_EQ(read.m_data.size(), 3u);
        }
    }
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
