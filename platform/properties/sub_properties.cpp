// SPDX-License-Identifier: Apache-2.0
#include <zantrel/platform/sub_properties.h>

KelAM::SubProperties::~SubProperties() = default;

template class PersistentProperty<KelAM::SubProperties>;
