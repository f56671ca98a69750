# How every target of this tree is built: language level, warnings, reproducible arithmetic, sanitizers.

include(GenerateExportHeader)

add_library(lv_build_options INTERFACE)
target_compile_features(lv_build_options INTERFACE cxx_std_20)
target_compile_options(
  lv_build_options
  INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
            # Results must be the same to the bit on every machine: no silent fusing of multiply and add.
            -ffp-contract=off $<$<BOOL:${LV_WARNINGS_AS_ERRORS}>:-Werror>)
target_compile_definitions(lv_build_options INTERFACE QT_NO_KEYWORDS QT_NO_FOREACH QT_DEPRECATED_WARNINGS)
if(LV_SANITIZE)
  target_compile_options(lv_build_options INTERFACE -fsanitize=${LV_SANITIZE} -fno-omit-frame-pointer)
  string(REPLACE "fuzzer-no-link," "" lv_link_sanitize "${LV_SANITIZE}")
  target_link_options(lv_build_options INTERFACE -fsanitize=${lv_link_sanitize})
  if(LV_SANITIZE MATCHES "undefined")
    # Of all rules, because GCC counts the conversion of numbers that do not fit (float-cast-overflow) as one of its own.
    target_compile_options(lv_build_options INTERFACE -fno-sanitize-recover=all)
    # The rule needs the type information of classes that the toolkit keeps hidden.
    target_compile_options(lv_build_options INTERFACE -fno-sanitize=vptr)
    target_link_options(lv_build_options INTERFACE -fno-sanitize=vptr)
  endif()
endif()

# lv_precompile(<target> <header>...)
#
# With LV_PRECOMPILE_HEADERS the headers of the toolkit are compiled once for the target, which more than halves the
# time of a build from nothing. Off by default: compiler caches and clang-tidy do better without.
function(lv_precompile target)
  if(LV_PRECOMPILE_HEADERS)
    target_precompile_headers(${target} PRIVATE ${ARGN})
  endif()
endfunction()

# lv_add_library(<name> HEADERS <file>... [SOURCES <file>...] [LINK <public target>...] [LINK_PRIVATE <target>...])
#
# Makes the shared library Lv<name> with the alias Lv::<name>: generated export header, hidden visibility, public
# headers as a file set (installed under include/Lv<name>), version and SOVERSION.
function(lv_add_library name)
  cmake_parse_arguments(arg "" "" "HEADERS;SOURCES;LINK;LINK_PRIVATE" ${ARGN})
  set(target "Lv${name}")
  string(TOLOWER "${target}" lower)
  string(TOUPPER "${target}" upper)

  add_library(${target} SHARED ${arg_SOURCES})
  add_library(Lv::${name} ALIAS ${target})
  generate_export_header(${target} BASE_NAME ${lower} EXPORT_MACRO_NAME ${upper}_EXPORT EXPORT_FILE_NAME
                         "${CMAKE_CURRENT_BINARY_DIR}/${lower}_export.h")
  set_target_properties(
    ${target}
    PROPERTIES EXPORT_NAME ${name}
               VERSION ${PROJECT_VERSION}
               SOVERSION ${PROJECT_VERSION_MAJOR}
               # The libraries find each other wherever they are installed.
               INSTALL_RPATH "$ORIGIN"
               CXX_VISIBILITY_PRESET hidden
               VISIBILITY_INLINES_HIDDEN ON
               VERIFY_INTERFACE_HEADER_SETS ON)
  target_sources(
    ${target} PUBLIC FILE_SET HEADERS BASE_DIRS "${CMAKE_CURRENT_SOURCE_DIR}" "${CMAKE_CURRENT_BINARY_DIR}" FILES
                     ${arg_HEADERS} "${CMAKE_CURRENT_BINARY_DIR}/${lower}_export.h")
  # Clients write <LvGeoPosition.h> or <LvGeoLocation/LvGeoPosition.h>.
  target_include_directories(${target} INTERFACE $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>
                                                 $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/${target}>)
  target_compile_features(${target} PUBLIC cxx_std_20)
  target_link_libraries(${target} PUBLIC ${arg_LINK} PRIVATE $<BUILD_INTERFACE:lv_build_options> ${arg_LINK_PRIVATE})

  install(
    TARGETS ${target}
    EXPORT LvGeoLocationTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/${target})
  set_property(GLOBAL APPEND PROPERTY LV_LIBRARIES ${target})
