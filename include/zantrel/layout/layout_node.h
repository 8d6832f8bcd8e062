// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>
#include <zantrel/layout/layout_node_attributes.h>
#include <zantrel/layout/layout_nodes.h>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include <zantrel/macros_away.h>

namespace Zantrel {

/// One node of a schema: it declares a parameter, a group, a list or a container, with its default as text
/// and all that a host needs to show it. It holds no values. The attributes (m_name, m_type, ...) are public
/// fields of the bases.
///
/// A node is built, linked once and then only read. It owns its children and ends them with itself; a name or
/// text passed as a null pointer counts as empty. Whatever appends or copies throws std::bad_alloc and then
/// leaves this node as it was. One thread builds; a finished tree may be read by several.
///
/// Setters give the node, so that one expression declares a parameter:
///
///     group->AddNode(L"BuildHeight", Distance, 300.0)
///         ->SetRange(1.0, 500.0)
///         ->SetDisplayName(L"Build height")
///         ->SetPropName(L"Machine.BuildHeight");
///
/// Names of siblings need not differ, and nothing checks them. Only the latest of a name is found by it, and
/// a file can carry only a name that XML allows for an element.
struct ZANTREL_EXPORT LayoutNode : LayoutNodeAttributes {
    /// The node above, not owned. A copy names the parent of its source until it is appended itself, or until
    /// a tree with that parent in it is appended below it: no node becomes its own ancestor.
    LayoutNode* m_parent = nullptr;
    LayoutNodes m_children{this};

    /// A node of type Distance gets the postfix "mm"; SetType gives none.
    LayoutNode(wchar_t const* name, eTypeLayoutNode type, wchar_t const* defaultValue);
    /// Copies all fields, m_parent as it stands, and the children as LayoutNodes does: in the copy no child
    /// is found by name, at no level, and nodes below it name parents in the source, which must outlive their
    /// use. A tree that is to be searched by name is built with AddNode and AppendNode from the top down.
    LayoutNode(LayoutNode const& source);
    /// The same into this node. From a node below this one, which ends in the assignment, this node keeps its
    /// own parent.
    LayoutNode& operator=(LayoutNode const& source);
    /// A node that ends before the parent that owns it leaves it first.
    virtual ~LayoutNode();

    // --- Building ---

    /// A new node on the heap, linked to nothing; the caller owns it.
    static LayoutNode* MakeNode(wchar_t const* name, eTypeLayoutNode type);
    /// A copy, as the constructor makes it.
    static LayoutNode* MakeNode(LayoutNode const& source);
    /// T is double, bool, std::int32_t, std::wstring or wchar_t const*; the default is FormatValue of
    /// `value`.
    template <class T> static LayoutNode* MakeNode(wchar_t const* name, eTypeLayoutNode type, T const& value);

    /// Append a new Group, a copy of `node`, or MakeNode(name, type, value), and give the new child. The
    /// value becomes a text at once, a number with the four digits of a new node: 0.00005 is kept as 0.0001,
    /// and for more SetPrecision comes first and SetDefaultValue after it. For a Bool it is a bool: 1 becomes
    /// "1", which isn't "True" and so is false.
    LayoutNode* AddNode(wchar_t const* name);
    LayoutNode* AddNode(LayoutNode const& node);
    template <class T>
    LayoutNode* AddNode(wchar_t const* name, eTypeLayoutNode type, T const& value)
        ZANTREL_WARN_IF((type == Bool && std::is_arithmetic_v<T> && !std::is_same_v<T, bool>),
                        "the default of a Bool is true or false: a number is no flag, and counts as false");

