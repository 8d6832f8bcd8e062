// SPDX-License-Identifier: Apache-2.0
#include <zantrel/parameter_files/parameter_file_validity.h>

#include "parameter_files/klvr_properties_read.h"
#include "parameter_files/parameter_node_read.h"

#include <zantrel/database/parameter_database.h>
#include <zantrel/sax/sax_utilities.h>

namespace Zantrel {

namespace {

template <class Handler>
bool Check(ParameterLayout const& layout, std::wstring const& path,
           ParameterFileValidityOptions const& options, ParameterFileValidityResult* result,
           ReadReport* report) {
    ParameterDatabase database(&layout);
    ParameterFileValidity validity(options);
    Handler handler(database.GetProfileEditor(), &validity);
    if (!KelAM::SaxUtilities::ReadFile(path, handler, report)) {
        if (result != nullptr) {
            result->m_isValid = false;
        }
        return false;
    }
    // Before the handler of the root ends and misses children of its own: files may lack what stands right
    // below the root.
    if (result != nullptr) {
        *result = validity.result;
    }
    return validity.result.m_isValid;
}

} // namespace

bool IsValidParameterFile(ParameterLayout const& layout, std::wstring const& path,
                          ParameterFileValidityOptions const& options, ParameterFileValidityResult* result,
                          ReadReport* report) {
    return Check<ParameterNodeRead>(layout, path, options, result, report);
}

bool KlvrProperties::IsValidParameterFile(ParameterLayout const& layout, std::wstring const& path,
                                          ParameterFileValidityOptions const& options,
                                          ParameterFileValidityResult* result, ReadReport* report) {
    return Check<ParameterNodeReadKlvrProperties>(layout, path, options, result, report);
}

} // namespace Zantrel
