// SPDX-License-Identifier: Apache-2.0
#include "sax/limit_texts.h"

#include "text/enum_order.h"
#include "text/sentences.h"

#include <cstddef>
#include <string_view>

namespace Zantrel::Sax {

namespace {

struct LimitText {
    Limit limit;
    std::wstring_view pattern;
};

// With the names of the fields: the reader of the sentence is whoever can raise them.
constexpr LimitText LimitTexts[] = {
    {Limit::Bytes, L"The document has more than {0} bytes, the limit of this read (m_bytes)."},
    {Limit::Text, L"A text or start tag has more than {0} bytes, the limit of this read (m_textBytes)."},
    {Limit::Elements, L"The document has more than {0} elements, the limit of this read (m_elements)."},
    {Limit::Depth, L"Elements are nested deeper than {0}, the limit of this read (m_depth)."},
    {Limit::ListItems, L"The list has more than {0} items, the limit of this read (m_listItems)."},
    {Limit::Profiles, L"The list has more than {0} profiles, the limit of this read (m_profiles)."},
    {Limit::Report,
     L"The report of this read has more than {0} bytes, the limit of this read (m_reportBytes)."},
};

static_assert(InEnumOrder(LimitTexts, &LimitText::limit, Limit::Report));

} // namespace

std::wstring BeyondLimit(Limit limit, std::uint64_t number) {
    return Text::Fill(LimitTexts[static_cast<std::size_t>(limit)].pattern, {std::to_wstring(number)});
}

} // namespace Zantrel::Sax
