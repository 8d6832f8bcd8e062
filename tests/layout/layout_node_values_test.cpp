// SPDX-License-Identifier: Apache-2.0
#include <zantrel/layout/layout_node.h>

#include "tests/support/comma_locale.h"
#include "tests/support/failing_allocator.h"

#include <cstring>
#include <limits>
#include <random>
#include <sstream>

namespace Zantrel {
namespace {

LayoutNode Node() { return LayoutNode(L"node", Double, nullptr); }

template <class T> T ByStream(std::wstring const& text) {
    std::wistringstream stream(text);
    T value{};
    stream >> value;
    return value;
}

TEST(LayoutNodeValues, ADoublePrintsFixedWithAnyPrecisionToTheLastDigitAndAlwaysThePoint) {
    using Row = std::tuple<double, std::int32_t, wchar_t const*>;
    for (auto const& [value, precision, text] :
         {Row{1.5, 4, L"1.5000"}, Row{2.0, 0, L"2."}, Row{-0.0, 1, L"-0.0"},
          Row{1e22, 0, L"10000000000000000000000."}, Row{1.0 / 3, 20, L"0.33333333333333331483"}}) {
        EXPECT_EQ(Node().SetPrecision(precision)->FormatValue(value), text);
    }
    double const smallest = std::numeric_limits<double>::denorm_min();
    std::wstring const exact = Node().SetPrecision(1074)->FormatValue(smallest);
    std::wstring const longer = Node().SetPrecision(10'000'000)->FormatValue(smallest);
    EXPECT_EQ(longer, exact + std::wstring(10'000'000 - 1074, L'0'));
    EXPECT_EQ(exact.back(), L'5');
    EXPECT_EQ(Node().SetPrecision(2000)->FormatValue(std::numeric_limits<double>::infinity()), L"inf");
}

TEST(LayoutNodeValues, OtherTypesPrintPlainlyAndOnlyOneTextIsTrue) {
    EXPECT_EQ(Node().FormatValue(std::int32_t{-2147483647 - 1}), L"-2147483648");
    EXPECT_EQ(Node().FormatValue(true) + Node().FormatValue(false), L"TrueFalse");
    EXPECT_EQ(Node().FormatValue(L"literal"), L"literal");
    EXPECT_EQ(Node().FormatValue<wchar_t const*>(nullptr), L"");
    for (wchar_t const* const text : {L"true", L"TRUE", L"1", L" True", L"True ", L"", L"True"}) {
        EXPECT_EQ(Node().GetValue<bool>(text), text == std::wstring(L"True")) << text;
    }
}

TEST(LayoutNodeValues, NumbersAreTakenFromTheFrontOfAText) {
    using Row = std::tuple<wchar_t const*, std::int32_t, double>;
    double const most = std::numeric_limits<double>::max();
    for (auto const& [text, integer, number] :
         {Row{L"", 0, 0}, Row{L"12abc", 12, 12}, Row{L" \n+7 ", 7, 7}, Row{L"1.75", 1, 1.75},
          Row{L"-.5", 0, -0.5}, Row{L"1e2", 1, 100}, Row{L"010", 10, 10}, Row{L"3000000000", 2147483647, 3e9},
          Row{L"-3000000000", -2147483647 - 1, -3e9}, Row{L"1e999", 1, most}, Row{L"1,5", 1, 1},
          Row{L"\uff11", 0, 0}}) {
        EXPECT_EQ(Node().GetValue<std::int32_t>(text), integer) << text;
        EXPECT_EQ(Node().GetValue<double>(text), number) << text;
    }
}

TEST(LayoutNodeValues, PlainNumbersReadAsTheStreamReadsThemWithoutAnAllocation) {
    std::mt19937 random(20240229);
    std::wstring const characters = L"00123456789987654321.-";
    LayoutNode const node = Node();
    for (int count = 0; count < 20'000; ++count) {
        std::wstring text(random() % 22, L' ');
        for (wchar_t& character : text) {
            character = characters[random() % characters.size()];
        }
        double const read = node.GetValue<double>(text), expected = ByStream<double>(text);
        ASSERT_EQ(std::memcmp(&read, &expected, sizeof read), 0) << text;
        ASSERT_EQ(node.GetValue<std::int32_t>(text), ByStream<std::int32_t>(text)) << text;
    }
    std::wstring const longest = L"-1234567.12345678900";
    TestSupport::AllocationFailure const failure(0);
    EXPECT_EQ(node.GetValue<double>(longest), -1234567.123456789);
}

TEST(LayoutNodeValues, TheGlobalLocaleIsTheOneInForce) {
    TestSupport::CommaLocale const locale;
    EXPECT_EQ(Node().FormatValue(1234.5), L"1.234,5000");
    EXPECT_EQ(Node().FormatValue(std::int32_t{1234}), L"1.234");
    EXPECT_EQ(Node().GetValue<double>(L"1,5"), 1.5);
    EXPECT_EQ(Node().GetValue<double>(L"1.234"), 1234);
}

TEST(LayoutNodeValues, SettersTouchWhatTheySay) {
    LayoutNode list = Node(), choice = Node();
    list.SetNodeDisplayName(L"shown")->SetList(true, L"Item", std::wstring());
    EXPECT_EQ(list.GetNodeName() + list.GetNodeDisplayName(), L"Itemshown");
    list.SetCategoryList(true, L"Category")->SetCategoryList(false, L"Profile");
    EXPECT_TRUE(list.GetIsProfileList() && !list.GetIsCategoryList());
    EXPECT_EQ(choice.SetType(Distance)->GetPostfix(), L"") << "the constructor alone gives the unit";
    choice.SetTypeFromProfiles(&list);
    choice.SetTypeFromProfiles(L"other")->AddVisibilityRequest(L"first")->AddVisibilityRequest(L"second");
    EXPECT_EQ(choice.GetType(), OptionsFromProfiles);
    EXPECT_EQ(choice.GetNodeName() + choice.GetProfileName() + choice.m_visibilityRequest, L"othersecond");
    EXPECT_EQ(choice.GetProfileNode(), &list);
    choice.AddVisibilitySource(&list, true)->AddVisibilitySource(static_cast<LayoutNode*>(nullptr), L"none");
    EXPECT_EQ(choice.m_visibilitySources.size(), 1U);
    EXPECT_EQ(list.m_identifier.substr(0, 9), L"SourceID_");
}

TEST(LayoutNodeValues, OptionsKeepTheirNamesWhateverTheyAreMadeFrom) {
    LayoutNode node = Node();
    node.AddOption(L"a value that needs the heap", L"shown");
    node.AddOption(node.m_optionValues[0], node.m_optionValues[0]);
    EXPECT_EQ(node.m_optionDisplayNames.back(), L"a value that needs the heap");
    TestSupport::FailEachAllocation(
        [&node] { node.AddOption(node.m_optionValues[0], node.m_optionValues[0]); },
        [&node](std::size_t, bool) {
            EXPECT_EQ(node.m_optionValues.size(), node.m_optionDisplayNames.size());
        });
}

} // namespace
} // namespace Zantrel
