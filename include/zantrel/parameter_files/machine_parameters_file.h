// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/database/parameter_database.h>
#include <zantrel/export.h>
#include <zantrel/io/path.h>
#include <zantrel/sax/read_report.h>
#include <zantrel/sax/write_report.h>
#include <zantrel/sax/xml_namespaces.h> // made before the globals of a host that writes in their constructors

#include <iosfwd>
#include <string>

/// \file
/// The machine parameters file: the values and profiles of a database in XML with a fixed vocabulary, in
/// which each parameter is a "Property" that names its node. It carries no flags.
/// docs/machine_parameters_file.md has the grammar. The functions run on the caller's thread, which the
/// database belongs to.
namespace Zantrel {
namespace KlvrProperties {

/// Reads the file into `database`. What the file doesn't mention keeps its value; a list or profile list that
/// it mentions is emptied before its entries arrive. What the layout doesn't know and what doesn't parse is
/// passed over.
///
/// False only when the file can't be opened or isn't well-formed; the database then holds what had arrived.
/// `report`, where given, hears of that and of what was passed over. Throws std::bad_alloc.
ZANTREL_EXPORT bool ReadFile(ParameterDatabase& database, std::wstring const& path,
                             ReadReport* report = nullptr);
template <class Path, IfPath<Path> = 0>
bool ReadFile(ParameterDatabase& database, Path const& path, ReadReport* report = nullptr) {
    return KlvrProperties::ReadFile(database, WidePath(path), report);
}
/// The same from where `in` stands to its end. False also when the stream has failed.
ZANTREL_EXPORT bool ReadStream(ParameterDatabase& database, std::basic_istream<char>& in,
                               ReadReport* report = nullptr);

/// What a write leaves out.
struct WriteOptions {
    WriteOptions() = default;

    /// Write no more than which profiles there are: no default profile, no list, no node but profile lists.
    /// That is no way to save values: **who reads such a file gets profiles with the layout's defaults.** Set
    /// it to false to write everything.
    bool m_profileListsOnly = true;
};

/// Writes `database` to the file, whole or not at all: on failure the file that stood there before is
/// untouched.
///
/// False when the file can't be written, or when a text holds what XML can't carry; `report`, where given,
/// says why. Reading takes entries under the layout's own entry names, and so finds only those of lists whose
/// entries are called "Instance", and of profile lists whose entries are called "Profile". Throws
/// std::filesystem::filesystem_error when it can't be found out whether the local schema file of
/// XML_namespaces exists.
ZANTREL_EXPORT bool WriteFile(ParameterDatabase const& database, std::wstring const& path,
                              WriteOptions const& options, WriteReport* report = nullptr);
template <class Path, IfPath<Path> = 0>
bool WriteFile(ParameterDatabase const& database, Path const& path, WriteOptions const& options,
               WriteReport* report = nullptr) {
    return KlvrProperties::WriteFile(database, WidePath(path), options, report);
}
/// The same to a stream, which on failure may have got a part of the document; one that doesn't take all of
/// it gets its bad bit set.
ZANTREL_EXPORT bool WriteStream(ParameterDatabase const& database, std::basic_ostream<char>& out,
                                WriteOptions const& options, WriteReport* report = nullptr);

} // namespace KlvrProperties
} // namespace Zantrel
