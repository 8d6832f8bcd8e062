// SPDX-License-Identifier: Apache-2.0
#include "tests/formats/formats.h"
#include "tests/support/comma_locale.h"

#include <gtest/gtest.h>

#include <clocale>

using namespace TestSupport;

namespace {

class RoundTripOf : public testing::TestWithParam<Format> {
protected:
    void TearDown() override { std::setlocale(LC_ALL, "C"); }
};

std::string NameOf(testing::TestParamInfo<Format> const& info) { return info.param.name; }
INSTANTIATE_TEST_SUITE_P(, RoundTripOf, testing::ValuesIn(WrittenFormats()), NameOf);

} // namespace

TEST_P(RoundTripOf, GeneratedValuesKeepsWhatTheFormatHoldsInAnyLocale) {
    Format const& format = GetParam();
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        auto const written = format.make()->Generated(seed), back = written->Fresh(),
                   again = written->Fresh();
        std::string const document = WriteText(*written);
        CommaLocale const locale;
        for (char const* name : {"de_DE.UTF-8", "German"}) {
            std::setlocale(LC_ALL, name); // where there is none, nothing happens
        }
        ReadReport report;
        ASSERT_EQ(WriteText(*written), document);
        ASSERT_TRUE(ReadText(*back, document, &report)) << document;
        std::string const second = WriteText(*back);
        ASSERT_TRUE(ReadText(*again, second));
        std::string const third = WriteText(*again);
        ASSERT_EQ(Kept(third), Kept(second));
        if (format.name == std::string("GenericParameters")) {
            ASSERT_EQ(second, document);
        }
        if (format.isOfValues) {
            WriteReport noted; // of profiles of one name both sides tell, and of nothing else
            std::ostringstream out;
            ASSERT_TRUE(written->Write(out, &noted));
            ASSERT_EQ(report.m_entries.empty(), noted.m_notes.empty()) << Reported(report);
            for (ReadReport::Entry const& entry : report.m_entries) {
                ASSERT_EQ(entry.sentence.find(L"A profile \""), 0u) << Reported(report);
            }
        }
    }
}

TEST(RoundTrip, LosesNothingButThis) {
    SmallLayout layout; // and nodes that a file can't hold in full
    LayoutNode& nodes = *layout.m_profileEditor;
    nodes.AppendNode(LayoutNode::MakeNode(L"T", Int)->SetProfile(true, L"Profile"));
    nodes.AddNode(L"V", Int, 1)->AddNode(L"I", Int, 1);
    nodes.AddNode(L"W")->SetProfile(true, L"Default")->AddNode(L"I", Int, 1);
    nodes.AddNode(L"E")->AddNode(L"GenericParameters")->AddNode(L"I", Int, 1);
    ParameterDatabase written(&layout), back(&layout);
    ParameterNode editor = written.GetProfileEditor();
    auto const set = [](ParameterNode node) { node.SetValue<std::int32_t>(5); };
    // Flags.
    ParameterNode both = editor.Get(L"Z"), group = editor.Get(L"E");
    editor.SetReadOnly(true), editor.SetHidden(true);
    both.AddProfile(L"d", true).SetCanBeDeleted(true);
    both.AddProfile(L"h", true).SetHidden(true);
    editor.Get(L"C").SetReadOnly(true), editor.Get(L"C").SetHidden(true);
    editor.Get(L"N").SetDisableAddRemove(true);
    // Values that no element is written for.
    set(editor.Get(L"N").GetDefault());
    set(editor.Get(L"V"));
    editor.Get(L"G").Get(L"X").SetValueFromText(L"");
    group.Get(L"GenericParameters").SetHidden(true), set(group.Get(L"GenericParameters").Get(L"I"));
    // Values that are written and not found again.
    set(editor.Get(L"T").AddProfile(L"a", true));
    set(editor.Get(L"W").AddProfile(L"a", true).Get(L"I"));
    set(both.AddProfile(L"Value", true).Get(L"I"));
    both.AddProfile(L"a", true); // the name finds the first of them, before and after
    set(both.AddProfile(L"a", true).Get(L"I"));
    // Flags of a default, which new profiles take over.
    ParameterNode profile = both.GetDefault();
    profile.SetReadOnly(true), profile.SetHidden(true), profile.SetNameReadOnly(true);
    profile.SetUserDefaultProfile(true);
    EXPECT_EQ(DumpChanges(written), "!r!h G/X='' N!a[=5;] C!r!h<{I=1 N[=0;] C<{S='s'};>};> "
                                    "Z<!r!h!n!u{I=1}; 'Value'{I=5} 'a'{I=1} 'a'{I=1} 'd'!d{I=1} 'h'!h{I=1}> "
                                    "T<=0; 'a'=5> V=5 W<{I=1}; 'a'{I=5}> "
                                    "E/GenericParameters!h E/GenericParameters/I=5");
    ASSERT_TRUE(ReadText(back, WriteText(written)));
    EXPECT_EQ(DumpChanges(back),
              "Z<{I=1}; 'Value'- 'a'{I=1} 'a'{I=1} 'd'{I=1} 'h'{I=1}> T<=0; 'a'=0> W<{I=5};>");
}
