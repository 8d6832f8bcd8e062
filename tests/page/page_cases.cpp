// SPDX-License-Identifier: Apache-2.0
//
// Pages for the tests in a browser, and what the editing library says of what they show.
//
//     zantrel_page_cases generated SEED FOLDER    page.html, and expected.json: the sets of paths and the
//     values
//                                                 before and after random edits, with these as lines
//     zantrel_page_cases apply SEED               the values after the lines from standard input
//     zantrel_page_cases large COUNT FOLDER       page.html of a layout with so many parameters
//     zantrel_page_cases hostile FOLDER           page.html of a layout whose texts try to be more than texts
//     zantrel_page_cases patterns                 which texts are against which pattern

#include "page.h"
#include "tests/editing/generated.h"

#include <zantrel/editing/editing.h>

#include <algorithm>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace {

using namespace Zantrel;
using namespace Zantrel::Editing;
using nlohmann::json;
using StringConversion::NativeToUtf8;
using StringConversion::Utf8ToNative;

/// A layout that a database can hold wholly: names that differ among siblings.
struct Case {
    explicit Case(unsigned seed) : generated(seed) {
        do {
            layout = generated.MakeLayout();
        } while (HasSameNames());
        database = std::make_unique<ParameterDatabase>(layout.get());
        generated.Fill(*database);
    }
    bool HasSameNames() const {
        auto const findings = Lint(*layout);
        return std::any_of(findings.begin(), findings.end(), [](LintFinding const& finding) {
            return finding.kind == LintKind::SameName || finding.kind == LintKind::Unreached;
        });
    }

    EditingTests::Generated generated;
    std::unique_ptr<ParameterLayout> layout;
    std::unique_ptr<ParameterDatabase> database;
};

json ValuesOf(ParameterDatabase const& database) {
    return Paramtool::PageData({*database.GetLayout(), &database, L"", L""})["values"];
}

json SaidOf(ParameterDatabase const& database) {
    json visible = json::array(), editable = json::array(), objected = json::array();
    for (LookWalk walk(database); walk.Next();) {
        std::string const path = NativeToUtf8(walk.GetPlace().GetPath());
        if (walk.GetLook().isVisible) {
            visible.push_back(path);
        }
        if (walk.GetLook().isEditable) {
            editable.push_back(path);
        }
    }
    for (Finding const& finding : Validate(database)) {
        objected.push_back(NativeToUtf8(finding.path));
    }
    return {
        {"visible", visible}, {"editable", editable}, {"objected", objected}, {"values", ValuesOf(database)}};
}

// Lines as the page exports them

std::vector<std::wstring> FieldsOf(std::string const& line) {
    std::vector<std::wstring> fields{L""};
    std::wstring const text = Utf8ToNative(line);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == L'\t') {
            fields.emplace_back();
        } else if (text[i] == L'\\' && i + 1 < text.size()) {
            wchar_t const next = text[++i];
            fields.back() += next == L't' ? L'\t' : next == L'n' ? L'\n' : next == L'r' ? L'\r' : next;
        } else {
            fields.back() += text[i];
        }
    }
    return fields;
}

/// Whether it was done.
bool Apply(ParameterDatabase& database, std::vector<std::wstring> const& fields) {
    std::wstring const& kind = fields.at(0);
    bool const isValue = kind == L"set";
    auto const place = Place::Find(database, fields.at(isValue ? 1 : 2));
    if (!place) {
        return false;
    }
    auto const index = [&](std::size_t field) { return std::stoull(fields.at(field)); };
    std::wstring const& action = isValue ? kind : fields.at(1);
    if (isValue) {
        return LookOf(*place).isEditable && !SetText(*place, fields.at(2));
    }
    if (kind == L"profile") {
        return bool(action == L"add"      ? AddProfile(*place, fields.at(3))
                    : action == L"copy"   ? DuplicateProfile(*place, fields.at(3), fields.at(4))
                    : action == L"rename" ? RenameProfile(*place, fields.at(3), fields.at(4))
                                          : RemoveProfile(*place, fields.at(3)));
    }
    return bool(action == L"add"    ? AddItem(*place)
                : action == L"move" ? MoveItem(*place, index(3), index(4))
                                    : RemoveItem(*place, index(3)));
}

std::string LineOf(std::vector<std::wstring> const& fields) {
    std::string line;
    for (std::wstring const& field : fields) {
        line += (line.empty() ? "" : "\t") + NativeToUtf8(field);
    }
    return line;
}