    /// Takes ownership of `child`, which must have been made with `new` or end before this node does, lists
    /// it last, indexes it under its name before older children of that name, and gives it this parent and
    /// this node's m_childrenWriteToParameterFile. Gives this node. When it throws, `child` is gone, unless a
    /// parent had it already. A child that stands under another parent leaves that one; one that stands here
    /// already is listed once more. Null, this node itself and a node that owns it, directly or not, are not
    /// appended.
    LayoutNode* AppendNode(LayoutNode* child);
    /// The same on the address of `child`: no copy is made and ownership passes.
    LayoutNode* AppendNode(LayoutNode const& child);
    /// Appends a new Group and gives this node, where AddNode of a name gives the Group.
    LayoutNode* AppendNode(wchar_t const* name);

    /// Reorders the children as if building a new list: before each entry of the old list is looked at,
    /// `child` is pushed if the new list has exactly `index` entries, then the entry unless it is `child`;
    /// the result is written over the front of the old list, whose length stays. So 0 brings `child` to the
    /// front; a target at the end or behind it drops `child` from the list and shows the last entry twice,
    /// while GetNode still finds `child`. A node that isn't a child changes nothing.
    void MoveNodeTo(LayoutNode const* child, std::size_t index);

    /// Gives the node an identifier, "SourceID_" and a UUID, unless it has one.
    void GenerateSourceIdentifier();

    // --- Walking ---

    /// Throws std::out_of_range, "invalid vector subscript".
    LayoutNode& At(std::size_t index) { return m_children.At(index); }
    LayoutNode const& At(std::size_t index) const { return m_children.At(index); }
    /// The last child, or null.
    LayoutNode* Back() { return m_children.Back(); }
    /// How many positions the children take.
    std::size_t Size() const noexcept { return m_children.Size(); }
    /// m_parent, in three ways: null for the root. Below a copy it is good while the copy's source lives.
    LayoutNode const* Parent() const noexcept { return m_parent; }
    LayoutNode* GetParentNode() noexcept { return m_parent; }
    LayoutNode const* GetParentNode() const noexcept { return m_parent; }
    /// The node whose child this is, also in a copy, where m_parent names a node of the source; null for a
    /// root. Nodes linked by it never form a ring.
    LayoutNode const* GetOwner() const noexcept;

    /// The latest child that was appended under this name, or null. Never allocates.
    LayoutNode const* GetNode(std::wstring_view name) const noexcept { return m_children.Find(name); }
    LayoutNode const* GetNode(wchar_t const* name) const noexcept;
    /// GetNode of the name converted from UTF-8, fast for names in list order: see LayoutNodes::FindUtf8.
    LayoutNode const* FindChildUtf8(std::string_view utf8Name, std::size_t& hint) const {
        return m_children.FindUtf8(utf8Name, hint);
    }
    /// This node's child of that name if it is a profile list; otherwise, if `recursive`, the first that any
    /// node below has, depth first. Null when there is none.
    LayoutNode const* FindProfileList(std::wstring const& name, bool recursive) const;

    /// The names from just below `top` down to this node, joined by "_"; empty for `top` itself. Ends at the
    /// root when `top` is none of the nodes above.
    std::wstring GetQueryName(LayoutNode const& top) const;
    /// Replaces `path` by the nodes from just below `top` down to this one. False when `top` is none of the
    /// nodes above; then `path` begins at the root.
    bool GetQueryPath(LayoutNode const& top, std::deque<LayoutNode const*>& path) const;
    /// Inserts the property names of this node and of all nodes below. Gives this node.
    LayoutNode const* AddUsedPropertyNames(std::set<std::wstring>& names) const;

    // --- Values as text ---

    /// The text of a value; T is double, bool, std::int32_t, std::wstring or wchar_t const*. Numbers print as
    /// a wide stream with the global locale prints them, a double in fixed notation with m_precision digits
    /// behind a point that is always there; a bool is "True" or "False".
    template <class T> std::wstring FormatValue(T const& value) const;
    /// The value of a text; T is double, bool, std::int32_t or std::wstring. A number is what a wide stream
    /// with the global locale extracts into a variable that is 0, so "12abc" is 12 and a text that begins
    /// with no number is 0. Only "True" is true.
    template <class T> T GetValue(std::wstring const& text) const;

