// SPDX-License-Identifier: Apache-2.0
#include <zantrel/editing/editing.h>
#include <zantrel/zantrel.h>

#include <fstream>
#include <iostream>
#include <stdexcept>

using namespace Zantrel;

void Tell(wchar_t const* file, ReadReport const& report) {
    for (ReadReport::Entry const& entry : report.m_entries) {
        std::wcout << file << L':' << ReadReport::Format(entry) << L'\n';
    }
}

class Host {
public:
    Host() {
        ReadReport report;
        if (!ReadWholeFile(m_layout, L"layout.xml", &report)) {
            Tell(L"layout.xml", report);
            throw std::runtime_error("no layout");
        }
        Tell(L"layout.xml", report);
        m_laser = Need(m_layout.m_profileEditor, L"Laser");
        m_power = Need(m_laser, L"Power");
        m_database = ParameterDatabase(&m_layout);
    }
    Host(Host const&) = delete; // a layout stays where it is
    Host& operator=(Host const&) = delete;

    bool Load(wchar_t const* file) {
        ParameterDatabase read(&m_layout);
        ReadReport report;
        bool const isRead = ReadFile(read, file, &report);
        Tell(file, report);
        if (isRead) {
            m_database = read;
        }
        return isRead;
    }

    double GetPower() const { return m_database.GetProfileEditor().Get(m_power).GetValue<double>(); }

private:
    static LayoutNode const* Need(LayoutNode const* parent, wchar_t const* name) {
        LayoutNode const* const node = parent->GetNode(name);
        if (node == nullptr) {
            throw std::runtime_error("the layout lacks what this host is made for");
        }
        return node;
    }

    ParameterLayout m_layout; // before the database, which ends first
    LayoutNode const* m_laser = nullptr;
    LayoutNode const* m_power = nullptr;
    ParameterDatabase m_database{nullptr};
};

int main() {
    std::ofstream("layout.xml") << R"xml(<Printer>
  <ProfileEditor><ParameterStructure>
    <Laser>
      <Power Type="Double" Min="50" Max="400" Postfix="W">200</Power>
      <Angle Type="Degrees">0</Angle>
    </Laser>
  </ParameterStructure></ProfileEditor>
</Printer>
)xml";
    std::ofstream("good.xml") << R"xml(<Printer><Laser><Power>275.5</Power></Laser></Printer>
)xml";
    std::ofstream("torn.xml") << "<Printer><Laser><Power>300</Power></Las";

    Host host;
    std::wcout << host.GetPower() << L" W\n";
    host.Load(L"good.xml");
    std::wcout << host.GetPower() << L" W\n";
    host.Load(L"torn.xml");
    std::wcout << host.GetPower() << L" W\n";
}
