// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "editing/pattern.h"
#include "editing/profile_lists.h"

#include <zantrel/editing/finding.h>
#include <zantrel/editing/place.h>
#include <zantrel/layout/layout_node.h>
#include <zantrel/store/file_content.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace Zantrel::Editing {

/// What one node of the layout asks of a value by itself, whatever stands beside it. Borrows the node.
class ValueRules {
public:
    ValueRules(LayoutNode const& node, ProfileLists& lists);

    /// Adds what speaks against `value` at `place`.
    void Check(PlaceView const& place, double value, std::vector<Finding>& findings) const;
    void Check(PlaceView const& place, std::int32_t value, std::vector<Finding>& findings) const;
    void Check(PlaceView const&, bool, std::vector<Finding>&) const {}
    void Check(PlaceView const& place, std::wstring const& value, std::vector<Finding>& findings) const;
    void Check(PlaceView const& place, KelAM::FileContent const& value, std::vector<Finding>& findings) const;

private:
    struct Options {
        std::unordered_set<std::wstring_view> values;
        std::wstring list;  ///< the first ones
        std::wstring shown; ///< as many as a sentence has room for
    };

    void CheckLimits(PlaceView const& place, double value, std::wstring (*textOf)(double),
                     std::vector<Finding>& findings) const;
    void CheckText(PlaceView const& place, std::wstring const& value, std::vector<Finding>& findings) const;
    void CheckProfile(PlaceView const& place, std::wstring const& value,
                      std::vector<Finding>& findings) const;

    LayoutNode const& m_node;
    std::optional<double> m_minimum, m_maximum;
    bool m_isEmptyNoted;
    std::unique_ptr<Options const> m_options; ///< null: any value will do
    std::unique_ptr<Pattern const> m_pattern; ///< null: any value will do
    LayoutNode const* m_profileList = nullptr;
};

} // namespace Zantrel::Editing