    /// The default, or both limits, as FormatValue gives them with the precision that the node has by then. A
    /// database reads them under the locale of its own time: build a layout under the locale that is global
    /// when databases are made and files of it are read, or under the classic one (docs/locale.md).
    template <class T> LayoutNode* SetDefaultValue(T const& value);
    template <class T> LayoutNode* SetRange(T const& minimum, T const& maximum);

    // --- Conditions ---

    /// This node is visible, or editable, depending on the value of `source` compared with `value`; T is
    /// std::wstring or bool. Gives `source` an identifier if it has none. `source` isn't owned; a null one
    /// adds nothing.
    template <class T> LayoutNode* AddVisibilitySource(LayoutNode* source, T const& value);
    template <class T> LayoutNode* AddEditabilitySource(LayoutNode* source, T const& value);

    /// Replaces the request: a node has one.
    LayoutNode* AddVisibilityRequest(std::wstring request) {
        return Set(m_visibilityRequest, std::move(request));
    }
    /// Adds one more licence. The library asks for none: it writes them to files and leaves the rest to
    /// hosts.
    LayoutNode* AddLicenseCheckForEditorVisibility(std::wstring const& license);

    // --- Containers and options ---

    /// The node's value is a sequence of items, or no longer. `nodeName` is the XML tag of one item. An empty
    /// `nodeDisplayName` leaves the old one.
    LayoutNode* SetList(bool isList, wchar_t const* nodeName, std::wstring const& nodeDisplayName);
    /// The node holds named profiles, or no longer. `nodeName` is the XML tag of one profile.
    LayoutNode* SetProfile(bool isProfile, wchar_t const* nodeName);
    /// A list of categories is a profile list too; `false` leaves a profile list one.
    LayoutNode* SetCategoryList(bool isCategory, wchar_t const* nodeName);
    /// Makes the node a choice among the members of a profile list, whose name goes to m_nodeName.
    /// m_profileName stays: set it with SetProfileName for GetReferredNodes and for files. A null node
    /// changes nothing.
    LayoutNode* SetTypeFromProfiles(LayoutNode const* profileList);
    LayoutNode* SetTypeFromProfiles(wchar_t const* name);
    /// Adds a value and its display name. Leaves the type.
    LayoutNode* AddOption(std::wstring const& value, std::wstring const& displayName);
    /// The image that goes with the description, and how a host stretches it.
    LayoutNode* SetImageDescription(std::wstring image, std::wstring stretch);

    /// \name Attributes
    /// Getters copy; setters store, give this node, require nothing and check nothing. What each one means
    /// stands with its field, in layout_node_attributes.h, and docs/layout_attributes.md has a table of all.
    /// Which getters are const is what hosts were compiled against; on a const node read the field.
    /// @{

    eTypeLayoutNode GetType() { return m_type; }
    std::wstring GetName() { return m_name; }
    std::wstring GetIdentifier() { return m_identifier; }
    std::wstring GetProfileName() { return m_profileName; }
    std::wstring GetRequestName() { return m_requestName; }
    std::wstring GetTriggerPropertyName() { return m_triggerPropertyName; }
    std::wstring const& GetFileFilter() const { return m_fileFilter; }
    bool GetAllowEmpty() { return m_allowEmpty; }
    LayoutNode const* GetProfileNode() { return m_profileNode; }
    bool GetIsValueUnique() const { return m_isValueUnique; }
    bool GetDisableForParents() { return m_disableForParents; }
    bool GetDisableForSubParts() { return m_disableForSubParts; }
    std::wstring GetProfileEditingPolicy() { return m_profileEditingPolicy; }
    bool GetShowOnlyPartsSelectedInTessra() { return m_showOnlyPartsSelectedInTessra; }
    std::wstring GetPropName() { return m_propName; }

