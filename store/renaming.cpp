// SPDX-License-Identifier: Apache-2.0
#include "store/renaming.h"

#include "store/bag_inside.h"
#include "store/name_copier.h"
#include "store/visit_property.h"

#include <vector>

// Each text is made anew once for all the bags that go together. An entry whose name was replaced has the
// same text as before, so its place in the order stays.

namespace Zantrel {

namespace {

using Bags = std::vector<PersistentProperties*>;

void AddBagsOf(BagInside::Sequence& sequence, Bags& bags) {
    for (std::size_t index = 0; index < sequence.GetNumProperties(); ++index) {
        bags.push_back(&BagInside::At(sequence, index));
    }
}

void AddBagsOf(IPersistentProperty& property, Bags& bags) {
    VisitProperty(property, [&bags](auto& typed) {
        using Value = decltype(typed.m_value);
        if constexpr (std::is_base_of_v<PersistentProperties, Value>) {
            bags.push_back(&typed.m_value);
        } else if constexpr (std::is_same_v<Value, BagInside::Sequence>) {
            AddBagsOf(typed.m_value, bags);
        }
    });
}

} // namespace

void OwnNames(BagInside::Sequence& bags) {
    NameCopier names(NameCopier::Borrowed::Own);
    Bags open;
    AddBagsOf(bags, open);
    while (!open.empty()) {
        PersistentProperties& bag = *open.back();
        open.pop_back();
        BagInside::Table(bag).Rename(names);
        for (auto const& entry : bag) {
            AddBagsOf(*entry.property, open);
        }
    }
}

} // namespace Zantrel
