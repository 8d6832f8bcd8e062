// SPDX-License-Identifier: Apache-2.0
#include <zantrel/layout/resource_dictionary.h>

namespace Zantrel {

namespace {

/// The value of the first entry of `name`. A const lookup leaves the deleted mark, which GetValuePointer
/// clears.
template <class T> T const* FindLiveValue(PersistentProperties const& bag, std::wstring const& name) {
    auto const* property = PropertyCast<T>(bag.FindProperty(name));
    return property != nullptr && !property->IsDeleted() ? &property->m_value : nullptr;
}

} // namespace

ResourceDictionary::ResourceDictionary() = default;

ResourceDictionary::ResourceDictionary(ResourceDictionary const& source) = default;

ResourceDictionary& ResourceDictionary::operator=(ResourceDictionary const& source) = default;

ResourceDictionary::~ResourceDictionary() = default;

void ResourceDictionary::AddTranslation(std::wstring const& key, std::wstring const& language,
                                        std::wstring const& text) {
    GetValuePointer<PersistentProperties>(key, true)->SetValue(language, text);
}

std::wstring const* ResourceDictionary::GetTranslation(std::wstring const& key,
                                                       std::wstring const& language) const {
    auto const* languages = FindLiveValue<PersistentProperties>(*this, key);
    return languages != nullptr ? FindLiveValue<std::wstring>(*languages, language) : nullptr;
}

} // namespace Zantrel