    bool GetIsList() { return m_isList; }
    bool GetIsProfileList() { return m_isProfileList; }
    bool GetIsCategoryList() { return m_isCategoryList; }
    bool GetUserCanAddRemove() { return m_userCanAddRemove; }
    bool GetUserCanSort() { return m_userCanSort; }
    std::wstring GetNodeName() { return m_nodeName; }
    std::wstring GetNodeDisplayName() { return m_nodeDisplayName; }
    std::wstring GetContainerDisplayName() { return m_containerDisplayName; }
    std::wstring GetContainerDescription() { return m_containerDescription; }
    std::uint64_t GetMultiplicity() { return m_multiplicity; }
    std::uint64_t GetMultiplicityMax() { return m_multiplicityMax; }
    std::uint64_t GetMultiplicityMin() { return m_multiplicityMin; }
    std::wstring GetMultiplicityMaxMessage() { return m_multiplicityMaxMessage; }
    std::wstring GetMultiplicityMinMessage() { return m_multiplicityMinMessage; }
    bool GetUserCanRemoveAnyElement() { return m_userCanRemoveAnyElement; }
    bool GetCanBeTransformed() const { return m_canBeTransformed; }

    bool GetVisible() { return m_visible; }
    bool GetReadOnly() { return m_readOnly; }
    bool GetExpanded() { return m_expanded; }
    bool GetHideName() { return m_hideName; }
    bool GetPerformTransform() const { return m_performTransform; }
    std::int32_t GetPrecision() { return m_precision; }
    std::wstring GetDisplayName() { return m_displayName; }
    std::wstring GetPrefix() { return m_prefix; }
    std::wstring GetPostfix() { return m_postfix; }
    std::wstring GetDescription() { return m_description; }
    std::wstring GetImageDescription() { return m_imageDescription; }
    std::wstring GetDisplayNameSharedSizeGroup() { return m_displayNameSharedSizeGroup; }
    std::wstring GetPostfixSharedSizeGroup() { return m_postfixSharedSizeGroup; }

    /// Changes nothing else: no unit, no default.
    LayoutNode* SetType(eTypeLayoutNode type) { return Set(m_type, type); }
    /// Use before the node is appended: the parent's index keeps the name that the child had then.
    LayoutNode* SetName(std::wstring name) { return Set(m_name, std::move(name)); }
    LayoutNode* SetIdentifier(std::wstring identifier) { return Set(m_identifier, std::move(identifier)); }
    LayoutNode* SetProfileName(std::wstring name) { return Set(m_profileName, std::move(name)); }
    LayoutNode* SetRequestName(std::wstring name) { return Set(m_requestName, std::move(name)); }
    LayoutNode* SetTriggerPropertyName(std::wstring name) {
        return Set(m_triggerPropertyName, std::move(name));
    }
    LayoutNode* SetFileFilter(std::wstring const& filter) { return Set(m_fileFilter, filter); }
    LayoutNode* SetAllowEmpty(bool allow) { return Set(m_allowEmpty, allow); }
    /// Borrowed; a copy of this node goes on naming it. Choices and files go by SetProfileName.
    LayoutNode* SetProfileNode(LayoutNode const* node) { return Set(m_profileNode, node); }
    LayoutNode* SetIsValueUnique(bool unique) { return Set(m_isValueUnique, unique); }
    LayoutNode* SetDisableForParents(bool disable) { return Set(m_disableForParents, disable); }
    LayoutNode* SetDisableForSubParts(bool disable) { return Set(m_disableForSubParts, disable); }
    LayoutNode* SetProfileEditingPolicy(std::wstring policy) {
        return Set(m_profileEditingPolicy, std::move(policy));
    }
    LayoutNode* SetShowOnlyPartsSelectedInTessra(bool only) {
        return Set(m_showOnlyPartsSelectedInTessra, only);
    }
    LayoutNode* SetPropName(std::wstring name) { return Set(m_propName, std::move(name)); }

