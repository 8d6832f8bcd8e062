// SPDX-License-Identifier: Apache-2.0
#include <zantrel/editing/validation.h>

#include "editing/findings.h"
#include "editing/unique_values.h"
#include "editing/value_conversion.h"
#include "editing/value_rules.h"

#include <zantrel/database/value_type.h>
#include <zantrel/database/visit_value.h>
#include <zantrel/editing/value_text.h>

#include <algorithm>
#include <type_traits>
#include <unordered_map>
#include <utility>

// One walk holds each value against its node and counts entries; the findings come in its order. Two things
// need more than the place itself: a choice looks for its list (see Scope), and a value that must be unique
// is compared with those before it, whose first one is told of late, when a second shows that it isn't.

namespace Zantrel::Editing {

namespace {

/// Holds the places of a walk against the layout. What a node asks is worked out when it is first come to.
class Validation {
public:
    explicit Validation(PlaceView const& top) : m_top(top), m_lists(top.GetOuter(0).GetLayoutNode()) {}

    std::vector<Finding> Run() {
        for (PlaceWalk walk(m_top); walk.Next();) {
            PlaceView const& place = walk.GetPlace();
            m_unique.Enter(place);
            if (place.IsLeaf()) {
                CheckLeaf(place);
            } else if (place.GetKind() == PlaceKind::List || place.GetKind() == PlaceKind::ProfileList) {
                CheckSize(place);
            }
        }
        return WithLate();
    }

    /// What is said of a text before it is set. Of being read-only only the place's own counts, as flag or in
    /// the layout: what is around it is the look's.
    std::vector<Finding> RunText(std::wstring_view text) {
        LayoutNode const* const layout = m_top.GetLayoutNode();
        auto const add = [&](FindingKind kind) {
            m_findings.push_back(MakeFinding(kind, m_top, std::wstring(text)));
        };
        if (!m_top.IsValid() || !m_top.IsLeaf()) {
            add(FindingKind::NoValue);
            return std::move(m_findings);
        }
        if (layout->m_readOnly || m_top.GetCursor().GetReadOnly()) {
            add(FindingKind::ReadOnly);
        }
        VisitValueType(layout->m_type, [&](auto tag) {
            using T = typename decltype(tag)::Type;
            if constexpr (std::is_same_v<T, NoValue>) {
                add(FindingKind::NoValue);
            } else if (!CanTakeHere<T>(m_top.GetCursor())) {
                add(FindingKind::NoValue);
            } else if (auto const value = ParseValue(text, tag)) {
                CheckValue(m_top, *value);
            } else {
                add(NoSuchValue<T>);
            }
        });
        return std::move(m_findings);
    }

private:
    void CheckLeaf(PlaceView const& place) {
        bool const hasValue =
            VisitValue(place.GetCursor(), [&](auto const& value) { CheckValue(place, value); });
        if (!hasValue && place.GetLayoutNode()->m_type == eTypeLayoutNode::StandardOptions) {
            CheckValue(place, std::wstring()); // never chosen
        }
    }

    template <class T> void CheckValue(PlaceView const& place, T const& value) {
        LayoutNode const& layout = *place.GetLayoutNode();
        if (m_unique.IsInContainer()) {
            m_rules.try_emplace(&layout, layout, m_lists).first->second.Check(place, value, m_findings);
        } else {
            ValueRules(layout, m_lists).Check(place, value, m_findings); // the node doesn't come again
        }
        if (layout.m_isValueUnique) {
            CheckUnique(place, OfOneZero(TextOf(value)));
        }
    }

    void CheckUnique(PlaceView const& place, std::wstring text) {
        if (m_unique.IsInContainer()) {
            m_unique.Add(place, std::move(text), m_findings);
        } else if (std::wstring other = FindSameValue(place, text); !other.empty()) {
            m_findings.push_back(
                MakeFinding(FindingKind::NotUnique, place, std::move(text), std::move(other)));
        }
    }

    void CheckSize(PlaceView const& place) {
        LayoutNode const& layout = *place.GetLayoutNode();
        if (layout.m_multiplicityMin == 0 && layout.m_multiplicityMax == 0) {
            return;
        }
        auto const size = place.GetCursor().GetSize();
        if (size < layout.m_multiplicityMin) {
            AddSize(FindingKind::TooFewItems, place, size, layout.m_multiplicityMin,
                    layout.m_multiplicityMinMessage);
        }
        if (layout.m_multiplicityMax != 0 && size > layout.m_multiplicityMax) {
            AddSize(FindingKind::TooManyItems, place, size, layout.m_multiplicityMax,
                    layout.m_multiplicityMaxMessage);
        }
    }

    void AddSize(FindingKind kind, PlaceView const& place, std::uint64_t size, std::uint64_t limit,
                 std::wstring const& message) {
        Finding& finding =
            m_findings.emplace_back(MakeFinding(kind, place, std::to_wstring(size), std::to_wstring(limit)));
        finding.sentence = message.empty() ? std::move(finding.sentence) : message;
    }

    /// The findings with those that were found late where they belong.
    std::vector<Finding> WithLate() {
        auto& late = m_unique.GetLate();
        // Turns grow with indices, so that the order by turns is that by both, and one pass merges the two.
        std::sort(late.begin(), late.end(),
                  [](auto const& left, auto const& right) { return left.turn < right.turn; });
        std::vector<Finding> findings;
        findings.reserve(m_findings.size() + late.size());
        auto next = late.begin();
        for (std::size_t i = 0; i <= m_findings.size(); ++i) {
            for (; next != late.end() && next->index == i; ++next) {
                findings.push_back(std::move(next->finding));
            }
            if (i != m_findings.size()) {
                findings.push_back(std::move(m_findings[i]));
            }
        }
        return findings;
    }

    PlaceView const& m_top;
    ProfileLists m_lists;
    std::unordered_map<LayoutNode const*, ValueRules const> m_rules;
    UniqueValues m_unique;
    std::vector<Finding> m_findings;
};

} // namespace

std::vector<Finding> Validate(ParameterDatabase const& database) { return Validate(PlaceView(database)); }

std::vector<Finding> Validate(PlaceView const& top) { return Validation(top).Run(); }

std::vector<Finding> Objections(PlaceView const& place, std::wstring_view text) {
    return Validation(place).RunText(text);
}

} // namespace Zantrel::Editing
