# SPDX-License-Identifier: Apache-2.0
# Puts the page's files into a source: cmake -D FOLDER=... -D OUTPUT=... -P page_files.cmake

# The order in which the parts of the script come, each of which uses those before it.
set(script_parts nodes texts patterns places rules checks edits dom fields containers panes app)

# Not by file(READ), to which a "[" or ";" in a list would be more than a character.
set(script "")
foreach(part IN LISTS script_parts)
  file(READ ${FOLDER}/${part}.js text)
  string(APPEND script "${text}\n")
endforeach()
file(READ ${FOLDER}/page.css style)
file(READ ${FOLDER}/page.html html)

# Six bits of the checksum's sixty-four digits at a time: three digits are two letters, and at the end one digit is
# left, which four zero bits and a "=" fill up.
function(sha256_base64 text result)
  set(letters "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/")
  string(SHA256 digits "${text}")
  set(base64 "")
  foreach(start RANGE 0 60 3)
    string(SUBSTRING ${digits} ${start} 3 three)
    math(EXPR first "(0x${three} >> 6) & 63")
    math(EXPR second "0x${three} & 63")
    string(SUBSTRING ${letters} ${first} 1 first)
    string(SUBSTRING ${letters} ${second} 1 second)
    string(APPEND base64 ${first}${second})
  endforeach()
  string(SUBSTRING ${digits} 63 1 last)
  math(EXPR last "0x${last} << 2")
  string(SUBSTRING ${letters} ${last} 1 last)
  set(${result} "${base64}${last}=" PARENT_SCOPE)
endfunction()

sha256_base64("${style}" style_hash)
sha256_base64("${script}" script_hash)

file(WRITE ${OUTPUT}.new "// Made by cmake/page_files.cmake
#include \"page_files.h\"

namespace Paramtool::PageFiles {
std::string_view const Html = R\"page(${html})page\";
std::string_view const Style = R\"page(${style})page\";
std::string_view const Script = R\"page(${script})page\";
std::string_view const StyleHash = \"${style_hash}\";
std::string_view const ScriptHash = \"${script_hash}\";
} // namespace Paramtool::PageFiles
")
file(RENAME ${OUTPUT}.new ${OUTPUT})
