// SPDX-License-Identifier: Apache-2.0
#include <zantrel/store/persistent_property.h>

IPersistentPropertyPolymorphicValue::~IPersistentPropertyPolymorphicValue() = default;
IPersistentProperty::~IPersistentProperty() = default;
IPersistentPropertyUndo::~IPersistentPropertyUndo() = default;

template class PersistentProperty<std::int32_t>;
template class PersistentProperty<double>;
template class PersistentProperty<bool>;
template class PersistentProperty<std::wstring>;
