// SPDX-License-Identifier: Apache-2.0
#include "documents.h"

#include "records.h"

#include <zantrel/editing/schema.h>
#include <zantrel/editing/validation.h>
#include <zantrel/layout_files/meta_file.h>
#include <zantrel/layout_files/property_template.h>
#include <zantrel/parameter_files/generic_parameter_file.h>
#include <zantrel/parameter_files/machine_parameters_file.h>
#include <zantrel/parameter_files/parameter_file_validity.h>
#include <zantrel/parameter_files/value_edit.h>
#include <zantrel/sax/sax_reader.h>
#include <zantrel/sax/sax_utilities.h>
#include <zantrel/text/string_conversion.h>

#include <sstream>
#include <utility>

namespace ZantrelPython {

using namespace Zantrel;

namespace {

// Each function here has two halves. What takes time runs without the interpreter's lock, and so touches
// nothing of Python's, not even a count of references; what it has found is told afterwards, as exceptions,
// warnings and records.

constexpr wchar_t const* MachineRoot = L"KlvrMachineParameters";
constexpr wchar_t const* TemplateRoot = L"KlvrPropertyTemplate";

/// Ends the read at the root, so that a file of any size is told at once.
class RootReader : public ISAXPersistHelper {
public:
    bool HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) override {
        std::string_view name;
        KelAM::SaxUtilities::XMLNamespaceHandler().ResolveTag(tag, name, nullptr);
        m_root = StringConversion::Utf8ToNative(name);
        reader.Refuse(L"Only the root is wanted");
        return true;
    }
    std::wstring m_root;
};

bool FindRoot(Document const& document, std::wstring& root, ReadReport& report) {
    RootReader reader;
    ReadDocument(
        document,
        [&](std::wstring const& path) { return KelAM::SaxUtilities::ReadFile(path, reader, &report); },
        [&](std::istream& in) { return KelAM::SaxUtilities::ReadStream(in, reader, &report); });
    root = reader.m_root;
    if (!root.empty()) {
        report = ReadReport(); // of its own ending
    }
    return !root.empty();
}

bool ReadValues(ParameterDatabase& database, Document const& document, bool isMachine, ReadReport* report) {
    return ReadDocument(
        document,
        [&](std::wstring const& path) {
            return isMachine ? KlvrProperties::ReadFile(database, path, report)
                             : ReadFile(database, path, report);
        },
        [&](std::istream& in) {
            return isMachine ? KlvrProperties::ReadStream(database, in, report)
                             : ReadStream(database, in, report);
        });
}

/// The document's format, where nobody says it, and that its root is one of the layout's: a reader takes any
/// root, and would take nothing of what stands in most.
struct Sort {
    bool isRead = false;
    bool isMachine = false;
    std::wstring strange; ///< why it is no parameter file of the layout
};

// A property template doesn't say what the root of its parameter files is called, so that any will do there.
Sort SortOf(Document const& document, LayoutHandle const& layout, std::wstring const& format,
            ReadReport& report) {
    Sort sort;
    std::wstring root;
    sort.isRead = FindRoot(document, root, report);
    sort.isMachine = format == L"machine" || (format.empty() && root == MachineRoot);
    std::wstring const& wanted = sort.isMachine ? MachineRoot : layout.Get().m_name;
    if (sort.isRead && root != wanted && (sort.isMachine || !layout.m_isOfTemplate)) {
        sort.strange = L"no parameter file of this layout: its root is called \"" + root + L"\", and not \"" +
                       wanted + L'"';
    }
    return sort;
}

/// What is wrong with a document, found without the interpreter's lock.
struct DocumentCheck {
    Sort sort;
    bool isRead = false;
    ReadReport report; ///< of the structure
    std::vector<Editing::Finding> findings;
    std::vector<ValuePlace> places; ///< of the findings

    void Run(ParameterLayout const& layout, Document const& document, LayoutHandle const& handle) {
        ReadLimits const limits = report.m_limits; // which looking for the root empties with all else
        sort = SortOf(document, handle, L"", report);
        report.m_limits = limits;
        if (!sort.isRead || !sort.strange.empty()) {
            return;
        }
        ParameterFileValidityResult result;
        isRead = ReadDocument(
            document,
            [&](std::wstring const& path) {
                return sort.isMachine
                           ? KlvrProperties::IsValidParameterFile(layout, path, {}, &result, &report)
                           : IsValidParameterFile(layout, path, {}, &result, &report);
            },
            [&](std::istream& in) {
                return sort.isMachine
                           ? KlvrProperties::IsValidParameterStream(layout, in, {}, &result, &report)
                           : IsValidParameterStream(layout, in, {}, &result, &report);
            });
        // False means a document that can't be read or one that doesn't fit; only the latter has messages.
        isRead = isRead || !result.m_messages.empty();
        // Once more for the values, and without a report: what doesn't fit is told by now.
        ParameterDatabase database(&layout);
        isRead = isRead && ReadValues(database, document, sort.isMachine, nullptr);
        findings = Editing::Validate(database);
        if (!document.bytes) {
            FindPlaces(layout, document.path);
        }
    }

