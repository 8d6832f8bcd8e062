// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "layout_files/layout_read.h"
#include "layout_files/meta_file_references.h"

#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace Zantrel {

/// Makes nodes of the elements of a layout meta file, with all that the elements say of them.
///
/// Where the walk stands is what the document says of its nesting: each element that is open has its entry in
/// m_open with the place that what it holds goes to, and leaves it with its own end tag, whatever the two are
/// called. So an element without a node of its own is one whose place is that of the element around it, and a
/// container and its item are two of one place.
class MetaFileWholeRead final : public LayoutRead {
public:
    /// `report` is that of the read, or null.
    MetaFileWholeRead(ParameterLayout& layout, ReadReport* report);

private:
    enum class Kind {
        Node,      ///< its elements are nodes below that of the place
        Container, ///< its first element is what the container holds
        Filled,    ///< a container that has got its element
        Options,   ///< its first element tells whether these are choices or a group
        Choices,   ///< its elements are choices of the place's node
        Leaf,      ///< has no elements
        Skipped,   ///< nothing in it counts
    };
    struct Element {
        Kind kind;
        Place place;
    };

    void ReadRoot(KelSAX::ISAXReader& reader) override;
    bool ReadElement(std::string const& tag, KelSAX::ISAXReader& reader) override;
    void HandleEndTag(std::string_view tag) override;
    void ResolveReferences(KelSAX::ISAXReader& reader) override;

    /// Opens the element as one of the kind, whose place is the current one.
    void Open(Kind kind) { m_open.push_back({kind, Here()}); }
    // Each opens the element. True: it was taken.
    bool ReadDictionary(KelSAX::ISAXReader& reader);
    bool ReadInNode(std::string const& tag, KelSAX::ISAXReader& reader);
    bool ReadItem(std::string const& tag, KelSAX::ISAXReader& reader);
    bool ReadInOptions(std::string const& tag, KelSAX::ISAXReader& reader);
    bool ReadChoice(std::string const& tag, KelSAX::ISAXReader& reader);
    bool Skip(KelSAX::ISAXReader& reader);

    bool IsPassedThrough(std::string_view tag) const;
    bool BeginsOptions(std::string_view tag, KelSAX::ISAXReader& reader) const;
    bool EnterOwnNode(std::string_view tag);
    bool AddNode(std::string const& tag, KelSAX::ISAXReader& reader);
    /// The current node from its element, or from the outer one of two.
    void ReadNode(KelSAX::ISAXReader& reader, bool isNew);
    bool ReadMarks(KelSAX::ISAXReader& reader, bool isNew);
    void ReadValue(KelSAX::ISAXReader& reader, bool isNew);
    void ReadType(KelSAX::ISAXReader& reader, bool isNew);
    void BoundItems();
    void FindCategoryLevel();

    ReadReport* m_report;
    std::vector<Element> m_open;
    std::vector<LayoutNode*> m_lists;       ///< that are to begin with items
    LayoutNode* m_version = nullptr;        ///< the layout's own, until an element has met it
    std::set<LayoutNode const*> m_versions; ///< what it holds and no element has met yet
    ReadReport::Entry m_containerPlace;     ///< of the last container, only with a report
    MetaFileReferences m_references;
    std::string m_word; ///< an attribute's value; kept for its room
};

} // namespace Zantrel
