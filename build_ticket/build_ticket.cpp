// SPDX-License-Identifier: Apache-2.0
#include <zantrel/build_ticket/build_ticket.h>

#include "build_ticket/store_filter.h"
#include "store/name_copier.h"

#include <zantrel/store/property_names.h>

#include <vector>

namespace Zantrel {

namespace {

void Filter(StoreFilter& filter, KelAM::DatabaseExternalProperties& stores) {
    std::vector<std::wstring> keys;
    stores.GetAllProperties(keys);
    for (std::wstring const& key : keys) {
        KelAM::ExternalProperties* store = stores.GetProperties(KelAM::ExternalPropertyID(key), false);
        if (store != nullptr) {
            filter(*store);
        }
    }
}

/// As the assignment does it, with names that are shared by all that is assigned.
void Assign(KelAM::ExternalProperties& target, KelAM::ExternalProperties const& source, NameCopier& names) {
    if (&target != &source) {
        EntryTable copy;
        copy.CopyFrom(source._Entries(), names);
        target.m_id = source.m_id;
        target.m_objectKind = source.m_objectKind;
        target._Entries().Swap(copy); // what stood there ends last: the source may lie within it
    }
}

} // namespace

BuildTicket::BuildTicket(ParameterLayout const* layout)
    : m_hasPropertyTemplate(layout != nullptr), m_layout(layout) {}

KelAM::ExternalProperties* BuildTicket::_GetParent(std::wstring const* id, bool create) {
    return id != nullptr ? m_partOverrides.GetProperties(KelAM::ExternalPropertyID(*id), create)
                         : &m_defaults;
}

void BuildTicket::_FilterProperties(KelAM::ExternalProperties& store) { StoreFilter{m_layout}(store); }

void BuildTicket::CleanUp() {
    StoreFilter filter(m_layout);
    filter(m_defaults);
    Filter(filter, m_partOverrides);
    Filter(filter, m_objectProperties);
}

void BuildTicket::ConvertFromInternalBuildTicket(KelAM::DatabaseExternalProperties const& source) {
    using namespace KelAM::ObjectTypes;
    m_sourceId = L"BuildTicketInternal";
    StoreFilter filter(m_layout);
    NameCopier names(NameCopier::Borrowed::Own);
    std::vector<std::wstring> keys;
    source.GetAllProperties(keys);
    for (std::wstring const& key : keys) {
        KelAM::ExternalProperties const* const store = source.GetProperties(KelAM::ExternalPropertyID(key));
        std::wstring const* const type = store != nullptr ? FindObjectType(*store) : nullptr;
        KelAM::ExternalProperties* target = nullptr;
        if (type == nullptr) {
            continue;
        }
        if (*type == ObjectTypePlatform) {
            target = &m_defaults;
        } else if (*type == ObjectTypePartInstance) {
            target = m_partOverrides.GetProperties(store->m_id, true);
        } else if (*type == ObjectTypeUniquePart) {
            target = m_objectProperties.GetProperties(store->m_id, true);
        }
        if (target != nullptr) {
            Assign(*target, *store, names);
            filter(*target);
        }
    }
}

} // namespace Zantrel
