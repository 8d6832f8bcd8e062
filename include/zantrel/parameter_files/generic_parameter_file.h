// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/database/parameter_database.h>
#include <zantrel/export.h>
#include <zantrel/io/path.h>
#include <zantrel/parameter_files/io_filtering.h>
#include <zantrel/sax/read_report.h>
#include <zantrel/sax/sax_persist.h>
#include <zantrel/sax/write_report.h>

#include <iosfwd>
#include <string>

/// \file
/// The generic parameter file: the values of a database in XML whose element names are those of its layout.
/// The functions run on the caller's thread, which the database belongs to.
namespace Zantrel {

/// Reads the file into `database`. What the file doesn't mention keeps its value; a list or profile list that
/// it mentions is emptied before its entries arrive. Elements that the layout doesn't know and values that
/// don't parse are passed over. A group "GenericParameters" that the layout has and the file hasn't is
/// hidden.
///
/// False only when the file can't be opened or isn't well-formed; the database then holds what had arrived.
/// `report`, where given, hears of that, of elements that were not taken, of texts and
/// attributes that didn't parse, and of values that have no place in the database. Throws std::bad_alloc.
ZANTREL_EXPORT bool ReadFile(ParameterDatabase& database, std::wstring const& path,
                             ReadReport* report = nullptr);
template <class Path, IfPath<Path> = 0>
bool ReadFile(ParameterDatabase& database, Path const& path, ReadReport* report = nullptr) {
    return ReadFile(database, WidePath(path), report);
}
/// The same from where `in` stands to its end. False also when the stream has failed.
ZANTREL_EXPORT bool ReadStream(ParameterDatabase& database, std::basic_istream<char>& in,
                               ReadReport* report = nullptr);

/// The handler that ReadFile uses, for a host that drives the read itself; nothing is hidden then. The caller
/// owns the result, and `database` must outlive it.
ZANTREL_EXPORT ISAXPersist* _CreateSaxHandlerForReading(ParameterDatabase& database);

/// Writes `database` to the file, whole or not at all: on failure the file that stood there before is
/// untouched. `filterPath` names a filter file (see ParameterDatabaseIOFilteringReader) or is empty; a filter
/// file that can't be opened filters nothing, and of one that breaks off what came before the break counts.
///
/// False when the file can't be written, when a text holds what XML can't carry, or when the name of a node
/// is no XML name; `report`, where given, says why. Reading what was written gives equal values. A few flags,
/// and values of nodes built in ways that docs/generic_parameter_file.md advises against, don't come back: it
/// lists them all.
ZANTREL_EXPORT bool WriteFile(ParameterDatabase const& database, std::wstring const& path,
                              std::wstring const& filterPath, WriteReport* report = nullptr);
template <class Path, IfPath<Path> = 0>
bool WriteFile(ParameterDatabase const& database, Path const& path, std::wstring const& filterPath,
               WriteReport* report = nullptr) {
    return WriteFile(database, WidePath(path), filterPath, report);
}
template <class Path, IfPath<Path> = 0>
bool WriteFile(ParameterDatabase const& database, Path const& path, Path const& filterPath,
               WriteReport* report = nullptr) {
    return WriteFile(database, WidePath(path), WidePath(filterPath), report);
}
/// The same to a stream, which on failure may have got a part of the document; one that doesn't take all of
/// it gets its bad bit set.
ZANTREL_EXPORT bool WriteStream(ParameterDatabase const& database, std::basic_ostream<char>& out,
                                ParameterDatabaseIOFiltering const& filtering = {},
                                WriteReport* report = nullptr);

/// The handlers that WriteFile uses, with a copy of `filtering` or with the filter file read. The caller owns
/// the result, and `database` must outlive it and must not change while the handler writes.
ZANTREL_EXPORT ISAXPersist* _CreateSaxHandlerForWriting(ParameterDatabase const& database,
                                                        ParameterDatabaseIOFiltering& filtering);
ZANTREL_EXPORT ISAXPersist* _CreateSaxHandlerForWriting(ParameterDatabase const& database,
                                                        std::wstring const& filterPath);
template <class Path, IfPath<Path> = 0>
ISAXPersist* _CreateSaxHandlerForWriting(ParameterDatabase const& database, Path const& filterPath) {
    return _CreateSaxHandlerForWriting(database, WidePath(filterPath));
}

} // namespace Zantrel
