// SPDX-License-Identifier: Apache-2.0
#include "editing/type_word.h"

#include <cstdint>

namespace Zantrel::Editing {

std::wstring TypeWord(eTypeLayoutNode type) {
    switch (type) { // no default: the compiler names a type that is forgotten
    case eTypeLayoutNode::Group:
        return L"Group";
    case eTypeLayoutNode::Int:
        return L"Int";
    case eTypeLayoutNode::Double:
        return L"Double";
    case eTypeLayoutNode::Distance:
        return L"Distance";
    case eTypeLayoutNode::Bool:
        return L"Bool";
    case eTypeLayoutNode::String:
        return L"String";
    case eTypeLayoutNode::Options:
        return L"Options";
    case eTypeLayoutNode::OptionsFromProfiles:
        return L"OptionsFromProfiles";
    case eTypeLayoutNode::FileAbsolute:
        return L"FileAbsolute";
    case eTypeLayoutNode::FileAttachment:
        return L"FileAttachment";
    case eTypeLayoutNode::StandardOptions:
        return L"StandardOptions";
    }
    // A number that is no type, which a host may have cast.
    return std::to_wstring(static_cast<std::int32_t>(type));
}

} // namespace Zantrel::Editing
