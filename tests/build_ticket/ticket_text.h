// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "store/property_set_sax.h"
#include "store/visit_property.h"
#include "tests/support/document_text.h"
#include "tests/support/dump.h"

#include <zantrel/build_ticket/build_ticket_file.h>

#include <map>
#include <sstream>

namespace TestSupport {

/// A class of a host's own that is a `T` to the library, with a type of its own.
template <class T> struct HostProperty : PersistentProperty<T> {
    explicit HostProperty(std::wstring type, T const& value = T())
        : PersistentProperty<T>(value), m_type(std::move(type)) {}
    HostProperty* Clone() const override { return new HostProperty(*this); }
    std::wstring GetType() const override { return m_type; }
    std::wstring m_type;
};

/// What is dumped: everything, or what comes back from a file, under the names that it comes back with.
enum class Form { Whole, Saved };

/// As in "{name=5 name#1.5 name='text' name~=True bag{} set:{} sequence[{}{}] foreign?Type}", where "~" marks
/// what is deleted.
inline std::string Dump(PersistentProperties const& bag, Form form = Form::Whole, bool isStore = false) {
    std::multimap<std::string, std::string> entries;
    for (auto const& [name, property] : bag) {
        std::string value = '?' + StringConversion::NativeToUtf8(property->GetType());
        VisitProperty(*property, [&]<class T>(PersistentProperty<T> const& typed) {
            if constexpr (std::is_same_v<T, IndexedProperties<PersistentProperties>>) {
                value = '[';
                for (unsigned long long i = 0; i < typed.m_value.GetNumProperties(); ++i) {
                    value += Dump(typed.m_value.GetProperty(static_cast<std::int32_t>(i)), form);
                }
                value += ']';
            } else if constexpr (std::is_base_of_v<PersistentProperties, T>) {
                value = (std::is_same_v<T, PersistentProperties> ? "" : ":") + Dump(typed.m_value, form);
            } else {
                value = (std::is_same_v<T, double> ? '#' : '=') + Print(typed.m_value);
            }
        });
        if (form == Form::Whole || !property->IsDeleted()) {
            std::wstring const asItIs(name);
            bool const isRenamed = form == Form::Saved && isStore && IsComponent(name, *property);
            entries.emplace(
                StringConversion::NativeToUtf8(
                    isRenamed ? KelAM::ExternalPropertyID(asItIs).FormatGuid(true, true) : asItIs),
                (property->IsDeleted() ? "~" : "") + value);
        }
    }
    std::string text;
    for (auto const& [name, value] : entries) {
        text.append(text.empty() ? "" : " ").append(name).append(value);
    }
    return '{' + text + '}';
}

/// Each part that isn't empty, as in "from'source' defaults{} item id 3{} object id{}", where 3 is a kind.
inline std::string Dump(BuildTicket const& ticket, Form form = Form::Whole) {
    std::string text = ticket.GetSourceId().empty() ? "" : "from" + Print(ticket.GetSourceId());
    auto const add = [&](std::string const& name, KelAM::ExternalProperties const& store, std::int32_t last) {
        std::int32_t const kind = store.m_objectKind;
        bool const hasKind = form == Form::Whole ? kind != 0 : kind > 0 && kind <= last;
        text += (text.empty() ? "" : " ") + name + (hasKind ? ' ' + std::to_string(kind) : "");
        text += Dump(store, form, true);
    };
    if (!ticket.GetDefaults().IsEmpty()) {
        add("defaults", ticket.GetDefaults(), 0);
    }
    for (auto const* const stores : {&ticket.GetPartOverrides(), &ticket.GetObjectProperties()}) {
        for (auto const& [key, property] : *stores) {
            std::string const section = stores == &ticket.GetPartOverrides() ? "item " : "object ";
            add(section + StringConversion::NativeToUtf8(key),
                PropertyCast<KelAM::ExternalProperties>(property)->m_value, 4);
        }
    }
    return text;
}

inline bool Load(BuildTicket& ticket, std::string const& document, ReadReport* report = nullptr) {
    std::istringstream in(document);
    return LoadBuildTicket(in, ticket, report);
}

/// In tables "<P name type>", "<C uuid>" and "<I uuid>" are elements of these names with these attributes,
/// "<D>",
/// "<PO>" and "<OP>" are the sections, and "@" and "$" stand for one GUID in upper and in lower case.
inline std::string Expand(std::string const& text) {
    constexpr char const* shorthands[][2] = {
        {"(</?)P\\b", "$1Property"},
        {"(</?)C\\b", "$1Component"},
        {"(</?)I\\b", "$1Instance"},
        {"(</?)D\\b", "$1Defaults"},
        {"(</?)PO\\b", "$1PartOverrides"},
        {"(</?)OP\\b", "$1ObjectProperties"},
        {"<Property ([^ >/=]+) (\\w+)(?=[ />])", "<Property Name='$1' Type='$2'"},
        {"<(Component|Instance) ([^ >/=]+)(?=[ />])", "<$1 uuid='$2'"},
        {"@", "01234567-89AB-CDEF-0123-456789ABCDEF"},
        {"\\$", "01234567-89ab-cdef-0123-456789abcdef"}};
    return Expanded(text, shorthands);
}

/// Loads what stands in the root.
inline bool LoadContent(BuildTicket& ticket, std::string const& content, ReadReport* report = nullptr) {
    return Load(ticket, Expand("<p:R xmlns:p='u'>" + content + "</p:R>"), report);
}

inline BuildTicketWriteOptions InVersion(std::int32_t version) {
    BuildTicketWriteOptions options;
    options.m_version = version;
    return options;
}

/// The document, or nothing where it can't be written.
inline std::string Saved(BuildTicket const& ticket, std::int32_t version = 0, WriteReport* report = nullptr) {
    std::ostringstream out;
    return SaveBuildTicket(out, ticket, InVersion(version), report) ? out.str() : std::string();
}

} // namespace TestSupport