endfunction()

# lv_add_tests(LIBRARY <target> [LINK <target>...] TESTS <test>...)
#
# One Qt Test program per name, from <name>.cpp; headless, with a settings store and a home of its own.
function(lv_add_tests)
  cmake_parse_arguments(arg "" "LIBRARY" "TESTS;LINK" ${ARGN})
  list(LENGTH arg_TESTS count)
  set(precompiled "")
  foreach(test IN LISTS arg_TESTS)
    add_executable(${test} ${test}.cpp ${test}.moc)
    target_link_libraries(${test} PRIVATE ${arg_LIBRARY} ${arg_LINK} LvTestSupport lv_build_options)
    # Without AUTOMOC, which has one more file to compile for every program and needs a fifth of a whole build for it.
    set_target_properties(${test} PROPERTIES AUTOMOC OFF)
    qt_generate_moc(${test}.cpp "${CMAKE_CURRENT_BINARY_DIR}/${test}.moc" TARGET ${test})
    target_include_directories(${test} PRIVATE "${CMAKE_CURRENT_BINARY_DIR}")
    if(LV_SANITIZE)
      # What is to be examined is the library; optimising the tests as well would take longer than it saves.
      target_compile_options(${test} PRIVATE -O0)
    endif()
    if(LV_PRECOMPILE_HEADERS AND count GREATER 3)
      # Tests of one call are built alike, so that they can share what the first one compiles.
      if(precompiled)
        target_precompile_headers(${test} REUSE_FROM ${precompiled})
      else()
        lv_precompile(${test} <QtTest/QtTest> <QtWidgets/QtWidgets> <QtXml/QtXml>)
        set(precompiled ${test})
      endif()
    endif()
    add_test(NAME ${arg_LIBRARY}.${test} COMMAND ${test})
    set_tests_properties(
      ${arg_LIBRARY}.${test}
      PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen;TZ=UTC;LC_ALL=C.UTF-8" TIMEOUT 300)
  endforeach()
endfunction()

# lv_add_translations(<target> <catalogue> FILES <file.ts>... [SOURCES <folder>...])
#
# Compiles the files <catalogue>_<language>.ts into the target, where LvTranslations::install() finds them by the name
# of the catalogue. To be called where the target is made. A test per file checks that it translates all texts of the
# source folders and no others; LV_UPDATE_TRANSLATIONS=1 scripts/check-translations takes new texts over.
function(lv_add_translations target catalogue)
  cmake_parse_arguments(arg "" "" "FILES;SOURCES" ${ARGN})
  set(compiled "")
  foreach(file IN LISTS arg_FILES)
    get_filename_component(name "${file}" NAME_WE)
    get_filename_component(file "${file}" ABSOLUTE)
    set(qm "${CMAKE_CURRENT_BINARY_DIR}/${name}.qm")
    add_custom_command(
      OUTPUT "${qm}"
      COMMAND Qt6::lrelease -silent "${file}" -qm "${qm}"
      DEPENDS "${file}"
      VERBATIM)
    list(APPEND compiled "${qm}")
    if(LV_BUILD_TESTS AND arg_SOURCES)
      add_test(NAME translations.${name} COMMAND "${PROJECT_SOURCE_DIR}/scripts/check-translations" "${file}"
                                                 ${arg_SOURCES})
      set_tests_properties(translations.${name} PROPERTIES ENVIRONMENT "LUPDATE=$<TARGET_FILE:Qt6::lupdate>")
    endif()
  endforeach()
  qt_add_resources(
    ${target} "${catalogue}_translations"
    PREFIX "/translations"
    BASE "${CMAKE_CURRENT_BINARY_DIR}"
    FILES ${compiled})
endfunction()
