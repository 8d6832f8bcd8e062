// SPDX-License-Identifier: Apache-2.0
#include <zantrel/store/persistent_properties.h>

#include "store/name_copier.h"
#include "store/visit_property.h"

#include <unordered_map>

template class PersistentProperty<PersistentProperties>;

using Zantrel::EntryName;
using Zantrel::EntryTable;
using Zantrel::NameCopier;
using Zantrel::PropertyHandle;

namespace {

void Replace(EntryTable& target, EntryTable const& source, NameCopier::Borrowed borrowed) {
    NameCopier names(borrowed);
    EntryTable copy;
    copy.CopyFrom(source, names);
    target.Swap(copy); // what stood in the target goes last: `source` may lie within it
}

} // namespace

PersistentProperties::PersistentProperties(PersistentProperties const& other)
    : IMergeablePropertyValue(other) {
    NameCopier names(NameCopier::Borrowed::Own);
    m_entries.CopyFrom(other.m_entries, names);
}

PersistentProperties& PersistentProperties::operator=(PersistentProperties const& other) {
    if (this != &other) {
        Replace(m_entries, other.m_entries, NameCopier::Borrowed::Own);
    }
    return *this;
}

PersistentProperties::~PersistentProperties() = default;

void PersistentProperties::_AssignWithinLayout(PersistentProperties const& other) {
    if (this != &other) {
        Replace(m_entries, other.m_entries, NameCopier::Borrowed::Keep);
    }
}

bool PersistentProperties::operator==(PersistentProperties const& other) const {
    Iterator left = begin();
    Iterator right = other.begin();
    for (; left != end() && right != other.end(); ++left, ++right) {
        if ((*left).name != (*right).name || !(*left).property->IsEqual((*right).property)) {
            return false;
        }
    }
    return left == end() && right == other.end();
}

void PersistentProperties::Merge(IMergeablePropertyValue const& other, bool overwrite) {
    auto const* source = dynamic_cast<PersistentProperties const*>(&other);
    if (source != nullptr && source != this) {
        // Of a copy, since either bag may stand within the other and would change while it is walked.
        MergeApart(PersistentProperties(*source), overwrite);
    }
}

void PersistentProperties::MergeApart(PersistentProperties const& source, bool overwrite) {
    std::wstring_view runName;
    std::unordered_map<std::type_index, IPersistentProperty*>
        targets; // by class, of the entries named `runName`
    for (auto const& [name, property] : source) {
        if (name != runName) {
            runName = name;
            targets.clear();
        }
        auto const [target, isFirst] = targets.try_emplace(typeid(*property), nullptr);
        if (isFirst) {
            target->second = FindOfClass(name, target->first);
        }
        if (target->second == nullptr) {
            EntryName ownName = EntryName::Own(name);
            target->second = property->Clone();
            m_entries.Insert(std::move(ownName), PropertyHandle::Heap(target->second));
        } else if (overwrite) {
            AssignApart(*target->second, *property);
        }
    }
}

IPersistentProperty* PersistentProperties::FindOfClass(std::wstring_view name, std::type_index type) const {
    for (Iterator at = m_entries.Find(name); at != end() && (*at).name == name; ++at) {
        IPersistentProperty& candidate = *(*at).property;
        if (typeid(candidate) == type) {
            return &candidate;
        }
    }
    return nullptr;
}

/// What IPersistentProperty::Assign does, without a copy of each inner bag. Both are of one class.
void PersistentProperties::AssignApart(IPersistentProperty& target, IPersistentProperty const& source) {
    bool isBag = false;
    Zantrel::VisitProperty(target, [&]<class Class>(Class& typed) {
        if constexpr (std::is_base_of_v<PersistentProperties, decltype(typed.m_value)>) {
            typed.m_value.MergeApart(static_cast<Class const&>(source).m_value, true);
            typed.SetDeleted(source.IsDeleted());
            isBag = true;
        }
    });
    if (!isBag) {
        target.Assign(&source);
    }
}

void PersistentProperties::AddProperty(std::wstring const& name, IPersistentProperty* property) {
    if (property != nullptr) {
        AppendOwned(name, property);
    }
}

void PersistentProperties::RemoveProperty(std::wstring const& name, bool firstOnly) {
    while (m_entries.RemoveFirst(name) && !firstOnly) {
    }
}

void PersistentProperties::AppendOwned(std::wstring_view name, IPersistentProperty* property) {
    std::unique_ptr<IPersistentProperty> owned(property);
    EntryName ownName = EntryName::Own(name);
    m_entries.Insert(std::move(ownName), PropertyHandle::Heap(owned.release()));
}

void PersistentProperties::ReplaceFirst(std::wstring_view name, IPersistentProperty* property) {
    bool const replaces = m_entries.FindFirst(name) != nullptr;
    AppendOwned(name, property);
    if (replaces) {
        m_entries.RemoveFirst(name); // last, since it can't fail
    }
}
