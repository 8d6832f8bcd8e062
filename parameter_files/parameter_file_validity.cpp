// SPDX-License-Identifier: Apache-2.0
#include <zantrel/parameter_files/parameter_file_validity.h>

#include "parameter_files/klvr_properties_read.h"
#include "parameter_files/parameter_node_read.h"

#include <zantrel/database/parameter_database.h>
#include <zantrel/sax/sax_utilities.h>

#include <utility>

namespace Zantrel {

namespace {

/// Checks what `read` drives a handler with. The verdict is taken before the root's handler ends, which then
/// misses children of its own and tells nobody: files may lack what stands right below the root.
template <class Handler, class Read>
bool Check(ParameterLayout const& layout, ParameterFileValidityOptions const& options,
           ParameterFileValidityResult* result, ReadReport* report, Read const& read) {
    // The file is read like any other, into a database that ends with the check: so there is no second
    // grammar that could differ from the reader's.
    ParameterDatabase database(&layout);
    ParameterFileValidity validity(options, report);
    Handler handler(database.GetProfileEditor(), &validity);
    if (!read(handler)) {
        if (result != nullptr) {
            result->m_isValid = false;
        }
        return false;
    }
    bool const isValid = validity.result.m_isValid;
    if (report != nullptr) {
        for (ReadReport::Entry& entry : validity.missing.m_entries) {
            report->Add(std::move(entry));
        }
        report->m_leftOut += validity.missing.m_leftOut;
    }
    if (result != nullptr) {
        *result = std::move(validity.result);
    }
    return isValid;
}

template <class Handler>
bool CheckFile(ParameterLayout const& layout, std::wstring const& path,
               ParameterFileValidityOptions const& options, ParameterFileValidityResult* result,
               ReadReport* report) {
    return Check<Handler>(layout, options, result, report, [&](Handler& handler) {
        return KelAM::SaxUtilities::ReadFile(path, handler, report);
    });
}

template <class Handler>
bool CheckStream(ParameterLayout const& layout, std::basic_istream<char>& in,
                 ParameterFileValidityOptions const& options, ParameterFileValidityResult* result,
                 ReadReport* report) {
    return Check<Handler>(layout, options, result, report, [&](Handler& handler) {
        return KelAM::SaxUtilities::ReadStream(in, handler, report);
    });
}

} // namespace

bool IsValidParameterFile(ParameterLayout const& layout, std::wstring const& path,
                          ParameterFileValidityOptions const& options, ParameterFileValidityResult* result,
                          ReadReport* report) {
    return CheckFile<ParameterNodeRead>(layout, path, options, result, report);
}

bool IsValidParameterStream(ParameterLayout const& layout, std::basic_istream<char>& in,
                            ParameterFileValidityOptions const& options, ParameterFileValidityResult* result,
                            ReadReport* report) {
    return CheckStream<ParameterNodeRead>(layout, in, options, result, report);
}

bool KlvrProperties::IsValidParameterFile(ParameterLayout const& layout, std::wstring const& path,
                                          ParameterFileValidityOptions const& options,
                                          ParameterFileValidityResult* result, ReadReport* report) {
    return CheckFile<ParameterNodeReadKlvrProperties>(layout, path, options, result, report);
}

bool KlvrProperties::IsValidParameterStream(ParameterLayout const& layout, std::basic_istream<char>& in,
                                            ParameterFileValidityOptions const& options,
                                            ParameterFileValidityResult* result, ReadReport* report) {
    return CheckStream<ParameterNodeReadKlvrProperties>(layout, in, options, result, report);
}

} // namespace Zantrel
