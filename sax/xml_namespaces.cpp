// SPDX-License-Identifier: Apache-2.0
#include <zantrel/sax/xml_namespaces.h>

#include "io/system.h"

#include <system_error>
#ifndef __wasi__
#include <filesystem>
#endif

namespace Zantrel {

namespace XML_namespaces {

// Not variables of this file, which would lose what a host's globals assigned before this file's were made.

std::wstring& LocalSchemaFileBuildProcessors201604() noexcept {
    static std::wstring path;
    return path;
}

std::wstring& LocalSchemaFileBuildProcessors201702() noexcept {
    static std::wstring path;
    return path;
}

} // namespace XML_namespaces

namespace {

/// As std::filesystem::exists, but by this library's own view of paths.
bool Exists(std::wstring const& path) {
    auto const native = Io::ToNativePath(path);
    if (!native) {
        return false; // empty, or no file can have this path
    }
    Io::Error error = 0;
    bool const exists = Io::Exists(*native, error);
    if (error != 0) {
        // The system's own words for its own number are in no known encoding.
        std::error_condition const cause = std::system_category().default_error_condition(error);
        std::error_code const code(cause.value(), cause.category());
#ifndef __wasi__
        throw std::filesystem::filesystem_error("exists", *native, code);
#else // whose standard library has no class for it
        throw std::system_error(code, "exists");
#endif
    }
    return exists;
}

} // namespace

void AddBuildProcessingNamespace(KelAM::SaxUtilities::WriteOptions& options, std::wstring const& uri) {
    using namespace XML_namespaces;
    options.m_namespaces.emplace_back(std::wstring(), uri);
    bool const isOlder = uri == Text::BuildProcessors201604;
    // Hosts that install only the 2016/04 schema rely on its file deciding for 2017/02 as well.
    if ((isOlder || uri == Text::BuildProcessors201702) && Exists(LocalSchemaFileBuildProcessors201604())) {
        options.m_schemaFile =
            isOlder ? LocalSchemaFileBuildProcessors201604() : LocalSchemaFileBuildProcessors201702();
        options.m_schemaNamespace = uri;
    }
}

} // namespace Zantrel
