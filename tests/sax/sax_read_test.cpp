// SPDX-License-Identifier: Apache-2.0
#include "tests/support/sax_test_support.h"

#include <zantrel/sax/read_report.h>
#include <zantrel/sax/sax_utilities.h>

#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>

using namespace KelAM::SaxUtilities;
using Zantrel::ReadReport;

namespace {

/// What the handlers of one read went through.
struct Course {
    std::string log;
    int alive = 0;
    int eventsUntilThrow = -1;

    void Note(std::string const& event) {
        if (eventsUntilThrow-- == 0) {
            throw std::runtime_error("thrown on purpose");
        }
        log += event + ' ';
    }
};

/// Notes each call under its name. An element's name tells what it does: "push", "twice", "null", "no" (not
/// taken).
class Recorder : public ISAXPersistHelper {
public:
    Recorder(Course& course, std::string name) : m_course(course), m_name(std::move(name)) {
        ++m_course.alive;
    }
    Recorder(Recorder const&) = delete;
    ~Recorder() override {
        --m_course.alive;
        m_course.log += '~' + m_name + ' ';
    }

    void SetDefaults() override { m_course.Note(m_name + ".defaults"); }
    bool HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) override {
        m_course.Note(m_name + "<" + tag + std::to_string(reader.GetDepth()) + reader.GetAncestorTag(1));
        for (char const* const name : {"a", "b"}) {
            if (tag == "twice" || (tag == "push" && *name == 'a')) {
                reader.PushHandler(new Recorder(m_course, m_name + name));
            }
        }
        if (tag == "null" || tag == "self") {
            reader.PushHandler(tag == "self" ? this : nullptr);
        }
        return tag != "no";
    }
    void HandleEndTag(std::string_view tag) override { m_course.Note(m_name + ">" + std::string(tag)); }
    void ResolveReferences(KelSAX::ISAXReader&) override { m_course.Note(m_name + ".resolve"); }
    void InitAfterLoading() override { m_course.Note(m_name + ".init"); }

private:
    Course& m_course;
    std::string m_name;
};

bool Read(std::string const& document, ISAXPersist& handler, std::size_t piece = 1000,
          ReadReport* report = nullptr) {
    PieceBuffer buffer(document, piece);
    std::istream in(&buffer);
    return ReadStream(in, handler, report);
}

/// Calls `look` when the element `tag` is handled.
void LookAt(std::string const& document, std::string const& tag,
            std::function<void(KelSAX::ISAXReader&)> const& look) {
    int looks = 0;
    ReadingHandler handler([&](std::string const& current, KelSAX::ISAXReader& reader) {
        if (current == tag) {
            look(reader);
            ++looks;
        }
        return true;
    });
    for (std::size_t const piece : {1000u, 1u}) {
        EXPECT_TRUE(Read(document, handler, piece)) << document;
    }
    EXPECT_EQ(looks, 2) << document;
}

std::vector<std::wstring> Lines(ReadReport const& report) {
    std::vector<std::wstring> lines;
    for (ReadReport::Entry const& entry : report.m_entries) {
        lines.push_back(ReadReport::Format(entry));
    }
    return lines;
}

} // namespace

