// SPDX-License-Identifier: Apache-2.0
#include <zantrel/store/persistent_properties.h>

#include "store/bag_inside.h"
#include "store/comparing.h"
#include "store/copying.h"
#include "store/ending.h"
#include "store/visit_property.h"

#include <memory>
#include <typeindex>
#include <unordered_map>
#include <vector>

template class PersistentProperty<PersistentProperties>;

using namespace Zantrel;

// Entries

NamedProperty PersistentProperties::Iterator::operator*() const noexcept {
    return EntryReader(m_entries).At(m_at);
}

PersistentProperties::Iterator& PersistentProperties::Iterator::operator++() noexcept {
    m_at = EntryReader(m_entries).Next(m_at);
    return *this;
}

std::size_t PersistentProperties::GetNumProperties() const noexcept { return EntryReader(m_entries).Size(); }

PersistentProperties::Iterator PersistentProperties::begin() const noexcept {
    return BagInside::IteratorAt(*this, EntryReader(m_entries).First());
}

PersistentProperties::Iterator PersistentProperties::Find(std::wstring_view name) const noexcept {
    return BagInside::IteratorAt(*this, EntryReader(m_entries).Find(name));
}

IPersistentProperty* PersistentProperties::FindProperty(std::wstring_view name) const noexcept {
    EntryReader const reader(m_entries);
    return reader.PropertyAt(reader.Find(name));
}

// The whole

PersistentProperties::PersistentProperties(PersistentProperties const& other)
    : IMergeablePropertyValue(other) {
    *this = other;
}

PersistentProperties& PersistentProperties::operator=(PersistentProperties const& other) {
    if (this != &other) {
        NameCopier names(NameCopier::Borrowed::Own);
        PersistentProperties copy;
        CopyEntries(copy, other, names);
        BagInside::Swap(*this, copy); // what stood here goes last: `other` may lie within it
    }
    return *this;
}

PersistentProperties::~PersistentProperties() {
    if (m_entries != 0) {
        EndEntries(m_entries);
    }
}

bool PersistentProperties::operator==(PersistentProperties const& other) const {
    return AreEqual(*this, other);
}

// Merging

namespace {

/// Merges bags one after another, with a list of the inner ones still to be merged, so that the depth takes
/// no stack. No part of a source lies in a target.
class Merging {
public:
    struct Pair {
        PersistentProperties* target;
        PersistentProperties const* source;
        bool overwrite;
    };

    void Run(Pair const& first) {
        m_open.push_back(first);
        while (!m_open.empty()) {
            Pair const next = m_open.back();
            m_open.pop_back();
            Merge(next);
        }
    }

private:
    void Merge(Pair const& pair) {
        // Entries of one name stand side by side, so what was found is good for the rest of the run, and many
        // entries of one name don't make the merge quadratic.
        std::wstring_view runName;
        std::unordered_map<std::type_index, IPersistentProperty*>
            targets; // by class, of the entries named `runName`
        for (auto const& [name, property] : *pair.source) {
            if (name != runName) {
                runName = name;
                targets.clear();
            }
            auto const [target, isFirst] = targets.try_emplace(typeid(*property), nullptr);
            if (isFirst) {
                target->second = FindOfClass(*pair.target, name, target->first);
            }
            // All of one name and class meet in one property: the first that stands here, or the first clone.
            if (target->second == nullptr) {
                // Before the clone, which nobody would own if this failed.
                EntryName ownName = EntryName::Own(name);
                IPersistentProperty* const clone = property->Clone();
                BagInside::Table(*pair.target).Insert(std::move(ownName), PropertyHandle::Heap(clone));
                target->second = clone;
            } else if (pair.overwrite) {
                Assign(*target->second, *property);
            }
        }
    }

    static IPersistentProperty* FindOfClass(PersistentProperties const& bag, std::wstring_view name,
                                            std::type_index type) {
        for (auto at = bag.Find(name); at != bag.end() && (*at).name == name; ++at) {
            IPersistentProperty& candidate = *(*at).property;
            if (typeid(candidate) == type) {
                return &candidate;
            }
        }
        return nullptr;
    }

    /// What IPersistentProperty::Assign does, but inner bags are merged later and without a copy of each.
    /// Both are of one class.
    void Assign(IPersistentProperty& target, IPersistentProperty const& source) {
        bool isBag = false;
        VisitProperty(target, [&]<class Class>(Class& typed) {
            if constexpr (std::is_base_of_v<PersistentProperties, decltype(typed.m_value)>) {
                m_open.push_back({&typed.m_value, &static_cast<Class const&>(source).m_value, true});
                typed.SetDeleted(source.IsDeleted());
                isBag = true;
            }
        });
        if (!isBag) {
            target.Assign(&source);
        }
    }

    std::vector<Pair> m_open;
};

} // namespace

void PersistentProperties::Merge(IMergeablePropertyValue const& other, bool overwrite) {
    auto const* source = dynamic_cast<PersistentProperties const*>(&other);
    if (source != nullptr && source != this) {
        // Of a copy, since either bag may stand within the other and would change while it is walked.
        PersistentProperties const copy(*source);
        Merging().Run({this, &copy, overwrite});
    }
}

// Single entries

void PersistentProperties::AddProperty(std::wstring const& name, IPersistentProperty* property) {
    if (property != nullptr) {
        AppendOwned(name, property);
    }
}

void PersistentProperties::RemoveProperty(std::wstring const& name, bool firstOnly) {
    if (firstOnly) {
        EntryTable(m_entries).RemoveFirst(name);
        return;
    }
    std::wstring const kept = name; // which may be the value of a property that goes
    while (EntryTable(m_entries).RemoveFirst(kept)) {
    }
}

void PersistentProperties::AppendOwned(std::wstring_view name, IPersistentProperty* property) {
    // Owned while the name is made, which may fail; Insert owns it from its first moment.
    std::unique_ptr<IPersistentProperty> owned(property);
    NameCopier* const names = _SharedNames();
    EntryName ownName = names != nullptr ? names->Of(name) : EntryName::Own(name);
    EntryTable(m_entries).Insert(std::move(ownName), PropertyHandle::Heap(owned.release()));
}

void PersistentProperties::ReplaceFirst(std::wstring_view name, IPersistentProperty* property) {
    bool const replaces = FindProperty(name) != nullptr;
    AppendOwned(name, property);
    if (replaces) {
        EntryTable(m_entries).RemoveFirst(name); // last, since it can't fail
    }
}
