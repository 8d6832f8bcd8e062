// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "layout_files/layout_read.h"
#include "layout_files/passed_over.h"

#include <memory>
#include <string>

/// Makes nodes of the elements of a layout meta file.
///
/// A container is written as two elements, of which the outer one holds the inner one: together they are one
/// node. The outer one makes none, but is kept as pending until the next parameter's start tag, wherever that
/// stands; that parameter gives the node its type, its default and its attributes, and its own tag as the
/// name of one entry. The walk so goes one level down for two start tags. On the way back the end tag of the
/// inner element, whose name isn't the node's, changes nothing, and that of the outer one leads up.
class ParameterLayoutIOMetaFileRead : public Zantrel::LayoutRead {
public:
    /// `report` is that of the read, which then also hears how much is passed over; or null.
    explicit ParameterLayoutIOMetaFileRead(Zantrel::ParameterLayout& layout,
                                           Zantrel::ReadReport* report = nullptr)
        : LayoutRead(layout), m_passedOver(report) {}

private:
    /// Containers that were opened and wait for their item. Several can be pending: the node is then all of
    /// that, under the name of the last.
    struct Container {
        bool isList = false, isProfileList = false, isCategoryList = false;
        std::wstring tag, displayName;

        bool IsPending() const { return isList || isProfileList || isCategoryList; }
        /// Makes `node` these containers. `itemTag` is the name of one entry.
        void Complete(Zantrel::LayoutNode& node, std::string const& itemTag);
    };

    void ReadRoot(KelSAX::ISAXReader& reader) override;
    bool ReadElement(std::string const& tag, KelSAX::ISAXReader& reader) override;
    void HandleEndTag(std::string_view tag) override;
    void ResolveReferences(KelSAX::ISAXReader& reader) override;

    bool EnterSection(std::string_view tag);
    // The elements of the grammar. True: the element was taken.
    bool AddJobConfigurator(KelSAX::ISAXReader& reader);
    bool ReadDictionary(KelSAX::ISAXReader& reader);
    bool PassThrough(KelSAX::ISAXReader& reader);
    bool PassOver(KelSAX::ISAXReader& reader);
    bool PassEntryThrough(KelSAX::ISAXReader& reader);
    bool OpenContainer(std::string const& tag, KelSAX::ISAXReader& reader);
    void ReadParameter(std::string const& tag, KelSAX::ISAXReader& reader);
    Zantrel::eTypeLayoutNode ReadType(KelSAX::ISAXReader& reader);

    Zantrel::PassedOver m_passedOver;
    Container m_pending;
    std::string m_word; ///< an attribute's value; kept for its room
};