    /// The flags alone. SetList, SetProfile and SetCategoryList set the name of an entry, too, under which
    /// files hold it.
    LayoutNode* SetIsList(bool isList) { return Set(m_isList, isList); }
    LayoutNode* SetIsProfileList(bool isList) { return Set(m_isProfileList, isList); }
    LayoutNode* SetIsCategoryList(bool isList) { return Set(m_isCategoryList, isList); }
    LayoutNode* SetUserCanAddRemove(bool can) { return Set(m_userCanAddRemove, can); }
    LayoutNode* SetUserCanSort(bool can) { return Set(m_userCanSort, can); }
    LayoutNode* SetNodeName(std::wstring name) { return Set(m_nodeName, std::move(name)); }
    LayoutNode* SetNodeDisplayName(std::wstring const& name) { return Set(m_nodeDisplayName, name); }
    LayoutNode* SetContainerDisplayName(std::wstring name) {
        return Set(m_containerDisplayName, std::move(name));
    }
    LayoutNode* SetContainerDescription(std::wstring text) {
        return Set(m_containerDescription, std::move(text));
    }
    LayoutNode* SetMultiplicity(std::uint64_t count) { return Set(m_multiplicity, count); }
    LayoutNode* SetMultiplicityMax(std::uint64_t count) { return Set(m_multiplicityMax, count); }
    LayoutNode* SetMultiplicityMin(std::uint64_t count) { return Set(m_multiplicityMin, count); }
    LayoutNode* SetMultiplicityMaxMessage(std::wstring text) {
        return Set(m_multiplicityMaxMessage, std::move(text));
    }
    LayoutNode* SetMultiplicityMinMessage(std::wstring text) {
        return Set(m_multiplicityMinMessage, std::move(text));
    }
    LayoutNode* SetUserCanRemoveAnyElement(bool can) { return Set(m_userCanRemoveAnyElement, can); }
    LayoutNode* SetCanBeTransformed(bool can) { return Set(m_canBeTransformed, can); }

    LayoutNode* SetVisible(bool visible) { return Set(m_visible, visible); }
    LayoutNode* SetReadOnly(bool readOnly) { return Set(m_readOnly, readOnly); }
    LayoutNode* SetExpanded(bool expanded) { return Set(m_expanded, expanded); }
    LayoutNode* SetHideName(bool hide) { return Set(m_hideName, hide); }
    LayoutNode* SetPerformTransform(bool perform) { return Set(m_performTransform, perform); }
    /// Limits and defaults that were set as numbers before keep the digits that they were printed with.
    LayoutNode* SetPrecision(std::int32_t digits) { return Set(m_precision, digits); }
    LayoutNode* SetDisplayName(std::wstring name) { return Set(m_displayName, std::move(name)); }
    LayoutNode* SetPrefix(std::wstring prefix) { return Set(m_prefix, std::move(prefix)); }
    LayoutNode* SetPostfix(std::wstring postfix) { return Set(m_postfix, std::move(postfix)); }
    LayoutNode* SetDescription(std::wstring text) { return Set(m_description, std::move(text)); }
    LayoutNode* SetDisplayNameSharedSizeGroup(std::wstring group) {
        return Set(m_displayNameSharedSizeGroup, std::move(group));
    }
    LayoutNode* SetPostfixSharedSizeGroup(std::wstring group) {
        return Set(m_postfixSharedSizeGroup, std::move(group));
    }
    /// @}

protected:
    std::wstring GenerateNewSourceIdentifier();

private:
    friend class LayoutNodes;
    friend class ChildList;
    struct WithoutChildren {};

    // For copying a tree level by level, without a nested call for each.
    LayoutNode(LayoutNode const& source, WithoutChildren);

    template <class Field, class Value> LayoutNode* Set(Field& field, Value&& value) {
        field = std::forward<Value>(value);
        return this;
    }

    // By ownership, which m_parent may differ from.
    bool StandsBelow(LayoutNode const& top) const noexcept;
    bool HasAtOrBelow(LayoutNode const* sought) const noexcept;
    void LeadParentsPast(LayoutNode const& child) noexcept;

