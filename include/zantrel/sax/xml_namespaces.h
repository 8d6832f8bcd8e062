// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>
#include <zantrel/sax/sax_utilities.h>

#include <string>

namespace Zantrel {

/// The namespaces of the file formats. Only writers use them; no reader compares a document's namespace with
/// them. In a static build they are empty until the library's own globals are made, so a host's globals can't
/// count on them.
namespace XML_namespaces {

ZANTREL_EXPORT extern std::wstring const m_namespace_build_processors_2016_04;
ZANTREL_EXPORT extern std::wstring const m_namespace_build_processors_2017_02;
ZANTREL_EXPORT extern std::wstring const m_namespace_profiles_meta;

/// Paths of local schema files, empty at start. A host assigns them before it writes; nothing guards them, so
/// not while a write runs on any thread.
ZANTREL_EXPORT extern std::wstring m_local_schema_file_build_processors_2016_04;
ZANTREL_EXPORT extern std::wstring m_local_schema_file_build_processors_2017_02;

} // namespace XML_namespaces

/// Appends `uri` to `options` as default namespace. For the two build-processor namespaces also sets the
/// schema reference to the local schema file, provided that the file for 2016/04 exists, which decides for
/// both. Throws std::filesystem::filesystem_error ("exists") when that can't be found out.
ZANTREL_EXPORT void AddBuildProcessingNamespace(KelAM::SaxUtilities::WriteOptions& options,
                                                std::wstring const& uri);

} // namespace Zantrel
