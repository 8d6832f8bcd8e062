// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/editing/finding.h>
#include <zantrel/editing/place.h>

#include <cstddef>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace Zantrel::Editing {

/// The text of a value as it is compared: of both zeros the same.
std::wstring OfOneZero(std::wstring text);

/// The path of the first other place that has this text, as OfOneZero gives it, as its value among the
/// entries of the innermost container around `place`, in the order of a walk; empty when there is none, or
/// for an empty text.
std::wstring FindSameValue(PlaceView const& place, std::wstring const& text);

/// Values that have to be unique, as a walk comes to them.
class UniqueValues {
public:
    /// To be told of each place of the walk, before anything is added there.
    void Enter(PlaceView const& place);
    /// Whether the walk has come to a container that the place stands in; otherwise nothing is known here.
    bool IsInContainer() const noexcept { return !m_containers.empty(); }
    /// Notes the value at the place entered last, and adds a finding where another one has it. The first
    /// place of a value gets its finding only when there is a second; then it goes to GetLate().
    void Add(PlaceView const& place, std::wstring text, std::vector<Finding>& findings);

    /// A finding that belongs in front of the one of that index, and among all late ones where its turn is.
    struct Late {
        std::size_t index;
        std::size_t turn;
        Finding finding;
    };
    std::vector<Late>& GetLate() noexcept { return m_late; }

private:
    using Key = std::pair<LayoutNode const*, std::wstring>;
    struct KeyHash {
        std::size_t operator()(Key const& key) const noexcept;
    };
    /// A place that has a value before all others.
    struct First {
        ParameterView cursor;
        std::size_t item; ///< its entry's, by number or name
        std::wstring profile;
        std::size_t index; ///< among the findings
        std::size_t turn;  ///< among all that were added
        bool isTold = false;
    };
    /// A container that the walk is in, the innermost last.
    struct Container {
        std::size_t depth;
        bool isInDefaultProfile = false;
        std::size_t item = 0; ///< that the walk is in, by number or name
        std::wstring profile{};
        std::unordered_map<Key, First, KeyHash> values{};
    };

    std::vector<Container> m_containers;
    std::vector<Late> m_late;
    std::size_t m_added = 0;
};

} // namespace Zantrel::Editing