    ChildList* m_owner = nullptr; ///< the list that ends this node; null: the caller does
    std::size_t m_slot = static_cast<std::size_t>(-1); ///< the last one there
};

// Instantiating one of these means that no specialisation below has that type.
template <class T> std::wstring LayoutNode::FormatValue(T const& value) const {
    static_assert(
        std::is_convertible_v<T const&, wchar_t const*>,
        "a value is double, bool, std::int32_t, std::wstring or wchar_t const*; for long use std::int32_t");
    return FormatValue<wchar_t const*>(value);
}
template <> ZANTREL_EXPORT std::wstring LayoutNode::FormatValue(double const& value) const;
template <> ZANTREL_EXPORT std::wstring LayoutNode::FormatValue(std::int32_t const& value) const;
template <> ZANTREL_EXPORT std::wstring LayoutNode::FormatValue(bool const& value) const;
template <> ZANTREL_EXPORT std::wstring LayoutNode::FormatValue(std::wstring const& value) const;
template <> ZANTREL_EXPORT std::wstring LayoutNode::FormatValue(wchar_t const* const& value) const;

template <class T> T LayoutNode::GetValue(std::wstring const&) const {
    static_assert(!std::is_same_v<T, T>,
                  "a value is double, bool, std::int32_t or std::wstring; for long use std::int32_t");
    return T();
}
template <> ZANTREL_EXPORT double LayoutNode::GetValue(std::wstring const& text) const;
template <> ZANTREL_EXPORT std::int32_t LayoutNode::GetValue(std::wstring const& text) const;
template <> ZANTREL_EXPORT bool LayoutNode::GetValue(std::wstring const& text) const;
template <> ZANTREL_EXPORT std::wstring LayoutNode::GetValue(std::wstring const& text) const;

template <class T> LayoutNode* LayoutNode::AddVisibilitySource(LayoutNode* source, T const& value) {
    static_assert(std::is_convertible_v<T const&, wchar_t const*>,
                  "a condition's value is std::wstring or bool");
    return AddVisibilitySource<std::wstring>(source, FormatValue<wchar_t const*>(value));
}
template <>
ZANTREL_EXPORT LayoutNode* LayoutNode::AddVisibilitySource(LayoutNode* source, std::wstring const& value);
template <> ZANTREL_EXPORT LayoutNode* LayoutNode::AddVisibilitySource(LayoutNode* source, bool const& value);

template <class T> LayoutNode* LayoutNode::AddEditabilitySource(LayoutNode* source, T const& value) {
    static_assert(std::is_convertible_v<T const&, wchar_t const*>,
                  "a condition's value is std::wstring or bool");
    return AddEditabilitySource<std::wstring>(source, FormatValue<wchar_t const*>(value));
}
template <>
ZANTREL_EXPORT LayoutNode* LayoutNode::AddEditabilitySource(LayoutNode* source, std::wstring const& value);
template <>
ZANTREL_EXPORT LayoutNode* LayoutNode::AddEditabilitySource(LayoutNode* source, bool const& value);

template <class T>
LayoutNode* LayoutNode::MakeNode(wchar_t const* name, eTypeLayoutNode type, T const& value) {
    std::unique_ptr<LayoutNode> node(MakeNode(name, type));
    node->SetDefaultValue(value);
    return node.release();
}

template <class T>
LayoutNode* LayoutNode::AddNode(wchar_t const* name, eTypeLayoutNode type, T const& value) {
    LayoutNode* const child = MakeNode(name, type, value);
    AppendNode(child);
    return child;
}

template <class T> LayoutNode* LayoutNode::SetDefaultValue(T const& value) {
    return Set(m_defaultValue, FormatValue(value));
}

template <class T> LayoutNode* LayoutNode::SetRange(T const& minimum, T const& maximum) {
    std::wstring formatted = FormatValue(minimum);
    m_max = FormatValue(maximum);
    m_min = std::move(formatted);
    return this;
}

} // namespace Zantrel

#include <zantrel/macros_back.h>
