// SPDX-License-Identifier: Apache-2.0
#include "fuzz/target.h"
#include "tests/formats/formats.h"

#include <zantrel/parameter_files/parameter_file_validity.h>

namespace Fuzz {

namespace {

using namespace TestSupport;

/// A document in which the byte count of its own is the limit is taken as without one, and with a byte less
/// it is refused.
std::string FaultOfByteLimit(Subject const& like, std::string const& document, bool isRead) {
    ReadReport report;
    report.m_limits.m_bytes = document.size();
    if (ReadText(*like.Fresh(), document, &report) != isRead) {
        return "a limit that isn't exceeded";
    }
    report.m_limits.m_bytes = document.size() - 1;
    return !document.empty() && ReadText(*like.Fresh(), document, &report) ? "a limit that is exceeded" : "";
}

std::string FaultOfDocument(Format const& format, Subject const& like, std::string const& document,
                            unsigned share) {
    ReadAndWritten const once = ReadAndWrite(like, document);
    return !once.fault.empty() ? once.fault
           : share % 4 == 0    ? FaultOfComingBack(format, like, once.written)
           : share % 4 == 1    ? once.subject->Use()
                               : FaultOfByteLimit(like, document, once.isRead);
}

std::string Told(bool isTaken, std::string const& what, ReadReport const& report) {
    std::string text = (isTaken ? "taken\n" : "refused\n") + what + "\n\n";
    for (ReadReport::Entry const& entry : report.m_entries) {
        text += StringConversion::NativeToUtf8(ReadReport::Format(entry)) + '\n';
    }
    return text;
}

std::string OutcomeOfDocument(Subject const& like, std::istream& document) {
    auto const subject = like.Fresh();
    ReadReport report;
    bool const isRead = subject->Read(document, &report);
    return Told(isRead, WriteText(*subject), report);
}

/// How a system hands out a document plays no part in what is read.
std::string FaultOfPieces(Target const& target, std::string const& document) {
    PieceBuffer whole(document, document.size()), pieces(document, 1 + document.size() % 7);
    std::istream in(&whole), inPieces(&pieces);
    return target.outcomeOf(in) == target.outcomeOf(inPieces) ? "" : "in pieces";
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

template <auto const& Io> ParameterLayout const& CheckedLayout() {
    struct Layout : SmallLayout {
        Layout() {
            if (Io.hasFixedNames) {
                SetName(L"KlvrMachineParameters");
                NameEntries(*this);
            }
        }
    };
    static Layout const layout;
    return layout;
}

template <auto const& Io> std::string OutcomeOfCheck(Check check, std::istream& document) {
    ParameterFileValidityResult result;
    ReadReport report;
    bool const isValid = check(CheckedLayout<Io>(), document, {}, &result, &report);
    std::string messages;
    for (std::wstring const& message : result.m_messages) {
        messages += StringConversion::NativeToUtf8(message) + '\n';
    }
    return Told(isValid, messages, report);
}

/// Whether the check says the same where it may tell one message only.
template <auto const& Io> std::string FaultOfLimit(Check check, std::string const& document) {
    ParameterLayout const& layout = CheckedLayout<Io>();
    bool isValid = false, isValidToo = false, isSound = true;
    std::uint64_t const count = MessagesOf(check, layout, document, 1000, isValid, isSound);
    bool const isSame = MessagesOf(check, layout, document, 1, isValidToo, isSound) == count;
    return isSame && isValid == isValidToo && isSound ? "" : "the messages";
}

template <auto const& Io> std::string FaultOfVerdict(Check check, std::string const& document) {
    ParameterLayout const& layout = CheckedLayout<Io>();
    bool isValid = false, isSound = true;
    MessagesOf(check, layout, document, 1000, isValid, isSound);
    ParameterDatabase database(&layout);
    std::istringstream in(document);
    bool const isRead = Io.readStream(database, in, nullptr);
    if (!isSound || !isValid || !isRead) {
        return !isSound ? "the messages" : isValid ? "valid, and can't be read" : "";
    }
    MessagesOf(check, layout, WriteText(Io, database), 1000, isValid, isSound);
    return isValid && isSound ? "" : "what was valid, when written again";
}

template <auto const& Io> Target TargetOf(char const* name, Check check, std::string const& example) {
    return {name,
            [check](std::string const& document, unsigned share) {
                return share % 4 == 0 ? FaultOfLimit<Io>(check, document)
                                      : FaultOfVerdict<Io>(check, document);
            },
            example, [check](std::istream& document) { return OutcomeOfCheck<Io>(check, document); }};
}

Target TargetOf(Format const& format) {
    std::shared_ptr<Subject> const like = format.make(); // with the one layout for all documents
    return {format.name,
            [&format, like](std::string const& document, unsigned share) {
                return FaultOfDocument(format, *like, document, share);
            },
            format.example, [like](std::istream& document) { return OutcomeOfDocument(*like, document); }};
}

} // namespace

std::vector<Target> DocumentTargets() {
    std::vector<Target> targets;
    for (Format const& format : Formats()) {
        targets.push_back(TargetOf(format));
    }
    targets.push_back(TargetOf<GenericParameters>("Validity", Zantrel::IsValidParameterStream, SmallFile));
    targets.push_back(TargetOf<MachineParameterFile<false>>(
        "MachineValidity", KlvrProperties::IsValidParameterStream, ExampleOf("machine_parameters")));
    for (Target& target : targets) {
        target.faultOf = [whole = target](std::string const& document, unsigned share) {
            return share % 4 == 3 ? FaultOfPieces(whole, document) : whole.faultOf(document, share);
        };
    }
    return targets;
}

} // namespace Fuzz
