# The `layering` test: every #include "zu/..." (or <zu/...>) in the library's
# files must name a file of the including file's own layer or of a layer in
# its DEPS (tests may also include zu/testing), and every file under zu/ must
# belong to a layer. Run by CTest:
#   cmake -DSOURCE_DIR=<repo> -DMANIFEST=<build>/layering/manifest.cmake -P zuLayering.cmake
cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/zuSourceLines.cmake)
include(${MANIFEST})

# file -> layer, for library files and tests.
foreach(layer IN LISTS ZU_LAYERS)
  foreach(file IN LISTS ZU_LAYER_FILES_${layer})
    set(layer_of_${file} ${layer})
  endforeach()
  foreach(file IN LISTS ZU_LAYER_TESTS_${layer})
    set(test_layer_of_${file} ${layer})
  endforeach()
endforeach()

set(faults "")
zu_tree_files(tree)
foreach(file IN LISTS tree)
  if(file STREQUAL "zu/zuutility.h")
    continue()  # the umbrella header includes every layer on purpose
  endif()
  if(DEFINED layer_of_${file})
    set(layer ${layer_of_${file}})
    set(allowed ${layer} ${ZU_LAYER_DEPS_${layer}})
  elseif(DEFINED test_layer_of_${file})
    set(layer ${test_layer_of_${file}})
    set(allowed ${layer} ${ZU_LAYER_DEPS_${layer}} testing)
  else()
    string(APPEND faults "${file}: not listed by any zu_library or zu_test call\n")
    continue()
  endif()
  zu_source_lines(${file} lines)
  set(number 0)
  foreach(line IN LISTS lines)
    math(EXPR number "${number} + 1")
    if(NOT line MATCHES "^[ \t]*#[ \t]*include[ \t]*[<\"](zu/[^\">]+)[\">]")
      continue()
    endif()
    set(target ${CMAKE_MATCH_1})
    if(DEFINED layer_of_${target})
      set(target_layer ${layer_of_${target}})
    elseif(DEFINED test_layer_of_${target} AND DEFINED test_layer_of_${file})
      set(target_layer ${test_layer_of_${target}})  # test support shared by tests
    else()
      string(APPEND faults "${file}:${number}: includes ${target}, which no zu_library lists\n")
      continue()
    endif()
    if(NOT target_layer IN_LIST allowed)
      string(APPEND faults "${file}:${number}: includes ${target} of layer '${target_layer}', "
                           "which layer '${layer}' does not list in its DEPS\n")
    endif()
  endforeach()
endforeach()

if(faults)
  message(FATAL_ERROR "Layering faults:\n${faults}")
endif()
list(LENGTH tree count)
message(STATUS "layering: ${count} files checked")
