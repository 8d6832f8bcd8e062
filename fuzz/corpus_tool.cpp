// SPDX-License-Identifier: Apache-2.0
//
// What a fuzzer takes and gives are files, one for each input; what is kept is one file for each target.
//     zantrel_fuzz_corpus targets | unpack CORPUS FOLDER | pack FOLDER CORPUS | dictionary TARGET

#include "fuzz/corpus.h"
#include "fuzz/target.h"
#include "fuzz/xml_mutator.h"

#include <filesystem>
#include <iostream>
#include <set>
#include <sstream>

namespace {

void Unpack(std::string const& corpus, std::filesystem::path const& folder) {
    for (std::string const& input : Fuzz::InputsIn(corpus)) {
        std::ofstream(folder / std::to_string(std::hash<std::string>()(input)), std::ios::binary) << input;
    }
}

std::string Escaped(std::string const& word) {
    std::ostringstream text;
    for (char const character : word) {
        unsigned const byte = static_cast<unsigned char>(character);
        if (byte < ' ' || byte > '~' || byte == '"' || byte == '\\') {
            text << "\\x" << std::hex << byte / 16 << byte % 16;
        } else {
            text << character;
        }
    }
    return text.str();
}

/// The shortest first, and the same file for the same inputs.
void Pack(std::filesystem::path const& folder, std::string const& corpus) {
    std::set<std::pair<std::size_t, std::string>> inputs;
    for (auto const& entry : std::filesystem::directory_iterator(folder)) {
        std::ostringstream bytes;
        bytes << std::ifstream(entry.path(), std::ios::binary).rdbuf();
        inputs.emplace(bytes.str().size(), bytes.str());
    }
    std::ofstream out(corpus, std::ios::binary);
    for (auto const& [size, bytes] : inputs) {
        out << size << '\n' << bytes << '\n';
    }
}

void PrintTargets() {
    for (Fuzz::Target const& target : Fuzz::AllTargets()) {
        std::cout << target.name << '\n';
    }
}

/// As libFuzzer has them: a line for each word, in which any byte can stand as "\xAB".
void PrintDictionary(std::string const& name) {
    for (Fuzz::Target const& target : Fuzz::AllTargets()) {
        Fuzz::Words const words(target.example);
        for (auto const* const kind : {&words.names, &words.attributes, &words.texts}) {
            for (std::string const& word : *kind) {
                if (target.name == name && !word.empty()) {
                    std::cout << '"' << Escaped(word) << "\"\n";
                }
            }
        }
    }
}

} // namespace

int main(int count, char** arguments) {
    std::vector<std::string> const words(arguments + 1, arguments + count);
    if (count == 4 && words[0] == "unpack") {
        Unpack(words[1], words[2]);
    } else if (count == 4 && words[0] == "pack") {
        Pack(words[1], words[2]);
    } else if (count == 2 && words[0] == "targets") {
        PrintTargets();
    } else if (count == 3 && words[0] == "dictionary") {
        PrintDictionary(words[1]);
    } else {
        return 2;
    }
}
