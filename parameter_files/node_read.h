// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "database/layout_shapes.h"
#include "parameter_files/element_watch.h"
#include "parameter_files/grammar.h"
#include "sax/plain_handler.h"

#include <zantrel/database/parameter_node.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Zantrel {

/// Reads the children of one element of a parameter file into the place of the database that the element
/// stands for: the content of a group, of a list or profile list as a whole, or of one item or profile. An
/// element with children of its own gets a handler of its own, which ends with it, unless it is plain: then
/// this one goes on in its place and comes back behind it.
///
/// The grammar and the validity are borrowed. With a validity, what doesn't fit the layout is reported, and
/// what stands deeper than the check goes isn't read.
class NodeRead : public Sax::PlainHandler {
public:
    bool HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) override;
    bool HandleLeaf(std::string_view tag, std::string_view text) override;
    bool HandleGroup(std::string_view tag) override;
    void HandleGroupEnd() override;
    bool HandleTextPiece(std::string const&, std::string_view) override { return m_leavesOutLongTexts; }

    /// For who asks for the places of values alone: of a text so long that it comes in pieces the end counts
    /// for the whole, so that it takes no room. Before the read.
    void LeaveOutLongTexts() { m_leavesOutLongTexts = true; }

protected:
    /// For the root, with a watch that reports to `validity` where one is given.
    NodeRead(ParameterNode const& node, ParameterFileGrammar const& grammar, ParameterFileValidity* validity);

private:
    /// For the element that `reader` is at, within the one of `parent`.
    NodeRead(ParameterNode const& node, NodeRead const& parent, KelSAX::ISAXReader const& reader);

    // What the element is, by its tag, its name and the cursor's node. Both touch no bag.
    FileElement Recognise(std::string const& tag, KelSAX::ISAXReader& reader);
    FileElement RecogniseParameter(std::string const& tag, KelSAX::ISAXReader& reader);
    bool IsOnProfileList() const {
        return m_place.node.m_isContainer && m_place.node.m_pNode->m_isProfileList;
    }
    bool IsOnList() const { return m_place.node.m_isContainer && m_place.node.m_pNode->m_isList; }

    /// The child that the element stands for, where it is the one behind that met last; null: to be looked
    /// up.
    NodeShape::Child const* NextByShape(std::string_view tag, KelSAX::ISAXReader& reader);
    /// The place of a group's children; an item is added. False where HandleTag has to look.
    bool FindGroup(std::string_view tag, ParameterNode& node);
    bool FindGroupByShape(NodeShape::Child const& child, ParameterNode& node);
    void FindShape(); ///< of m_place
    /// The same, but for its name, where parameters are named by their tags.
    NodeShape::Child const* NextCalled(std::string_view name) const;
    /// Reads the element of that child without a look-up. False where that can't be done, and nothing was.
    bool ReadByShape(NodeShape::Child const& child, KelSAX::ISAXReader& reader);

    // Each takes the element that is being handled, which Recognise has found to be of that kind. What has
    // children pushes a handler for them; a value, flag or entry without a place in the database is noted.
    void ReadDefault(KelSAX::ISAXReader& reader);
    void ReadEntry(KelSAX::ISAXReader& reader);
    void ReadProfile(KelSAX::ISAXReader& reader);
    /// Counts one more item or profile of this list; false refuses the document.
    bool IsEntryWithinLimit(KelSAX::ISAXReader& reader);
    /// Tells of a profile that shares its name with an earlier one; false refuses the document for it.
    bool IsNameAdmitted(std::wstring const& name, KelSAX::ISAXReader& reader) const;
    void ReadParameter(LayoutNode const& child, KelSAX::ISAXReader& reader);
    void ReadContent(ParameterNode& node, KelSAX::ISAXReader& reader);
    void ReadValue(ParameterNode const& node, KelSAX::ISAXReader& reader);
    void ReadChildren(ParameterNode const& node, KelSAX::ISAXReader& reader);
    void NoteUnknown(KelSAX::ISAXReader& reader) const;
    /// Those that an element of the kind can have, so that a report hears only of others.
    void KnowAttributes(FileElement::Kind kind, KelSAX::ISAXReader& reader) const;

    /// Where the children of an element go.
    struct Place {
        ParameterNode node;
        NodeShape const* shape = nullptr; ///< of the bag, where it fits the layout; or null
        std::size_t nextChild = 0;        ///< of the shape, where documents keep the layout's order
        std::size_t childHint = 0;        ///< for FindChildUtf8
    };

    Place m_place;               ///< of the handler's own element, or of the innermost group
    std::vector<Place> m_around; ///< the places that groups have left, from the handler's own on
    ParameterFileGrammar const& m_grammar;
    std::shared_ptr<FittingShapes> m_fitting; ///< of the whole read
    std::unique_ptr<ElementWatch> m_watch;    ///< null in a plain read
    std::string m_name;                       ///< of the parameter met last, where an attribute has it
    bool m_leavesOutLongTexts = false;
    std::uint64_t m_entries = 0; ///< items or profiles so far
};

} // namespace Zantrel