TEST(Reading, CallsHandlersInTheOrderOfTheDocument) {
    using Row = std::tuple<char const*, bool, char const*>;
    for (auto const& [document, isWellFormed, log] :
         {Row{"<r/>", true, "R.defaults R<r0 R>r R.resolve R.init "},
          Row{"<r><no><y/></no></r>", true, "R.defaults R<r0 R<no1r R<y2no R>y R>no R>r R.resolve R.init "},
          Row{"<r><push><x/></push><y/></r>", true,
              "R.defaults R<r0 R<push1r Ra<x2push Ra>x R>push ~Ra R<y1r R>y R>r R.resolve R.init "},
          Row{"<push><push/></push>", true,
              "R.defaults R<push0 Ra<push1push Ra>push ~Raa R>push ~Ra R.resolve R.init "},
          Row{"<r><twice><x/></twice></r>", true,
              "R.defaults R<r0 R<twice1r Rb<x2twice Rb>x R>twice ~Rb ~Ra R>r R.resolve R.init "},
          Row{"<r><null><x><push/></x></null><y/></r>", true,
              "R.defaults R<r0 R<null1r R>null R<y1r R>y R>r R.resolve R.init "},
          Row{"<push><self><x/></self></push>", true,
              "R.defaults R<push0 Ra<self1push Ra<x2self Ra>x Ra>self R>push ~Ra R.resolve R.init "},
          Row{"<r><push><push><x/>", false,
              "R.defaults R<r0 R<push1r Ra<push2push Raa<x3push Raa>x ~Raa ~Ra "},
          Row{"<r><push/></s>", false, "R.defaults R<r0 R<push1r R>push ~Ra "},
          Row{"<r/><r/>", false, "R.defaults R<r0 R>r "}, Row{"", false, "R.defaults "}}) {
        for (std::size_t const piece : {1u, 3u, 1000u}) {
            Course course;
            Recorder root(course, "R");
            EXPECT_EQ(Read(document, root, piece), isWellFormed) << document;
            EXPECT_EQ(course.log, log) << document;
            EXPECT_EQ(course.alive, 1);
        }
    }
}

TEST(Reading, DestroysWhatIsPushedWhicheverCallThrows) {
    int thrown = 0;
    for (bool isThrown = true; isThrown; ++thrown) {
        Course course;
        Recorder root(course, "R");
        course.eventsUntilThrow = thrown;
        isThrown = false;
        try {
            EXPECT_TRUE(Read("<r><twice><push><x/></push></twice><push/></r>", root));
        } catch (std::runtime_error const& error) {
            EXPECT_STREQ(error.what(), "thrown on purpose");
            isThrown = true;
        }
        EXPECT_EQ(course.alive, 1) << thrown;
    }
    EXPECT_EQ(thrown, 14); // thirteen calls, then one read that nothing disturbs
}

TEST(Reading, GivesTheTextUpToTheFirstChildAndLeavesTheTargetWhereItIsNoValue) {
    struct Row {
        char const* document;
        wchar_t const* text;
        bool isOne = false;
    };
    for (Row const& row :
         {Row{"<r/>", L""}, Row{"<r> x </r>", L" x "}, Row{"<r>\r\n</r>", L"\n"}, Row{"<r> <c/></r>", L""},
          Row{"<r> x <c/>y</r>", L" x "}, Row{"<r>a<!-- c -->b<?p i?><![CDATA[<&]]>c</r>", L"ab<&c"},
          Row{"<r>&#x1F600;&amp;\xC3\xA4</r>", L"\U0001F600&\x00E4"}, Row{"<r>\n 1 </r>", L"\n 1 ", true},
          Row{"<r>12,5</r>", L"12,5"}}) {
        LookAt(row.document, "r", [row](KelSAX::ISAXReader& reader) {
            std::wstring value = L"old";
            double number = 1.5;
            std::int32_t integer = 7;
            bool flag = !row.isOne;
            EXPECT_TRUE(reader.ReadValue(value));
            EXPECT_EQ(value, row.text);
            EXPECT_EQ(reader.ReadValue(number), row.isOne);
            EXPECT_EQ(reader.ReadValue(integer), row.isOne);
            EXPECT_EQ(reader.ReadValue(flag), row.isOne);
            EXPECT_TRUE(number == (row.isOne ? 1.0 : 1.5) && integer == (row.isOne ? 1 : 7) && flag);
        });
    }
}

TEST(Reading, KeepsAttributesReadableBesideTheText) {
    LookAt(
        "<r xmlns='u' xmlns:p='v' p:a='&lt;x&gt;' f='false' t=' True ' n='yes'>text</r>", "r",
        [](KelSAX::ISAXReader& reader) {
            std::wstring text;
            EXPECT_TRUE(reader.ReadValue(text));
            std::map<std::string, std::string> const all = {{"xmlns", "u"}, {"xmlns:p", "v"}, {"p:a", "<x>"},
                                                            {"f", "false"}, {"t", " True "},  {"n", "yes"}};
            EXPECT_EQ(reader.GetAttributes(), all);
            std::string value = "old";
            EXPECT_FALSE(reader.ReadAttribute(value, "a"));
            EXPECT_EQ(value, "old");
            bool flag = true;
            EXPECT_TRUE(reader.ReadAttribute(flag, "f") && !flag && reader.ReadAttribute(flag, "t") && flag);
            EXPECT_FALSE(reader.ReadAttribute(flag, "n") || reader.ReadAttribute(flag, "none"));
            EXPECT_TRUE(flag && reader.ReadValue(text) && text == L"text");
        });
}

