// SPDX-License-Identifier: Apache-2.0
#include "parameter_files/element_watch.h"

#include "text/unicode.h"

#include <algorithm>
#include <utility>

// A reader tells its watch what it has recognised, once for each element, and knows nothing else of the
// check. The verdict is set before its message is put together: where memory runs out, a file that doesn't
// fit may lack a message, and is never told to be valid.

namespace Zantrel {

ParameterFileValidity::ParameterFileValidity(ParameterFileValidityOptions const& given,
                                             ReadReport const* report)
    : options(given), hasReport(report != nullptr) {
    if (report != nullptr) {
        missing.m_limit = report->m_limit;
        missing.m_byteLimit = static_cast<std::size_t>(
            std::min<std::uint64_t>(report->m_byteLimit, report->m_limits.m_reportBytes));
    }
}

void ParameterFileValidity::Report(std::initializer_list<std::wstring_view> parts) {
    result.m_isValid = false;
    if (result.m_messages.size() >= options.m_maxMessages || m_messageBytes >= options.m_maxMessageBytes) {
        ++result.m_leftOut;
        return;
    }
    std::wstring message;
    for (std::wstring_view const part : parts) {
        message.append(part);
    }
    result.m_messages.push_back(std::move(message));
    m_messageBytes += result.m_messages.back().size() * sizeof(wchar_t);
}

ElementWatch::~ElementWatch() {
    try {
        ReportMissing();
    } catch (...) { // no memory for a message, which no destructor can say
    }
}

bool ElementWatch::Admits(FileElement const& element, std::string_view tag, std::size_t depth) {
    if (depth == 0) {
        if (!IsRoot(tag)) {
            m_validity.Report({L"Wrong root tag-name."});
        }
        return false;
    }
    if (depth > m_validity.options.m_maxDepth) {
        // Of elements that weren't looked at nobody knows whether one was missing, and so none is told to be.
        m_isLookedAtWhole = false;
        return false;
    }
    if (element.kind == FileElement::Kind::Parameter) {
        m_met.insert(element.child);
    } else if (element.kind == FileElement::Kind::Unknown) {
        ReportMisfit(L"Invalid tag [", tag);
    } else if (element.kind == FileElement::Kind::Unhandled) {
        ReportMisfit(L"Unhandled tag [", tag);
    }
    return true;
}

/// A root without a name to compare with may have any.
bool ElementWatch::IsRoot(std::string_view tag) const {
    if (m_node == nullptr) {
        return false;
    }
    return m_node->m_parent == nullptr || Text::EqualsUtf8(m_node->m_parent->m_name, tag);
}

void ElementWatch::ReportMisfit(std::wstring_view what, std::string_view tag) {
    if (m_node == nullptr) {
        return; // that the root is wrong has said it all
    }
    std::wstring wideTag;
    Text::AppendWide(tag, wideTag);
    m_validity.Report({what, wideTag, L"] in [", m_node->m_name, L"]"});
}

void ElementWatch::ReportMissing() {
    // Asks the layout and not the cursor, so that what profiles and items hold may be missing, too.
    if (m_node == nullptr || !m_isLookedAtWhole || m_node->m_isList || m_node->m_isProfileList) {
        return;
    }
    for (LayoutNode const* const child : m_node->m_children) {
        if (child->m_writeToParameterFile && m_met.count(child) == 0) {
            m_validity.Report({L"Mandatory tag [", child->m_name, L"] not found in [", m_node->m_name, L"]"});
            NotePlaceOfMissing(*child);
        }
    }
}

void ElementWatch::NotePlaceOfMissing(LayoutNode const& child) const {
    if (!m_validity.hasReport) {
        return;
    }
    constexpr auto Kind = ReadReport::Kind::MissingElement;
    // An element that came when the report was full has no place.
    if (m_place.line == 0 || !m_validity.missing.HasRoomFor(Kind)) {
        ++m_validity.missing.m_leftOut;
        return;
    }
    ReadReport::Entry entry = m_place;
    entry.kind = Kind;
    entry.sentence = L"The element \"" + child.m_name + L"\" must be in here and isn't.";
    m_validity.missing.Add(std::move(entry));
}

} // namespace Zantrel
