// SPDX-License-Identifier: Apache-2.0
#include <zantrel/zantrel.h>

#include <iostream>
#include <memory>
#include <string>
#include <thread>
#include <vector>

using namespace Zantrel;

class PrinterLayout : public ParameterLayout {
public:
    PrinterLayout() {
        SetName(L"Printer");
        m_profileEditor->AddNode(L"Laser")->AddNode(L"Power", Double, 200.0);
        AddCategoryNodeIfNeeded();
    }
};

std::unique_ptr<ParameterLayout const> MakeLayout() { return std::make_unique<PrinterLayout>(); }

class Job {
public:
    explicit Job(ParameterLayout const& layout) : m_database(&layout) {}

    void Run(int number) {
        m_database.GetProfileEditor().Get(L"Laser").Get(L"Power").SetValue(200.0 + number);
        m_isSaved = WriteFile(m_database, L"job" + std::to_wstring(number) + L".xml", L"");
    }
    bool IsSaved() const { return m_isSaved; }
    double GetPower() const {
        return m_database.GetProfileEditor().Get(L"Laser").Get(L"Power").GetValue<double>();
    }

private:
    ParameterDatabase m_database;
    bool m_isSaved = false;
};

int main() {
    std::unique_ptr<ParameterLayout const> const layout = MakeLayout(); // ends last: it was made first
    std::vector<Job> jobs(4, Job(*layout));

    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number) {
        threads.emplace_back([&job = jobs[static_cast<std::size_t>(number)], number] { job.Run(number); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (Job const& job : jobs) {
        std::cout << job.GetPower() << (job.IsSaved() ? " W, saved\n" : " W, not saved\n");
    }

    ParameterDatabase database(layout.get());
    ParameterNode laser = database.GetProfileEditor().Get(L"Laser");
    double const& power = laser.Get(L"Power").GetValue<double>(); // a reference into the database
    laser.Get(L"Power").SetValue(300.0);
    std::cout << power << " W\n"; // still good: the value was written, not replaced

    try {
        laser.Get(L"Colour");
    } catch (ParameterMisuse const& misuse) {
        std::cout << misuse.what() << '\n';
    }
}