TEST(Reading, HasNoElementOutsideOfHandleTag) {
    struct Late : ISAXPersistHelper {
        void ResolveReferences(KelSAX::ISAXReader& reader) override {
            std::wstring text = L"old";
            std::int32_t number = 7;
            std::string value;
            EXPECT_FALSE(reader.ReadValue(text) || reader.ReadValue(number) ||
                         reader.ReadAttribute(value, "a"));
            EXPECT_TRUE(reader.GetAttributes().empty() && reader.GetText().empty());
            EXPECT_TRUE(reader.GetAncestorTag(0).empty() && reader.GetDepth() == 0);
            reader.PushHandler(new ISAXPersistHelper); // a leak if the reader forgot it
            isRefusing ? reader.Refuse(L"Too late.") : void();
        }
        void InitAfterLoading() override { EXPECT_FALSE(isRefusing); }
        bool isRefusing = false;
    } handler;
    ReadReport report;
    EXPECT_TRUE(Read("<r a='1'>5</r>", handler, 1000, &report));
    EXPECT_TRUE(report.m_entries.empty());
    handler.isRefusing = true;
    EXPECT_FALSE(Read("<r a='1'>5</r>", handler, 1000, &report));
    EXPECT_EQ(report.m_entries.size(), 1u);
}

TEST(Reading, HandlesNoElementWhoseTextIsBeyondTheLimit) {
    Course course;
    Recorder root(course, "R");
    ReadReport report;
    report.m_limits.m_textBytes = 15;
    EXPECT_FALSE(Read("<r>0123456789<!---->0123456789<x/></r>", root, 1000, &report));
    EXPECT_EQ(course.log, "R.defaults ");
}

TEST(Reading, EndsWhereverARefusedElementStands) {
    ReadingHandler handler([](std::string const& tag, KelSAX::ISAXReader& reader) {
        tag == "c" ? reader.Refuse(L"Not here.") : void();
        EXPECT_NE(tag, "d");
        return true;
    });
    for (char const* const document :
         {"<c><d/></c>", "<r><c></c><d/></r>", "<r><c></c ><d/></r>", "<r><a></a ><c></c><d/></r>"}) {
        EXPECT_FALSE(Read(document, handler)) << document;
    }
}

TEST(ReadReport, SaysWhatWasLostAndWhere) {
    ReadingHandler handler([](std::string const& tag, KelSAX::ISAXReader& reader) {
        std::int32_t number = 0;
        bool flag = false;
        reader.ReadAttribute(flag, "f");
        reader.KnowAttributes({"Name"});
        if (tag == "int") {
            reader.ReadValue(number);
        } else if (tag == "dropped") {
            reader.NoteDropped(L"It has no room.");
        }
        return tag != "other" && tag != "root";
    });
    std::string const document = "<root f='maybe'>\n  <int Name='n' x='1' xml:lang='e' xmlns:xsi='u' "
                                 "xsi:y=''>12.5</int>\n  <other x=''>\n    <int>" +
                                 std::string(100, '9') +
                                 "</int>\n  </other>\n  <dropped/>\n  <\xC3\xA4 f='1' f='2'/>\n</root>";
    ReadReport report;
    EXPECT_FALSE(Read(document, handler, 1000, &report));
    std::vector<std::wstring> lines = Lines(report);
    ASSERT_EQ(lines.size(), 7u);
    EXPECT_EQ(lines.back().substr(0, 2), L"7:");
    lines.pop_back();
    EXPECT_EQ(lines,
              (std::vector<std::wstring>{
                  L"1:1: The attribute f=\"maybe\" is no flag and counts as absent. (root)",
                  L"2:3: The text \"12.5\" is no 32-bit integer and was passed over. (root/int \"n\")",
                  L"2:3: The attribute x=\"1\" is not known here and was passed over. (root/int \"n\")",
                  L"3:3: The element \"other\" is not known here and was passed over. (root/other)",
                  L"4:5: The text \"" + std::wstring(80, L'9') +
                      L"...\" is no 32-bit integer and was passed over. (root/other/int)",
                  L"6:3: It has no room. (root/dropped)"}));
    EXPECT_EQ(report.m_entries[6].path, L"root");
}

