// SPDX-License-Identifier: Apache-2.0
#include "parameter_files/node_value_sax.h"

#include "sax/value_leaf.h"
#include "store/bag_access.h"

#include <zantrel/sax/tag_writer.h>

namespace Zantrel {

/// A value is read in place, without a copy and without an exception where there is none: of documents for
/// other layouts that may be each one.
template <class T> void ReadLeafValue(ParameterNode const& leaf, KelSAX::ISAXReader& reader) {
    if (T* value = ValueAccess::Find<T>(leaf)) {
        HandleValueOfProperty(*value, reader);
    } else if (!leaf.IsValid() || leaf.m_pNode->m_type != eTypeLayoutNode::StandardOptions) {
        reader.NoteDropped(NoPlace);
        if constexpr (std::is_same_v<T, KelAM::FileContent>) {
            reader.PushHandler(nullptr); // its children are no parameters
        }
    } else if (!reader.GetText().empty()) { // empty text leaves options of the driver without a value
        std::wstring text;
        reader.ReadValue(text);
        ParameterNode(leaf).SetValueFromText(text);
    }
}

template void ReadLeafValue<std::int32_t>(ParameterNode const&, KelSAX::ISAXReader&);
template void ReadLeafValue<double>(ParameterNode const&, KelSAX::ISAXReader&);
template void ReadLeafValue<bool>(ParameterNode const&, KelSAX::ISAXReader&);
template void ReadLeafValue<std::wstring>(ParameterNode const&, KelSAX::ISAXReader&);
template void ReadLeafValue<KelAM::FileContent>(ParameterNode const&, KelSAX::ISAXReader&);

// Nearly every leaf's bag holds its value alone, which is then found without a look at a name.
IPersistentProperty const* FindSoleValue(ParameterNode const& leaf) {
    return leaf.IsValid() ? BagAccess::FindSole(*leaf.m_pProperties) : nullptr;
}

namespace {

/// Gives `take` the value of a leaf, or a NoValue. By the node's type and not by the property's class: what a
/// host has put under the value's name, and the layout doesn't know as one, is no part of a file.
template <class Take> void TakeLeafValue(ParameterNode const& leaf, Take take) {
    if (leaf.m_pNode == nullptr) {
        return take(NoValue()); // a place of a copied layout, or below a place without content
    }
    VisitValueType(leaf.m_pNode->m_type, [&]<class T>(TypeTag<T>) {
        if constexpr (!std::is_same_v<T, NoValue>) {
            auto const* const property = PropertyCast<T>(FindSoleValue(leaf));
            bool const isFound = property != nullptr && !property->IsDeleted();
            if (T const* value = isFound ? &property->m_value : leaf.FindValue<T>()) {
                return take(*value);
            }
        }
        take(NoValue());
    });
}

} // namespace

/// Where the element is open already, as one with attributes is.
void WriteLeafValue(ParameterNode const& leaf, KelSAX::ISAXWriter& writer) {
    TakeLeafValue(leaf, [&writer]<class T>(T const& value) {
        if constexpr (!std::is_same_v<T, NoValue>) {
            WriteValueOfProperty(value, writer);
        }
    });
}

namespace {

template <class T>
void WriteElement(KelSAX::PreparedTag const& tag, T const& value, KelSAX::ISAXWriter& writer) {
    if constexpr (std::is_same_v<T, NoValue>) {
        MSAXTagWriter const element(writer, tag);
    } else if constexpr (std::is_same_v<T, KelAM::FileContent>) {
        MSAXTagWriter const element(writer, tag);
        WriteValueOfProperty(value, writer);
    } else {
        Sax::WriteLeaf(tag, value, writer);
    }
}

} // namespace

void WriteLeafElement(KelSAX::PreparedTag const& tag, ParameterNode const& leaf, KelSAX::ISAXWriter& writer) {
    TakeLeafValue(leaf, [&](auto const& value) { WriteElement(tag, value, writer); });
}

PlainElement PlainElementOf(eTypeLayoutNode type) {
    return VisitValueType(type, []<class T>(TypeTag<T>) -> PlainElement {
        if constexpr (std::is_same_v<T, NoValue>) {
            return nullptr;
        } else {
            return [](KelSAX::PreparedTag const& tag, IPersistentProperty const& value,
                      KelSAX::ISAXWriter& writer) {
                auto const& property = static_cast<PersistentProperty<T> const&>(value);
                if (!property.m_deleted) {
                    WriteElement(tag, property.m_value, writer);
                }
                return !property.m_deleted;
            };
        }
    });
}

} // namespace Zantrel
