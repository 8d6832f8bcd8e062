// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/database/parameter_node.h>
#include <zantrel/database/parameter_view.h>
#include <zantrel/export.h>
#include <zantrel/store/persistent_properties.h>

#include <memory>

namespace Zantrel {

class LayoutShapes;
class ParameterLayout;

/// The values of one schema. A database is complete from its construction on: every value has the layout's
/// default, every list its template and first items, every profile list its default profile.
///
/// It borrows its layout, which must outlive it and must not change while it lives. A database and its
/// cursors belong to one thread at a time, also for reading; databases on different threads may share a
/// layout.
class ZANTREL_EXPORT ParameterDatabase {
public:
    /// Formats the database to `layout`. Null gives an empty database. The numbers of defaults are read under
    /// the global locale as it is now: under another one than the layout was built under, 200.0 can become
    /// 2,000,000 (docs/locale.md). Throws std::bad_alloc, and std::logic_error for a layout that is a copy
    /// and whose source has ended (ParameterLayout::CheckAnchors).
    explicit ParameterDatabase(ParameterLayout const* layout);
    /// Copies the values deeply and borrows the same layout.
    ParameterDatabase(ParameterDatabase const& other);
    ParameterDatabase& operator=(ParameterDatabase const& other);

    ParameterLayout const* GetLayout() const { return m_pLayout; }

    /// The cursor on the layout itself. Its one content is the profile editor.
    ParameterNode GetRoot();
    ParameterView GetRoot() const;
    /// The cursor on the layout's "ProfileEditor", under which all values stand. Invalid without a layout,
    /// and on a layout that was copied, since a copy's anchors stay in its source.
    ParameterNode GetProfileEditor();
    ParameterView GetProfileEditor() const;

    /// Fills the root bag from the layout. The constructor has done so; called again it changes nothing that
    /// a cursor reaches. There is no reset: make a new database.
    void Format();

    /// Whether both stand on the same layout object and hold equal values, flags among them. A flag stored as
    /// false differs from one that was never set: a read sets CanBeDeleted of each profile that it meets.
    bool IsEqual(ParameterDatabase const& other) const;

private:
    ParameterLayout const* m_pLayout;
    std::shared_ptr<LayoutShapes const> m_shapes; ///< before the bags, which end first
    mutable PersistentProperties m_properties;    ///< changed by a const operation in its marks alone
};

} // namespace Zantrel
