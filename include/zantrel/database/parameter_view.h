// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/database/parameter_node.h>
#include <zantrel/export.h>

#include <string>
#include <vector>

namespace Zantrel {

/// A cursor that only reads: what a ParameterDatabase gives where it is const. Made from any ParameterNode,
/// and never the other way. It reads as a ParameterNode does, with the same results and the same exceptions,
/// and adds nothing to any bag: a list that has no sequence of items has none afterwards, too.
///
/// A small value that goes stale as a ParameterNode does. Reading may still write marks into the bags, so
/// that a database and all views of it belong to one thread at a time.
class ZANTREL_EXPORT ParameterView {
public:
    ParameterView() = default;
    ParameterView(ParameterNode const& node) : m_node(node) {}

    /// The node of the layout, or null.
    LayoutNode const* GetLayoutNode() const { return m_node.m_pNode; }
    /// Whether there is content.
    bool IsValid() const { return m_node.IsValid(); }
    /// Whether this stands on a list or profile list as a whole, not on one entry or any other node.
    bool IsContainer() const { return m_node.m_isContainer; }

    ParameterView Get(LayoutNode const* node) const { return m_node.Get(node); }
    ParameterView Get(wchar_t const* name) const { return m_node.Get(name); }
    ParameterView Get(std::wstring const& name) const { return m_node.Get(name); }
    /// The leaf of a path, in the index that this view makes at the first call and keeps with its copies.
    ParameterView Query(wchar_t const* path) const { return m_node.Query(path); }

    /// See ParameterNode. A list without a sequence has no item: std::out_of_range for every index.
    ParameterView GetListNode(unsigned long long index) const;
    ParameterView GetProfile(wchar_t const* name) const { return m_node.GetProfile(name); }
    bool HasProfile(wchar_t const* name) const { return m_node.HasProfile(name); }
    void GetProfiles(std::vector<std::wstring>& names) const { m_node.GetProfiles(names); }
    ParameterView GetDefault() const { return m_node.GetDefault(); }
    unsigned long long GetSize() const;

    bool GetReadOnly() const { return m_node.GetReadOnly(); }
    bool GetHidden() const { return m_node.GetHidden(); }
    bool GetNameReadOnly() const { return m_node.GetNameReadOnly(); }
    bool GetCanBeDeleted() const { return m_node.GetCanBeDeleted(); }
    bool GetUserDefaultProfile() const { return m_node.GetUserDefaultProfile(); }
    bool GetDisableAddRemove() const { return m_node.GetDisableAddRemove(); }

    /// The value: good until the next write to it.
    template <class T> T const& GetValue() const { return m_node.GetValue<T>(); }
    template <class T> T const* FindValue() const { return m_node.FindValue<T>(); }

    bool IsEqual(ParameterView const& other) const { return m_node.IsEqual(other.m_node); }

private:
    friend class AnyWalk;
    friend class WalkState;

    ParameterNode m_node;
};

} // namespace Zantrel
