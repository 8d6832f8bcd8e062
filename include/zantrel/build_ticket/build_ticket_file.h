// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/build_ticket/build_ticket.h>
#include <zantrel/export.h>
#include <zantrel/io/path.h>
#include <zantrel/sax/read_report.h>
#include <zantrel/sax/write_report.h>

#include <cstdint>
#include <iosfwd>
#include <string>

/// \file
/// The build ticket file: a ticket in XML. docs/build_ticket_file.md has the grammar, and names all that
/// doesn't come back. The functions run on the caller's thread, which the ticket belongs to.
namespace Zantrel {

/// Adds what the document holds to `ticket`, which isn't emptied first: to the bag of an identifier that it
/// has, or to a new one. Both versions of the format are read alike; the names of the root and of the
/// namespace don't matter. A part that the format doesn't know, or that lacks its identifier, type or name,
/// is passed over.
///
/// False only when the document can't be read or isn't well-formed; the ticket then holds what had arrived.
/// `report`, where given, hears of that and of what was passed over. Throws std::bad_alloc.
ZANTREL_EXPORT bool LoadBuildTicket(std::basic_istream<char>& in, BuildTicket& ticket,
                                    ReadReport* report = nullptr);
ZANTREL_EXPORT bool LoadBuildTicket(std::wstring const& path, BuildTicket& ticket,
                                    ReadReport* report = nullptr);
template <class Path, IfPath<Path> = 0>
bool LoadBuildTicket(Path const& path, BuildTicket& ticket, ReadReport* report = nullptr) {
    return LoadBuildTicket(WidePath(path), ticket, report);
}

/// Which version of the format SaveBuildTicket writes.
struct BuildTicketWriteOptions {
    BuildTicketWriteOptions() = default;

    /// 0: 1 for a ticket that was made with a layout, otherwise 2. 1: namespace /build_processing/2016/04. 2:
    /// namespace /build_processing/2017/02, with an element "Info" that names the ticket's source. Any other:
    /// no namespace and no "Info".
    std::int32_t m_version = 0;
};

/// Writes `ticket`; properties that are marked deleted are left out. What was written is read back with every
/// other property of the library's own classes, every identifier, the kinds of the instances and the source
/// (in version 2). A component comes back under its identifier's one spelling, FormatGuid(true, true): hosts
/// that compare bags name components so. Properties of a host's own classes don't come back, unless they
/// derive from a container.
///
/// False when the document can't be written, when a text or name holds what XML can't carry, or when it is
/// nested too deep for any reader; `report`, where given, says why. A file is written whole or not at all: on
/// failure the one that stood there before is untouched. A stream may have got a part of the document; one
/// that doesn't take all of it gets its bad bit set. Throws std::bad_alloc, what a host's property throws,
/// and std::filesystem::filesystem_error when it can't be found out whether the local schema file of
/// XML_namespaces exists.
ZANTREL_EXPORT bool SaveBuildTicket(std::basic_ostream<char>& out, BuildTicket const& ticket,
                                    BuildTicketWriteOptions const& options, WriteReport* report = nullptr);
ZANTREL_EXPORT bool SaveBuildTicket(std::wstring const& path, BuildTicket const& ticket,
                                    BuildTicketWriteOptions const& options, WriteReport* report = nullptr);
template <class Path, IfPath<Path> = 0>
bool SaveBuildTicket(Path const& path, BuildTicket const& ticket, BuildTicketWriteOptions const& options,
                     WriteReport* report = nullptr) {
    return SaveBuildTicket(WidePath(path), ticket, options, report);
}

} // namespace Zantrel
