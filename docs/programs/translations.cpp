// SPDX-License-Identifier: Apache-2.0
#include <zantrel/zantrel.h>

#include <fstream>
#include <iostream>
#include <string>

using namespace Zantrel;

std::string Shown(ResourceDictionary const& dictionary, std::wstring const& key,
                  std::wstring const& language) {
    for (std::wstring const& wanted : {language, std::wstring(L"en-US")}) {
        if (std::wstring const* text = dictionary.GetTranslation(key, wanted)) {
            return StringConversion::NativeToUtf8(*text);
        }
    }
    return StringConversion::NativeToUtf8(key);
}

int main() {
    std::ofstream("layout.xml") << R"xml(<Printer>
  <ProfileEditor><ParameterStructure>
    <Plate DisplayName="Plate">
      <Temperature Type="Double" DisplayName="Plate.T">80</Temperature>
      <Serial Type="String" DisplayName="Plate.S"/>
    </Plate>
  </ParameterStructure></ProfileEditor>
  <ResourceDictionary>
    <Entry Key="Plate">
      <Translation Language="en-US">Plate</Translation>
      <Translation Language="de-DE">Bauplatte</Translation>
    </Entry>
    <Entry Key="Plate.T">
      <Translation Language="en-US">Temperature</Translation>
    </Entry>
  </ResourceDictionary>
</Printer>
)xml";

    ResourceDictionary dictionary;
    ParameterLayout layout;
    layout.SetResourceDictionary(&dictionary); // before the read, which fills it
    if (!ReadWholeFile(layout, L"layout.xml")) {
        return 1;
    }
    dictionary.AddTranslation(L"Plate.S", L"de-DE", L"Ger\u00E4tenummer");

    LayoutNode const* const plate = layout.m_profileEditor->GetNode(L"Plate");
    for (wchar_t const* language : {L"en-US", L"de-DE", L"fr-FR"}) {
        std::cout << StringConversion::NativeToUtf8(language) << ": "
                  << Shown(dictionary, plate->m_displayName, language);
        for (LayoutNode const* child : plate->m_children) {
            std::cout << " | " << Shown(dictionary, child->m_displayName, language);
        }
        std::cout << '\n';
    }

    if (WriteWholeFile(layout, L"translated.xml")) {
        ResourceDictionary copy;
        ParameterLayout second;
        second.SetResourceDictionary(&copy);
        std::cout << (ReadWholeFile(second, L"translated.xml") && copy == dictionary
                          ? "All of it is kept.\n"
                          : "Something is lost.\n");
    }
}
