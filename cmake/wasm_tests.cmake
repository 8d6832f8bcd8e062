# SPDX-License-Identifier: Apache-2.0
# The tests that need neither files nor threads and in which nothing is thrown; see docs/platforms.md.
set(wasm_tests
  text/text_conversion text/text_numbers xml/xml_names xml/xml_tokeniser store/bag store/nesting
  layout/layout_node layout/layout_node_values layout/resource_dictionary
  database/containers database/content_list database/formatting database/navigation
  database/values database/walk)
include(cmake/googletest_from_source.cmake)

# Those in which something is thrown all the same, and two that ask much of the host's stack and memory.
set(left_out
  *MemoryRunsOut* *RunsOutOfMemory* *OrNotAtAll* *FailedAllocation* XmlTokeniser.ReportsASourceThatFails*
  Sequence.KeepsItsBags* Sequence.MovesAndRemoves* LayoutNode.AppendingGives* LayoutNodeValues.OptionsKeepTheirNames*
  ProfileList.CopiesItsDefaultProfile* List.CopiesItsTemplate* List.AnItemTaken*
  ContentList.StopsAtAnOption* Values.AreReadAndWritten* Values.ThatAreMarkedDeleted* Values.OfTextsAreSet*
  View.ReadsWhatACursorReads* NestedBags.AreCopiedCompared*
  LayoutNode.DepthIsBounded* Database.RefusesACopied*)
list(JOIN left_out : left_out)

list(TRANSFORM wasm_tests REPLACE ".+" "tests/\\0_test.cpp" OUTPUT_VARIABLE wasm_test_sources)
add_executable(zantrel_tests ${wasm_test_sources} tests/wasm/no_exceptions.cpp
  tests/support/failing_allocator.cpp)
compile_folders_at_once(zantrel_tests)
target_link_libraries(zantrel_tests PRIVATE zantrel_internal zantrel_warnings GTest::gmock_main)
# In one go: a program is compiled anew each time that it starts.
add_test(NAME WebAssembly COMMAND zantrel_tests --gtest_filter=-${left_out})

