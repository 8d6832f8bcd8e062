// SPDX-License-Identifier: Apache-2.0
// A host whose globals use the library's constants and write a file. Its objects come before the library's in
// the static link, so that its globals are made first. Ends with 0 when the constants were there (else 1
// more), what was assigned is still there (else 2 more) and the file has its namespace (else 4 more).
#include <zantrel/sax/xml_namespaces.h>
#include <zantrel/store/property_names.h>

#include <string>

using namespace Zantrel::XML_namespaces;

std::string WriteEarly();

namespace {

std::wstring const SchemaFile = L"schemas/build_processors/2016/04/schema.xsd"; // not in the object itself

struct Global {
    Global() { m_local_schema_file_build_processors_2016_04 = SchemaFile; }

    std::wstring const all = m_namespace_build_processors_2016_04 + m_namespace_build_processors_2017_02 +
                             m_namespace_profiles_meta + KelAM::PropertyNames::PartName +
                             KelAM::PropertyNames::ObjectType + KelAM::ObjectTypes::ObjectTypePartInstance +
                             KelAM::ObjectTypes::ObjectTypePlatform +
                             KelAM::ObjectTypes::ObjectTypeUniquePart;
    std::string const written = WriteEarly();
} const global;

} // namespace

int main() {
    std::wstring const base = L"https://schemas.zantrel.example/build_processing/";
    bool const hasConstants = global.all == base + L"2016/04" + base + L"2017/02" + base + L"profiles_meta" +
                                                L"PartNameObjectTypePartInstancePlatformUniquePart";
    bool const keepsAssigned = m_local_schema_file_build_processors_2016_04 == SchemaFile;
    bool const hasNamespace = global.written.find("/build_processing/2016/04\"") != std::string::npos;
    return (hasConstants ? 0 : 1) + (keepsAssigned ? 0 : 2) + (hasNamespace ? 0 : 4);
}
