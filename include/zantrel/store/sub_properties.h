// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>
#include <zantrel/store/persistent_properties.h>

namespace KelAM {

/// A nested set of properties, the form in which object components live in a ticket. In every other way a
/// bag.
/// Read from "Component" elements and from properties of the type "Complex2". A class of its own all the
/// same: who asks a bag for PersistentProperties doesn't find it.
class ZANTREL_EXPORT SubProperties : public PersistentProperties {
public:
    /// Copies are deep, as those of any bag.
    SubProperties() noexcept = default;
    SubProperties(SubProperties const&) = default;
    SubProperties& operator=(SubProperties const&) = default;
    ~SubProperties() override;
};

} // namespace KelAM

extern template class ZANTREL_EXPORT PersistentProperty<KelAM::SubProperties>;
