// SPDX-License-Identifier: Apache-2.0
#include "tests/formats/formats.h"

#include <gtest/gtest.h>

using namespace TestSupport;

namespace {

using Number = std::uint64_t ReadLimits::*;

ReadReport WithLimit(Number limit, std::uint64_t number) {
    ReadReport report;
    report.m_limits.*limit = number;
    return report;
}

std::string Last(ReadReport const& report) {
    return StringConversion::NativeToUtf8(ReadReport::Format(report.m_entries.back()));
}

} // namespace

// The least number that lets a document through is found by trying, and what is known of it compared.
TEST(ReadLimits, OfEveryFormatLetThroughWhatIsWithinAndRefuseOneMore) {
    struct Row {
        Number limit;
        char const* name;
        std::uint64_t (*expected)(std::string const& document); ///< or null
    };
    Row const rows[] = {
        {&ReadLimits::m_bytes, "(m_bytes).",
         [](std::string const& document) { return std::uint64_t(document.size()); }},
        {&ReadLimits::m_textBytes, "(m_textBytes).", nullptr},
        {&ReadLimits::m_elements, "(m_elements).",
         [](std::string const& document) { return std::uint64_t(ElementsOf(document).size()); }},
        {&ReadLimits::m_depth, "(m_depth).", nullptr},
    };
    for (Format const& format : Formats()) {
        auto const whole = format.make();
        ReadReport unlimited;
        ASSERT_TRUE(ReadText(*whole, format.example, &unlimited));
        for (Row const& row : rows) {
            SCOPED_TRACE(std::string(format.name) + row.name);
            std::uint64_t refused = 0, taken = format.example.size();
            while (taken - refused > 1) {
                std::uint64_t const number = (refused + taken) / 2;
                ReadReport report = WithLimit(row.limit, number);
                (ReadText(*format.make(), format.example, &report) ? taken : refused) = number;
            }
            EXPECT_TRUE(row.expected == nullptr || taken == row.expected(format.example)) << taken;
            auto const subject = format.make();
            ReadReport within = WithLimit(row.limit, taken), beyond = WithLimit(row.limit, refused);
            EXPECT_TRUE(ReadText(*subject, format.example, &within));
            EXPECT_EQ(WriteText(*subject), WriteText(*whole));
            EXPECT_EQ(Reported(within, true), Reported(unlimited, true));
            EXPECT_FALSE(ReadText(*subject, format.example, &beyond));
            EXPECT_EQ(beyond.m_entries.back().kind, ReadReport::Kind::RefusedDocument);
            EXPECT_NE(Last(beyond).find(' ' + std::to_string(refused)), std::string::npos) << Last(beyond);
            EXPECT_NE(Last(beyond).find(row.name), std::string::npos) << Last(beyond);
            EXPECT_EQ(subject->Use(), "");
        }
    }
}

