// SPDX-License-Identifier: Apache-2.0
#include "tests/support/characters.h"
#include "tests/support/sax_test_support.h"

#include <zantrel/sax/prepared_tag.h>
#include <zantrel/sax/sax_utilities.h>
#include <zantrel/sax/tag_writer.h>
#include <zantrel/sax/write_report.h>
#include <zantrel/sax/xml_namespaces.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <sstream>
#include <stdexcept>

using namespace KelAM::SaxUtilities;
using KelSAX::ISAXWriter;
using Zantrel::WriteReport;

namespace {

using Content = std::function<void(ISAXWriter&)>;

WriteOptions Root(std::string tag = "r") {
    WriteOptions options;
    options.m_rootTag = std::move(tag);
    return options;
}

WritingHandler Handler(Content const& content) {
    return WritingHandler([content](ISAXWriter& writer) {
        if (content != nullptr) {
            content(writer);
        }
        return content != nullptr;
    });
}

std::string Written(Content const& content, WriteOptions const& options = Root()) {
    std::ostringstream out;
    EXPECT_TRUE(WriteStream(out, Handler(content), options));
    return out.str();
}

std::string const Head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

/// Takes so many bytes and no more.
struct ShortBuffer : std::streambuf {
    std::string room;

    explicit ShortBuffer(std::size_t size) : room(size, ' ') { setp(room.data(), room.data() + size); }
};

} // namespace

TEST(Writing, LaysElementsOutAndEscapesWhatWouldNotComeBack) {
    std::string const text = "<&>\"'\t\n\r ]]>\x7F\xC3\xA4\xEF\xBF\xBD\xF4\x8F\xBF\xBF";
    std::pair<Content, std::string> const rows[] = {
        {[](ISAXWriter&) {}, "<r/>"},
        {[](ISAXWriter& writer) { writer.WriteValue(""); }, "<r/>"},
        {[](ISAXWriter& writer) { writer.WriteValue(L"a"), writer.WriteIntegerValue(-12); }, "<r>a-12</r>"},
        {[](ISAXWriter& writer) {
             writer.WriteDoubleValue(0.1, 17, 0);
             writer.WriteDoubleValue(-std::numeric_limits<double>::infinity(), 17, 0);
         },
         "<r>0.10000000000000001-INF</r>"},
        {[](ISAXWriter& writer) { writer.WriteAttribute("a", "1"), writer.WriteAttribute("p:b", L"\x00E4"); },
         "<r a=\"1\" p:b=\"\xC3\xA4\"/>"},
        {[&](ISAXWriter& writer) { writer.WriteAttribute("a", text), writer.WriteValue(text); },
         "<r a=\"&lt;&amp;&gt;&quot;'&#9;&#10;&#13; ]]&gt;\x7F\xC3\xA4\xEF\xBF\xBD\xF4\x8F\xBF\xBF\">"
         "&lt;&amp;&gt;\"'\t\n&#13; ]]&gt;\x7F\xC3\xA4\xEF\xBF\xBD\xF4\x8F\xBF\xBF</r>"},
        {[](ISAXWriter& writer) {
             {
                 MSAXTagWriter const outer(writer, "outer");
                 outer.GetWriter().WriteAttribute("a", "1");
                 { MSAXTagWriter const inner(writer, std::string("inner")); }
                 MSAXTagWriter const wide(writer, std::wstring_view(L"\x00E4"));
                 writer.WriteValue("text");
             }
             MSAXTagWriter const last(writer, std::string_view("last"));
         },
         "<r>\n  <outer a=\"1\">\n    <inner/>\n    <\xC3\xA4>text</\xC3\xA4>\n  </outer>\n  <last/>\n</r>"},
        {[](ISAXWriter& writer) {
             writer.WriteValue("text");
             MSAXTagWriter const mixed(writer, "b");
             MSAXTagWriter const inner(writer, "c");
         },
         "<r>text<b>\n    <c/>\n  </b></r>"},
    };
    for (auto const& [content, expected] : rows) {
        EXPECT_EQ(Written(content), Head + expected + "\n");
    }
}

