// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>
#include <zantrel/sax/sax_utilities.h>

#include <string>
#include <string_view>

namespace Zantrel {

/// The namespaces of the file formats. Only writers use them; no reader compares a document's namespace with
/// them. A host's globals can count on all that is here, in whatever order a program's globals are made.
namespace XML_namespaces {

/// The same texts for those who can't wait until globals are made, as the library itself.
namespace Text {
inline constexpr std::wstring_view BuildProcessors201604 =
    L"https://schemas.zantrel.example/build_processing/2016/04";
inline constexpr std::wstring_view BuildProcessors201702 =
    L"https://schemas.zantrel.example/build_processing/2017/02";
inline constexpr std::wstring_view ProfilesMeta =
    L"https://schemas.zantrel.example/build_processing/profiles_meta";
} // namespace Text

/// The URIs of the formats, as AddBuildProcessingNamespace takes them.
inline std::wstring const m_namespace_build_processors_2016_04{Text::BuildProcessors201604};
inline std::wstring const m_namespace_build_processors_2017_02{Text::BuildProcessors201702};
inline std::wstring const m_namespace_profiles_meta{Text::ProfilesMeta};

/// The texts behind the two names below, made at the first call and shared by all modules of a program.
ZANTREL_EXPORT std::wstring& LocalSchemaFileBuildProcessors201604() noexcept;
ZANTREL_EXPORT std::wstring& LocalSchemaFileBuildProcessors201702() noexcept;

/// Paths of local schema files, empty at start. A host assigns them before it writes; nothing guards them, so
/// not while a write runs on any thread.
inline std::wstring& m_local_schema_file_build_processors_2016_04 = LocalSchemaFileBuildProcessors201604();
inline std::wstring& m_local_schema_file_build_processors_2017_02 = LocalSchemaFileBuildProcessors201702();

} // namespace XML_namespaces

/// Appends `uri` to `options` as default namespace. For the two build-processor namespaces also sets the
/// schema reference to the local schema file, provided that the file for 2016/04 exists, which decides for
/// both. Throws std::filesystem::filesystem_error ("exists") when that can't be found out.
/// Any other `uri` gets no schema reference. Reads the paths of the local schema files, which nobody may
/// assign meanwhile.
ZANTREL_EXPORT void AddBuildProcessingNamespace(KelAM::SaxUtilities::WriteOptions& options,
                                                std::wstring const& uri);

} // namespace Zantrel
