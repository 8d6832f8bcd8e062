// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/build_ticket/ticket_text.h"
#include "tests/layout_files/layout_formats.h"
#include "tests/support/document.h"
#include "tests/support/dump.h"
#include "tests/support/generated_layout.h"
#include "tests/support/generated_ticket.h"
#include "tests/support/small_parameter_file.h"

#include <zantrel/zantrel.h>

#include <algorithm>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

/// The formats of all documents, for tests that are about each of them. Free of the test framework, for the
/// fuzz target.
namespace TestSupport {

/// What documents of one format are read into and written from, with what it needs to live.
class Subject {
public:
    virtual ~Subject() = default;
    /// An empty one, made for the same layout.
    virtual std::unique_ptr<Subject> Fresh() const = 0;
    /// One that differs for each seed.
    virtual std::unique_ptr<Subject> Generated(unsigned seed) const = 0;
    virtual bool Read(std::istream& in, ReadReport* report = nullptr) = 0;
    virtual bool ReadFile(std::wstring const& path, ReadReport* report = nullptr) = 0;
    virtual bool Write(std::ostream& out, WriteReport* report = nullptr) const = 0;
    virtual bool WriteFile(std::wstring const& path, WriteReport* report = nullptr) const = 0;
    /// A value that can be any text.
    virtual void SetText(std::wstring const& text) = 0;
    /// Does all that a host can do. Gives what was wrong, or nothing.
    virtual std::string Use() = 0;
};

struct Format {
    char const* name;
    std::string example; ///< with each word that readers know, where it belongs
    std::unique_ptr<Subject> (*make)();
    wchar_t const* textPath; ///< of the element that has the text set by SetText
    bool settles = true;     ///< what a hostile document gave comes back the same from then on
    bool isOfValues = false; ///< and so nothing is passed over of what is written

