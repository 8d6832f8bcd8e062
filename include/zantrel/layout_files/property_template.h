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
/// The property template: the slim form of a layout, a tree of "PropertyNode" elements with a name, a type, a
/// default and a few display attributes each, in a section for the parameters of the machine and one for
/// those of a build ticket. docs/property_template.md has the grammar and names all that doesn't come back.
///
/// The functions run on the caller's thread, which the layout belongs to while it is read into.
namespace Zantrel {
namespace KlvrPropertyTemplate {

/// Adds what the file holds to `layout`, which isn't emptied first, names its root after the file's root,
/// whatever that is, and adds the category option (AddCategoryNodeIfNeeded). Elements that the format doesn't
/// know are passed over.
///
/// False only when the file can't be opened, isn't well-formed, or would make the tree deeper than 256 levels
/// below the root; the layout then holds what had arrived, without the category option. `report`, where
/// given, says why, names type words, elements and attributes that aren't known and defaults that aren't
/// wholly a value of their type (docs/locale.md), and counts in one entry at the end
/// (ReadReport::Kind::PassedOver) what is there for ReadWholeFile only. Throws std::bad_alloc.
ZANTREL_EXPORT bool ReadFile(ParameterLayout& layout, std::wstring const& path, ReadReport* report = nullptr);
template <class Path, IfPath<Path> = 0>
bool ReadFile(ParameterLayout& layout, Path const& path, ReadReport* report = nullptr) {
    return KlvrPropertyTemplate::ReadFile(layout, WidePath(path), report);
}
/// The same from where `in` stands to its end.
ZANTREL_EXPORT bool ReadStream(ParameterLayout& layout, std::basic_istream<char>& in,
                               ReadReport* report = nullptr);

/// The same as ReadFile, and with it the precision of numbers and the choices that WriteFile writes.
ZANTREL_EXPORT bool ReadWholeFile(ParameterLayout& layout, std::wstring const& path,
                                  ReadReport* report = nullptr);
template <class Path, IfPath<Path> = 0>
bool ReadWholeFile(ParameterLayout& layout, Path const& path, ReadReport* report = nullptr) {
    return KlvrPropertyTemplate::ReadWholeFile(layout, WidePath(path), report);
}
ZANTREL_EXPORT bool ReadWholeStream(ParameterLayout& layout, std::basic_istream<char>& in,
                                    ReadReport* report = nullptr);

/// Whether the root element has the name that hosts compare with, which ends in a blank and so is none that
/// XML allows: false for every file, those that WriteFile makes among them. Hosts count on that answer; to
/// find out whether a file can be read, read it.
ZANTREL_EXPORT bool IsValidFile(std::wstring const& path, ReadReport* report = nullptr);
template <class Path, IfPath<Path> = 0> bool IsValidFile(Path const& path, ReadReport* report = nullptr) {
    return KlvrPropertyTemplate::IsValidFile(WidePath(path), report);
}

/// What a write leaves out.
struct WriteOptions {
    WriteOptions() = default;

    /// Of what stands below "ProfileEditor", leave out each node that is no profile list, with all below it:
    /// the profile lists in a plain group too, and the parameters of a profile list.
    bool m_profileListsOnly = true;
};

/// Writes `layout` to the file, whole or not at all: on failure the file that stood there before is
/// untouched. Where the layout has a dictionary, display names are written in their "en-US" translation.
///
/// False when the file can't be written, when a text holds what XML can't carry, or when the nodes are nested
/// too deeply for any reader; `report`, where given, says why. Throws std::filesystem::filesystem_error when
/// it can't be found out whether the local schema file of XML_namespaces exists, and as
/// ParameterLayout::CheckAnchors.
ZANTREL_EXPORT bool WriteFile(ParameterLayout const& layout, std::wstring const& path,
                              WriteOptions const& options, WriteReport* report = nullptr);
template <class Path, IfPath<Path> = 0>
bool WriteFile(ParameterLayout const& layout, Path const& path, WriteOptions const& options,
               WriteReport* report = nullptr) {
    return KlvrPropertyTemplate::WriteFile(layout, WidePath(path), options, report);
}
/// The same to a stream, which on failure may have got a part of the document; one that doesn't take all of
/// it gets its bad bit set.
ZANTREL_EXPORT bool WriteStream(ParameterLayout const& layout, std::basic_ostream<char>& out,
                                WriteOptions const& options, WriteReport* report = nullptr);

} // namespace KlvrPropertyTemplate
} // namespace Zantrel
