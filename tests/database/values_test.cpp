// SPDX-License-Identifier: Apache-2.0
#include "tests/database/test_layout.h"

#include <gtest/gtest.h>

namespace Zantrel {
namespace {

/// What is thrown where a T is read, and where it is written; nothing if nothing is.
template <class T> std::string ErrorOf(ParameterNode cursor) {
    std::string const read = MisuseOf([&] { cursor.GetValue<T>(); });
    EXPECT_EQ(cursor.FindValue<T>() == nullptr, !read.empty());
    EXPECT_EQ(MisuseOf([&] { cursor.SetValue<T>(T()); }), read);
    return read;
}

TEST(Values, AreReadAndWrittenByTheTypeOfTheNodeAlone) {
    using Case = std::pair<LayoutNode * TestLayout::*, char>; // the letter of the type that is allowed
    for (auto const& [node, allowed] :
         {Case{&TestLayout::number, 'l'}, Case{&TestLayout::real, 'd'}, Case{&TestLayout::length, 'd'},
          Case{&TestLayout::flag, 'b'}, Case{&TestLayout::text, 's'}, Case{&TestLayout::option, 's'},
          Case{&TestLayout::member, 's'}, Case{&TestLayout::path, 's'}, Case{&TestLayout::file, 'f'},
          Case{&TestLayout::byDriver, ' '}, Case{&TestLayout::group, ' '}, Case{&TestLayout::counts, ' '}}) {
        TestDatabase database;
        ParameterDatabase const before(database.values);
        ParameterNode const cursor = database.At(database.layout.*node);
        SCOPED_TRACE(testing::Message() << cursor.m_pNode->m_name);
        auto const expected = [type = allowed](char each, std::string const& word) {
            return each == type ? "" : "Invalid type cast : use " + word;
        };
        EXPECT_EQ(ErrorOf<std::int32_t>(cursor), expected('l', "long"));
        EXPECT_EQ(ErrorOf<double>(cursor), expected('d', "double"));
        EXPECT_EQ(ErrorOf<bool>(cursor), expected('b', "bool"));
        EXPECT_EQ(ErrorOf<std::wstring>(cursor), expected('s', "std::string_t"));
        EXPECT_EQ(ErrorOf<KelAM::FileContent>(cursor), expected('f', "KelAM::FileContent"));
        bool const isDefault = allowed == ' ' || allowed == 'f';
        EXPECT_EQ(database.values.IsEqual(before), isDefault) << "what was written is what was checked";
    }
    EXPECT_EQ(ErrorOf<double>(ParameterNode()), "Invalid type cast : use double");
}

TEST(Values, ThatAreMarkedDeletedOrOfAnotherClassAreNotThere) {
    TestDatabase database;
    ParameterNode const real = database.At(database.layout.real);
    real.m_pProperties->FindProperty(L"Value")->SetDeleted(true);
    EXPECT_NE(ErrorOf<double>(real), "");
    ParameterNode const length = database.At(database.layout.length);
    length.m_pProperties->RemoveProperty(L"Value", false);
    length.m_pProperties->SetValue<std::wstring>(L"Value", L"1");
    EXPECT_NE(ErrorOf<double>(length), "");
    EXPECT_EQ(ErrorOf<std::wstring>(length), ""); // a text has no type check
}

TEST(Values, SetFromTextFollowTheTypeOfTheNode) {
    using Case = std::tuple<LayoutNode * TestLayout::*, wchar_t const*, char const*>;
    for (auto const& [member, text, expected] :
         {Case{&TestLayout::flag, L"true", "=True"}, Case{&TestLayout::flag, L"tRUE", "=True"},
          Case{&TestLayout::flag, L" true", "=False"}, Case{&TestLayout::flag, L"", "=False"},
          Case{&TestLayout::flag, L"TRUE ", "=False"}, Case{&TestLayout::number, L"-5", "=-5"},
          Case{&TestLayout::number, L"7.9", "=7"}, Case{&TestLayout::number, L"x", "=0"},
          Case{&TestLayout::real, L"2.5mm", "=2.5"}, Case{&TestLayout::real, L"", "=0"},
          Case{&TestLayout::text, L" a ", "=' a '"}, Case{&TestLayout::option, L"Other", "='Other'"},
          Case{&TestLayout::path, L"", "=''"}, Case{&TestLayout::byDriver, L"Helium", "='Helium'"}}) {
        TestDatabase database;
        ParameterNode cursor = database.At(database.layout.*member);
        for (bool const isThere : {true, false}) { // the second time the value has to be created
            cursor.SetValueFromText(text);
            EXPECT_EQ(Dump(cursor), expected) << text << isThere;
            EXPECT_EQ(cursor.m_pProperties->GetNumProperties(), 1u);
            cursor.m_pProperties->RemoveProperty(L"Value", false);
        }
    }
}

TEST(Values, SetFromTextStandBehindTheNumberOfADistanceAndAsTheyAreWithoutANode) {
    TestDatabase database;
    ParameterNode length = database.At(database.layout.length),
                  noNode = database.At(database.layout.byDriver);
    length.SetValueFromText(L"9");
    EXPECT_EQ(Dump(length), "=0.050000000000000003");
    EXPECT_EQ(length.m_pProperties->GetNumProperties(), 2u);
    noNode.m_pNode = nullptr;
    noNode.SetValueFromText(L"true");
    EXPECT_EQ(Dump(database.At(database.layout.byDriver)), "='true'");
}

TEST(Values, OfTextsAreSetFromLiteralsAndPointersTooAndThroughDerivedCursorsConverted) {
    TestDatabase database;
    ParameterNode text = database.At(database.layout.text);
    text.SetValue(L"iron");
    text.SetValue(text.GetValue<std::wstring>().c_str() + 1);
    EXPECT_EQ(*text.FindValue<std::wstring>(), L"ron");
    text.SetValue(static_cast<wchar_t const*>(nullptr));
    EXPECT_EQ(*text.FindValue<std::wstring>(), L"");
    OpenCursor real(database.At(database.layout.real));
    EXPECT_NE(MisuseOf([&] { real.SetValue(L"1"); }), "");
    EXPECT_NE(MisuseOf([&] { real._SetValue<std::int32_t>(3); }), "");
    real._SetValue<std::wstring>(L"4.5");
    EXPECT_EQ(real._GetReference<double>(), 4.5);
    real._SetValue<double>(3.0);
    EXPECT_EQ(real.GetValue<double>(), 3.0);
}

} // namespace
} // namespace Zantrel