TEST(ReadLimits, NameTheNumberAndThePlace) {
    struct Row {
        char const* format;
        std::string document;
        Number limit;
        std::uint64_t number;
        std::string last;
    };
    std::uint64_t const report = 75 * sizeof(wchar_t); // which holds one entry
    std::string const longText(200'000, 'x');
    Row const rows[] = {
        {"GenericParameters", "<R>\n<N><Item>1</Item><Item>2</Item><Item>3</Item></N></R>",
         &ReadLimits::m_listItems, 2,
         "2:32: The list has more than 2 items, the limit of this read (m_listItems). (R/N/Item)"},
        {"MachineParameters", "<R><Property Name='N'><Instance>1</Instance></Property></R>",
         &ReadLimits::m_listItems, 0,
         "1:23: The list has more than 0 items, the limit of this read (m_listItems). "
         "(R/Property \"N\"/Instance)"},
        {"GenericParameters", "<R><Z><Both Name='a'/><Both Name='b'/></Z></R>", &ReadLimits::m_profiles, 1,
         "1:23: The list has more than 1 profiles, the limit of this read (m_profiles). (R/Z/Both \"b\")"},
        {"MachineParameters",
         "<R><Property Name='Z'><Profile Name='a'/></Property><Property Name='Z'><Profile Name='b'/>"
         "<Profile Name='c'/></Property></R>",
         &ReadLimits::m_profiles, 1,
         "1:91: The list has more than 1 profiles, the limit of this read (m_profiles). "
         "(R/Property \"Z\"/Profile \"c\")"},
        {"GenericParameters", "<R>\n <G><S>" + longText + "</S></G></R>", &ReadLimits::m_textBytes, 199'999,
         "2:5: A text or start tag has more than 199999 bytes, the limit of this read (m_textBytes). "
         "(R/G/S)"},
        {"GenericParameters", "<R><G><S a='" + longText + "'/></G></R>", &ReadLimits::m_textBytes, 150'000,
         "1:7: A text or start tag has more than 150000 bytes, the limit of this read (m_textBytes). (R/G)"},
        {"Ticket", "<R></" + longText, &ReadLimits::m_textBytes, 5,
         "1:4: A text or start tag has more than 5 bytes, the limit of this read (m_textBytes). (R)"},
        {"Ticket", "<R><x/><y/><z/></R>", &ReadLimits::m_reportBytes, report,
         "1:8: The report of this read has more than " + std::to_string(report) +
             " bytes, the limit of this read (m_reportBytes). (R/y)"},
    };
    for (Row const& row : rows) {
        ReadReport beyond = WithLimit(row.limit, row.number), within = WithLimit(row.limit, 3'000'000);
        EXPECT_FALSE(ReadText(*FormatCalled(row.format).make(), row.document, &beyond));
        EXPECT_EQ(Last(beyond), row.last);
        EXPECT_EQ(ReadText(*FormatCalled(row.format).make(), row.document, &within),
                  row.document.back() == '>');
    }
}

TEST(ReadLimits, AreThoseOfAValidityCheckToo) {
    SmallLayout const layout;
    for (auto const& [check, document] :
         {std::pair(&IsValidParameterStream, "<R><G/><G/></R>"),
          {&KlvrProperties::IsValidParameterStream, "<R><Property Name='G'/><Property Name='G'/></R>"}}) {
        ReadReport report = WithLimit(&ReadLimits::m_elements, 1);
        ParameterFileValidityResult result;
        std::istringstream in("<R><G/></R>");
        EXPECT_FALSE(check(layout, in, {}, &result, &report) || result.m_isValid);
        EXPECT_EQ(Last(report),
                  "1:4: The document has more than 1 elements, the limit of this read (m_elements). (R)");
        ReadReport small = WithLimit(&ReadLimits::m_reportBytes, 1);
        std::istringstream missing(document);
        EXPECT_FALSE(check(layout, missing, {}, &result, &small));
        EXPECT_TRUE(small.m_entries.size() == 1 && small.m_leftOut != 0); // as the byte limit does it
    }
}

TEST(ReadLimits, RefuseProfilesOfOneNameThatAreOtherwiseTold) {
    struct Row {
        char const *format, *document, *places;
        wchar_t const* note; ///< how that of a write begins
    };
    Row const rows[] = {
        {"GenericParameters",
         "<R><Z><Both Name='a'/><Both Name='b'/><Both Name='a'/><Both/><Both Name=''/></Z></R>",
         "dropped@1:39:R/Z/Both \"a\" dropped@1:62:R/Z/Both",
         L"2 profiles have the name of an earlier one in their list, \"Z_Both[]\" first; "},
        {"GenericParameters", "<R><Z ReadOnly='true'><Both Name='ReadOnly'/><Both Name='ReadOnly'/></Z></R>",
         "dropped@1:46:R/Z/Both \"ReadOnly\"",
         L"1 profiles have the name of an earlier one in their list, \"Z_Both[ReadOnly]\" first; "},
        {"MachineParameters",
         "<R><Property Name='C'><Profile Name='a'/></Property><Property Name='C'><Profile Name='a'/>"
         "<Profile Name='a'/></Property></R>",
         "dropped@1:91:R/Property \"C\"/Profile \"a\"",
         L"1 profiles have the name of an earlier one in their list, \"C_Profile[a]\" first; "},
    };
    for (Row const& row : rows) {
        ReadReport report, strict;
        strict.m_limits.m_refusesSameProfiles = true;
        auto const subject = FormatCalled(row.format).make();
        EXPECT_TRUE(ReadText(*subject, row.document, &report));
        EXPECT_EQ(Reported(report, true), row.places);
        WriteReport written;
        std::ostringstream out;
        EXPECT_TRUE(subject->Write(out, &written) && written.m_sentence.empty());
        EXPECT_EQ(written.m_notes.at(0).find(row.note), 0u)
            << StringConversion::NativeToUtf8(written.m_notes[0]);
        EXPECT_FALSE(ReadText(*FormatCalled(row.format).make(), row.document, &strict));
        EXPECT_EQ(strict.m_entries.size(), 1u);
        EXPECT_NE(Last(strict).find("(m_refusesSameProfiles)"), std::string::npos) << Last(strict);
    }
}
