# Helpers shared by every subsystem's CMakeLists.txt.
#
# The library's objects are compiled once (zuutility_objects) and linked twice:
# into libzuutility.so, the shipped library with hidden visibility, and into a
# static archive that the test executables link, so that tests can reach the
# internal helpers that the shared library does not export.

set(ZU_WARNINGS -Wall -Wextra -Wshadow -Wnon-virtual-dtor -Wpointer-arith)
if(ZU_WERROR)
  list(APPEND ZU_WARNINGS -Werror)
endif()

function(zu_define_library)
  add_library(zuutility_objects OBJECT)
  # Calls between the library's own exported functions bind inside the
  # library: no PLT hop on hot paths such as block allocation, and GCC may
  # inline them. A program cannot interpose the library's functions.
  target_compile_options(zuutility_objects PRIVATE ${ZU_WARNINGS} -fno-semantic-interposition)
  target_compile_definitions(zuutility_objects PRIVATE ZU_BUILDING_LIBRARY)
  set_target_properties(zuutility_objects PROPERTIES
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
  target_include_directories(zuutility_objects PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  target_link_libraries(zuutility_objects PUBLIC Threads::Threads
                        PRIVATE ICU::uc ICU::i18n ICU::data ${CMAKE_DL_LIBS})

  add_library(zuutility SHARED $<TARGET_OBJECTS:zuutility_objects>)
  add_library(zu::utility ALIAS zuutility)
  set_target_properties(zuutility PROPERTIES
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}
    EXPORT_NAME utility)
  target_link_options(zuutility PRIVATE LINKER:-Bsymbolic-functions)
  target_include_directories(zuutility PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  target_link_libraries(zuutility PUBLIC Threads::Threads
                        PRIVATE ICU::uc ICU::i18n ICU::data ${CMAKE_DL_LIBS})

  add_library(zuutility_testing STATIC $<TARGET_OBJECTS:zuutility_objects>)
  target_include_directories(zuutility_testing PUBLIC ${PROJECT_SOURCE_DIR})
  target_link_libraries(zuutility_testing PUBLIC Threads::Threads
                        ICU::uc ICU::i18n ICU::data ${CMAKE_DL_LIBS})
endfunction()

# zu_library(SUBSYSTEM <folder> [NAME <layer>] [DEPS <layer...>]
#            SOURCES <cpp and internal headers...> HEADERS <public headers...>)
# Adds sources to the library and records the public headers for
# installation under include/zu/<folder>/. Every file belongs to one layer,
# NAME (the folder's name by default); a layer's files may include only its
# own files and those of the layers in its DEPS (several calls for one layer
# add up). The `layering` test checks every #include against these lists,
# and that every file under zu/ is listed by some call.
function(zu_library)
  cmake_parse_arguments(ARG "" "SUBSYSTEM;NAME" "SOURCES;HEADERS;DEPS" ${ARGN})
  if(NOT ARG_NAME)
    set(ARG_NAME ${ARG_SUBSYSTEM})
  endif()
  target_sources(zuutility_objects PRIVATE ${ARG_SOURCES})
  foreach(header IN LISTS ARG_HEADERS)
    install(FILES ${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zu/${ARG_SUBSYSTEM})
  endforeach()
  zu_record_layer_files(${ARG_NAME} "${ARG_DEPS}" ${ARG_SOURCES} ${ARG_HEADERS})
endfunction()

# Records files (relative to the calling folder) under a layer and its deps.
function(zu_record_layer_files layer deps)
  set_property(GLOBAL APPEND PROPERTY ZU_LAYERS ${layer})
  set_property(GLOBAL APPEND PROPERTY ZU_LAYER_DEPS_${layer} ${deps})
  foreach(file IN LISTS ARGN)
    file(RELATIVE_PATH relative ${PROJECT_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR}/${file})
    set_property(GLOBAL APPEND PROPERTY ZU_LAYER_FILES_${layer} ${relative})
  endforeach()
endfunction()

# Writes what the zu_library and zu_test calls recorded and registers the
# `layering` test that checks every #include "zu/..." against it, and the
# `message_ids` test that keeps message ids out of the code as numbers.
function(zu_add_layering_test)
  if(NOT ZU_BUILD_TESTS)
    return()
  endif()
  get_property(layers GLOBAL PROPERTY ZU_LAYERS)
  list(REMOVE_DUPLICATES layers)
  set(manifest "set(ZU_LAYERS ${layers})\n")
  foreach(layer IN LISTS layers)
    foreach(kind DEPS FILES TESTS)
      get_property(items GLOBAL PROPERTY ZU_LAYER_${kind}_${layer})
      if(items)
        list(REMOVE_DUPLICATES items)
      endif()
      string(APPEND manifest "set(ZU_LAYER_${kind}_${layer} ${items})\n")
    endforeach()
  endforeach()
  file(WRITE ${PROJECT_BINARY_DIR}/layering/manifest.cmake "${manifest}")
  add_test(NAME layering
    COMMAND ${CMAKE_COMMAND} -DSOURCE_DIR=${PROJECT_SOURCE_DIR}
            -DMANIFEST=${PROJECT_BINARY_DIR}/layering/manifest.cmake
            -P ${PROJECT_SOURCE_DIR}/cmake/zuLayering.cmake)
  add_test(NAME message_ids
    COMMAND ${CMAKE_COMMAND} -DSOURCE_DIR=${PROJECT_SOURCE_DIR}
            -P ${PROJECT_SOURCE_DIR}/cmake/zuMessageIdsInCode.cmake)
endfunction()

# zu_test(NAME <exe> SOURCES <*_test.cpp...> [LABELS <label...>])
# One GoogleTest executable per subsystem, registered with CTest. Several calls
# with the same NAME add their sources to the same executable; the labels of
# the first call apply (tests that start threads go in an executable labelled
# "threaded", which the tsan preset runs). Every test executable links the
# shared test helpers of zu/testing.
function(zu_test)
  if(NOT ZU_BUILD_TESTS)
    return()
  endif()
  cmake_parse_arguments(ARG "" "NAME" "SOURCES;LABELS" ${ARGN})
  if(NOT ARG_SOURCES)
    return()
  endif()
  # Tests belong to their folder's layer and may also use zu/testing.
  get_filename_component(folder ${CMAKE_CURRENT_SOURCE_DIR} NAME)
  foreach(file IN LISTS ARG_SOURCES)
    file(RELATIVE_PATH relative ${PROJECT_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR}/${file})
    set_property(GLOBAL APPEND PROPERTY ZU_LAYER_TESTS_${folder} ${relative})
  endforeach()
  if(TARGET ${ARG_NAME})
    target_sources(${ARG_NAME} PRIVATE ${ARG_SOURCES})
    return()
  endif()
  add_executable(${ARG_NAME} ${ARG_SOURCES})
  target_compile_options(${ARG_NAME} PRIVATE ${ZU_WARNINGS})
  target_link_libraries(${ARG_NAME} PRIVATE zu_testing zuutility_testing GTest::gtest GTest::gmock GTest::gtest_main)
  gtest_discover_tests(${ARG_NAME} DISCOVERY_TIMEOUT 60 PROPERTIES LABELS "${ARG_LABELS}")
endfunction()
