// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "layout_files/vocabulary.h"

#include <zantrel/layout/parameter_layout.h>
#include <zantrel/sax/sax_persist.h>
#include <zantrel/sax/sax_reader.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace Zantrel {

/// What the readers of layout files share: a walk through the tree of the layout, which is borrowed and only
/// ever added to, in step with the elements of the document.
///
/// The current node is the one under which the next element's node goes. It is always the root or a node
/// below it: anchors that a host has emptied, and end tags that no start tag led in for, lead to the root and
/// never above it. Formats steer it by two rules: a start tag adds a node and goes there, or goes to an
/// anchor; an end tag goes up, or to an anchor. The two needn't come in pairs: what a document says of its
/// nesting and where the walk stands may differ, and files in use rely on how.
///
/// The level of the current node is counted along, so that a node that would stand too deep is refused where
/// it is read, before any walk over the layout has to bear it.
class LayoutRead : public ISAXPersistHelper {
public:
    explicit LayoutRead(ParameterLayout& layout);

    void SetDefaults() final;
    /// The root names the layout; the elements below it are the format's.
    bool HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) final;
    /// Adds the category option, which no file holds.
    void InitAfterLoading() final;

protected:
    /// An anchor of the layout; null stands for the root.
    using Anchor = ParameterLayout::pNode ParameterLayout::*;
    static constexpr Anchor Root = nullptr;

    /// Somewhere in the tree, to go back to.
    struct Place {
        LayoutNode* node;  ///< never null
        std::size_t level; ///< below the root
    };

    /// Follows the naming of the layout. The inherited one does nothing.
    virtual void ReadRoot(KelSAX::ISAXReader& reader);
    virtual bool ReadElement(std::string const& tag, KelSAX::ISAXReader& reader) = 0;

    LayoutNode* NodeOf(Anchor anchor) const;
    bool IsAt(Anchor anchor) const;
    /// Whether the anchor's node, which may be missing, has this name. The root never has.
    bool IsNamed(Anchor anchor, std::string_view tag) const;
    void GoTo(Anchor anchor);
    void GoTo(Place place);
    void GoUp();
    Place Here() const { return {m_currentNode, m_level}; }
    /// Appends `node` to the current one and goes there, or refuses the document and gives false.
    bool Add(std::unique_ptr<LayoutNode> node, KelSAX::ISAXReader& reader);

    /// The type of a word in a file; a text for a word that the file doesn't know, which is noted.
    static eTypeLayoutNode TypeOf(LayoutWord::TypeWord LayoutWord::TypeRow::*file, std::string_view word,
                                  KelSAX::ISAXReader& reader);

    ParameterLayout& m_layout;
    LayoutNode* m_currentNode; ///< never null

private:
    void SetCurrent(LayoutNode* node);

    std::size_t m_level = 0; ///< of the current node, below the root
};

} // namespace Zantrel