TEST(ReadReport, KeepsTheCauseOfAFailureBeyondItsLimit) {
    ReadingHandler handler([](std::string const&, KelSAX::ISAXReader&) { return false; });
    ReadReport report;
    report.m_limit = 2;
    EXPECT_FALSE(Read("<r><a/><a/><a/><a/><a/></x>", handler, 1000, &report));
    EXPECT_EQ(report.m_entries.size(), 3u);
    EXPECT_EQ(report.m_leftOut, 3u);
    EXPECT_EQ(report.m_entries.back().kind, ReadReport::Kind::DocumentError);
}

TEST(ReadReport, IsSmallWhateverTheDepthAndTheNames) {
    ReadingHandler handler([](std::string const&, KelSAX::ISAXReader&) { return false; });
    std::string document = "<r>", end = "</r>";
    for (char const name : std::string("abcdefghijklmnopq")) {
        std::string const tag(name == 'b' ? 1'000 : 1, name);
        document += '<' + tag + (name == 'c' ? " uuid='" + std::string(1'000, '1') + "'>" : ">");
        end = "</" + tag + '>' + end;
    }
    ReadReport report, full;
    full.m_byteLimit = 100;
    EXPECT_TRUE(Read(document + end, handler, 1000, &report) && Read(document + end, handler, 1000, &full));
    std::wstring const cut(60, L'b'), named(60, L'1');
    EXPECT_EQ(report.m_entries.back().path,
              L"r/a/" + cut + L".../c \"" + named + L"...\"/d/e/f/g/.../j/k/l/m/n/o/p/q");
    std::wstring const& whole = report.m_entries[14].path;
    EXPECT_EQ(whole.substr(whole.size() - 23), L"d/e/f/g/h/i/j/k/l/m/n/o");
    EXPECT_TRUE(full.m_entries.size() == 1 && full.m_leftOut == 16);
    EXPECT_FALSE(Read("<r>", handler, 1000, &full));
    EXPECT_EQ(full.m_entries.back().kind, ReadReport::Kind::DocumentError);
}

TEST(ReadReport, SaysWhyADocumentCouldNotBeRead) {
    struct Broken : std::streambuf {
        int underflow() override { throw std::runtime_error("broken"); }
    } buffer;
    TemporaryFolder const folder;
    ISAXPersistHelper handler;
    ReadReport report;
    std::istream broken(&buffer), failed(nullptr);
    EXPECT_FALSE(ReadFile(folder / "none", handler, &report) || ReadFile(folder / "", handler, &report));
    EXPECT_FALSE(ReadStream(failed, handler, &report) || ReadStream(broken, handler, &report));
    EXPECT_TRUE(broken.bad());
    std::wstring const start = L"Can't open \"" + (folder / "").wstring();
    EXPECT_THAT(Lines(report),
                testing::ElementsAre(IsSentence(start + L"none\": "), IsSentence(start + L"\": "),
                                     L"The stream can't be read.", L"1:1: The stream can't be read."));
#ifndef _WIN32
    EXPECT_FALSE(ReadFile(L"/proc/self/mem", handler, &report)); // which opens, and then nothing can be read
    EXPECT_THAT(Lines(report).back(), IsSentence(L"1:1: Can't read \"/proc/self/mem\": "));
#endif
    for (ReadReport::Entry const& entry : report.m_entries) {
        EXPECT_EQ(entry.kind, ReadReport::Kind::CannotRead);
    }
}
