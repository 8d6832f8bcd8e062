// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>
#include <zantrel/layout/anchor_source.h>
#include <zantrel/layout/layout_node.h>
#include <zantrel/layout/shared_shapes.h>

#include <set>
#include <string>
#include <vector>

namespace Zantrel {

class ResourceDictionary;

/// A schema as a whole: the root of its own tree of nodes, with handles on the nodes that every layout has
/// (the anchors).
///
/// Construction makes the anchors' nodes; then the layout is filled, in code or from a file, and finished by
/// AddCategoryNodeIfNeeded, which reading a file calls itself. From then on it is only read, also by several
/// threads, and it outlives every database and build ticket made on it. What is added later has no value in
/// the databases that are there.
///
/// Parameters with values stand below m_profileEditor: a node that is added to the layout itself stands
/// beside its sections, where no database holds a value for it. Lint of Zantrel::Editing names such nodes.
///
/// A layout stays where it is built, since its anchors do: build it in a constructor of a class of your own,
/// or behind a std::unique_ptr, and not in a function that gives it by value.
///
///     ParameterLayout layout;
///     layout.SetName(L"Machine");
///     layout.m_profileEditor->AddNode(L"BuildHeight", Distance, 300.0);
///     layout.AddCategoryNodeIfNeeded();
///     ParameterDatabase database(&layout);
class ZANTREL_EXPORT ParameterLayout : public LayoutNode {
public:
    /// A handle on a node of a layout, one pointer. Never owns and never checks for null: it is good as long
    /// as the node.
    class pNode {
    public:
        pNode(LayoutNode* node = nullptr) noexcept : m_node(node) {}

        /// A handle stands wherever a pointer to a node is asked for. A const one converts to a node that is
        /// only read; GetNode gives the node itself also then.
        operator LayoutNode*() noexcept { return m_node; }
        operator LayoutNode const*() const noexcept { return m_node; }
        LayoutNode* operator->() noexcept { return m_node; }
        LayoutNode const* operator->() const noexcept { return m_node; }
        LayoutNode* GetNode() const noexcept { return m_node; }

    private:
        LayoutNode* m_node;
    };

    pNode m_versionNode;          ///< "Minor", the end of the chain below "Version", and not "Version" itself
    pNode m_profileEditor;        ///< holds the profile lists, or "GenericParameters" and "Categories"
    pNode m_genericParameters;    ///< null without a category level that has it
    pNode m_categories;           ///< null without a category level
    pNode m_jobConfigurator;      ///< null unless a file held it
    pNode m_platformConfigurator; ///< holds the platform options and the part options
    pNode m_categoryOption;       ///< null until AddCategoryNodeIfNeeded makes it
    pNode m_platformOptions;      ///< options of a whole platform
    pNode m_partOptions;          ///< options of a part on a platform
    pNode m_partConfigurator;     ///< overrides of one part
    ResourceDictionary* m_resourceDictionary = nullptr; ///< not owned

    ParameterLayout();
    /// Copies the nodes as LayoutNode does and the anchors as bare pointers: the anchors of the copy stand in
    /// the source's tree, so the source must outlive the copy and keep its nodes: a copy can't be assigned
    /// back to its source. Moving is copying, and as a rule a mistake: `return layout;` may give a copy whose
    /// source ends at once. Assigning a layout to itself changes nothing.
    ParameterLayout(ParameterLayout const& source);
    ParameterLayout& operator=(ParameterLayout const& source);
    [[deprecated("its anchors stay behind: build it in place")]] ParameterLayout(ParameterLayout&& source)
        : ParameterLayout(static_cast<ParameterLayout const&>(source)) {}
    [[deprecated("its anchors stay behind: build it in place")]] ParameterLayout&
    operator=(ParameterLayout&& source) {
        return *this = static_cast<ParameterLayout const&>(source);
    }
    ~ParameterLayout() override;

    /// Throws std::logic_error for a copy whose source has ended. Databases and all below that goes by the
    /// anchors ask it.
    void CheckAnchors() const;

    /// Gives the platform options a first option "Category", a choice among the members of the one profile
    /// list that FindCategoryNode gives. Adds nothing without such a list, or when an option already chooses
    /// from it.
    void AddCategoryNodeIfNeeded();
    /// The profile list directly below "ProfileEditor" if there is exactly one, whether of categories or not;
    /// otherwise null.
    LayoutNode const* FindCategoryNode() const;

    /// Replaces `nodes` by the direct children of the platform options, then of the part options.
    void GetBuildTicketNodes(std::vector<LayoutNode const*>& nodes) const;
    /// Replaces `nodes` by the direct children of "PartConfigurator".
    void GetBuildTicketNodesPartOverrides(std::vector<LayoutNode const*>& nodes) const;
    /// Replaces `nodes` by the profile lists that `node` depends on: the one its m_profileName names, after
    /// those in whose members it stands. False, and `nodes` is empty, when there is none or `node` is null.
    bool GetReferredNodes(LayoutNode const* node, std::vector<LayoutNode const*>& nodes) const;
    /// Replaces `names` by the property names of the whole tree.
    void GetUsedPropertyNames(std::set<std::wstring>& names) const;

    /// The host's translations of display strings. Set it before a meta file is read, if that file's are
    /// wanted.
    ResourceDictionary* GetResourceDictionary() { return m_resourceDictionary; }
    ResourceDictionary const* GetResourceDictionary() const { return m_resourceDictionary; }
    void SetResourceDictionary(ResourceDictionary* dictionary) { m_resourceDictionary = dictionary; }

protected:
    /// Builds the nodes that every layout has. Called by the constructor.
    void _Init();
    /// Adds the list of categories below "ProfileEditor", before it "GenericParameters" if wanted. For the
    /// constructor of a derived layout, once: a second call adds further nodes of the same names and leads
    /// the anchors to them.
    void _InitCategoryLevel(bool withGeneric);

private:
    friend class LayoutShapes;

    mutable SharedShapes m_shapes;
    AnchorSource m_anchorSource;
};

} // namespace Zantrel
