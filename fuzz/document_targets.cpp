// SPDX-License-Identifier: Apache-2.0
#include "fuzz/target.h"
#include "tests/formats/formats.h"

#include <zantrel/parameter_files/parameter_file_validity.h>

namespace Fuzz {

namespace {

using namespace TestSupport;

/// A document in which the byte count of its own is the limit is taken as without one, and with a byte less
/// it is refused.
std::string FaultOfByteLimit(Subject& within, Subject& beyond, std::string const& document, bool isRead) {
    ReadReport report;
    report.m_limits.m_bytes = document.size();
    if (ReadText(within, document, &report) != isRead) {
        return "a limit that isn't exceeded";
    }
    report.m_limits.m_bytes = document.size() - 1;
    return !document.empty() && ReadText(beyond, document, &report) ? "a limit that is exceeded" : "";
}

std::string FaultOfDocument(Format const& format, Subject const& like, std::string const& document) {
    std::string const fault = FaultOf(format, like, document);
    if (!fault.empty() || document.size() % 4 != 0) { // for each fourth, as it takes its time
        return fault;
    }
    auto const within = like.Fresh(), beyond = like.Fresh(), plain = like.Fresh();
    return FaultOfByteLimit(*within, *beyond, document, ReadText(*plain, document));
}

using Check = bool (*)(ParameterLayout const&, std::istream&, ParameterFileValidityOptions const&,
                       ParameterFileValidityResult*, ReadReport*);

/// How many messages the check has, and whether that is what it says of the document.
std::uint64_t MessagesOf(Check check, ParameterLayout const& layout, std::string const& document,
                         std::size_t limit, bool& isValid, bool& isSound) {
    ParameterFileValidityOptions options;
    options.m_maxMessages = limit;
    ParameterFileValidityResult result;
    ReadReport report;
    std::istringstream in(document);
    isValid = check(layout, in, options, &result, &report);
    std::uint64_t const count = result.m_messages.size() + result.m_leftOut;
    bool const isRefused = std::any_of(report.m_entries.begin(), report.m_entries.end(), IsRefusal);
    isSound =
        isSound && result.m_messages.size() <= limit && (isRefused ? !isValid : isValid == (count == 0));
    return count;
}

template <auto const& Io> std::string FaultOfValidity(Check check, std::string const& document) {
    static ParameterLayout const& layout = [&]() -> ParameterLayout const& {
        static SmallLayout made;
        if (Io.hasFixedNames) {
            made.SetName(L"KlvrMachineParameters");
            NameEntries(made);
        }
        return made;
    }();
    bool isValid = false, isValidToo = false, isSound = true;
    std::uint64_t const count = MessagesOf(check, layout, document, 1000, isValid, isSound);
    if (MessagesOf(check, layout, document, 1, isValidToo, isSound) != count || isValid != isValidToo ||
        !isSound) {
        return "the messages";
    }
    ParameterDatabase database(&layout);
    std::istringstream in(document);
    if (!Io.readStream(database, in, nullptr) || !isValid) {
        return isValid ? "valid, and can't be read" : "";
    }
    MessagesOf(check, layout, WriteText(Io, database), 1000, isValid, isSound);
    return isValid && isSound ? "" : "what was valid, when written again";
}

} // namespace

std::vector<Target> DocumentTargets() {
    std::vector<Target> targets;
    for (Format const& format : Formats()) {
        std::shared_ptr<Subject> const like = format.make(); // with the one layout for all documents
        targets.push_back({format.name,
                           [&format, like](std::string const& document) {
                               return FaultOfDocument(format, *like, document);
                           },
                           format.example});
    }
    targets.push_back({"Validity",
                       [](std::string const& document) {
                           return FaultOfValidity<GenericParameters>(Zantrel::IsValidParameterStream,
                                                                     document);
                       },
                       SmallFile});
    targets.push_back({"MachineValidity",
                       [](std::string const& document) {
                           return FaultOfValidity<MachineParameterFile<false>>(
                               KlvrProperties::IsValidParameterStream, document);
                       },
                       ExampleOf("machine_parameters")});
    return targets;
}

} // namespace Fuzz
