// SPDX-License-Identifier: Apache-2.0
#include <zantrel/parameter_files/parameter_file_validity.h>

#include "tests/formats/formats.h"
#include "tests/support/machine_parameters.h"

#include <gtest/gtest.h>

using namespace TestSupport;

namespace {

using Result = ParameterFileValidityResult;

/// G{A, B that needn't be there, H{X}, F a file}, N a list of integers, and in a profile list P{I, K{Y}}.
class ValidityLayout : public ParameterLayout {
public:
    explicit ValidityLayout(wchar_t const* root = L"R") {
        m_name = root;
        LayoutNode* const group = m_profileEditor->AddNode(L"G");
        group->AddNode(L"A", Int, L"1");
        group->AddNode(L"B", Int, L"1")->m_writeToParameterFile = false;
        group->AddNode(L"H")->AddNode(L"X", Int, L"1");
        group->AddNode(L"F", FileAttachment, L"");
        m_profileEditor->AddNode(L"N", Int, L"1")->SetList(true, L"Instance", L"");
        LayoutNode* const profiles = m_profileEditor->AddNode(L"P")->SetProfile(true, L"Profile");
        profiles->AddNode(L"I", Int, L"1");
        profiles->AddNode(L"K")->AddNode(L"Y", Int, L"1");
    }
};

template <class Source>
using Checker = bool (*)(ParameterLayout const&, Source, ParameterFileValidityOptions const&, Result*,
                         ReadReport*);
struct CheckedFormat {
    Checker<std::istream&> check;
    Checker<std::wstring const&> checkFile;
    Checker<std::filesystem::path const&> checkPath;
};
CheckedFormat const Generic{&IsValidParameterStream, &IsValidParameterFile, &IsValidParameterFile};
CheckedFormat const Machine{&KlvrProperties::IsValidParameterStream, &KlvrProperties::IsValidParameterFile,
                            &KlvrProperties::IsValidParameterFile};

struct Row {
    char const* document;
    std::string messages;
    std::size_t maxDepth = 100;
};

std::string Joined(std::vector<std::wstring> const& messages) {
    std::string text;
    for (std::wstring const& message : messages) {
        text += (text.empty() ? "" : "; ") + StringConversion::NativeToUtf8(message);
    }
    return text;
}

void Check(CheckedFormat const& format, std::initializer_list<Row> rows) {
    ValidityLayout const layout;
    for (Row const& row : rows) {
        std::istringstream in(WithProperties(row.document));
        bool const isValid = row.messages.empty();
        Result result;
        result.m_messages = {L"of another file"};
        result.m_isValid = !isValid;
        EXPECT_EQ(format.check(layout, in, row.maxDepth, &result, nullptr), isValid);
        EXPECT_EQ(result.m_isValid, isValid);
        EXPECT_EQ(Joined(result.m_messages), row.messages) << row.document << " to depth " << row.maxDepth;
    }
}

} // namespace

TEST(Validity, OfAGenericFileNamesWhatDoesNotFitTheLayout) {
    Check(
        Generic,
        {{"<R><G><A>1</A><H><X>x</X></H><F><Name/><U/><I/></F></G><N><Instance>1</Instance></N><P><Default/>"
          "<Profile Name='p'><I/></Profile></P></R>",
          ""},
         {"<R/>", ""}, // children of the root may be missing
         {"<G><U/></G>", "Wrong root tag-name.; Invalid tag [U] in [ProfileEditor]"},
         {"<R><G/></R>", "Mandatory tag [A] not found in [G]; Mandatory tag [H] not found in [G]; "
                         "Mandatory tag [F] not found in [G]"},
         {"<R><V/><G><F/><A><X/></A><U/><H/><W/></G><g/></R>",
          "Invalid tag [V] in [ProfileEditor]; Invalid tag [X] in [G]; Invalid tag [U] in [G]; "
          "Mandatory tag [X] not found in [H]; Invalid tag [W] in [G]; Invalid tag [g] in [ProfileEditor]"},
         {"<R><U><V/><N><\xC3\x84/></N></U></R>", "Invalid tag [U] in [ProfileEditor]; Invalid tag [V] in "
                                                  "[ProfileEditor]; Unhandled tag [\xC3\x84] in [N]"},
         {"<R><N><Item><Instance>1</Instance></Item><Default/></N></R>",
          "Unhandled tag [Item] in [N]; Unhandled tag [Default] in [N]"},
         {"<R><P><U/><Default><U/><K/></Default><Profile><Profile/><K><Y/></K></Profile><I/></P></R>",
          "Invalid tag [U] in [P]; Invalid tag [U] in [P]; Mandatory tag [Y] not found in [K]; "
          "Invalid tag [Profile] in [P]"}});
}