    /// For the name of a test.
    friend void PrintTo(Format const& format, std::ostream* out) { *out << format.name; }
};

inline bool ReadText(Subject& subject, std::string const& document, ReadReport* report = nullptr) {
    std::istringstream in(document);
    return subject.Read(in, report);
}

/// The document, or nothing where it can't be written.
inline std::string WriteText(Subject const& subject) {
    std::ostringstream out;
    return subject.Write(out) ? out.str() : std::string();
}

/// What reading and writing again keeps: of a meta file the last section, for the others get types, and it
/// ends with one version more each time.
inline std::string_view Kept(std::string_view document) {
    std::size_t const begin = document.find("<PartConfigurator"), end = document.find("</PartConfigurator>");
    return begin == None ? document : Between(document, begin, end == None ? begin : end);
}

/// How many levels of nodes there are below.
inline std::size_t Depth(LayoutNode const& node) {
    std::size_t depth = 0;
    for (LayoutNode const* const child : node.m_children) {
        depth = std::max(depth, 1 + Depth(*child));
    }
    return depth;
}

/// Whether each node below names the one that it stands in, and can be asked all that a node can be asked.
inline bool AnswersQueries(ParameterLayout const& layout, LayoutNode const& node, std::size_t& patience) {
    for (LayoutNode const* const child : node.m_children) {
        std::vector<LayoutNode const*> nodes;
        std::deque<LayoutNode const*> path;
        if (patience != 0) { // each question may go through the whole tree
            --patience;
            if (layout.GetReferredNodes(child, nodes) == nodes.empty() ||
                !child->GetQueryPath(layout, path)) {
                return false;
            }
        }
        if (child->m_parent != &node || !AnswersQueries(layout, *child, patience)) {
            return false;
        }
    }
    return true;
}

/// Gives all entries the names under which machine parameters are read back.
inline void NameEntries(LayoutNode& node) {
    node.SetNodeName(node.m_isProfileList ? L"Profile" : L"Instance");
    for (LayoutNode* const child : node.m_children) {
        NameEntries(*child);
    }
}

inline std::string UseOf(ParameterDatabase& database) {
    ParameterDatabase copy(database), assigned(nullptr);
    assigned = copy;
    return WriteText(assigned) == WriteText(database) ? "" : "the copy";
}

inline std::string UseOf(ParameterLayout& layout) {
    std::size_t patience = 10;
    if (Depth(layout) > 256 || !AnswersQueries(layout, layout, patience)) {
        return "the layout's nodes";
    }
    std::vector<LayoutNode const*> nodes;
    layout.GetBuildTicketNodes(nodes);
    layout.GetBuildTicketNodesPartOverrides(nodes);
    std::set<std::wstring> names;
    layout.GetUsedPropertyNames(names);
    ParameterLayout const copy(layout);
    if (WriteText(PropertyTemplate, copy) != WriteText(PropertyTemplate, layout)) {
        return "the copy";
    }
    WriteText(MetaFile, copy);
    ParameterDatabase database(&layout), back(&layout);
    std::string const values = WriteText(database); // none where a name is no name of an element
    return values.empty() || ReadText(back, values) ? "" : "the database";
}

inline std::string UseOf(BuildTicket& ticket) {
    ParameterLayout layout;
    layout.m_partConfigurator->SetPropName(L"a");
    BuildTicket copy(ticket), converted(&layout);
    bool const isSame = Dump(copy) == Dump(ticket);
    converted.ConvertFromInternalBuildTicket(copy.GetPartOverrides());
    copy.ConvertFromInternalBuildTicket(copy.GetObjectProperties());
    copy.CleanUp();
    return isSame && Load(converted, Saved(copy)) ? "" : "the copy";
}

inline std::string UseOf(ParameterDatabaseIOFiltering&) { return ""; }

inline void SetTextOf(ParameterDatabase& database, std::wstring const& text) {
    database.GetProfileEditor().Get(L"G").Get(L"S").SetValue(text);
}
inline void SetTextOf(ParameterLayout& layout, std::wstring const& text) {
    if (layout.m_partConfigurator->Size() == 0) {
        layout.m_partConfigurator->AddNode(L"S", String, L"");
    }
    layout.m_partConfigurator->Back()->m_defaultValue = text;
}
inline void SetTextOf(BuildTicket& ticket, std::wstring const& text) {
    ticket.GetDefaults().SetValue(L"a", text);
}
inline void SetTextOf(ParameterDatabaseIOFiltering&, std::wstring const&) {}

/// A layout that has somewhere to put its translations.
struct TranslatedLayout : ParameterLayout {
    TranslatedLayout() { SetResourceDictionary(&dictionary); }
    ResourceDictionary dictionary;
};

template <class Object, auto const& Io> class SubjectOf : public Subject {
public:
    explicit SubjectOf(std::shared_ptr<ParameterLayout> layout = std::make_shared<SmallLayout>())
        : m_layout(std::move(layout)) {
        if constexpr (std::is_same_v<Object, ParameterDatabase>) {
            if (Io.hasFixedNames) {
                NameEntries(*m_layout);
            }
            m_object = std::make_unique<Object>(m_layout.get());
        } else if constexpr (std::is_same_v<Object, BuildTicket>) {
            m_object = std::make_unique<Object>(nullptr);
        } else {
            m_object = std::make_unique<Object>();
        }
    }
    std::unique_ptr<Subject> Fresh() const override { return std::make_unique<SubjectOf>(m_layout); }
    std::unique_ptr<Subject> Generated(unsigned seed) const override {
        Generator generator(seed);
        auto made = std::make_unique<SubjectOf>(generator.MakeLayout());
        if constexpr (std::is_same_v<Object, ParameterDatabase>) {
            generator.FillContent(made->m_object->GetProfileEditor());
        } else if constexpr (std::is_same_v<Object, BuildTicket>) {
            FillTicket(*made->m_object, seed, 5, 30);
        } else if constexpr (std::is_base_of_v<ParameterLayout, Object>) {
            LayoutGenerator(seed).Fill(*made->m_object, 60);
        }
        return made;
    }
    bool Read(std::istream& in, ReadReport* report) override { return Io.readStream(*m_object, in, report); }
    bool ReadFile(std::wstring const& path, ReadReport* report) override {
        return Io.readFile(*m_object, path, report);
    }
    bool Write(std::ostream& out, WriteReport* report) const override {
        return Io.writeStream(*m_object, out, report);
    }
    bool WriteFile(std::wstring const& path, WriteReport* report) const override {
        return Io.writeFile(*m_object, path, report);
    }
    void SetText(std::wstring const& text) override { SetTextOf(*m_object, text); }
    std::string Use() override { return UseOf(*m_object); }

private:
    std::shared_ptr<ParameterLayout> m_layout;
    std::unique_ptr<Object> m_object;
};

inline constexpr DocumentIo<ParameterDatabase> GenericParameters = {
    "generic parameter file", Zantrel::ReadFile,
    [](ParameterDatabase const& database, std::wstring const& path, WriteReport* report) {
        return Zantrel::WriteFile(database, path, L"", report);
    },
    Zantrel::ReadStream,
    [](ParameterDatabase const& database, std::ostream& out, WriteReport* report) {
        return Zantrel::WriteStream(database, out, {}, report);
    }};

template <bool ProfileListsOnly> KlvrProperties::WriteOptions MachineOptions() {
    KlvrProperties::WriteOptions options;
    options.m_profileListsOnly = ProfileListsOnly;
    return options;
}

template <bool ProfileListsOnly>
inline constexpr DocumentIo<ParameterDatabase> MachineParameterFile = {
    "machine parameters file",
    KlvrProperties::ReadFile,
    [](ParameterDatabase const& database, std::wstring const& path, WriteReport* report) {
        return KlvrProperties::WriteFile(database, path, MachineOptions<ProfileListsOnly>(), report);
    },
    KlvrProperties::ReadStream,
    [](ParameterDatabase const& database, std::ostream& out, WriteReport* report) {
        return KlvrProperties::WriteStream(database, out, MachineOptions<ProfileListsOnly>(), report);
    },
    true};

template <std::int32_t Version>
inline constexpr DocumentIo<BuildTicket> TicketFile = {
    "build ticket",
    [](BuildTicket& ticket, std::wstring const& path, ReadReport* report) {
        return LoadBuildTicket(path, ticket, report);
    },
    [](BuildTicket const& ticket, std::wstring const& path, WriteReport* report) {
        return SaveBuildTicket(path, ticket, InVersion(Version), report);
    },
    [](BuildTicket& ticket, std::istream& in, ReadReport* report) {
        return LoadBuildTicket(in, ticket, report);
    },
    [](BuildTicket const& ticket, std::ostream& out, WriteReport* report) {
        return SaveBuildTicket(out, ticket, InVersion(Version), report);
    }};

/// Which hosts write, with whatever they write XML with.
inline constexpr DocumentIo<ParameterDatabaseIOFiltering> FilterFile = {
    "filter file",
    [](ParameterDatabaseIOFiltering& filtering, std::wstring const& path, ReadReport* report) {
        ParameterDatabaseIOFilteringReader reader(&filtering);
        return KelAM::SaxUtilities::ReadFile(path, reader, report);
    },
    nullptr,
    [](ParameterDatabaseIOFiltering& filtering, std::istream& in, ReadReport* report) {
        ParameterDatabaseIOFilteringReader reader(&filtering);
        return KelAM::SaxUtilities::ReadStream(in, reader, report);
    },
    [](ParameterDatabaseIOFiltering const& filtering, std::ostream& out, WriteReport*) {
        out << "<F><ExportGeneralParameters>" << filtering.m_exportGeneralParameters
            << "</ExportGeneralParameters><ExportDefaultParameters>" << filtering.m_exportDefaultParameters
            << "</ExportDefaultParameters></F>";
        return true;
    }};

/// A document of a format, without its line ends.
inline std::string ExampleOf(std::string const& format) {
#ifdef ZANTREL_EXAMPLES
    static std::map<std::string, std::string> const within = {
#include ZANTREL_EXAMPLES
    };
    std::string text = within.at(format);
#else
    std::string text = ContentOf(ZANTREL_TESTS "/formats/examples/" + format + ".xml");
#endif
    std::erase(text, '\n');
    return text;
}

template <class Object, auto const& Io> std::unique_ptr<Subject> Make() {
    return std::make_unique<SubjectOf<Object, Io>>();
}

inline std::vector<Format> const& WrittenFormats() {
    static std::vector<Format> const formats = {
        {"GenericParameters", SmallFile, Make<ParameterDatabase, GenericParameters>, L"Root/G/S", true, true},
        {"MachineParameters", ExampleOf("machine_parameters"),
         Make<ParameterDatabase, MachineParameterFile<false>>,
         L"KlvrMachineParameters/Property \"G\"/Property \"S\"", true, true},
        {"MetaFile", ExampleOf("meta_file"), Make<TranslatedLayout, MetaFile>,
         L"SomeRootname/PartConfigurator/S", false},
        {"WholeMetaFile", ExampleOf("meta_file"), Make<TranslatedLayout, WholeMetaFile>,
         L"SomeRootname/PartConfigurator/S"},
        {"PropertyTemplate", ExampleOf("property_template"), Make<TranslatedLayout, PropertyTemplate>,
         L"KlvrPropertyTemplate/BuildTicket/PartOverrides/PropertyNode"},
        {"Ticket", ExampleOf("ticket"), Make<BuildTicket, TicketFile<2>>,
         L"KlvrBuildTicket/Defaults/Property", true, true},
    };
    return formats;
}

/// All forms of documents that the library writes, the schemas that they have, and what files of them are
/// called.
struct WrittenForm {
    wchar_t const* name;
    std::unique_ptr<Subject> (*make)();
    char const* schema = nullptr;
};
inline constexpr WrittenForm WrittenForms[] = {
    {L"parameters", Make<ParameterDatabase, GenericParameters>},
    {L"machine_parameters", Make<ParameterDatabase, MachineParameterFile<false>>,
     "build_processing_2016_04.xsd"},
    {L"profiles", Make<ParameterDatabase, MachineParameterFile<true>>, "build_processing_2016_04.xsd"},
    {L"meta_file", Make<ParameterLayout, MetaFile>, "layout_meta_file.rng"},
    {L"whole_meta_file", Make<ParameterLayout, WholeMetaFile>, "layout_meta_file.rng"},
    {L"template", Make<ParameterLayout, PropertyTemplate>, "build_processing_2016_04.xsd"},
    {L"ticket_1", Make<BuildTicket, TicketFile<1>>, "build_processing_2016_04.xsd"},
    {L"ticket_2", Make<BuildTicket, TicketFile<2>>, "build_processing_2017_02.xsd"},
};

/// Those, and one that the library only reads.
inline std::vector<Format> const& Formats() {
    static std::vector<Format> const formats = [] {
        std::vector<Format> all = WrittenFormats();
        all.push_back({"Filter", ExampleOf("filter"), Make<ParameterDatabaseIOFiltering, FilterFile>, L""});
        return all;
    }();
    return formats;
}

inline Format const& FormatCalled(std::string_view name) {
    return *std::find_if(Formats().begin(), Formats().end(),
                         [&](Format const& format) { return format.name == name; });
}

inline bool IsRefusal(ReadReport::Entry const& entry) {
    return entry.kind <= ReadReport::Kind::RefusedDocument;
}

/// Without the blanks that lines begin with, of which a deep document has as many as the square of its depth.
inline std::size_t SizeWithoutIndentation(std::string_view document) {
    std::size_t size = 0;
    bool isIndentation = false;
    for (char const character : document) {
        isIndentation = character == '\n' || (isIndentation && character == ' ');
        size += isIndentation ? 0 : 1;
    }
    return size;
}

/// What reading a document into a new subject and writing that gave, and what was wrong with it.
struct ReadAndWritten {
    std::unique_ptr<Subject> subject;
    bool isRead;
    std::string written, fault;
};

/// `like` is a subject of the format, which stays as it is.
inline ReadAndWritten ReadAndWrite(Subject const& like, std::string const& document) {
    ReadAndWritten once{like.Fresh(), false, "", ""};
    ReadReport report;
    once.isRead = ReadText(*once.subject, document, &report);
    if (once.isRead == std::any_of(report.m_entries.begin(), report.m_entries.end(), IsRefusal)) {
        once.fault = "the report";
    }
    once.written = WriteText(*once.subject);
    if (SizeWithoutIndentation(once.written) > 4'096 + 64 * document.size()) {
        WriteReport noted; // of profiles of one name, with which a small document is a large one
        std::ostringstream out;
        if (once.subject->Write(out, &noted) && noted.m_notes.empty()) {
            once.fault = "so much from so little";
        }
    }
    return once;
}

/// What was written must be read, and be written the same from some turn on.
inline std::string FaultOfComingBack(Format const& format, Subject const& like, std::string written) {
    if (written.empty() && !format.isOfValues) { // whose nodes may have names that not every reader takes
        return "";
    }
    for (int turn = 0; turn < 3; ++turn) { // the first may bring names and texts into their one form
        auto const back = like.Fresh();
        ReadReport again;
        if (!ReadText(*back, written, &again)) {
            bool const isTooDeep =
                !again.m_entries.empty() && again.m_entries.back().kind == ReadReport::Kind::RefusedDocument;
            return isTooDeep ? "" : "what was written";
        }
        std::string next = WriteText(*back);
        if (!format.settles || next == written) {
            return "";
        }
        written = std::move(next);
    }
    return "what was written again";
}

/// Reads the document and does with what was read all that a host can do. Gives what was wrong, or nothing.
inline std::string FaultOf(Format const& format, std::string const& document) {
    auto const like = format.make();
    ReadAndWritten const once = ReadAndWrite(*like, document);
    std::string const fault =
        once.fault.empty() ? FaultOfComingBack(format, *like, once.written) : once.fault;
    return fault.empty() ? once.subject->Use() : fault;
}

} // namespace TestSupport
