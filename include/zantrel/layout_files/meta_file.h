// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>
#include <zantrel/io/path.h>
#include <zantrel/layout/parameter_layout.h>
#include <zantrel/sax/read_report.h>
#include <zantrel/sax/write_report.h>
#include <zantrel/sax/xml_namespaces.h> // made before the globals of a host that writes in their constructors

#include <iosfwd>
#include <string>

/// \file
/// The layout meta file: a layout in XML whose element names are those of its nodes.
///
/// There are two pairs of functions. WriteFile puts down nearly all that a layout says about its nodes, and
/// no translations; ReadFile takes the tree, the types, the defaults, the containers and a few names of it.
/// ReadWholeFile takes all that is written, and WriteWholeFile adds what WriteFile leaves out: a layout that
/// is written and read whole is the same layout, but for the few things that the format has no place for.
/// All four can be mixed. docs/layout_meta_file.md has the grammar and names what each of them loses.
///
/// The functions run on the caller's thread, which the layout belongs to while it is read into. A copy of a
/// layout can be written but not read into: its handles, and so what a file adds, stand in the tree of its
/// source.
namespace Zantrel {

/// Adds what the file holds to `layout`, which isn't emptied first, names its root after the file's root, and
/// adds the category option (AddCategoryNodeIfNeeded). The translations of the file go to the dictionary of
/// the layout, if it has one. Elements that the format doesn't know become nodes.
///
/// False only when the file can't be opened, isn't well-formed, or would make the tree deeper than 256 levels
/// below the root; the layout then holds what had arrived. `report`, where given, says why, names type words
/// and attributes that aren't known and defaults that aren't wholly a value of their type, as of a file that
/// was written under another locale (docs/locale.md), and counts in one entry at the end
/// (ReadReport::Kind::PassedOver) what is there for ReadWholeFile only. Throws std::bad_alloc.
ZANTREL_EXPORT bool ReadFile(ParameterLayout& layout, std::wstring const& path, ReadReport* report = nullptr);
template <class Path, IfPath<Path> = 0>
bool ReadFile(ParameterLayout& layout, Path const& path, ReadReport* report = nullptr) {
    return ReadFile(layout, WidePath(path), report);
}
/// The same from where `in` stands to its end.
ZANTREL_EXPORT bool ReadStream(ParameterLayout& layout, std::basic_istream<char>& in,
                               ReadReport* report = nullptr);

/// Whether ReadFile can read the file and finds something in its "ProfileEditor".
ZANTREL_EXPORT bool IsValidFile(std::wstring const& path, ReadReport* report = nullptr);
template <class Path, IfPath<Path> = 0> bool IsValidFile(Path const& path, ReadReport* report = nullptr) {
    return IsValidFile(WidePath(path), report);
}

/// Adds to `layout` what ReadFile does and all else that a file can say: limits, units, texts, conditions,
/// choices, precision and whatever else WriteFile and WriteWholeFile write. What a file says of the nodes
/// that every layout has, also of its version, goes to these. Conditions and choices from profiles find the
/// nodes that they name wherever these stand in the file; a layout with categories gets its handles on them.
///
/// False in the cases of ReadFile. `report`, where given, also names each attribute and word that isn't
/// known, each default and limit that isn't wholly a value of its type, and what was named and not found;
/// the latter behind all else, as it shows at the end of the file. It stays empty for what the library has
/// written, unless that says such things. Throws std::bad_alloc.
ZANTREL_EXPORT bool ReadWholeFile(ParameterLayout& layout, std::wstring const& path,
                                  ReadReport* report = nullptr);
template <class Path, IfPath<Path> = 0>
bool ReadWholeFile(ParameterLayout& layout, Path const& path, ReadReport* report = nullptr) {
    return ReadWholeFile(layout, WidePath(path), report);
}
/// The same from where `in` stands to its end.
ZANTREL_EXPORT bool ReadWholeStream(ParameterLayout& layout, std::basic_istream<char>& in,
                                    ReadReport* report = nullptr);

/// Writes `layout` to the file, whole or not at all: on failure the file that stood there before is
/// untouched. The layout's own category option isn't written, since reading makes it anew; nor is its
/// dictionary.
///
/// False when the file can't be written, when a text holds what XML can't carry, when the name of a node or
/// of a container's entries is none that every XML reader takes or has a colon, behind which readers take it
/// to begin, or when nodes stand more than 256 levels below the root, too deep for any reader; `report`,
/// where given, says why. Nodes that conditions name as sources must be alive.
ZANTREL_EXPORT bool WriteFile(ParameterLayout const& layout, std::wstring const& path,
                              WriteReport* report = nullptr);
template <class Path, IfPath<Path> = 0>
bool WriteFile(ParameterLayout const& layout, Path const& path, WriteReport* report = nullptr) {
    return WriteFile(layout, WidePath(path), report);
}
/// The same to a stream, which on failure may have got a part of the document; one that doesn't take all of
/// it gets its bad bit set, which throws where the host asked the stream for that.
ZANTREL_EXPORT bool WriteStream(ParameterLayout const& layout, std::basic_ostream<char>& out,
                                WriteReport* report = nullptr);

/// The same as WriteFile, and with it the dictionary of the layout and what else only ReadWholeFile takes, or
/// any reader, though WriteFile leaves it out: the default of a value that has nodes below it, the empty unit
/// of a distance, how images are stretched that aren't there, what may be removed where nothing may.
ZANTREL_EXPORT bool WriteWholeFile(ParameterLayout const& layout, std::wstring const& path,
                                   WriteReport* report = nullptr);
template <class Path, IfPath<Path> = 0>
bool WriteWholeFile(ParameterLayout const& layout, Path const& path, WriteReport* report = nullptr) {
    return WriteWholeFile(layout, WidePath(path), report);
}
ZANTREL_EXPORT bool WriteWholeStream(ParameterLayout const& layout, std::basic_ostream<char>& out,
                                     WriteReport* report = nullptr);

} // namespace Zantrel
