// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/layout/layout_node_source.h>
#include <zantrel/layout/node_type.h>

#include <cstdint>
#include <string>
#include <vector>

namespace Zantrel {

/// How a container behaves. A default-constructed one describes a node that is no container, so that
/// `static_cast<LayoutNodeListSettings&>(node) = {}` makes an ordinary node of a list.
struct LayoutNodeListSettings {
    LayoutNodeListSettings() = default;

    bool m_isList = false;         ///< the node's value is a sequence of items
    bool m_isProfileList = false;  ///< the node holds named profiles
    bool m_isCategoryList = false; ///< the profile list is the list of categories
    /// What a user may do binds the host's editor. Cursors add and remove entries all the same.
    bool m_userCanAddRemove = true;
    bool m_userCanSort = false;
    bool m_userCanRemoveAnyElement = true; ///< false: only the last
    bool m_canBeTransformed = false;       ///< the list is a transform list
    std::wstring m_nodeName = L"ListItem"; ///< element name of one item or profile
    std::wstring m_nodeDisplayName;        ///< shown for one item
    std::wstring m_containerDisplayName;   ///< shown for the whole container
    std::wstring m_containerDescription;
    std::uint64_t m_multiplicity = 0;    ///< items that formatting gives a new list
    std::uint64_t m_multiplicityMax = 0; ///< most items, 0: not set; never enforced by the library
    std::uint64_t m_multiplicityMin = 0; ///< fewest items, 0: not set; never enforced by the library
    std::wstring m_multiplicityMaxMessage;
    std::wstring m_multiplicityMinMessage;
};

/// How a host shows a node.
struct LayoutNodeDisplaySettings {
    LayoutNodeDisplaySettings() = default;

    bool m_visible = true;
    /// Also for the editor: values of a node that is read-only or not visible can be set, and are read and
    /// written.
    bool m_readOnly = false;
    bool m_expanded = false;
    bool m_hideName = false;         ///< the value is shown without the name
    bool m_performTransform = false; ///< of a transform list
    std::int32_t m_precision = 4;    ///< digits behind the decimal point
    std::wstring m_displayName;
    std::vector<std::wstring> m_optionDisplayNames; ///< by index with m_optionValues
    std::wstring m_prefix;
    std::wstring m_postfix; ///< as a rule the unit; "mm" for a node constructed as Distance
    std::wstring m_description;
    std::wstring m_imageDescription;
    std::wstring m_imageStretch = L"None";
    std::wstring m_displayNameSharedSizeGroup; ///< nodes whose name columns share one width
    std::wstring m_postfixSharedSizeGroup;     ///< nodes whose postfix columns share one width
    /// The library evaluates no condition: it keeps them and writes them to files.
    std::vector<LayoutNodeSource> m_visibilitySources;
    std::vector<LayoutNodeSource> m_editabilitySources;
};

/// What a layout node stores beside its place in the tree. Its fields are used as fields of LayoutNode.
/// Values are texts here, whatever the node's type.
struct LayoutNodeAttributes : LayoutNodeListSettings, LayoutNodeDisplaySettings {
    LayoutNodeAttributes() = default;

    eTypeLayoutNode m_type = Group;
    // Flags stand together, and so take no more than their bytes: an element of a file can become a node.
    bool m_allowEmpty = false;
    bool m_isValueUnique = false;
    bool m_enableMultiLine = false;
    bool m_writeToParameterFile = true; ///< false: a file may lack the element, which is written all the same
    bool m_childrenWriteToParameterFile = true; ///< the m_writeToParameterFile that appended children get
    bool m_disableForParents = false;
    bool m_disableForSubParts = false;
    bool m_showOnlyPartsSelectedInTessra = true;
    std::wstring m_name;       ///< the node's key among its siblings, and its XML tag
    std::wstring m_identifier; ///< what conditions of other nodes refer to
    std::wstring m_defaultValue;
    std::wstring m_min;                 ///< lowest value, empty: none
    std::wstring m_max;                 ///< highest value, empty: none
    std::wstring m_profileName;         ///< the profile list whose members are the choices
    std::wstring m_requestName;         ///< the request by which the driver fills the node
    std::wstring m_triggerPropertyName; ///< the property that triggers the request
    std::wstring m_fileFilter;          ///< for a file dialog
    std::vector<std::wstring> m_optionValues;
    LayoutNode const* m_profileNode = nullptr; ///< the profile list where it was given as a node; not owned
    std::wstring m_visibilityRequest;          ///< the request that decides whether the node is shown
    std::wstring m_regex;                      ///< never applied by the library
    std::wstring m_regexUserFriendly;          ///< the same rule in words
    std::uint64_t m_maxLength = 0;             ///< 0: not set
    std::wstring m_profileEditingPolicy;       ///< a word for the host
    std::vector<std::wstring> m_editorLicenseChecks; ///< licences that gate the node's editor pane
    std::wstring m_propName; ///< the property in tickets and templates by which the value is known
};

} // namespace Zantrel
