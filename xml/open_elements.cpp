// SPDX-License-Identifier: Apache-2.0
#include "xml/open_elements.h"

namespace Zantrel::Xml {

void OpenElements::MakeRoom(std::size_t size) { m_names.resize(2 * (m_size + size + Block::Size)); }

} // namespace Zantrel::Xml
