// SPDX-License-Identifier: Apache-2.0
#include <zantrel/sax/sax_utilities.h>

#include <zantrel/sax/read_report.h>
#include <zantrel/sax/write_report.h>

#include "io/input_file.h"
#include "io/output_file.h"
#include "sax/read_driver.h"
#include "sax/report_texts.h"
#include "sax/write_driver.h"

#include <istream>
#include <ostream>

namespace KelAM {
namespace SaxUtilities {

namespace {

using Zantrel::ReadReport;
using Zantrel::WriteReport;
namespace Io = Zantrel::Io;
namespace Sax = Zantrel::Sax;

constexpr std::string_view Declaration = "xmlns";

/// A file, with its own sentence for what went wrong.
class FileSource final : public Sax::DocumentSource {
public:
    bool Open(std::wstring const& path) { return m_file.Open(path); }
    std::ptrdiff_t Read(char* into, std::size_t size) override { return m_file.Read(into, size); }
    Io::Failure WhyItFailed() const override { return m_file.WhyItFailed(); }

private:
    Io::InputFile m_file;
};

/// Past the stream's formatting layer, which would throw where the host asked for it: from inside the
/// tokeniser.
class StreamSource final : public Sax::DocumentSource {
public:
    explicit StreamSource(std::istream& in) : m_in(in), m_hasFailed(in.fail() || in.rdbuf() == nullptr) {}

    bool HasFailed() const noexcept { return m_hasFailed; }
    Io::Failure WhyItFailed() const override {
        return {m_hasFailed ? L"The stream can't be read." : L"", {}};
    }

    std::ptrdiff_t Read(char* into, std::size_t size) override {
        try {
            return m_in.rdbuf()->sgetn(into, static_cast<std::streamsize>(size));
        } catch (...) {
            m_hasFailed = true;
            return -1;
        }
    }

private:
    std::istream& m_in;
    bool m_hasFailed;
};

/// Past the formatting layer, too, and the first failure stays. The host hears of it afterwards, when no
/// element is open any more that a destructor would close.
class StreamSink final : public Io::ByteSink {
public:
    explicit StreamSink(std::ostream& out) : m_out(out), m_hasFailed(out.fail() || out.rdbuf() == nullptr) {}

    bool HasFailed() const noexcept { return m_hasFailed; }

    bool Write(std::string_view bytes) noexcept override {
        return Try([&] {
            auto const size = static_cast<std::streamsize>(bytes.size());
            return m_out.rdbuf()->sputn(bytes.data(), size) == size;
        });
    }

    bool Flush() noexcept {
        return Try([&] { return m_out.rdbuf()->pubsync() == 0; });
    }

private:
    template <class Action> bool Try(Action const& action) noexcept {
        try {
            m_hasFailed = m_hasFailed || !action();
        } catch (...) {
            m_hasFailed = true;
        }
        return !m_hasFailed;
    }

    std::ostream& m_out;
    bool m_hasFailed;
};

/// For what fails before there is a document with places.
void ReportUnreadable(ReadReport* report, Io::Failure const& failure) {
    if (report != nullptr) {
        ReadReport::Entry entry;
        entry.kind = ReadReport::Kind::CannotRead;
        entry.sentence = failure.sentence;
        entry.error = failure.code;
        report->Add(std::move(entry));
    }
}

/// Fills the report of a write that failed. `ofSink` says why the sink failed, for when it did: that cause
/// goes first, and it lies at no element.
bool Conclude(bool succeeded, Sax::WriteDriver const& driver, Io::Failure const& ofSink,
              WriteReport* report) {
    if (!succeeded && report != nullptr) {
        bool const sinkFailed = driver.SinkFailed() || !ofSink.sentence.empty();
        report->m_sentence = sinkFailed ? ofSink.sentence : driver.FaultText();
        report->m_error = ofSink.code;
        report->m_path = sinkFailed ? std::wstring() : driver.FaultPath();
    }
    return succeeded;
}

} // namespace

void XMLNamespaceHandler::UpdateNamespaces(std::map<std::string, std::string> const& attributes) {
    // All declarations begin alike, so they stand together.
    for (auto entry = attributes.lower_bound(std::string(Declaration)); entry != attributes.end(); ++entry) {
        std::string_view const name = entry->first;
        if (name.substr(0, Declaration.size()) != Declaration) {
            return;
        }
        std::string_view const rest = name.substr(Declaration.size());
        if (!rest.empty() && rest.front() != ':') {
            continue; // such as "xmlnsx"
        }
        Namespace declared(StringConversion::Utf8ToNative(rest.substr(rest.empty() ? 0 : 1)),
                           StringConversion::Utf8ToNative(entry->second));
        m_namespaces.erase(declared); // the set compares prefixes only: an insertion would keep the old URI
        m_namespaces.insert(std::move(declared));
    }
}

bool ReadFile(std::wstring const& path, ISAXPersist& handler, ReadReport* report) {
    FileSource source;
    if (!source.Open(path)) {
        ReportUnreadable(report, source.WhyItFailed());
        return false;
    }
    return Sax::ReadDriver(source, handler, report).Run();
}

// The stream's state is set at last, since that may throw, and then all handlers have ended.
bool ReadStream(std::basic_istream<char>& in, ISAXPersist& handler, ReadReport* report) {
    StreamSource source(in);
    if (source.HasFailed()) {
        ReportUnreadable(report, source.WhyItFailed());
        return false;
    }
    bool const succeeded = Sax::ReadDriver(source, handler, report).Run();
    if (source.HasFailed()) {
        in.setstate(std::ios_base::badbit);
    }
    return succeeded;
}

// The order says what is left when a step fails or the handler throws: the file ends without its commit, and
// the target is as it was.
bool WriteFile(std::wstring const& path, ISAXPersist const& handler, WriteOptions const& options,
               WriteReport* report) {
    Sax::Restart(report);
    // The driver refers to the file, so it must end before the file does.
    Io::OutputFile file(report != nullptr && report->m_mayWriteInPlace);
    Sax::WriteDriver driver(file);
    bool const succeeded = file.Open(path) && driver.Run(handler, options) && file.Commit();
    if (succeeded && report != nullptr) {
        report->m_notes = file.Notes();
    }
    return Conclude(succeeded, driver, file.WhyItFailed(), report);
}

bool WriteStream(std::basic_ostream<char>& out, ISAXPersist const& handler, WriteOptions const& options,
                 WriteReport* report) {
    Sax::Restart(report);
    StreamSink sink(out);
    Sax::WriteDriver driver(sink);
    bool const succeeded = !sink.HasFailed() && driver.Run(handler, options) && sink.Flush();
    // The report is filled before the stream's state is set, which may throw.
    bool const streamFailed = sink.HasFailed();
    Conclude(succeeded, driver, {streamFailed ? L"The stream can't be written." : L"", {}}, report);
    if (streamFailed) {
        out.setstate(std::ios_base::badbit);
    }
    return succeeded;
}

} // namespace SaxUtilities
} // namespace KelAM
