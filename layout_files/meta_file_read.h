// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "layout_files/layout_read.h"

#include <string>

/// Makes nodes of the elements of a layout meta file.
class ParameterLayoutIOMetaFileRead : public LayoutRead {
public:
    using LayoutRead::LayoutRead;

private:
    bool ReadElement(std::string const& tag, KelSAX::ISAXReader& reader) override;
    void HandleEndTag(std::string_view tag) override;

    bool EnterSection(std::string_view tag);
    void AddJobConfigurator(KelSAX::ISAXReader& reader);
    bool ReadDictionary(KelSAX::ISAXReader& reader);
    void ReadParameter(std::string const& tag, KelSAX::ISAXReader& reader);
    bool OpenContainer(std::string const& tag, KelSAX::ISAXReader& reader);
    void CloseContainer(Zantrel::LayoutNode& node, std::string const& itemTag);

    bool HasContainer() const { return m_pendingList || m_pendingProfile || m_pendingCategory; }

    // A container that was opened and waits for its item, with which it makes one node. Several can be
    // pending: the node is then all of that, under the name of the last.
    bool m_pendingList = false;
    bool m_pendingProfile = false;
    bool m_pendingCategory = false;
    std::wstring m_pendingContainerTag;
    std::wstring m_pendingContainerDisplayName;

    std::string m_word; ///< an attribute's value; kept for its room
};
