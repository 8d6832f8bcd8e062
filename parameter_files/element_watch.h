// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "parameter_files/grammar.h"

#include <zantrel/parameter_files/parameter_file_validity.h>

#include <cstddef>
#include <initializer_list>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Zantrel {

/// What one validity check has found so far. Outlives its watches.
struct ParameterFileValidity {
    /// `report` is that of the read, which gets what is missing at last; or null.
    ParameterFileValidity(ParameterFileValidityOptions const& given, ReadReport const* report);

    /// Adds the message that the parts give together, or counts it where there are enough. Throws
    /// std::bad_alloc, with the verdict in place.
    void Report(std::initializer_list<std::wstring_view> parts);

    ParameterFileValidityOptions options;
    bool hasReport;
    ReadReport missing; ///< what must be there and isn't, as much as the read's report would keep
    ParameterFileValidityResult result;

private:
    std::size_t m_messageBytes = 0;
};

/// Hears of the children of one element as they are read, and reports what doesn't fit the layout; what must
/// be there and never came is reported when the watch ends, which is when its element does. The validity is
/// borrowed.
class ElementWatch {
public:
    /// `node` is where the element stands; null on a database without a layout of its own. `place` is the
    /// element's, as ISAXReader::GetPlace gives it; the root has none.
    ElementWatch(ParameterFileValidity& validity, LayoutNode const* node, ReadReport::Entry place = {})
        : m_validity(validity), m_node(node), m_place(std::move(place)) {}
    ElementWatch(ElementWatch const&) = delete;
    ElementWatch& operator=(ElementWatch const&) = delete;
    ~ElementWatch();

    /// Whether the element is to be read; what doesn't fit is, too, as far as it can be. False for the root,
    /// of which the name is all that counts, and for what stands deeper than the check goes.
    bool Admits(FileElement const& element, std::string_view tag, std::size_t depth);

    /// The watch of an element within this one that stands on `node`; it ends first. Throws std::bad_alloc.
    std::unique_ptr<ElementWatch> Below(LayoutNode const& node, ReadReport::Entry place) const {
        return std::make_unique<ElementWatch>(m_validity, &node, std::move(place));
    }

private:
    bool IsRoot(std::string_view tag) const;
    void ReportMisfit(std::wstring_view what, std::string_view tag);
    void ReportMissing();
    void NotePlaceOfMissing(LayoutNode const& child) const;

    ParameterFileValidity& m_validity;
    LayoutNode const* m_node;
    ReadReport::Entry m_place;
    std::set<LayoutNode const*> m_met;
    bool m_isLookedAtWhole = true; ///< false once a child stood too deep: then none is missed
};

} // namespace Zantrel
