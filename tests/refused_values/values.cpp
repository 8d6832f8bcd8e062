// SPDX-License-Identifier: Apache-2.0
#include <zantrel/database/parameter_view.h>

// What is no value doesn't compile. Behind each line stand words of the sentence with which it is refused.

void Refuse(Zantrel::ParameterNode cursor, Zantrel::ParameterView view) {
    cursor.SetValue(5L);                          // use std::int32_t, not long
    cursor.SetValue(5U);                          // use std::int32_t, not long
    view.GetValue<long long>();                   // use std::int32_t, not long
    cursor.SetValue(L'a');                        // use std::int32_t, not long
    cursor.SetValue(0.5F);                        // use double, not float
    cursor.FindValue<long double>();              // use double, not float
    cursor.SetValue("text");                      // use std::wstring or a literal with L
    cursor.SetValue(static_cast<char*>(nullptr)); // use std::wstring or a literal with L
    cursor.SetValue(std::string());               // use std::wstring or a literal with L
    view.FindValue<char const*>();                // use std::wstring or a literal with L
    cursor.GetValue<wchar_t const*>();            // use that, not a pointer to it or a view of it
    cursor.SetValue(std::wstring_view());         // use that, not a pointer to it or a view of it
    cursor.SetValue(nullptr);                     // a value is a std::int32_t, double, bool
    cursor.GetValue<Zantrel::ParameterNode>();    // a value is a std::int32_t, double, bool
}