TEST(Validity, OfAMachineParametersFileNamesWhatDoesNotFitTheLayout) {
    Check(Machine,
          {{"<R>[G:[A:1][H:[X:x]][F:<Name/><U/>[U:]]][N:<Instance>1</Instance>][P:<Default/><Profile/>]</R>",
            ""},
           {"<R/>", ""},
           {"<S>[U:]</S>", "Wrong root tag-name.; Invalid tag [Property] in [ProfileEditor]"},
           {"<R>[U:[V:[N:<Item/><Default/>[U:]]]]</R>",
            "Invalid tag [Property] in [ProfileEditor]; Invalid tag [Property] in [ProfileEditor]; "
            "Unhandled tag [Item] in [N]; Unhandled tag [Default] in [N]; Invalid tag [Property] in [N]"},
           {"<R><G/><Property>[G:[A:][F:][H:<X/>]]</Property></R>",
            "Unhandled tag [G] in [ProfileEditor]; Unhandled tag [X] in [H]; "
            "Mandatory tag [X] not found in [H]"},
           {"<R>[P:<Item/><Profile Name='p'>[K:]<Profile/></Profile>[I:]]</R>",
            "Unhandled tag [Item] in [P]; Mandatory tag [Y] not found in [K]; "
            "Unhandled tag [Profile] in [P]"}});
}

TEST(Validity, LooksAtNothingDeeperThanItIsTold) {
    char const* const generic = "<R><V/><G><A/><F/><U/><H><U/></H></G></R>";
    char const* const machine = "<R>[V:][G:[A:][F:][U:][H:[U:]]]</R>";
    std::string const editor = "Invalid tag [V] in [ProfileEditor]",
                      group = editor + "; Invalid tag [U] in [G]";
    std::string const missing = "Mandatory tag [X] not found in [H]",
                      property = "Invalid tag [Property] in [";
    Check(Generic, {{generic, "", 0},
                    {"<S><V/></S>", "Wrong root tag-name.", 0},
                    {generic, editor, 1},
                    {"<R><G><A/><F/><H/></G></R>", missing, 2}, // nothing too deep, nothing excused
                    {generic, group, 2},
                    {generic, group + "; Invalid tag [U] in [H]; " + missing, 3}});
    Check(Machine,
          {{machine, "", 0},
           {machine, property + "ProfileEditor]; " + property + "G]", 2},
           {machine, property + "ProfileEditor]; " + property + "G]; " + property + "H]; " + missing, 3}});
    ReadReport report;
    std::istringstream in("<R x='1'><G y='1'><H z='1'/></G></R>");
    EXPECT_TRUE(Generic.check(ValidityLayout(), in, 1, nullptr, &report));
    EXPECT_EQ(Reported(report), "unknown R unknown G untaken H");
}

TEST(Validity, KeepsSoManyMessagesAndCountsTheOthers) {
    ValidityLayout const layout;
    auto const check = [&](std::size_t messages, std::size_t bytes, std::size_t entries) {
        ParameterFileValidityOptions options;
        options.m_maxMessages = messages;
        options.m_maxMessageBytes = bytes;
        ReadReport report;
        report.m_limit = entries;
        std::istringstream in("<R><G/><U/><G><A>1</A></G></R>"); // three, one and two
        Result result;
        EXPECT_FALSE(Generic.check(layout, in, options, &result, &report) || result.m_isValid);
        EXPECT_EQ(result.m_messages.size() + result.m_leftOut, 6u);
        EXPECT_EQ(report.m_entries.size() + report.m_leftOut, 6u);
        EXPECT_LE(report.m_entries.size(), entries);
        return result.m_messages.size();
    };
    EXPECT_EQ(check(6, 10'000, 100), 6u);
    EXPECT_EQ(check(5, 10'000, 2), 5u);
    EXPECT_EQ(check(0, 10'000, 0), 0u);
    EXPECT_EQ(check(6, 1, 100), 1u);
}

TEST(Validity, OfAWrittenMachineParametersFileAsksForALayoutNamedLikeItsRoot) {
    for (auto const& [root, messages] :
         {std::pair(L"R", "Wrong root tag-name."), {L"KlvrMachineParameters", ""}}) {
        ValidityLayout const layout(root);
        ParameterDatabase database(&layout);
        database.GetProfileEditor().Get(L"P").AddProfile(L"p", true);
        std::istringstream in(WriteText(MachineParameterFile<false>, database));
        Result result;
        Machine.check(layout, in, {}, &result, nullptr);
        EXPECT_EQ(Joined(result.m_messages), messages);
    }
}

TEST(Validity, OfAFileThatCannotBeReadKeepsTheMessagesOfTheResult) {
    TemporaryFolder const folder;
    Fill(folder / "broken", "<R><U/>");
    ValidityLayout const layout;
    for (CheckedFormat const& format : {Generic, Machine}) {
        for (char const* const name : {"none", "broken", ""}) {
            Result result;
            result.m_messages = {L"old"};
            ReadReport report;
            EXPECT_FALSE(format.checkFile(layout, (folder / name).wstring(), {}, &result, &report));
            EXPECT_EQ(Joined(result.m_messages), "old");
            EXPECT_FALSE(result.m_isValid || report.m_entries.empty());
            EXPECT_FALSE(format.checkPath(layout, folder / name, {}, nullptr, &report));
        }
        Fill(folder / "valid", "<R/>");
        EXPECT_TRUE(format.checkPath(layout, folder / "valid", {}, nullptr, nullptr));
    }
}
