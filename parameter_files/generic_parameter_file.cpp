// SPDX-License-Identifier: Apache-2.0
#include <zantrel/parameter_files/generic_parameter_file.h>

#include "parameter_files/parameter_node_read.h"
#include "parameter_files/parameter_node_write.h"
#include "parameter_files/repeated_profiles.h"
#include "parameter_files/vocabulary.h"
#include "sax/document_options.h"

#include <zantrel/layout/parameter_layout.h>
#include <zantrel/sax/sax_utilities.h>
#include <zantrel/text/string_conversion.h>

// What is hidden is settled here and not in the handlers, so that a host that drives a read itself finds its
// flags as they were.

namespace Zantrel {

namespace {

/// The choice in the file, or that of no filter: a write never fails for its filter's sake.
ParameterDatabaseIOFiltering ReadFilter(std::wstring const& path) {
    ParameterDatabaseIOFiltering filtering;
    if (!path.empty()) {
        ParameterDatabaseIOFilteringReader reader(&filtering);
        KelAM::SaxUtilities::ReadFile(path, reader); // one that can't be read filters nothing
    }
    return filtering;
}

/// A file without general parameters was written with them hidden. After the read and not before it, since a
/// file that has them leaves the flag as it was unless it says otherwise.
void HideGeneralIfMissing(ParameterDatabase& database, ParameterNodeRead const& handler) {
    ParameterNode const editor = database.GetProfileEditor();
    if (!handler.HasMetGenericParameters() && editor.IsValid()) {
        ParameterNode general = editor.Get(editor.m_pNode->GetNode(ParameterFileWord::GenericParameters));
        if (general.IsValid()) {
            general.SetHidden(true);
        }
    }
}

KelAM::SaxUtilities::WriteOptions DocumentOf(ParameterDatabase const& database) {
    ParameterLayout const* const layout = database.GetLayout();
    return Sax::DocumentOptions(layout != nullptr ? StringConversion::NativeToUtf8(layout->m_name)
                                                  : std::string());
}

} // namespace

// A read that fails hides nothing: the document may have ended before its general parameters came.
bool ReadFile(ParameterDatabase& database, std::wstring const& path, ReadReport* report) {
    ParameterNodeRead handler(database.GetProfileEditor());
    if (!KelAM::SaxUtilities::ReadFile(path, handler, report)) {
        return false;
    }
    HideGeneralIfMissing(database, handler);
    return true;
}

bool ReadStream(ParameterDatabase& database, std::basic_istream<char>& in, ReadReport* report) {
    ParameterNodeRead handler(database.GetProfileEditor());
    if (!KelAM::SaxUtilities::ReadStream(in, handler, report)) {
        return false;
    }
    HideGeneralIfMissing(database, handler);
    return true;
}

ISAXPersist* _CreateSaxHandlerForReading(ParameterDatabase& database) {
    return new ParameterNodeRead(database.GetProfileEditor());
}

bool WriteFile(ParameterDatabase const& database, std::wstring const& path, std::wstring const& filterPath,
               WriteReport* report) {
    std::vector<std::wstring> notes;
    ParameterNodeWrite const handler(database.GetProfileEditor(), ReadFilter(filterPath), &notes);
    return ConcludeWrite(KelAM::SaxUtilities::WriteFile(path, handler, DocumentOf(database), report), notes,
                         report);
}

bool WriteStream(ParameterDatabase const& database, std::basic_ostream<char>& out,
                 ParameterDatabaseIOFiltering const& filtering, WriteReport* report) {
    std::vector<std::wstring> notes;
    ParameterNodeWrite const handler(database.GetProfileEditor(), filtering, &notes);
    return ConcludeWrite(KelAM::SaxUtilities::WriteStream(out, handler, DocumentOf(database), report), notes,
                         report);
}

ISAXPersist* _CreateSaxHandlerForWriting(ParameterDatabase const& database,
                                         ParameterDatabaseIOFiltering& filtering) {
    return new ParameterNodeWrite(database.GetProfileEditor(), filtering);
}

ISAXPersist* _CreateSaxHandlerForWriting(ParameterDatabase const& database, std::wstring const& filterPath) {
    return new ParameterNodeWrite(database.GetProfileEditor(), ReadFilter(filterPath));
}

} // namespace Zantrel
