// SPDX-License-Identifier: Apache-2.0
#include "tests/formats/formats.h"
#include "tests/support/characters.h"

#include <gtest/gtest.h>

using namespace TestSupport;

namespace {

class RoundTripOf : public testing::TestWithParam<Format> {};

std::string NameOf(testing::TestParamInfo<Format> const& info) { return info.param.name; }
INSTANTIATE_TEST_SUITE_P(, RoundTripOf, testing::ValuesIn(WrittenFormats()), NameOf);

} // namespace

TEST_P(RoundTripOf, GeneratedValuesKeepsWhatTheFormatHolds) {
    Format const& format = GetParam();
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        auto const written = format.make()->Generated(seed), back = written->Fresh(),
                   again = written->Fresh();
        std::string const document = WriteText(*written);
        ReadReport report;
        ASSERT_TRUE(ReadText(*back, document, &report)) << document;
        std::string const second = WriteText(*back);
        ASSERT_TRUE(ReadText(*again, second));
        std::string const third = WriteText(*again);
        ASSERT_EQ(Kept(third), Kept(second));
        if (format.name == std::string("GenericParameters")) {
            ASSERT_EQ(second, document);
            ASSERT_TRUE(report.m_entries.empty());
        }
    }
}

TEST_P(RoundTripOf, EveryCharacterThatXmlCarriesAndNoOtherIsTaken) {
    auto const written = GetParam().make(), back = written->Fresh();
    int refused = 0;
    for (char32_t code = 0; code <= 0x10FFFF; ++code) {
        if (!Xml::IsXmlCharacter(code)) {
            written->SetText(L"x" + Character(code));
            refused += WriteText(*written).empty();
        }
    }
    EXPECT_EQ(refused, 2079);
    written->SetText(AllCharacters());
    ASSERT_TRUE(ReadText(*back, WriteText(*written)));
    std::string const document = WriteText(*written), again = WriteText(*back);
    EXPECT_EQ(Kept(again), Kept(document));
}

TEST(RoundTrip, WritesALayoutOfAnyDepthOnlyIfItCanBeReadAgain) {
    for (int const levels : {1023, 1024}) { // the root is one more
        ParameterLayout layout;
        LayoutNode* group = layout.m_profileEditor;
        for (int level = 1; level < levels; ++level) {
            group = group->AddNode(L"G");
        }
        group->AddNode(L"I", Int, 1);
        ParameterDatabase written(&layout), back(&layout);
        std::string const document = WriteText(written);
        EXPECT_EQ(document.empty(), levels > 1023);
        EXPECT_TRUE(document.empty() || ReadText(back, document));
    }
}

namespace {

/// The small layout, and nodes that a file can't hold in full.
class LosingLayout : public SmallLayout {
public:
    LosingLayout() {
        LayoutNode& editor = *m_profileEditor;
        editor.AppendNode(MakeNode(L"T", Int)->SetProfile(true, L"Profile"));
        editor.AddNode(L"V", Int, 1)->AddNode(L"I", Int, 1);
        editor.AddNode(L"W")->SetProfile(true, L"Default")->AddNode(L"I", Int, 1);
        editor.AddNode(L"E")->AddNode(L"GenericParameters")->AddNode(L"I", Int, 1);
    }
};

} // namespace

TEST(RoundTrip, LosesNothingButThis) {
    struct Row {
        std::function<void(ParameterNode)> change; // of the profile editor's cursor
        char const* before;
        char const* after;
    };
    Row const rows[] = {
        // Flags.
        {[](ParameterNode editor) { editor.Get(L"Z").AddProfile(L"a", true).SetCanBeDeleted(true); },
         "Z<{I=1}; 'a'!d{I=1}>", "Z<{I=1}; 'a'{I=1}>"},
        {[](ParameterNode editor) { editor.Get(L"Z").AddProfile(L"a", true).SetHidden(true); },
         "Z<{I=1}; 'a'!h{I=1}>", "Z<{I=1}; 'a'{I=1}>"},
        {[](ParameterNode editor) {
             ParameterNode profile = editor.Get(L"Z").GetDefault();
             profile.SetReadOnly(true), profile.SetHidden(true), profile.SetNameReadOnly(true);
             profile.SetUserDefaultProfile(true);
         },
         "Z<!r!h!n!u{I=1};>", ""},
        {[](ParameterNode editor) { editor.Get(L"C").SetReadOnly(true), editor.Get(L"C").SetHidden(true); },
         "C!r!h<{I=1 N[=0;] C<{S='s'};>};>", ""},
        {[](ParameterNode editor) { editor.Get(L"N").SetDisableAddRemove(true); }, "N!a[=0;]", ""},
        {[](ParameterNode editor) { editor.SetReadOnly(true), editor.SetHidden(true); }, "!r!h", ""},
        // Values that no element is written for.
        {[](ParameterNode editor) { editor.Get(L"N").GetDefault().SetValue<std::int32_t>(5); }, "N[=5;]", ""},
        {[](ParameterNode editor) { editor.Get(L"V").SetValue<std::int32_t>(5); }, "V=5", ""},
        {[](ParameterNode editor) { editor.Get(L"G").Get(L"X").SetValueFromText(L""); }, "G/X=''", ""},
        {[](ParameterNode editor) {
             ParameterNode general = editor.Get(L"E").Get(L"GenericParameters");
             general.SetHidden(true), general.Get(L"I").SetValue<std::int32_t>(5);
         },
         "E/GenericParameters!h E/GenericParameters/I=5", ""},
        // Values that are written and not found again.
        {[](ParameterNode editor) { editor.Get(L"T").AddProfile(L"a", true).SetValue<std::int32_t>(5); },
         "T<=0; 'a'=5>", "T<=0; 'a'=0>"},
        {[](ParameterNode editor) {
             editor.Get(L"W").AddProfile(L"a", true).Get(L"I").SetValue<std::int32_t>(5);
         },
         "W<{I=1}; 'a'{I=5}>", "W<{I=5};>"},
        {[](ParameterNode editor) {
             editor.Get(L"Z").AddProfile(L"Value", true).Get(L"I").SetValue<std::int32_t>(5);
         },
         "Z<{I=1}; 'Value'{I=5}>", "Z<{I=1}; 'Value'->"},
        {[](ParameterNode editor) { // the name finds the first of them, before and after
             editor.Get(L"Z").AddProfile(L"a", true);
             editor.Get(L"Z").AddProfile(L"a", true).Get(L"I").SetValue<std::int32_t>(5);
         },
         "Z<{I=1}; 'a'{I=1} 'a'{I=1}>", "Z<{I=1}; 'a'{I=1} 'a'{I=1}>"},
    };
    for (Row const& row : rows) {
        LosingLayout const layout;
        ParameterDatabase written(&layout), back(&layout);
        row.change(written.GetProfileEditor());
        EXPECT_EQ(DumpChanges(written), row.before);
        ASSERT_TRUE(ReadText(back, WriteText(written)));
        EXPECT_EQ(DumpChanges(back), row.after) << row.before;
    }
}
