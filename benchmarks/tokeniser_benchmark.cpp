// SPDX-License-Identifier: Apache-2.0
//
// The tokeniser alone, and the driver with a handler that takes every element and does nothing, against
// libexpat with empty handlers, over the same bytes of a document like a parameter file.

#include "tests/support/memory_source.h"
#include "xml/tokeniser.h"

#include <zantrel/sax/sax_persist.h>
#include <zantrel/sax/sax_utilities.h>

#include <benchmark/benchmark.h>
#include <expat.h>

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <random>
#include <sstream>
#include <string>
#include <string_view>

namespace {

constexpr int Profiles = 10'000;
constexpr int LeavesPerProfile = 20;

/// Numbers of 17 digits in short elements, which is what most of a large parameter file is.
std::string MakeDocument() {
    constexpr std::string_view tags[] = {"LaserPower", "ScanSpeed", "HatchDistance", "LayerThickness"};
    std::mt19937_64 random(1);
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<BuildParameters version=\"1\">\n";
    for (int profile = 0; profile < Profiles; ++profile) {
        text += "  <Profile name=\"profile " + std::to_string(profile) + "\" state=\"active\">\n";
        for (int leaf = 0; leaf < LeavesPerProfile; ++leaf) {
            char digits[32];
            double const value = std::generate_canonical<double, 53>(random) * 1000;
            char* const end =
                std::to_chars(digits, std::end(digits), value, std::chars_format::general, 17).ptr;
            std::string_view const tag = tags[static_cast<std::size_t>(leaf) % std::size(tags)];
            text.append("    <").append(tag).append(">").append(digits, end);
            text.append("</").append(tag).append(">\n");
        }
        text += "  </Profile>\n";
    }
    return text + "</BuildParameters>\n";
}

std::string const& Document() {
    static std::string const document = MakeDocument();
    return document;
}

void SetBytes(benchmark::State& state, std::string_view document) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(document.size()));
}

void Tokenise(benchmark::State& state, std::string_view document) {
    using Zantrel::Xml::Token;
    for (auto _ : state) {
        TestSupport::MemorySource source(document);
        Zantrel::Xml::Tokeniser tokeniser(source);
        Token token;
        do {
            token = tokeniser.Next();
            benchmark::DoNotOptimize(token);
        } while (token != Token::End && token != Token::Error);
        if (token == Token::Error)
            state.SkipWithError(tokeniser.ErrorText().c_str());
    }
    SetBytes(state, document);
}

void TokeniseParameters(benchmark::State& state) { Tokenise(state, Document()); }
BENCHMARK(TokeniseParameters)->Unit(benchmark::kMillisecond);

void DriveParameters(benchmark::State& state) {
    struct Taker : ISAXPersistHelper {
        bool HandleTag(std::string const&, KelSAX::ISAXReader&) override { return true; }
    } taker;
    std::istringstream in(Document());
    for (auto _ : state) {
        in.clear();
        in.seekg(0);
        if (!KelAM::SaxUtilities::ReadStream(in, taker))
            state.SkipWithError("the document can't be read");
    }
    SetBytes(state, Document());
}
BENCHMARK(DriveParameters)->Unit(benchmark::kMillisecond);

void ParseParametersByExpat(benchmark::State& state) {
    for (auto _ : state) {
        XML_Parser const parser = XML_ParserCreate(nullptr);
        XML_SetElementHandler(
            parser, [](void*, XML_Char const*, XML_Char const**) {}, [](void*, XML_Char const*) {});
        XML_SetCharacterDataHandler(parser, [](void*, XML_Char const*, int) {});
        auto const size = static_cast<int>(Document().size());
        if (XML_Parse(parser, Document().data(), size, 1) != XML_STATUS_OK)
            state.SkipWithError(XML_ErrorString(XML_GetErrorCode(parser)));
        XML_ParserFree(parser);
    }
    SetBytes(state, Document());
}
BENCHMARK(ParseParametersByExpat)->Unit(benchmark::kMillisecond);

/// One token of up to 100 MB. A tokeniser that looks at a token from its start again whenever more of it
/// arrives takes quadratic time here, which the fitted curve would tell.
void TokeniseLongToken(benchmark::State& state, std::string_view before, std::string_view after) {
    std::string document(before);
    document.append(static_cast<std::size_t>(state.range()), 'x').append(after);
    Tokenise(state, document);
    state.SetComplexityN(state.range());
}
void OfGrowingSize(benchmark::internal::Benchmark* benchmark) {
    benchmark->RangeMultiplier(10)->Range(1'000'000, 100'000'000);
    benchmark->Complexity(benchmark::oN)->Unit(benchmark::kMillisecond);
}
BENCHMARK_CAPTURE(TokeniseLongToken, attribute, "<a b='", "'/>")->Apply(OfGrowingSize);
// A reference makes the value another text than its bytes.
BENCHMARK_CAPTURE(TokeniseLongToken, normalised_attribute, "<a b='&lt;", "'/>")->Apply(OfGrowingSize);
BENCHMARK_CAPTURE(TokeniseLongToken, comment, "<a><!--", "--></a>")->Apply(OfGrowingSize);
BENCHMARK_CAPTURE(TokeniseLongToken, text, "<a>", "</a>")->Apply(OfGrowingSize);

/// No two attributes of an element may have one name: comparing each with each would show as quadratic time.
void TokeniseManyAttributes(benchmark::State& state) {
    std::string document = "<a";
    for (std::int64_t count = 0; count < state.range(); ++count)
        document += " attribute" + std::to_string(count) + "=''";
    Tokenise(state, document + "/>");
    state.SetComplexityN(state.range());
}
BENCHMARK(TokeniseManyAttributes)
    ->RangeMultiplier(10)
    ->Range(10'000, 1'000'000)
    ->Complexity(benchmark::oNLogN)
    ->Unit(benchmark::kMillisecond);

} // namespace
