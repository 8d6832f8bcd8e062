// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/store/file_content.h>
#include <zantrel/store/indexed_properties.h>
#include <zantrel/store/property_filter.h>
#include <zantrel/store/sub_properties.h>

#include <functional>
#include <limits>

using Bag = PersistentProperties;
using Bags = IndexedProperties<PersistentProperties>;

inline Bag& Inner(Bag& bag, wchar_t const* name) { return *bag.GetValuePointer<Bag>(name, true); }
inline Bags& Sequence(Bag& bag, wchar_t const* name) { return *bag.GetValuePointer<Bags>(name, true); }

/// One property of every class, with values that a wrong conversion would lose.
inline void FillWithEveryClass(Bag& bag) {
    bag.SetValue<std::int32_t>(L"integer", std::numeric_limits<std::int32_t>::min());
    bag.SetValue<double>(L"double", 0.1);
    bag.SetValue<bool>(L"bool", true);
    bag.SetValue<std::wstring>(L"text", L" a\u00e4\u4e00 ");
    bag.SetValue<KelAM::FileContent>(L"file", {L"n", {std::byte{0}, std::byte{255}}});
    Inner(bag, L"bag").SetValue<double>(L"Value", 2.5);
    bag.GetValuePointer<KelAM::SubProperties>(L"set", true)->SetValue<bool>(L"inner", false);
    for (int i = 0; i < 5; ++i) {
        Sequence(bag, L"sequence").AddProperty().SetValue<std::int32_t>(L"i", i);
    }
}

/// Takes out of a bag what is not to be kept.
struct Keeping : IPersistentPropertyFilter {
    std::function<bool(IPersistentProperty*)> m_isKept;

    explicit Keeping(decltype(m_isKept) isKept) : m_isKept(std::move(isKept)) {}
    bool Filter(std::wstring const&, IPersistentProperty* property) override { return m_isKept(property); }
    static void In(Bag& bag, decltype(m_isKept) const& isKept) {
        std::shared_ptr<IPersistentPropertyFilter> filter = std::make_shared<Keeping>(isKept);
        PersistentPropertyFilter::FilterProperties(bag, filter);
    }
};
