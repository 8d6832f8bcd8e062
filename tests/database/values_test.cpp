// SPDX-License-Identifier: Apache-2.0
#include "tests/database/test_layout.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

namespace Zantrel {
namespace {

std::string MessageOf(std::function<void()> const& call) {
    try {
        call();
        return "";
    } catch (std::runtime_error const& error) {
        return error.what();
    }
}

/// What is thrown where a T is read, and where it is written; nothing if nothing is.
template <class T> std::string ErrorOf(ParameterNode cursor) {
    std::string const read = MessageOf([&] { cursor.GetValue<T>(); });
    EXPECT_EQ(cursor.FindValue<T>() == nullptr, !read.empty());
    EXPECT_EQ(MessageOf([&] { cursor.SetValue<T>(T()); }), read);
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
        auto const expected = [type = allowed](char each, char const* message) {
            return each == type ? "" : message;
        };
        EXPECT_EQ(ErrorOf<std::int32_t>(cursor), expected('l', "Invalid type cast : use long"));
        EXPECT_EQ(ErrorOf<double>(cursor), expected('d', "Invalid type cast : use double"));
        EXPECT_EQ(ErrorOf<bool>(cursor), expected('b', "Invalid type cast : use bool"));
        EXPECT_EQ(ErrorOf<std::wstring>(cursor), expected('s', "Invalid type cast : use std::string_t"));
        EXPECT_EQ(ErrorOf<KelAM::FileContent>(cursor),
                  expected('f', "Invalid type cast : use KelAM::FileContent"));
        bool const isDefault = allowed == ' ' || allowed == 'f';
        EXPECT_EQ(database.values.IsEqual(before), isDefault) << "what was written is what was checked";
    }
    EXPECT_EQ(ErrorOf<double>(ParameterNode()), "Invalid type cast : use double");
}

TEST(Values, ThatAreMarkedDeletedOrOfAnotherClassAreNotThere) {
    TestDatabase database;
    ParameterNode const real = database.At(database.layout.real);
    real.m_pProperties->FindProperty(L"Value")->SetDeleted(true);
    EXPECT_EQ(ErrorOf<double>(real), "Invalid type cast : use double");
    ParameterNode const length = database.At(database.layout.length);
    length.m_pProperties->RemoveProperty(L"Value", false);
    length.m_pProperties->SetValue<std::wstring>(L"Value", L"1");
    EXPECT_EQ(ErrorOf<double>(length), "Invalid type cast : use double");
    EXPECT_EQ(ErrorOf<std::wstring>(length), ""); // a text has no type check
}

TEST(Values, SetFromTextFollowTheTypeOfTheNode) {
    using Case = std::tuple<LayoutNode * TestLayout::*, wchar_t const*, wchar_t const*>;
    for (auto const& [member, text, expected] :
         {Case{&TestLayout::flag, L"true", L"True"}, Case{&TestLayout::flag, L"tRUE", L"True"},
          Case{&TestLayout::flag, L" true", L"False"}, Case{&TestLayout::flag, L"1", L"False"},
          Case{&TestLayout::flag, L"", L"False"}, Case{&TestLayout::flag, L"TRUE ", L"False"},
          Case{&TestLayout::number, L"-5", L"-5"}, Case{&TestLayout::number, L"7.9", L"7"},
          Case{&TestLayout::number, L"x", L"0"}, Case{&TestLayout::real, L"2.5mm", L"2.5000"},
          Case{&TestLayout::real, L"", L"0.0000"}, Case{&TestLayout::text, L" a ", L" a "},
          Case{&TestLayout::option, L"Other", L"Other"}, Case{&TestLayout::path, L"", L""},
          Case{&TestLayout::byDriver, L"Helium", L"Helium"}}) {
        SCOPED_TRACE(testing::Message() << text);
        TestDatabase database;
        LayoutNode const& node = *(database.layout.*member);
        ParameterNode cursor = database.At(&node);
        for (bool const isThere : {true, false}) { // the second time the value has to be created
            cursor.SetValueFromText(text);
            std::wstring const found = node.m_type == Bool ? node.FormatValue(cursor.GetValue<bool>())
                                       : node.m_type == Int
                                           ? node.FormatValue(cursor.GetValue<std::int32_t>())
                                       : node.m_type == Double ? node.FormatValue(cursor.GetValue<double>())
                                                               : cursor.GetValue<std::wstring>();
            EXPECT_EQ(found, expected) << isThere;
            EXPECT_EQ(cursor.m_pProperties->GetNumProperties(), 1u);
            cursor.m_pProperties->RemoveProperty(L"Value", false);
        }
    }
}

TEST(Values, OfTextsAreSetFromLiteralsAndPointersToo) {
    TestDatabase database;
    ParameterNode text = database.At(database.layout.text);
    text.SetValue(L"iron");
    EXPECT_EQ(text.GetValue<std::wstring>(), L"iron");
    text.SetValue(text.GetValue<std::wstring>().c_str() + 1);
    EXPECT_EQ(*text.FindValue<std::wstring>(), L"ron");
    text.SetValue(static_cast<wchar_t const*>(nullptr));
    EXPECT_EQ(*text.FindValue<std::wstring>(), L"");
    EXPECT_EQ(MessageOf([&] { database.At(database.layout.real).SetValue(L"1"); }),
              "Invalid type cast : use std::string_t");
}

TEST(Values, TheTextOfADistanceStandsBehindItsNumber) {
    TestDatabase database;
    ParameterNode length = database.At(database.layout.length);
    length.SetValueFromText(L"9");
    EXPECT_EQ(length.GetValue<double>(), 0.05);
    EXPECT_EQ(length.m_pProperties->GetNumProperties(), 2u);
    EXPECT_EQ(ErrorOf<std::wstring>(length), "Invalid type cast : use std::string_t");
}

TEST(Values, ACursorWithoutANodeTakesEveryTextAsItIs) {
    PersistentProperties bag;
    ParameterNode cursor;
    cursor.m_pProperties = &bag;
    cursor.SetValueFromText(L"true");
    EXPECT_EQ(bag.GetValueOr<std::wstring>(L"Value", L""), L"true");
}

/// The members that derived cursors use.
struct OpenCursor : ParameterNode {
    explicit OpenCursor(ParameterNode const& cursor) : ParameterNode(cursor) {}
    using ParameterNode::_GetReference;
    using ParameterNode::_SetValue;
};

TEST(Values, ThroughDerivedCursorsANumberIsTypedAndATextIsConverted) {
    TestDatabase database;
    OpenCursor(database.At(database.layout.number))._SetValue<std::int32_t>(3);
    EXPECT_EQ(database.At(database.layout.number).GetValue<std::int32_t>(), 3);
    EXPECT_THROW(OpenCursor(database.At(database.layout.flag))._SetValue<double>(1.0), std::runtime_error);
    OpenCursor(database.At(database.layout.real))._SetValue<std::wstring>(L"4.5");
    EXPECT_EQ(OpenCursor(database.At(database.layout.real))._GetReference<double>(), 4.5);
}

TEST(Values, FlagsAreFalseUntilSetAndTurnBack) {
    struct {
        bool (ParameterNode::*get)() const;
        void (ParameterNode::*set)(bool);
        wchar_t const* name;
    } const flags[] = {
        {&ParameterNode::GetReadOnly, &ParameterNode::SetReadOnly, L"ReadOnly"},
        {&ParameterNode::GetHidden, &ParameterNode::SetHidden, L"Hidden"},
        {&ParameterNode::GetNameReadOnly, &ParameterNode::SetNameReadOnly, L"NameReadOnly"},
        {&ParameterNode::GetCanBeDeleted, &ParameterNode::SetCanBeDeleted, L"CanBeDeleted"},
        {&ParameterNode::GetUserDefaultProfile, &ParameterNode::SetUserDefaultProfile, L"UserDefaultProfile"},
        {&ParameterNode::GetDisableAddRemove, &ParameterNode::SetDisableAddRemove, L"DisableAddRemove"},
    };
    for (auto const& flag : flags) {
        SCOPED_TRACE(testing::Message() << flag.name);
        TestDatabase database;
        ParameterNode profile = database.At(database.layout.machines).AddProfile(L"A", true);
        EXPECT_FALSE((profile.*flag.get)());
        (profile.*flag.set)(true);
        EXPECT_TRUE((profile.*flag.get)());
        EXPECT_TRUE(profile.m_pProperties->GetValueOr<bool>(flag.name, false));
        (profile.*flag.set)(false);
        EXPECT_FALSE((profile.*flag.get)());
        EXPECT_TRUE(profile.m_pProperties->HasValue<bool>(flag.name));
    }
    EXPECT_FALSE(ParameterNode().GetReadOnly());
    EXPECT_FALSE(ParameterNode().GetHidden());
}

} // namespace
} // namespace Zantrel