    void FindPlaces(ParameterLayout const& layout, std::wstring const& path) {
        std::vector<std::wstring> paths;
        for (Editing::Finding const& finding : findings) {
            paths.push_back(finding.path);
        }
        places = sort.isMachine ? KlvrProperties::FindValuePlaces(layout, path, paths)
                                : FindValuePlaces(layout, path, paths);
    }
};

void RequireFormat(std::wstring const& format, wchar_t const* one, wchar_t const* other) {
    if (!format.empty() && format != one && format != other) {
        RaiseValueError(L"a format is \"" + std::wstring(one) + L"\" or \"" + other + L"\", not \"" + format +
                        L'"');
    }
}

/// Writes to a file, or gives the bytes where there is no path. `report` carries
/// what the host allows.
template <class ToFile, class ToStream>
py::object SaveDocument(std::optional<FilePath> const& path, WriteReport report, ToFile toFile,
                        ToStream toStream) {
    std::ostringstream out;
    bool isWritten = false;
    {
        Unlocked const unlocked;
        isWritten = path ? toFile(path->value, &report) : toStream(out, &report);
    }
    TellWritten(isWritten, path ? path->value : L"", report);
    return path ? py::object(py::none()) : py::object(py::bytes(out.str()));
}

[[noreturn]] void RaiseTypeError(std::wstring const& what, char const* wanted, py::handle value) {
    throw py::type_error(py::cast<std::string>(StrOf(what)) + " must be " + wanted + ", not " +
                         Py_TYPE(value.ptr())->tp_name);
}

/// Of a Python int. TypeError for what is none, ValueError for one below 0 or of more than 64 bits.
std::uint64_t CountOf(py::handle value, std::wstring const& what) {
    if (PyIndex_Check(value.ptr()) == 0) {
        RaiseTypeError(what, "int", value);
    }
    auto const number = py::reinterpret_steal<py::object>(PyNumber_Index(value.ptr()));
    unsigned long long const count = number ? PyLong_AsUnsignedLongLong(number.ptr()) : 0;
    if (PyErr_Occurred() != nullptr) {
        if (PyErr_ExceptionMatches(PyExc_OverflowError) == 0) {
            throw py::error_already_set();
        }
        PyErr_Clear();
        RaiseValueError(what + L" is a number from 0 to 2^64 - 1");
    }
    return count;
}

bool FlagOf(py::handle value, std::wstring const& what) {
    if (!PyBool_Check(value.ptr())) {
        RaiseTypeError(what, "bool", value);
    }
    return value.is(py::bool_(true));
}

bool DeclaresNothing(ParameterLayout const& layout) {
    return layout.m_profileEditor->Size() == 0 && layout.m_platformOptions->Size() == 0 &&
           layout.m_partOptions->Size() == 0 && layout.m_partConfigurator->Size() == 0;
}

} // namespace

NotesList::NotesList(py::object const& list) : py::object(list) {
    if (!is_none() && !py::hasattr(*this, "extend")) {
        RaiseTypeError(L"notes", "a list", *this);
    }
}

ReadLimits LimitsOf(py::object const& limits) {
    static constexpr struct {
        wchar_t const* name;
        std::uint64_t ReadLimits::*field;
    } fields[] = {{L"bytes", &ReadLimits::m_bytes},
                  {L"text_bytes", &ReadLimits::m_textBytes},
                  {L"elements", &ReadLimits::m_elements},
                  {L"depth", &ReadLimits::m_depth},
                  {L"list_items", &ReadLimits::m_listItems},
                  {L"profiles", &ReadLimits::m_profiles},
                  {L"report_bytes", &ReadLimits::m_reportBytes}};
    ReadLimits read;
    if (limits.is_none()) {
        return read;
    }
    for (auto const& [key, value] : py::dict(limits)) {
        std::wstring const name = WideOf(py::str(key));
        std::wstring const what = L"the limit \"" + name + L'"';
        bool isKnown = name == L"refuses_same_profiles";
        if (isKnown) {
            read.m_refusesSameProfiles = FlagOf(value, what);
        }
        for (auto const& row : fields) {
            if (name == row.name) {
                read.*row.field = CountOf(value, what);
                isKnown = true;
            }
        }
        if (!isKnown) {
            RaiseValueError(L"there is no limit \"" + name + L'"');
        }
    }
    return read;
}

