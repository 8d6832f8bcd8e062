// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "parameter_files/validity.h"
#include "parameter_files/vocabulary.h"

#include <zantrel/database/parameter_node.h>
#include <zantrel/sax/sax_persist.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>

/// The flags that an element of each kind is read for, in this order.
struct ReadFlagTables {
    std::span<Zantrel::FlagAttribute const> node;
    std::span<Zantrel::FlagAttribute const> profile;
    std::span<Zantrel::FlagAttribute const> item;
};

/// What the readers of both parameter files share: the children of one element are read in step with the
/// layout, as the content of a group, of a list or profile list as a whole, or of one item or profile. Where
/// a validity is attached, it hears what doesn't fit; the element's end comes with the end of the handler.
class NodeRead : public ISAXPersistHelper {
public:
    NodeRead(NodeRead const&) = delete;
    NodeRead& operator=(NodeRead const&) = delete;
    ~NodeRead() override;

    bool HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) final;

protected:
    NodeRead(Zantrel::ParameterNode const& node, std::shared_ptr<ParameterFileValidity> validity,
             ReadFlagTables const& flags);

    /// An element that is neither beyond what is checked nor without a layout.
    virtual bool ReadElement(std::string const& tag, KelSAX::ISAXReader& reader) = 0;
    /// A new handler for the children of an element on `node`.
    virtual NodeRead* MakeHandler(Zantrel::ParameterNode const& node) const = 0;

    bool IsOnProfileList() const { return m_node.m_isContainer && m_node.m_pNode->m_isProfileList; }
    bool IsOnList() const { return m_node.m_isContainer && m_node.m_pNode->m_isList; }

    /// Takes an entry of the list or profile list that the cursor stands on. False when `tag` is none.
    bool ReadEntry(std::string const& tag, KelSAX::ISAXReader& reader);
    /// The child of that name, or null. Fast where documents keep the layout's order.
    Zantrel::LayoutNode const* FindChild(std::string_view name) {
        return m_node.m_pNode->FindChildUtf8(name, m_childHint);
    }
    void ReadChild(Zantrel::LayoutNode const& child, KelSAX::ISAXReader& reader);

    /// Answers false, for an element that isn't taken.
    bool ReportInvalid(std::string_view tag) const;
    bool ReportUnhandled(std::string_view tag) const;

    std::shared_ptr<ParameterFileValidity> const& GetValidity() const { return m_validity; }

private:
    std::optional<bool> CheckBeforeReading(std::string const& tag, KelSAX::ISAXReader& reader);
    void ReadDefault(KelSAX::ISAXReader& reader);
    void ReadProfile(KelSAX::ISAXReader& reader);
    void ReadItem(KelSAX::ISAXReader& reader);
    void ReadValue(Zantrel::ParameterNode const& node, KelSAX::ISAXReader& reader);
    void ReadChildren(Zantrel::ParameterNode const& node, KelSAX::ISAXReader& reader);
    bool Report(std::wstring_view what, std::string_view tag) const;
    void ReportMissing();

    Zantrel::ParameterNode m_node;
    std::shared_ptr<ParameterFileValidity> m_validity; ///< null in a plain read
    std::set<Zantrel::LayoutNode const*> m_seenNodes;  ///< children met; only where a validity is attached
    bool m_isSeenWhole = false; ///< some stood too deep to be looked at: none is missed
    ReadFlagTables const& m_flags;
    std::size_t m_childHint = 0;
};
