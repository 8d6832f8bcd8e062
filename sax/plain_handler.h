// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/sax/sax_persist.h>

#include <string_view>

namespace Zantrel::Sax {

/// A handler that can be told in short of elements without attributes, as nearly all of a parameter file are:
/// no handler is pushed for a group, and no tag or text is copied for a leaf. In a read with a report, and by
/// readers other than ReadDriver, everything comes by HandleTag. All views are good during the call.
///
/// It leaves HandleTextPiece as it is inherited: whether an element has no text is asked of the text that is
/// held for it, and of one whose pieces were taken none is held any more.
class PlainHandler : public ISAXPersistHelper {
public:
    /// An element without children, with its whole text. True takes it, and nothing else is called for it;
    /// false leaves it to HandleTag.
    virtual bool HandleLeaf(std::string_view tag, std::string_view text) = 0;
    /// An element that begins with a child. True takes it, and its children come to this handler, as if it
    /// had been pushed; HandleGroupEnd then stands for HandleEndTag. False leaves it to HandleTag. Never
    /// called for the root.
    virtual bool HandleGroup(std::string_view tag) = 0;
    /// The innermost element that HandleGroup took has ended.
    virtual void HandleGroupEnd() = 0;
};

} // namespace Zantrel::Sax
