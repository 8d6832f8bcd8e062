// SPDX-License-Identifier: Apache-2.0
#include "store/comparing.h"

#include "store/bag_inside.h"
#include "store/visit_property.h"

#include <variant>
#include <vector>

// Bags are compared one pair after another, with a list of the inner pairs still to be looked at in place of
// recursion, so that the depth takes no stack.

namespace Zantrel {

namespace {

using Sequence = BagInside::Sequence;

struct BagPair {
    PersistentProperties const* left;
    PersistentProperties const* right;
};

struct SequencePair {
    Sequence const* left;
    Sequence const* right;
    std::size_t next = 0; ///< the bags in front of it have been looked at
};

class Comparing {
public:
    void Add(PersistentProperties const& left, PersistentProperties const& right) {
        m_open.push_back(BagPair{&left, &right});
    }
    void Add(Sequence const& left, Sequence const& right) { m_open.push_back(SequencePair{&left, &right}); }

    /// The order in which pairs are looked at doesn't matter: the first difference settles it.
    bool Run() {
        bool equal = true;
        while (equal && !m_open.empty()) {
            auto const next = m_open.back();
            m_open.pop_back();
            equal = std::visit([this](auto const& pair) { return Compare(pair); }, next);
        }
        return equal;
    }

private:
    bool Compare(BagPair const& pair) {
        auto left = pair.left->begin();
        auto right = pair.right->begin();
        for (; left != pair.left->end() && right != pair.right->end(); ++left, ++right) {
            // Both are in order, so equal bags have equal names at equal places.
            if ((*left).name != (*right).name || !Compare(*(*left).property, *(*right).property)) {
                return false;
            }
        }
        return left == pair.left->end() && right == pair.right->end();
    }

    /// The pair comes back for its next bags, so that the list grows with the depth and not with the
    /// sequence.
    bool Compare(SequencePair const& pair) {
        auto const size = static_cast<std::size_t>(pair.left->GetNumProperties());
        if (size != pair.right->GetNumProperties()) {
            return false;
        }
        if (pair.next < size) {
            m_open.push_back(SequencePair{pair.left, pair.right, pair.next + 1});
            Add(BagInside::At(*pair.left, pair.next), BagInside::At(*pair.right, pair.next));
        }
        return true;
    }

    /// Leaves what is no plain value to be compared later.
    bool Compare(IPersistentProperty const& left, IPersistentProperty const& right) {
        bool isOpen = false;
        // A class of a host's own isn't visited even where it derives from a bag's, and goes to its IsEqual.
        if (typeid(left) == typeid(right)) {
            VisitProperty(left, [&]<class Class>(Class const& typed) {
                using Value = std::decay_t<decltype(typed.m_value)>;
                auto const& other = static_cast<Class const&>(right).m_value;
                if constexpr (std::is_base_of_v<PersistentProperties, Value> ||
                              std::is_same_v<Value, Sequence>) {
                    Add(typed.m_value, other);
                    isOpen = true;
                }
            });
        }
        return isOpen || left.IsEqual(&right);
    }

    std::vector<std::variant<BagPair, SequencePair>> m_open;
};

} // namespace

bool AreEqual(PersistentProperties const& left, PersistentProperties const& right) {
    Comparing comparing;
    comparing.Add(left, right);
    return comparing.Run();
}

bool AreEqual(Sequence const& left, Sequence const& right) {
    Comparing comparing;
    comparing.Add(left, right);
    return comparing.Run();
}

} // namespace Zantrel
