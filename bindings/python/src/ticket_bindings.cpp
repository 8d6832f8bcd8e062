// SPDX-License-Identifier: Apache-2.0
#include "bindings.h"
#include "documents.h"
#include "records.h"
#include "values.h"

#include <zantrel/build_ticket/build_ticket_file.h>
#include <zantrel/store/sub_properties.h>

#include <map>
#include <utility>
#include <vector>

namespace ZantrelPython {

using namespace Zantrel;

namespace {

/// A build ticket, which Python only reads: nothing that it gives borrows from the ticket, and no thread
/// changes one.
struct TicketHandle {
    BuildTicket ticket{nullptr};
    py::list notes;
    std::wstring path;
};

// The type of each property stands in the ticket, and needn't be that of any layout. What Python has no type
// for is told by the name of its own.
py::object ValueOf(IPersistentProperty const& property) {
    if (auto const* const number = PropertyCast<double>(&property)) {
        return py::float_(number->m_value);
    }
    if (auto const* const number = PropertyCast<std::int32_t>(&property)) {
        return py::int_(number->m_value);
    }
    if (auto const* const flag = PropertyCast<bool>(&property)) {
        return py::bool_(flag->m_value);
    }
    if (auto const* const text = PropertyCast<std::wstring>(&property)) {
        return StrOf(text->m_value);
    }
    if (auto const* const file = PropertyCast<KelAM::FileContent>(&property)) {
        auto const& data = file->m_value.m_data;
        return TypeNamed("Attachment")(StrOf(file->m_value.m_name),
                                       py::bytes(reinterpret_cast<char const*>(data.data()), data.size()));
    }
    return StrOf(property.GetType());
}

PersistentProperties const* BagOf(IPersistentProperty const& property) {
    if (auto const* const bag = PropertyCast<PersistentProperties>(&property)) {
        return &bag->m_value;
    }
    if (auto const* const component = PropertyCast<KelAM::SubProperties>(&property)) {
        return &component->m_value;
    }
    auto const* const object = PropertyCast<KelAM::ExternalProperties>(&property);
    return object != nullptr ? &object->m_value : nullptr;
}

/// Bags that are still to be told, each with the dict that it goes to; without recursion, since files nest
/// deeply.
using Open = std::vector<std::pair<PersistentProperties const*, py::dict>>;

py::object Opened(IPersistentProperty const& property, Open& open) {
    if (PersistentProperties const* const bag = BagOf(property)) {
        py::dict dict;
        open.emplace_back(bag, dict);
        return dict;
    }
    auto const* const items = PropertyCast<IndexedProperties<PersistentProperties>>(&property);
    if (items == nullptr) {
        return ValueOf(property);
    }
    py::list list;
    for (std::int32_t i = 0; i < static_cast<std::int32_t>(items->m_value.GetNumProperties()); ++i) {
        py::dict dict;
        open.emplace_back(&items->m_value.GetProperty(i), dict);
        list.append(dict);
    }
    return list;
}

/// The name, with the next number behind it where that is taken, as by another name that holds a "#". `turn`
/// counts those that the name was tried with.
py::str FreeKey(py::dict const& dict, std::wstring const& name, std::size_t& turn) {
    for (;;) {
        ++turn;
        py::str const key = StrOf(turn == 1 ? name : name + L'#' + std::to_wstring(turn));
        if (!dict.contains(key)) {
            return key;
        }
    }
}

py::dict DictOf(PersistentProperties const& top) {
    py::dict all;
    Open open{{&top, all}};
    while (!open.empty()) {
        auto const [bag, dict] = open.back();
        open.pop_back();
        std::map<std::wstring, std::size_t> turns; // names of one bag may repeat
        for (auto const& [name, property] : *bag) {
            if (!property->IsDeleted()) {
                std::wstring const key(name);
                dict[FreeKey(dict, key, turns[key])] = Opened(*property, open);
            }
        }
    }
    return all;
}

std::shared_ptr<TicketHandle> Load(Document const& document, py::object const& notes,
                                   py::object const& limits) {
    ReadOptions const options{L"", LimitsOf(limits), notes};
    // The reader takes any root for a ticket in which nothing stands.
    if (RootOf(document) != L"KlvrBuildTicket") {
        Raise("ReadError", StrOf(NameOf(document) + L" is no build ticket"));
    }
    auto handle = std::make_shared<TicketHandle>();
    ReadReport report;
    report.m_limits = options.limits;
    bool isRead = false;
    {
        Unlocked const unlocked;
        isRead = ReadDocument(
            document,
            [&](std::wstring const& path) { return LoadBuildTicket(path, handle->ticket, &report); },
            [&](std::istream& in) { return LoadBuildTicket(in, handle->ticket, &report); });
    }
    handle->path = NameOf(document);
    handle->notes = TellRead(isRead, document, report, options);
    return handle;
}

// Values of a ticket are told without a layout, too: one of which nothing is known has no defaults to give.
py::list Effective(TicketHandle const& ticket, Text const& part,
                   std::shared_ptr<LayoutHandle> const& layout) {
    if (layout) {
        LayoutUse const use(layout);
        return RecordsOf(Editing::EffectiveValues(ticket.ticket, part.value, *use));
    }
    ParameterLayout const none;
    return RecordsOf(Editing::EffectiveValues(ticket.ticket, part.value, none));
}

py::dict ToDict(TicketHandle const& ticket) {
    py::dict all;
    all["defaults"] = DictOf(ticket.ticket.GetDefaults());
    all["parts"] = DictOf(ticket.ticket.GetPartOverrides());
    all["objects"] = DictOf(ticket.ticket.GetObjectProperties());
    return all;
}

} // namespace

void BindTickets(py::module_& module) {
    py::class_<TicketHandle, std::shared_ptr<TicketHandle>> type(module, "Ticket");
    RefuseMaking(type);
    type.def_static(
        "load",
        [](FilePath const& path, py::object const& notes, py::object const& limits) {
            return Load(DocumentOf(path, LimitsOf(limits)), notes, limits);
        },
        py::arg("path"), py::kw_only(), py::arg("notes") = py::none(), py::arg("limits") = py::none());
    type.def_static(
        "loads",
        [](Data const& data, py::object const& notes, py::object const& limits) {
            return Load(DocumentOf(data), notes, limits);
        },
        py::arg("data"), py::kw_only(), py::arg("notes") = py::none(), py::arg("limits") = py::none());
    type.def("effective", &Effective, py::arg("part") = Text{}, py::arg("layout") = py::none());
    type.def_property_readonly("parts", [](TicketHandle const& ticket) {
        return py::list(DictOf(ticket.ticket.GetPartOverrides()).attr("keys")());
    });
    type.def("to_dict", &ToDict);
    type.def_property_readonly("notes", [](TicketHandle const& ticket) { return ticket.notes; });
    // By what it says, not by the order in which it says it.
    type.def(
        "__eq__",
        [](TicketHandle const& ticket, TicketHandle const& other) {
            return ToDict(ticket).equal(ToDict(other));
        },
        py::is_operator());
    type.attr("__hash__") = py::none();
    type.def("__repr__",
             [](TicketHandle const& ticket) { return StrOf(L"<Ticket of " + ticket.path + L'>'); });
    RefusePickling(
        type,
        "a ticket isn't pickled: pickle its to_dict(), or the file's bytes, which Ticket.loads() takes");
}

} // namespace ZantrelPython