/// Something that a user may try at a place.
std::vector<std::wstring> EditAt(Case& tried, Place const& place) {
    EditingTests::Generated& generated = tried.generated;
    std::wstring const path = place.GetPath();
    auto const found = Place::Find(*tried.database, path);
    if (!found || found->GetCursor().m_pProperties != place.GetCursor().m_pProperties) {
        return {}; // in a second profile of a name
    }
    std::wstring const name =
        generated.OneIn(2) ? generated.Word() : L"p" + std::to_wstring(generated.Below(9));
    if (place.GetKind() == PlaceKind::List) {
        auto const size = static_cast<unsigned>(place.GetCursor().GetSize());
        std::wstring const at = std::to_wstring(generated.Below(size + 1));
        return generated.OneIn(2) || size == 0 ? std::vector<std::wstring>{L"item", L"add", path}
               : generated.OneIn(2)            ? std::vector<std::wstring>{L"item", L"remove", path, at}
                                               : std::vector<std::wstring>{L"item", L"move", path, at,
                                                                           std::to_wstring(generated.Below(size + 1))};
    }
    if (place.GetKind() == PlaceKind::ProfileList) {
        std::vector<std::wstring> names;
        place.GetCursor().GetProfiles(names);
        if (generated.OneIn(3) || names.empty()) {
            return {L"profile", L"add", path, name};
        }
        std::wstring const& known = names[generated.Below(static_cast<unsigned>(names.size()))];
        return generated.OneIn(3)   ? std::vector<std::wstring>{L"profile", L"copy", path, known, name}
               : generated.OneIn(2) ? std::vector<std::wstring>{L"profile", L"rename", path, known, name}
                                    : std::vector<std::wstring>{L"profile", L"remove", path, known};
    }
    bool const isValue = place.IsLeaf() && place.GetLayoutNode()->m_type != eTypeLayoutNode::Group &&
                         place.GetLayoutNode()->m_type != eTypeLayoutNode::FileAttachment;
    return isValue ? std::vector<std::wstring>{L"set", path, generated.Text(*place.GetLayoutNode())}
                   : std::vector<std::wstring>{};
}

json EditsOf(Case& tried) {
    json edits = json::array();
    for (int count = 0; count < 40; ++count) {
        std::vector<Place> places;
        for (PlaceWalk walk(*tried.database); walk.Next();) {
            places.push_back(walk.GetPlace());
        }
        Place const place = places[tried.generated.Below(static_cast<unsigned>(places.size()))];
        std::vector<std::wstring> const fields = EditAt(tried, place);
        if (!fields.empty()) {
            edits.push_back({{"line", LineOf(fields)}, {"isDone", Apply(*tried.database, fields)}});
        }
    }
    return edits;
}

void Write(std::string const& path, std::string const& text) {
    std::ofstream file(path, std::ios::binary);
    file << text;
    if (!file.flush()) {
        throw std::runtime_error("Can't write " + path);
    }
}

std::string PageOf(Paramtool::PageSource const& source) { return Paramtool::PageOf(PageData(source)); }

void MakeGenerated(unsigned seed, std::string const& folder) {
    Case tried(seed);
    Write(folder + "/page.html", PageOf({*tried.layout, tried.database.get(), L"generated", L""}));
    json expected{{"before", SaidOf(*tried.database)}};
    expected["edits"] = EditsOf(tried);
    expected["after"] = SaidOf(*tried.database);
    Write(folder + "/expected.json", expected.dump(-1, ' ', true, json::error_handler_t::replace));
}

void ApplyLines(unsigned seed) {
    Case tried(seed);
    for (std::string line; std::getline(std::cin, line);) {
        if (!Apply(*tried.database, FieldsOf(line))) {
            throw std::runtime_error("Can't apply: " + line);
        }
    }
    std::cout << ValuesOf(*tried.database).dump(-1, ' ', true, json::error_handler_t::replace);
}

/// A tenth of the parameters in a tab, a few of each kind; and a list of 500 profiles.
void MakeLarge(int count, std::string const& folder) {
    ParameterLayout layout;
    layout.SetName(L"Large");
    for (int tab = 0; tab < 10; ++tab) {
        LayoutNode* const parent = layout.m_profileEditor->AddNode((L"Tab" + std::to_wstring(tab)).c_str());
        LayoutNode* group = nullptr;
        for (int i = 0; i < count / 10; ++i) {
            std::wstring const number = std::to_wstring(i);
            if (i % 20 == 0) {
                group = parent->AddNode((L"Group" + number).c_str());
            }
            eTypeLayoutNode const types[] = {Double, Bool, Int, Options, String};
            LayoutNode* const node = group->AddNode((L"Parameter" + number).c_str(), types[i % 5], L"1");
            node->SetDisplayName(L"Parameter " + number)->SetPostfix(L"mm")->SetRange<std::int32_t>(0, 9);
            node->AddOption(L"1", L"One");
            node->AddOption(L"2", L"Two");
            if (i % 20 == 2) {
                node->AddEditabilitySource(&group->At(1), std::wstring(L"True"));
            }
            if (i % 20 > 4) {
                node->AddVisibilitySource(&group->At(1), std::wstring(L"True"));
            }
        }
    }
    LayoutNode* const list = layout.m_profileEditor->AddNode(L"Materials");
    list->SetProfile(true, L"Material");
    for (int i = 0; i < 20; ++i) {
        list->AddNode((L"Property" + std::to_wstring(i)).c_str(), Double, 1.5);
    }
    layout.m_profileEditor->AddNode(L"Material", OptionsFromProfiles, L"")->SetTypeFromProfiles(list);
    ParameterDatabase database(&layout);
    for (int i = 0; i < 500; ++i) {
        AddProfile(Place(database).Get(L"Materials"), L"Material " + std::to_wstring(1000 + i));
    }
    Write(folder + "/page.html", PageOf({layout, &database, L"large.xml", L""}));
}

