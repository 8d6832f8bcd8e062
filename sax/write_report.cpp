// SPDX-License-Identifier: Apache-2.0
#include <zantrel/sax/write_report.h>

#include "sax/report_texts.h"

namespace Zantrel {

std::wstring WriteReport::Format() const { return Sax::WithPath(m_sentence, m_path); }

} // namespace Zantrel