std::wstring RootOf(Document const& document) {
    std::wstring root;
    ReadReport report;
    bool isRead = false;
    {
        Unlocked const unlocked;
        isRead = FindRoot(document, root, report);
    }
    // Without options nobody has a list for notes, and a root alone makes none to warn of.
    TellRead(isRead, document, report, {});
    return root;
}

py::list TellRead(bool isRead, Document const& document, ReadReport const& report,
                  ReadOptions const& options) {
    py::list const notes = NotesOf(report);
    if (!isRead) {
        ReadReport::Entry const last =
            report.m_entries.empty() ? ReadReport::Entry() : report.m_entries.back();
        if (last.error) {
            RaiseFileError(document.path, last.sentence, last.error);
        }
        Raise("ReadError", StrOf(NameOf(document) + L':' + ReadReport::Format(last)), notes);
    }
    if (!options.notes.is_none()) {
        options.notes.attr("extend")(notes);
    } else if (notes.size() != 0) {
        Warn("PassedOver", StrOf(NameOf(document) + L": " + std::to_wstring(notes.size()) +
                                 (notes.size() == 1 ? L" note" : L" notes") + L" of the read, the first: " +
                                 WideOf(py::str(notes[0]))));
    }
    return notes;
}

void TellWritten(bool isWritten, std::wstring const& path, WriteReport const& report) {
    // A full disk or a missing right is OSError, as everywhere in Python; all else lies in the values.
    if (report.m_error) {
        RaiseFileError(path, report.m_sentence, report.m_error);
    }
    if (!isWritten) {
        Raise("WriteError", StrOf(report.Format()));
    }
    for (std::wstring const& note : report.m_notes) {
        Warn("PassedOver", StrOf(path + L": " + note));
    }
}

std::shared_ptr<LayoutHandle> ReadLayout(Document const& document, ReadOptions const& options) {
    auto handle = std::make_shared<LayoutHandle>(std::make_unique<ParameterLayout>());
    ReadReport report;
    report.m_limits = options.limits;
    bool isRead = false;
    std::wstring root;
    {
        ParameterLayout& layout = handle->Change();
        Unlocked const unlocked;
        if (FindRoot(document, root, report)) {
            report.m_limits = options.limits;
            bool const isTemplate = root == TemplateRoot;
            isRead = ReadDocument(
                document,
                [&](std::wstring const& path) {
                    return isTemplate ? KlvrPropertyTemplate::ReadWholeFile(layout, path, &report)
                                      : ReadWholeFile(layout, path, &report);
                },
                [&](std::istream& in) {
                    return isTemplate ? KlvrPropertyTemplate::ReadWholeStream(layout, in, &report)
                                      : ReadWholeStream(layout, in, &report);
                });
        }
    }
    handle->m_isOfTemplate = root == TemplateRoot;
    handle->m_path = document.path;
    handle->m_notes = TellRead(isRead, document, report, options);
    return handle;
}

// Both readers take documents of any root, such as a parameter file, and find nothing in them. That would
// show only later, as unknown names, so it is said here.
std::shared_ptr<LayoutHandle> LoadLayout(Document const& document, ReadOptions const& options) {
    auto handle = ReadLayout(document, options);
    if (DeclaresNothing(handle->Get())) {
        Raise("ReadError", StrOf(NameOf(document) + L" is no layout: it declares no parameters"));
    }
    return handle;
}

void ReadInto(DatabaseHandle& database, Document const& document, ReadOptions const& options) {
    RequireFormat(options.format, L"generic", L"machine");
    ReadReport report;
    bool isRead = false;
    Sort sort;
    {
        Busy const busy(database);
        Unlocked const unlocked;
        sort = SortOf(document, *database.Layout(), options.format, report);
        report.m_limits = options.limits;
        isRead = sort.isRead && sort.strange.empty() && ReadValues(*busy, document, sort.isMachine, &report);
    }
    if (!sort.strange.empty()) {
        Raise("ReadError", StrOf(NameOf(document) + L" is " + sort.strange));
    }
    // Behind what may raise, so that a read that failed leaves what is known of the one before it.
    database.m_notes = TellRead(isRead, document, report, options);
    database.m_format = sort.isMachine ? L"machine" : L"generic";
    database.m_path = document.path;
}

std::shared_ptr<DatabaseHandle> LoadDatabase(std::shared_ptr<LayoutHandle> const& layout,
                                             Document const& document, ReadOptions const& options) {
    auto database = std::make_shared<DatabaseHandle>(layout);
    {
        Unlocked const unlocked;
        database->Fill();
    }
    ReadInto(*database, document, options);
    return database;
}

