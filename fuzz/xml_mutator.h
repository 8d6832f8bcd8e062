// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <random>
#include <set>
#include <string>
#include <string_view>

namespace Fuzz {

/// What an example document is made of, and a few values that no format likes.
struct Words {
    explicit Words(std::string const& example);
    std::set<std::string> elements, names, attributes, texts;
};

/// The document with elements swapped, doubled, gone, put in from elsewhere or renamed, or with other texts
/// and attributes. The same where none of its elements is whole.
std::string Mutated(std::string document, Words const& words, std::minstd_rand& random);

} // namespace Fuzz
