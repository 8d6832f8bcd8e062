// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

/// What the fuzzers and the tests of their corpora run, in tables.
namespace Fuzz {

/// Checks that take long are each made of one share of the inputs, so that there are more of them in a
/// second.
inline constexpr unsigned Shares = 8;
/// The share that an input belongs to, which is the same whenever it is replayed.
inline unsigned ShareOf(std::string const& bytes) {
    return static_cast<unsigned>(std::hash<std::string>()(bytes) % Shares);
}

struct Target {
    std::string name;
    /// Does with the bytes what inputs of that share are for. Gives what was wrong, or nothing.
    std::function<std::string(std::string const& bytes, unsigned share)> faultOf;
    /// Whose elements and words the mutator puts into documents; empty where the input is no document.
    std::string example;
    /// Of documents: all that reading one gives, as a text. It begins with "taken" or "refused", in a line;
    /// behind an empty line it has the report.
    std::function<std::string(std::istream& document)> outcomeOf = nullptr;

    /// For the name of a test.
    friend void PrintTo(Target const& target, std::ostream* out) { *out << target.name; }
};

std::string FaultOfTokeniser(std::string const& bytes, unsigned share); ///< needs libexpat
std::string FaultOfTexts(std::string const& bytes, unsigned share);
std::string FaultOfBinaryForm(std::string const& bytes, unsigned share);
std::string FaultOfCalls(std::string const& bytes, unsigned share);
std::string FaultOfEditing(std::string const& document, unsigned share);

/// Those of documents, one for each format and the two checks.
std::vector<Target> DocumentTargets();
/// Those and what else needs nothing but the library.
inline std::vector<Target> LibraryTargets() {
    std::vector<Target> targets = DocumentTargets();
    targets.insert(
        targets.end(),
        {{"Texts", FaultOfTexts, ""}, {"BinaryForm", FaultOfBinaryForm, ""}, {"Calls", FaultOfCalls, ""}});
    return targets;
}
/// All of them, with the second library and libexpat.
inline std::vector<Target> AllTargets() {
    std::vector<Target> targets = LibraryTargets();
    std::string const parameters = targets.front().example;
    targets.insert(targets.end(),
                   {{"Editing", FaultOfEditing, parameters}, {"Tokeniser", FaultOfTokeniser, ""}});
    return targets;
}

/// The input as a sequence of small numbers, 0 when it has ended.
class Choices {
public:
    explicit Choices(std::string_view bytes) : m_bytes(bytes) {}
    bool HaveEnded() const { return m_bytes.empty(); }
    /// Below `end`, which is at most 256.
    unsigned Below(std::size_t end) {
        if (m_bytes.empty() || end == 0) {
            return 0;
        }
        auto const byte = static_cast<unsigned char>(m_bytes.front());
        m_bytes.remove_prefix(1);
        return static_cast<unsigned>(byte % end);
    }

private:
    std::string_view m_bytes;
};

} // namespace Fuzz
