// SPDX-License-Identifier: Apache-2.0
// Writes one file, by each of the functions that do: write_one_file [<writer> <path> old|new]
#include <zantrel/build_ticket/build_ticket_file.h>
#include <zantrel/editing/schema.h>
#include <zantrel/io/mfile.h>
#include <zantrel/layout/parameter_layout.h>
#include <zantrel/layout_files/meta_file.h>
#include <zantrel/layout_files/property_template.h>
#include <zantrel/parameter_files/generic_parameter_file.h>
#include <zantrel/parameter_files/machine_parameters_file.h>
#include <zantrel/parameter_files/value_edit.h>
#include <zantrel/store/file_content.h>

#include <filesystem>
#include <iostream>
#include <string_view>

#ifdef __linux__
#include <sys/xattr.h>
#endif

using namespace Zantrel;

namespace {

struct Host {
    Host(std::filesystem::path const& path, std::int32_t number) : m_path(WidePath(path)), m_number(number) {
        m_layout.m_name = L"Root";
        m_layout.m_profileEditor->AddNode(L"N", Int, number)->SetRange(0, number);
        m_layout.m_profileEditor->AddNode(L"Text", String, std::wstring(200000, L'x')); // in several pieces
    }

    std::wstring const m_path;
    std::int32_t const m_number;
    ParameterLayout m_layout;
    WriteReport m_report;
};

bool WriteGeneric(Host& host) {
    return WriteFile(ParameterDatabase(&host.m_layout), host.m_path, L"", &host.m_report);
}

bool WriteMachine(Host& host) {
    KlvrProperties::WriteOptions options;
    options.m_profileListsOnly = false;
    return KlvrProperties::WriteFile(ParameterDatabase(&host.m_layout), host.m_path, options, &host.m_report);
}

bool WriteMeta(Host& host) { return WriteFile(host.m_layout, host.m_path, &host.m_report); }
bool WriteWholeMeta(Host& host) { return WriteWholeFile(host.m_layout, host.m_path, &host.m_report); }
bool WriteSchemaOf(Host& host) { return Editing::WriteSchema(host.m_layout, host.m_path, &host.m_report); }

bool WriteTemplate(Host& host) {
    KlvrPropertyTemplate::WriteOptions options;
    options.m_profileListsOnly = false;
    return KlvrPropertyTemplate::WriteFile(host.m_layout, host.m_path, options, &host.m_report);
}

bool WriteTicket(Host& host) {
    BuildTicket ticket(&host.m_layout);
    *ticket.GetDefaults().GetValuePointer<std::int32_t>(L"N", true) = host.m_number;
    return SaveBuildTicket(host.m_path, ticket, {}, &host.m_report);
}

bool WriteBinary(Host& host) {
    MFile file;
    file.WriteUnsigned32(static_cast<std::uint32_t>(host.m_number));
    return file.WriteToFile(host.m_path);
}

bool WriteContent(Host& host) {
    KelAM::FileContent const content(L"", {static_cast<std::byte>(host.m_number)});
    return content.SaveFile(host.m_path);
}

bool WriteEdit(Host& host) {
    return host.m_number == 1
               ? WriteGeneric(host)
               : EditValueTexts(host.m_layout, host.m_path, {{L"N", L"2"}}, host.m_path, &host.m_report);
}

bool WriteInPlace(Host& host) {
    host.m_report.m_mayWriteInPlace = true;
    return WriteGeneric(host);
}

struct Writer {
    std::string_view name;
    bool (*write)(Host&);
};

constexpr Writer Writers[] = {
    {"generic", WriteGeneric}, {"machine", WriteMachine},      {"meta", WriteMeta},
    {"schema", WriteSchemaOf}, {"whole_meta", WriteWholeMeta}, {"template", WriteTemplate},
    {"ticket", WriteTicket},   {"binary", WriteBinary},        {"content", WriteContent},
    {"edit", WriteEdit},       {"in_place", WriteInPlace},     {"first", WriteGeneric},
};

/// Of a file 0640 that one user more may write, where the system has such lists: 0660 by its mode.
void GiveAccessList([[maybe_unused]] std::filesystem::path const& path) {
    std::filesystem::permissions(path, std::filesystem::perms(0640));
#ifdef __linux__
    constexpr unsigned None = ~0u;
    unsigned const list[] = {2,    6 << 16 | 1,  None, 6 << 16 | 2,  1,   4 << 16 | 4,
                             None, 6 << 16 | 16, None, 0 << 16 | 32, None};
    static_cast<void>(setxattr(path.c_str(), "system.posix_acl_access", list, sizeof list, 0));
    static_cast<void>(setxattr(path.c_str(), "user.a", "x", 1, 0));
#endif
}

} // namespace

int main(int count, char** arguments) {
    for (Writer const& writer : Writers) {
        if (count != 4) {
            std::cout << writer.name << '\n';
        } else if (arguments[1] == writer.name) {
            Host host(arguments[2], arguments[3] == std::string_view("new") ? 2 : 1);
            bool const isWritten = writer.write(host);
            if (host.m_number == 1) {
                GiveAccessList(arguments[2]);
            }
            return isWritten ? 10 : 11; // neither of which it ends with when it doesn't come so far
        }
    }
}
