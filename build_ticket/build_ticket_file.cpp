// SPDX-License-Identifier: Apache-2.0
#include <zantrel/build_ticket/build_ticket_file.h>

#include "build_ticket/build_ticket_read.h"
#include "build_ticket/build_ticket_write.h"
#include "build_ticket/ticket_words.h"
#include "sax/document_options.h"

#include <zantrel/sax/sax_utilities.h>
#include <zantrel/sax/xml_namespaces.h>

namespace Zantrel {

namespace {

/// Without the walk over all properties, for as yet each of them can be written in every version.
std::int32_t VersionOf(BuildTicket const& ticket, BuildTicketWriteOptions const& options) {
    return options.m_version != 0 ? options.m_version : LeastVersionOf(ticket);
}

/// A number that is no version is written without a namespace.
KelAM::SaxUtilities::WriteOptions DocumentOptions(std::int32_t version) {
    auto options = Sax::DocumentOptions(std::string(TicketWord::Root));
    if (version == 1) {
        AddBuildProcessingNamespace(options, std::wstring(XML_namespaces::Text::BuildProcessors201604));
    } else if (version == 2) {
        AddBuildProcessingNamespace(options, std::wstring(XML_namespaces::Text::BuildProcessors201702));
    }
    return options;
}

} // namespace

bool LoadBuildTicket(std::basic_istream<char>& in, BuildTicket& ticket, ReadReport* report) {
    BuildTicketRead handler(ticket);
    return KelAM::SaxUtilities::ReadStream(in, handler, report);
}

bool LoadBuildTicket(std::wstring const& path, BuildTicket& ticket, ReadReport* report) {
    BuildTicketRead handler(ticket);
    return KelAM::SaxUtilities::ReadFile(path, handler, report);
}

bool SaveBuildTicket(std::basic_ostream<char>& out, BuildTicket const& ticket,
                     BuildTicketWriteOptions const& options, WriteReport* report) {
    BuildTicketWrite const handler(ticket, VersionOf(ticket, options));
    return KelAM::SaxUtilities::WriteStream(out, handler, DocumentOptions(handler.GetVersion()), report);
}

bool SaveBuildTicket(std::wstring const& path, BuildTicket const& ticket,
                     BuildTicketWriteOptions const& options, WriteReport* report) {
    BuildTicketWrite const handler(ticket, VersionOf(ticket, options));
    return KelAM::SaxUtilities::WriteFile(path, handler, DocumentOptions(handler.GetVersion()), report);
}

} // namespace Zantrel
