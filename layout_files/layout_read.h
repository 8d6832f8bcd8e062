// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/layout/parameter_layout.h>
#include <zantrel/sax/sax_persist.h>
#include <zantrel/sax/sax_reader.h>
#include <zantrel/sax/sax_utilities.h>

#include <cstddef>
#include <memory>

/// What the readers of layout files share: a place in the tree of the layout under which the next node goes.
/// It never leaves the tree at the top, and a document that leads it too deep is refused as a whole.
class LayoutRead : public ISAXPersistHelper {
public:
    explicit LayoutRead(Zantrel::ParameterLayout& layout);

    void SetDefaults() final;
    /// The root names the layout; the elements below it are the format's.
    bool HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) final;

protected:
    /// An anchor of the layout; null stands for the root.
    using Anchor = Zantrel::ParameterLayout::pNode Zantrel::ParameterLayout::*;

    virtual bool ReadElement(std::string const& tag, KelSAX::ISAXReader& reader) = 0;

    bool IsAt(Anchor anchor) const;
    /// Whether the anchor's node, which may be missing, has this name. The root never has.
    bool IsNamed(Anchor anchor, std::string_view tag) const;
    void GoTo(Anchor anchor);
    void GoUp();
    /// Appends `node` to the current one and goes there, or refuses the document.
    void Add(std::unique_ptr<Zantrel::LayoutNode> node, KelSAX::ISAXReader& reader);
    /// The text of an element inside the version's node becomes the default of the child of that name.
    void ReadVersionPart(std::string const& tag, KelSAX::ISAXReader& reader);

    Zantrel::ParameterLayout& m_layout;
    Zantrel::LayoutNode* m_currentNode; ///< never null

private:
    Zantrel::LayoutNode* NodeOf(Anchor anchor) const;
    void SetCurrent(Zantrel::LayoutNode* node);

    KelAM::SaxUtilities::XMLNamespaceHandler m_namespaceHandler;
    std::size_t m_level = 0; ///< of the current node, below the root
};