py::object SaveLayout(std::shared_ptr<LayoutHandle> const& handle, std::optional<FilePath> const& path,
                      std::wstring const& format) {
    RequireFormat(format, L"meta", L"template");
    LayoutUse const layout(handle);
    bool const isTemplate = format == L"template";
    KlvrPropertyTemplate::WriteOptions everything; // by its default the format has profile lists only
    everything.m_profileListsOnly = false;
    return SaveDocument(
        path, WriteReport(),
        [&](std::wstring const& to, WriteReport* report) {
            return isTemplate ? KlvrPropertyTemplate::WriteFile(*layout, to, everything, report)
                              : WriteWholeFile(*layout, to, report);
        },
        [&](std::ostream& out, WriteReport* report) {
            return isTemplate ? KlvrPropertyTemplate::WriteStream(*layout, out, everything, report)
                              : WriteWholeStream(*layout, out, report);
        });
}

py::object SaveSchema(std::shared_ptr<LayoutHandle> const& handle, std::optional<FilePath> const& path) {
    LayoutUse const layout(handle);
    return SaveDocument(
        path, WriteReport(),
        [&](std::wstring const& to, WriteReport* report) {
            return Editing::WriteSchema(*layout, to, report);
        },
        [&](std::ostream& out, WriteReport* report) { return Editing::WriteSchema(*layout, out, report); });
}

py::object SaveDatabase(DatabaseHandle& handle, std::optional<FilePath> const& path,
                        std::wstring const& format, bool mayWriteInPlace) {
    RequireFormat(format, L"generic", L"machine");
    bool const isMachine = (format.empty() ? handle.m_format : format) == L"machine";
    KlvrProperties::WriteOptions everything; // likewise
    everything.m_profileListsOnly = false;
    WriteReport leave;
    leave.m_mayWriteInPlace = mayWriteInPlace;
    Busy const database(handle);
    return SaveDocument(
        path, leave,
        [&](std::wstring const& to, WriteReport* report) {
            return isMachine ? KlvrProperties::WriteFile(*database, to, everything, report)
                             : WriteFile(*database, to, L"", report);
        },
        [&](std::ostream& out, WriteReport* report) {
            return isMachine ? KlvrProperties::WriteStream(*database, out, everything, report)
                             : WriteStream(*database, out, {}, report);
        });
}

py::list Check(std::shared_ptr<LayoutHandle> const& handle, Document const& document,
               ReadLimits const& limits) {
    // Sentences of the structure and of the values come in one list, since who checks a file asks for both; a
    // structure that is wrong is an error, whatever the reader made of it.
    LayoutUse const layout(handle);
    DocumentCheck check;
    check.report.m_limits = limits;
    {
        Unlocked const unlocked;
        check.Run(*layout, document, *handle);
    }
    if (!check.sort.strange.empty()) {
        Raise("ReadError", StrOf(NameOf(document) + L" is " + check.sort.strange));
    }
    py::list told, structure;
    ReadOptions options;
    options.notes = structure;
    TellRead(check.isRead, document, check.report, options);
    for (py::handle const note : structure) {
        told.append(TypeNamed("Finding")(note.attr("kind"), "error", note.attr("path"), "", "",
                                         note.attr("sentence"), note.attr("line"), note.attr("column")));
    }
    check.places.resize(check.findings.size()); // none of a pipe, nor of a file that is gone by now
    for (std::size_t i = 0; i < check.findings.size(); ++i) {
        told.append(RecordOf(check.findings[i], check.places[i].line, check.places[i].column));
    }
    return told;
}

bool EditTexts(std::shared_ptr<LayoutHandle> const& handle, std::wstring const& path,
               std::wstring const& format, py::dict const& texts) {
    std::vector<ValueText> values;
    for (auto const& [at, text] : texts) {
        values.push_back({WideOf(at), WideOf(text)});
    }
    LayoutUse const layout(handle);
    WriteReport report;
    bool isWritten = false;
    {
        Unlocked const unlocked;
        isWritten = format == L"machine"
                        ? KlvrProperties::EditValueTexts(*layout, path, values, path, &report)
                        : EditValueTexts(*layout, path, values, path, &report);
    }
    // Where the document doesn't let it be done, writing it anew does. Where the file failed, that would
    // fail, too, and not before it has warned of comments that it ends.
    if (isWritten || report.m_error) {
        TellWritten(isWritten, path, report);
    }
    return isWritten;
}

} // namespace ZantrelPython
