// SPDX-License-Identifier: Apache-2.0
#include <zantrel/parameter_files/generic_parameter_file.h>

#include "parameter_files/node_value_sax.h"
#include "parameter_files/parameter_node_read.h"
#include "parameter_files/parameter_node_write.h"
#include "parameter_files/vocabulary.h"
#include "sax/document_options.h"

#include <zantrel/layout/parameter_layout.h>
#include <zantrel/sax/sax_utilities.h>
#include <zantrel/text/string_conversion.h>

#include <utility>

namespace Zantrel {

namespace {

void ReadFiltering(std::wstring const& filterPath, ParameterDatabaseIOFiltering& filtering) {
    if (!filterPath.empty()) {
        ParameterDatabaseIOFilteringReader reader(&filtering);
        KelAM::SaxUtilities::ReadFile(filterPath, reader); // one that can't be read filters nothing
    }
}

} // namespace

bool ReadFile(ParameterDatabase& database, std::wstring const& path, ReadReport* report) {
    ParameterNode const editor = database.GetProfileEditor();
    ParameterNodeRead handler(editor);
    if (!KelAM::SaxUtilities::ReadFile(path, handler, report)) {
        return false;
    }
    if (!handler.HasMetGenericParameters() && editor.IsValid()) {
        LayoutNode const* general = editor.m_pNode->GetNode(ParameterFileWord::GenericParameters);
        ParameterNode node = editor.Get(general);
        if (node.IsValid()) {
            node.SetHidden(true); // a file without general parameters was written with them hidden
        }
    }
    return true;
}

ISAXPersist* _CreateSaxHandlerForReading(ParameterDatabase& database) {
    return new ParameterNodeRead(database.GetProfileEditor());
}

bool WriteFile(ParameterDatabase const& database, std::wstring const& path, std::wstring const& filterPath,
               WriteReport* report) {
    ParameterLayout const* const layout = database.GetLayout();
    std::string rootTag = layout != nullptr ? StringConversion::NativeToUtf8(layout->m_name) : std::string();
    ParameterNodeWrite handler(ProfileEditorOf(database));
    ReadFiltering(filterPath, handler.m_filtering);
    return KelAM::SaxUtilities::WriteFile(path, handler, Sax::DocumentOptions(std::move(rootTag)), report);
}

ISAXPersist* _CreateSaxHandlerForWriting(ParameterDatabase const& database,
                                         ParameterDatabaseIOFiltering& filtering) {
    auto* handler = new ParameterNodeWrite(ProfileEditorOf(database));
    handler->m_filtering = filtering;
    return handler;
}

ISAXPersist* _CreateSaxHandlerForWriting(ParameterDatabase const& database, std::wstring const& filterPath) {
    ParameterDatabaseIOFiltering filtering;
    ReadFiltering(filterPath, filtering);
    return _CreateSaxHandlerForWriting(database, filtering);
}

} // namespace Zantrel