TEST(Writing, TakesPreparedTagsAsItTakesTheirParts) {
    using namespace std::string_literals;
    auto const tag = [](auto name, auto... attributes) {
        KelSAX::PreparedTag prepared(name);
        (prepared.AddAttribute(attributes, attributes), ...);
        return prepared;
    };
    auto many = tag("many");
    for (int each = 0; each < 20; ++each) {
        many.AddAttribute("a" + std::to_string(each), "<&>\"'\t\n\r");
    }
    auto lone = tag(L"\x00E4");
    lone.AddAttribute("a", L"\xD800");
    auto own = tag("a_name_that_is_longer_than_a_short_string");
    own.AddAttribute(own.Name(), own.Name());
    own.AddAttribute("b", own.Attributes().front().value);
    EXPECT_EQ(own.Start(), "<" + std::string(own.Name()) + " " + std::string(own.Name()) + "=\"" +
                               std::string(own.Name()) + "\" b=\"" + std::string(own.Name()) + "\"");
    // What the two ways write into so many elements: as one text, or why they can't.
    auto const outcome = [](bool asParts, KelSAX::PreparedTag const& prepared, std::string const& text,
                            int depth) {
        auto const open = [&](ISAXWriter& writer) {
            asParts ? writer.ISAXWriter::OpenPrepared(prepared) : writer.OpenPrepared(prepared);
        };
        auto const leaf = [&](ISAXWriter& writer, auto const& write, auto const& writeValue) {
            asParts ? (open(writer), writeValue(), writer.CloseElement()) : write();
        };
        Content const content = [&](ISAXWriter& writer) {
            for (int level = 0; level < depth; ++level) {
                writer.OpenElement("d");
                writer.WriteAttribute("last", "1");
            }
            leaf(
                writer, [&] { writer.WriteLeaf(prepared, text); }, [&] { writer.WriteValue(text); });
            open(writer);
            writer.WriteAttribute("last", "1");
            leaf(
                writer, [&] { writer.WriteIntegerLeaf(prepared, 7); }, [&] { writer.WriteIntegerValue(7); });
            writer.WriteValue(text);
            leaf(
                writer, [&] { writer.WriteDoubleLeaf(prepared, 0.1, 17); },
                [&] { writer.WriteDoubleValue(0.1, 17, 0); });
            for (int level = 0; level <= depth; ++level) {
                writer.CloseElement();
            }
        };
        std::ostringstream out;
        WriteReport report;
        bool const isWritten = WriteStream(out, Handler(content), Root(), &report);
        return isWritten ? StringConversion::Utf8ToNative(out.str()) : report.Format();
    };
    for (auto const& prepared :
         {tag("plain"), tag("two", "a", "b"), many, lone, tag("1a", "b"), tag(L"", "1b"),
          tag("twice", "a", "a"), tag("late", "last"), tag("none", "\x01"), own, tag(std::string(29, 't')),
          tag(std::string(31, 't')), tag(std::string(64, 't'), "a"), tag(std::string(70000, 't'))}) {
        for (std::string const& text : {"x"s, ""s, "<&\xC3\xA4"s, "\x01"s, std::string(300000, 'x')}) {
            for (int const depth : {0, 31, 32}) {
                EXPECT_TRUE(outcome(false, prepared, text, depth) == outcome(true, prepared, text, depth));
            }
        }
        for (int const depth : {1022, 1023}) {
            EXPECT_EQ(outcome(false, prepared, "x", depth), outcome(true, prepared, "x", depth));
        }
    }
}

TEST(Writing, BringsEveryCharacterOfXmlBack) {
    std::string const text = " " + StringConversion::NativeToUtf8(TestSupport::AllCharacters()) + " ";
    std::istringstream in(
        Written([&](ISAXWriter& writer) { writer.WriteAttribute("a", text), writer.WriteValue(text); }));
    std::string attribute, value;
    ReadingHandler handler([&](std::string const&, KelSAX::ISAXReader& reader) {
        value = reader.GetText();
        return reader.ReadAttribute(attribute, "a");
    });
    EXPECT_TRUE(ReadStream(in, handler) && attribute == text && value == text);
}

TEST(Writing, PutsTheOptionsOnTheRoot) {
    WriteOptions options = Root();
    options.m_firstHeaderText = L"first & \x00E4";
    options.m_secondHeaderText = L"second";
    options.m_namespaces = {{L"", L"u&v"}, {L"p", L"w"}};
    options.m_schemaFile = L"/a b/c.xsd";
    EXPECT_EQ(Written([](ISAXWriter&) {}, options),
              Head + "<!-- first & \xC3\xA4 -->\n<!-- second -->\n<r xmlns=\"u&amp;v\" xmlns:p=\"w\"/>\n");
    options = Root();
    options.m_schemaFile = L"/a b/c.xsd";
    options.m_schemaNamespace = L"u";
    EXPECT_EQ(Written([](ISAXWriter&) {}, options),
              Head + "<r xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" xsi:schemaLocation=\"u "
                     "/a%20b/c.xsd\"/>\n");
}

