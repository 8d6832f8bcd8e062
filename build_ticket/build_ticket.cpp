// SPDX-License-Identifier: Apache-2.0
#include <zantrel/build_ticket/build_ticket.h>

#include "build_ticket/store_filter.h"
#include "store/bag_access.h"

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

/// The store of the ticket that one of a host's database goes to, made if it is missing; null for one without
/// a known object type.
KelAM::ExternalProperties* FindTarget(BuildTicket& ticket, KelAM::ExternalProperties const& source) {
    namespace Type = KelAM::ObjectTypes::Text;
    std::wstring const* const type = FindObjectType(source);
    if (type == nullptr) {
        return nullptr;
    }
    if (*type == Type::Platform) {
        return &ticket.GetDefaults();
    }
    // The identifier in the store and not the key in the database: hosts may keep them under other keys.
    if (*type == Type::PartInstance) {
        return ticket.GetPartOverrides().GetProperties(source.m_id, true);
    }
    return *type == Type::UniquePart ? ticket.GetObjectProperties().GetProperties(source.m_id, true)
                                     : nullptr;
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

/// Goes by the keys as they were at the start, since `source` may be one of this ticket's own databases, to
/// which the conversion then adds. Each copy is complete before it replaces what stood in the target, and
/// only then filtered: the object type, which the filter asks for and drops, comes with the copy. Filter and
/// names are shared by all copies, so that the layout is asked once for each object type, and the text of a
/// name stands once.
void BuildTicket::ConvertFromInternalBuildTicket(KelAM::DatabaseExternalProperties const& source) {
    m_sourceId = L"BuildTicketInternal";
    StoreFilter filter(m_layout);
    NameCopier names(NameCopier::Borrowed::Own);
    std::vector<std::wstring> keys;
    source.GetAllProperties(keys);
    for (std::wstring const& key : keys) {
        KelAM::ExternalProperties const* const store = source.GetProperties(KelAM::ExternalPropertyID(key));
        KelAM::ExternalProperties* const target = store != nullptr ? FindTarget(*this, *store) : nullptr;
        if (target != nullptr) {
            BagAccess::Assign(*target, *store, names);
            filter(*target);
        }
    }
}

} // namespace Zantrel
