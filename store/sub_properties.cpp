// SPDX-License-Identifier: Apache-2.0
#include <zantrel/store/sub_properties.h>

KelAM::SubProperties::~SubProperties() = default;

template class PersistentProperty<KelAM::SubProperties>;
