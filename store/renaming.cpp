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

/// The bags whose entries still have the names that they came with.
class OpenBags {
public:
    explicit OpenBags(BagInside::Sequence const& sought) : m_sought(sought) {}

    void Add(BagInside::Sequence& sequence) {
        m_isMet = m_isMet || &sequence == &m_sought;
        for (std::size_t index = 0; index < sequence.GetNumProperties(); ++index) {
            m_bags.push_back(&BagInside::At(sequence, index));
        }
    }
    void Add(IPersistentProperty& property) {
        VisitProperty(property, [this](auto& typed) {
            using Value = decltype(typed.m_value);
            if constexpr (std::is_base_of_v<PersistentProperties, Value>) {
                m_bags.push_back(&typed.m_value);
            } else if constexpr (std::is_same_v<Value, BagInside::Sequence>) {
                Add(typed.m_value);
            }
        });
    }
    PersistentProperties* TakeLast() {
        PersistentProperties* const bag = m_bags.empty() ? nullptr : m_bags.back();
        m_bags.resize(m_bags.size() - (bag != nullptr ? 1 : 0));
        return bag;
    }
    bool HasMetSought() const { return m_isMet; }

private:
    BagInside::Sequence const& m_sought;
    std::vector<PersistentProperties*> m_bags;
    bool m_isMet = false;
};

} // namespace

bool OwnNames(BagInside::Sequence& bags, BagInside::Sequence const& other) {
    NameCopier names(NameCopier::Borrowed::Own);
    OpenBags open(other);
    open.Add(bags);
    while (PersistentProperties* const bag = open.TakeLast()) {
        BagInside::Table(*bag).Rename(names);
        for (auto const& entry : *bag) {
            open.Add(*entry.property);
        }
    }
    return open.HasMetSought();
}

} // namespace Zantrel