TEST(Writing, FailsOnWhatXmlCannotCarryAndLeavesTheOldFile) {
    auto const value = [](std::string const& text) -> Content {
        return [text](ISAXWriter& writer) {
            MSAXTagWriter const tag(writer, "a");
            writer.WriteValue(text);
        };
    };
    auto const tag = [](auto name) -> Content {
        return [name](ISAXWriter& writer) { MSAXTagWriter const opened(writer, name); };
    };
    auto const repeated = [](int number, int among) -> Content {
        return [number, among](ISAXWriter& writer) {
            for (int each = 0; each <= among; ++each) {
                writer.WriteAttribute("a" + std::to_string(each < among ? each : number), "1");
            }
        };
    };
    std::pair<Content, wchar_t const*> const rows[] = {
        {value(std::string("x\0", 2)), L"XML can't carry the character U+0000. (r/a)"},
        {value("12345678\x1F"), L"XML can't carry the character U+001F. (r/a)"},
        {value("\xEF\xBF\xBE"), L"XML can't carry the character U+FFFE. (r/a)"},
        {value("\xC3("), L"The text \"\xFFFD(\" has a lone surrogate or is no UTF-8. (r/a)"},
        {[](ISAXWriter& writer) { writer.WriteValue(L"ab\xD800"); },
         L"The text \"ab\xFFFD\xFFFD\xFFFD\" has a lone surrogate or is no UTF-8. (r)"},
        {[](ISAXWriter& writer) { writer.WriteAttribute("a", "\x01"); },
         L"XML can't carry the character U+0001. (r)"},
        {tag("1a"), L"\"1a\" is no name that every XML reader takes. (r)"},
        {tag(static_cast<char const*>(nullptr)), L"\"\" is no name that every XML reader takes. (r)"},
        {tag(std::wstring_view(L"\xD800")),
         L"\"\xFFFD\xFFFD\xFFFD\" is no name that every XML reader takes. (r)"},
        {[](ISAXWriter& writer) { writer.WriteAttribute("a b", "1"); },
         L"\"a b\" is no name that every XML reader takes. (r)"},
        {repeated(0, 1), L"The attribute \"a0\" is given twice. (r)"},
        {repeated(0, 30), L"The attribute \"a0\" is given twice. (r)"},
        {repeated(29, 30), L"The attribute \"a29\" is given twice. (r)"},
        {[](ISAXWriter& writer) { writer.WriteValue(""), writer.WriteAttribute("a", "1"); },
         L"The attribute \"a\" comes after the element's content. (r)"},
        {[&](ISAXWriter& writer) { tag("c")(writer), writer.WriteAttribute("a", "1"); },
         L"The attribute \"a\" comes after the element's content. (r)"},
        {[](ISAXWriter& writer) { writer.CloseElement(), writer.WriteValue("x"); },
         L"The handler closed an element that it had not opened. (r)"},
        {[](ISAXWriter& writer) { writer.OpenElement("open"); },
         L"The handler left an element open. (r/open)"},
        {nullptr, L"The handler refused to write. (r)"},
        {[&](ISAXWriter& writer) { tag("a")(writer), throw std::runtime_error("thrown on purpose"); }, L""},
    };
    TemporaryFolder const folder;
    Fill(folder / "a", "old");
    WriteReport report;
    for (auto const& [content, reason] : rows) {
        try {
            EXPECT_FALSE(WriteFile(folder / "a", Handler(content), Root(), &report));
        } catch (std::runtime_error const& error) {
            EXPECT_STREQ(error.what(), "thrown on purpose");
        }
        EXPECT_EQ(report.Format(), reason);
        EXPECT_EQ(ContentOf(folder / "a"), "old");
        EXPECT_EQ(folder.CountEntries(), 1);
    }
    report.m_notes = {L"a", L"b"};
    EXPECT_EQ(report.Format(), L"a\nb");
}

TEST(Writing, GoesAsDeepAsCanBeReadAgain) {
    for (int const depth : {1023, 1024}) { // below the root
        std::stringstream document;
        auto const handler = Handler([depth](ISAXWriter& writer) {
            for (int level = 0; level < depth; ++level) {
                writer.OpenElement("a");
            }
            for (int level = 0; level < depth; ++level) {
                writer.CloseElement();
            }
        });
        ISAXPersistHelper reader;
        EXPECT_EQ(WriteStream(document, handler, Root()), depth == 1023);
        EXPECT_EQ(document.str().find("\n" + std::string(2046, ' ') + "<a/>\n") != std::string::npos,
                  depth == 1023);
        EXPECT_EQ(ReadStream(document, reader), depth == 1023);
    }
}

