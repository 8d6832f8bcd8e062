// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>
#include <zantrel/layout/parameter_layout.h>
#include <zantrel/store/external_properties.h>

#include <string>

namespace Zantrel {

class BuildTicketRead;

/// The parameters of one build: the defaults of the platform, what each part instance overrides, and the
/// properties of each object. Values aren't held against the layout; it only says which properties are of
/// use.
///
/// The stores belong to the ticket, the layout doesn't and must outlive it. A ticket belongs to one thread at
/// a time, also for reading: lookups in bags write the deleted mark. Copying copies the stores deeply.
class ZANTREL_EXPORT BuildTicket {
public:
    /// Empty stores. `layout` may be null; whether it is decides the format in which the ticket is saved
    /// (BuildTicketWriteOptions).
    explicit BuildTicket(ParameterLayout const* layout);

    /// The properties of the build as a whole.
    KelAM::ExternalProperties& GetDefaults() { return m_defaults; }
    KelAM::ExternalProperties const& GetDefaults() const { return m_defaults; }
    /// One bag for each part instance, by its identifier.
    KelAM::DatabaseExternalProperties& GetPartOverrides() { return m_partOverrides; }
    KelAM::DatabaseExternalProperties const& GetPartOverrides() const { return m_partOverrides; }
    /// One bag for each object, by its identifier.
    KelAM::DatabaseExternalProperties& GetObjectProperties() { return m_objectProperties; }
    KelAM::DatabaseExternalProperties const& GetObjectProperties() const { return m_objectProperties; }

    /// Where the ticket came from: what a file says, or "BuildTicketInternal" after a conversion.
    std::wstring const& GetSourceId() const { return m_sourceId; }
    /// Whether the ticket was made with a layout.
    bool HasPropertyTemplate() const { return m_hasPropertyTemplate; }
    ParameterLayout const* GetLayout() const { return m_layout; }

    /// Drops from each store, and from the nested sets directly in it, what a ticket doesn't keep:
    /// - the object type itself; whatever reports the type "PositionMatrix" or "FileContent";
    /// - where the object type is known and the ticket has a layout, properties whose name the layout's part
    ///   for that type doesn't use, apart from plain bags, nested sets and PropertyNames::PartName;
    /// - of a unique part, all nested sets.
    ///
    /// What lies in plain bags, in sequences and deeper stays, and so does all in further sets of one name.
    /// Since the object type goes, a second call, and one after a conversion, finds none and asks no layout.
    void CleanUp();

    /// Copies the stores of a host's own database into this ticket, by the property PropertyNames::ObjectType
    /// of each: the platform to the defaults (the last one counts), part instances to the overrides and
    /// unique parts to the objects, each under the identifier that it holds, in place of what stood there;
    /// and drops from each copy what CleanUp drops. Entries without a known object type are passed over; all
    /// else in the ticket stays. Takes time and memory in proportion to `source`.
    void ConvertFromInternalBuildTicket(KelAM::DatabaseExternalProperties const& source);

protected:
    /// The bag that overrides of the part instance `id` belong to, made if it is missing and `create` is
    /// true, otherwise null; the defaults for a null `id`.
    KelAM::ExternalProperties* _GetParent(std::wstring const* id, bool create);
    /// What CleanUp does, to one store.
    void _FilterProperties(KelAM::ExternalProperties& store);

private:
    friend class BuildTicketRead;

    bool m_hasPropertyTemplate;
    std::wstring m_sourceId;
    ParameterLayout const* m_layout;
    KelAM::ExternalProperties m_defaults;
    KelAM::DatabaseExternalProperties m_partOverrides;
    KelAM::DatabaseExternalProperties m_objectProperties;
};

} // namespace Zantrel
