// SPDX-License-Identifier: Apache-2.0
// All public headers behind the words that <X11/Xlib.h> and the headers it brings have as macros, which must
// stay what they were.
#define Above 0
#define Always 2
#define BadName 15
#define BadValue 2
#define Below 1
#define Bool int
#define Complex 0
#define ControlMask (1 << 2)
#define CurrentTime 0L
#define False 0
#define GrayScale 1
#define IsUnmapped 0
#define NoValue 0x0000
#define None 0L
#define Opposite 4
#define Status int
#define Success 0
#define True 1
#define Unsorted 0
#define XValue 0x0001

#include <zantrel/editing/editing.h>
#include <zantrel/zantrel.h>

static_assert(None == 0L && NoValue == 0 && BadName == 15);
extern Bool isInt;
extern int isInt;

#undef BadName
#undef Bool
#undef None
#undef NoValue
static_assert(Zantrel::eTypeLayoutNode::Bool == 4);
static_assert(Zantrel::ReadLimits().m_bytes == Zantrel::ReadLimits::None);