TEST(Writing, FailsOnOptionsThatMakeNoDocument) {
    std::vector<WriteOptions> rows(6, Root());
    rows[0].m_rootTag = "";
    rows[1].m_rootTag = "a b";
    rows[2].m_firstHeaderText = L"a--b";
    rows[3].m_secondHeaderText = L"\x01";
    rows[4].m_namespaces = {{L"p", L""}};
    rows[5].m_namespaces = {{L"", L"u"}, {L"", L"v"}};
    for (WriteOptions const& options : rows) {
        std::ostringstream out;
        Content const uncalled = [](ISAXWriter&) { ADD_FAILURE() << "called"; };
        EXPECT_FALSE(WriteStream(out, Handler(uncalled), options));
    }
}

TEST(Writing, NoticesAtWhicheverByteAStreamFails) {
    Content const content = [](ISAXWriter& writer) { writer.WriteValue(std::string(600000, 'x')); };
    std::size_t const size = Written(content).size();
    for (std::size_t const room : {std::size_t(0), size / 2, size - 1, size, size + 1}) {
        ShortBuffer buffer(room);
        std::ostream out(&buffer);
        WriteReport report;
        EXPECT_EQ(WriteStream(out, Handler(content), Root(), &report), room >= size) << room;
        EXPECT_EQ(out.bad(), room < size);
        EXPECT_EQ(report.Format(), room < size ? L"The stream can't be written." : L"");
    }
}

TEST(Namespaces, AreReplacedByLaterDeclarations) {
    XMLNamespaceHandler handler;
    handler.UpdateNamespaces(
        {{"xmlns", "u"}, {"xmlns:p", "v"}, {"xmlns-no", "w"}, {"p:a", "x"}, {"xmlnsq", "y"}});
    handler.UpdateNamespaces({{"xmlns:p", "\xC3\xA4"}});
    using Row = std::tuple<std::string, char const*, std::optional<std::wstring>>;
    for (auto const& [tag, expected, uri] :
         {Row{"a", "a", L"u"}, Row{"p:a", "a", L"\x00E4"}, Row{"p:a:b", "a:b", L"\x00E4"},
          Row{":a", "a", L"u"}, Row{"q:a", "a", {}}, Row{"-no:a", "a", {}}, Row{"", "", L"u"}}) {
        std::string_view localName;
        Namespace found(L"old", L"old");
        EXPECT_EQ(handler.ResolveTag(tag, localName, &found), uri.has_value()) << tag;
        EXPECT_EQ(localName, expected) << tag;
        EXPECT_EQ(found.m_uri, uri.value_or(L"old")) << tag;
        EXPECT_TRUE(handler.ResolveTag(tag, localName, nullptr));
    }
}

TEST(Namespaces, ReferToASchemaWhenTheOlderFileIsThereAndThrowWhereThatCannotBeTold) {
    using namespace Zantrel::XML_namespaces;
    TemporaryFolder const folder;
    Fill(folder / "here", "");
    std::wstring const here = (folder / "here").wstring();
    std::wstring const gone = (folder / "gone").wstring();
    std::array<std::wstring, 4> const rows[] = {
        {here, gone, m_namespace_build_processors_2016_04, here},
        {here, gone, m_namespace_build_processors_2017_02, gone}, // required: the older file decides for both
        {gone, here, m_namespace_build_processors_2016_04, L""},
        {gone, here, m_namespace_build_processors_2017_02, L""},
        {L"", here, m_namespace_build_processors_2017_02, L""},
        {here, here, m_namespace_profiles_meta, L""},
    };
    for (auto const& [older, newer, uri, schemaFile] : rows) {
        m_local_schema_file_build_processors_2016_04 = older;
        m_local_schema_file_build_processors_2017_02 = newer;
        WriteOptions options;
        Zantrel::AddBuildProcessingNamespace(options, uri);
        EXPECT_EQ(options.m_namespaces.back().m_prefix + options.m_namespaces.back().m_uri, uri);
        EXPECT_EQ(options.m_schemaFile, schemaFile);
        EXPECT_EQ(options.m_schemaNamespace, schemaFile.empty() ? L"" : uri);
    }
#ifndef _WIN32 // where such a name is simply none
    m_local_schema_file_build_processors_2016_04 = std::wstring(5000, L'x');
    WriteOptions options;
    EXPECT_THAT([&] { Zantrel::AddBuildProcessingNamespace(options, m_namespace_build_processors_2016_04); },
                testing::Throws<std::filesystem::filesystem_error>(
                    testing::Property(&std::exception::what, testing::HasSubstr("exists"))));
#endif
    m_local_schema_file_build_processors_2016_04.clear();
    m_local_schema_file_build_processors_2017_02.clear();
}
