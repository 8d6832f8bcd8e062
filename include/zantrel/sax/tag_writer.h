// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/sax/sax_writer.h>

#include <string>
#include <string_view>

/// One element by scope: the constructor opens it, the destructor closes it. The writer must outlive it.
/// Scopes nest as elements do: what is opened later must be closed earlier. An exception on the way closes,
/// too.
class MSAXTagWriter {
public:
    /// The name in UTF-8, or wide; one that is no XML name, and null, fails the write. It needn't outlive the
    /// call.
    /// Where this throws, nothing was opened. Once the write has failed, neither opening nor closing does
    /// anything.
    MSAXTagWriter(KelSAX::ISAXWriter& writer, char const* tag)
        : MSAXTagWriter(writer, tag != nullptr ? std::string_view(tag) : std::string_view()) {}
    MSAXTagWriter(KelSAX::ISAXWriter& writer, std::string tag)
        : MSAXTagWriter(writer, std::string_view(tag)) {}
    MSAXTagWriter(KelSAX::ISAXWriter& writer, std::string_view tag) : m_writer(writer) {
        m_writer.OpenElement(tag);
    }
    MSAXTagWriter(KelSAX::ISAXWriter& writer, std::wstring_view tag) : m_writer(writer) {
        m_writer.OpenElement(tag);
    }
    /// With the attributes of the tag.
    MSAXTagWriter(KelSAX::ISAXWriter& writer, KelSAX::PreparedTag const& tag) : m_writer(writer) {
        m_writer.OpenPrepared(tag);
    }
    /// One scope is one element, so it is neither copied nor moved.
    MSAXTagWriter(MSAXTagWriter const&) = delete;
    MSAXTagWriter& operator=(MSAXTagWriter const&) = delete;
    ~MSAXTagWriter() { m_writer.CloseElement(); }

    /// The writer this was built on; the element's attributes and content are written through it.
    KelSAX::ISAXWriter& GetWriter() const noexcept { return m_writer; }

private:
    KelSAX::ISAXWriter& m_writer;
};