void MakeHostile(std::string const& folder) {
    std::wstring const bad =
        L"</script><script>window.wasRun = 1</script><img src=x onerror='window.wasRun = 2'>"
        L"\"'`${window.wasRun = 3}<!--\x2028\x2029\x01\x7F\r\n\t\\u003c @SCRIPT@ &lt;";
    std::wstring const link = L"javascript:window.wasRun=4";
    ResourceDictionary dictionary;
    dictionary.AddTranslation(L"__proto__", L"constructor", bad);
    dictionary.AddTranslation(bad, L"toString", bad);
    ParameterLayout layout;
    layout.SetResourceDictionary(&dictionary);
    layout.SetName(bad);
    LayoutNode* const group = layout.m_profileEditor->AddNode(bad.c_str());
    for (int type = 1; type <= 10; ++type) {
        LayoutNode* const node = group->AddNode((bad + std::to_wstring(type)).c_str(),
                                                static_cast<eTypeLayoutNode>(type), bad.c_str());
        node->SetDisplayName(type % 2 == 0 ? bad : link)
            ->SetDescription(bad)
            ->SetPostfix(bad)
            ->SetPrefix(link);
        node->m_imageDescription = node->m_fileFilter = node->m_requestName = node->m_propName = link;
        node->m_regex = L"(a+)+$";
        node->m_regexUserFriendly = node->m_multiplicityMinMessage = node->m_min = node->m_max = bad;
        node->AddOption(bad, bad);
        node->AddVisibilitySource(&group->At(0), bad);
    }
    LayoutNode* const list = group->AddNode(L"__proto__");
    list->SetProfile(true, L"constructor");
    list->AddNode(L"toString", String, L"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaab")->m_regex = L"(a+)+$";
    ParameterDatabase database(&layout);
    ParameterNode profiles = Place(database).Get(bad).Get(L"__proto__").GetCursor();
    profiles.AddProfile(bad.c_str(), true); // which no user may call so
    Write(folder + "/page.html", PageOf({layout, &database, bad, L""}));
}

void PrintPatterns() {
    json results = json::array();
    for (wchar_t const* pattern :
         {L"a?b*c+", L"(ab|a)(c|bcd)(d*)", L"a{2}b{1,}c{0,2}", L"[^a-c\\d\\-]+", L"\\w\\W\\s\\S.",
          L"\\bab\\b|c\\Bd", L"^a$|^$|b^", L"(?:a|(?<n>b))+?", L"\\x61\\u0062\\u{63}\\cI?\\0?",
          L"\\uD83D\\uDE00.", L"(a*)*(b|)", L"[\\b\\]\\w-]", L"\\.\\[\\/\\\\"}) {
        ParameterLayout layout;
        layout.m_profileEditor->AddNode(L"Text", String, L"")->m_regex = pattern;
        ParameterDatabase const database(&layout);
        for (wchar_t const* text : {L"a",       L"b",
                                    L"ab",      L"abb",
                                    L"abcd",    L"aab",
                                    L"aabccc",  L"aabbcc",
                                    L"c",       L"bbbcc",
                                    L"d\u00E9", L"d-",
                                    L"a- x.",   L"cd",
                                    L"ab cd",   L"abc",
                                    L"abc\t",   L"aaa",
                                    L"]",       L"-",
                                    L"\b",      L"\U0001F600\U0001F600",
                                    L".[/\\"}) {
            bool const isTaken = Objections(PlaceView(database).Get(L"Text"), text).empty();
            results.push_back({NativeToUtf8(pattern), NativeToUtf8(text), isTaken});
        }
    }
    std::cout << results;
}

} // namespace

int main(int argc, char** argv) try {
    std::vector<std::string> const words(argv, argv + argc);
    std::string const& what = words.at(1);
    if (what == "generated") {
        MakeGenerated(static_cast<unsigned>(std::stoul(words.at(2))), words.at(3));
    } else if (what == "apply") {
        ApplyLines(static_cast<unsigned>(std::stoul(words.at(2))));
    } else if (what == "large") {
        MakeLarge(std::stoi(words.at(2)), words.at(3));
    } else if (what == "hostile") {
        MakeHostile(words.at(2));
    } else if (what == "patterns") {
        PrintPatterns();
    }
    return 0;
} catch (std::exception const& error) {
    std::cerr << error.what() << '\n';
    return 1;
}
