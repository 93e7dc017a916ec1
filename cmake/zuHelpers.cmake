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

# zu_library(SUBSYSTEM <name> SOURCES <cpp...> HEADERS <public headers...>)
# Adds a subsystem's sources to the library and records its public headers
# for installation under include/zu/<name>/.
function(zu_library)
  cmake_parse_arguments(ARG "" "SUBSYSTEM" "SOURCES;HEADERS" ${ARGN})
  target_sources(zuutility_objects PRIVATE ${ARG_SOURCES})
  foreach(header IN LISTS ARG_HEADERS)
    install(FILES ${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zu/${ARG_SUBSYSTEM})
  endforeach()
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
  if(TARGET ${ARG_NAME})
    target_sources(${ARG_NAME} PRIVATE ${ARG_SOURCES})
    return()
  endif()
  add_executable(${ARG_NAME} ${ARG_SOURCES})
  target_compile_options(${ARG_NAME} PRIVATE ${ZU_WARNINGS})
  target_link_libraries(${ARG_NAME} PRIVATE zu_testing zuutility_testing GTest::gtest GTest::gmock GTest::gtest_main)
  gtest_discover_tests(${ARG_NAME} DISCOVERY_TIMEOUT 60 PROPERTIES LABELS "${ARG_LABELS}")
endfunction()
