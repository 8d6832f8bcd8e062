// SPDX-License-Identifier: Apache-2.0
#include <zantrel/layout/resource_dictionary.h>

#include <gtest/gtest.h>

#include <array>

namespace Zantrel {
namespace {

/// The text, or a "-" where there is none.
std::wstring Find(ResourceDictionary const& dictionary, wchar_t const* key, wchar_t const* language) {
    std::wstring const* const text = dictionary.GetTranslation(key, language);
    return text != nullptr ? *text : L"-";
}

TEST(ResourceDictionary, FindsExactlyTheKeyAndTheLanguageAndPassesOverWhatIsNoTranslation) {
    ResourceDictionary dictionary;
    dictionary.SetValue<std::wstring>(L"text", L"no bag");
    using Row = std::array<wchar_t const*, 3>;
    for (auto const& [key, language, text] :
         {Row{L"k", L"en-US", L"first"}, Row{L"k", L"de", L"zwei"}, Row{L"", L"", L""},
          Row{L"k", L"en-US", L"last"}, Row{L"text", L"de", L"hidden behind it"}}) {
        dictionary.AddTranslation(key, language, text);
    }
    dictionary.GetValuePointer<PersistentProperties>(L"k", false)->SetValue<bool>(L"flag", true);
    for (auto const& [key, language, text] :
         {Row{L"k", L"en-US", L"last"}, Row{L"k", L"de", L"zwei"}, Row{L"", L"", L""}, Row{L"k", L"en", L"-"},
          Row{L"k", L"EN-US", L"-"}, Row{L"K", L"de", L"-"}, Row{L"", L"de", L"-"}, Row{L"k", L"", L"-"},
          Row{L"k", L"flag", L"-"}, Row{L"text", L"de", L"-"}}) {
        EXPECT_EQ(Find(dictionary, key, language), text) << key << language;
    }
    EXPECT_EQ(dictionary.GetNumProperties(), 4u) << "the texts of a key stand together";
}

TEST(ResourceDictionary, TakesADeletedMarkForAMissingText) {
    ResourceDictionary dictionary;
    dictionary.AddTranslation(L"k", L"l", L"t");
    IPersistentProperty* const key = dictionary.FindProperty(L"k");
    IPersistentProperty* const text = PropertyCast<PersistentProperties>(key)->m_value.FindProperty(L"l");
    for (IPersistentProperty* const property : {key, text}) {
        property->SetDeleted(true);
        EXPECT_EQ(Find(dictionary, L"k", L"l"), L"-");
        dictionary.AddTranslation(L"k", L"l", L"again");
        EXPECT_EQ(Find(dictionary, L"k", L"l"), L"again");
    }
}

} // namespace
} // namespace Zantrel
