# The settings every target of this project shares, and the shape of a component.
include(GenerateExportHeader)

# Which of two sources of the same name is meant: X_posix.cpp or X_windows.cpp.
set(MORVUT_PLATFORM posix)
if(WIN32)
  set(MORVUT_PLATFORM windows)
endif()

# Nothing is visible by default, 32-bit x86 computes with SSE2 (the x87 unit rounds differently).
function(morvut_settings target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF
    CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON POSITION_INDEPENDENT_CODE ON)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wconversion)
  if(CMAKE_UNITY_BUILD) # sources are included there, and their names stand beside those of the ones before
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
  else()
    target_compile_options(${target} PRIVATE -Wshadow)
  endif()
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(${target} PRIVATE -Wno-restrict) # g++ 12 sees overlaps in `"text" + std::string` (bug 105651)
  endif()
  if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    target_compile_options(${target} PRIVATE -msse2 -mfpmath=sse)
  endif()
  if(MORVUT_SANITIZE)
    # The instrumented code of library templates (std::regex) looks uninitialised to g++; the plain build still warns.
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
    target_compile_options(${target} PRIVATE -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(${target} PRIVATE -fsanitize=address,undefined)
  endif()
  if(MORVUT_FUZZ)
    target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link) # tells the fuzzer which branches ran
  endif()
endfunction()

# morvut_needs_modules(TARGET components...): whoever runs the target needs the modules that its components load.
function(morvut_needs_modules target)
  foreach(used ${ARGN})
    if(TARGET ${used})
      get_target_property(modules ${used} MORVUT_MODULES)
      if(modules)
        add_dependencies(${target} ${modules})
      endif()
    endif()
  endforeach()
endfunction()

# morvut_module(COMPONENT NAME SOURCES files... LINKS third-party targets...): sources of a component, which is there
# already, that stand on libraries which most programs never need. They are a module MorvUtNAME-<version> beside the
# component's library, which loads it by the file name MORVUT_MODULE_NAME; in static builds they are part of the library. The
# version is in the name because a program that is running must not load the module of a newer library.
function(morvut_module component name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINKS" ${ARGN})
  if(MORVUT_STATIC)
    target_sources(${component} PRIVATE ${arg_SOURCES})
    target_link_libraries(${component} PRIVATE ${arg_LINKS})
    return()
  endif()
  set(module ${name}Module)
  add_library(${module} MODULE ${arg_SOURCES})
  morvut_settings(${module})
  target_link_libraries(${module} PRIVATE ${component} ${arg_LINKS})
  target_compile_definitions(${module} PRIVATE MORVUT_VERSION_TEXT="${PROJECT_VERSION}")
  set_target_properties(${module} PROPERTIES PREFIX "" OUTPUT_NAME "MorvUt${name}-${PROJECT_VERSION}"
    LIBRARY_OUTPUT_DIRECTORY "$<TARGET_FILE_DIR:${component}>" INSTALL_RPATH "$ORIGIN")
  set_property(TARGET ${component} APPEND PROPERTY MORVUT_MODULES ${module})
  string(TOUPPER ${name} upper)
  target_compile_definitions(${component} PRIVATE MORVUT_MODULE_${upper}="$<TARGET_FILE_NAME:${module}>")
  set(folder ${CMAKE_INSTALL_LIBDIR})
  if(WIN32)
    set(folder ${CMAKE_INSTALL_BINDIR})
  endif()
  install(TARGETS ${module} LIBRARY DESTINATION ${folder})
endfunction()

# morvut_component(NAME SOURCES files... [USES components...] [LINKS private third-party targets...])
# makes MorvUt::NAME from components/NAME, with NAME/Export.h and the macro <NAME>_API.
function(morvut_component name)
  cmake_parse_arguments(arg "" "" "SOURCES;USES;LINKS" ${ARGN})
  if(MORVUT_STATIC)
    add_library(${name} STATIC ${arg_SOURCES})
  else()
    add_library(${name} SHARED ${arg_SOURCES})
  endif()
  add_library(MorvUt::${name} ALIAS ${name})
  morvut_settings(${name})
  string(TOUPPER ${name} upper)
  set(exports "${PROJECT_BINARY_DIR}/exports")
  generate_export_header(${name} BASE_NAME ${name} EXPORT_MACRO_NAME ${upper}_API
    EXPORT_FILE_NAME "${exports}/${name}/Export.h" STATIC_DEFINE ${upper}_STATIC)
  if(MORVUT_STATIC)
    target_compile_definitions(${name} PUBLIC ${upper}_STATIC)
  endif()
  target_include_directories(${name} PUBLIC
    "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/components>" "$<BUILD_INTERFACE:${exports}>"
    "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>")
  foreach(used ${arg_USES})
    target_link_libraries(${name} PUBLIC ${used})
  endforeach()
  morvut_needs_modules(${name} ${arg_USES})
  target_link_libraries(${name} PRIVATE ${arg_LINKS})
  if(NOT name STREQUAL "MorvUt")
    set_target_properties(${name} PROPERTIES OUTPUT_NAME "MorvUt${name}")
  endif()
  set_target_properties(${name} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}
    INSTALL_RPATH "$ORIGIN")
  install(TARGETS ${name} EXPORT MorvUtTargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
  install(DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}/" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/${name}"
    FILES_MATCHING PATTERN "*.h" PATTERN "*.def" PATTERN "drivers" EXCLUDE PATTERN "cipher" EXCLUDE
    PATTERN "detail" EXCLUDE PATTERN "server" EXCLUDE)
  install(FILES "${exports}/${name}/Export.h" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/${name}")
endfunction()

# morvut_tests_in_parts(PROGRAM NAME FILTER LABELS properties...): its tests as NAME.1 and so on, one process each.
function(morvut_tests_in_parts program name filter labels)
  set(parts 3)
  foreach(part RANGE 1 ${parts})
    math(EXPR index "${part} - 1")
    add_test(NAME ${name}.${part} COMMAND ${program} --gtest_brief=1 "--gtest_filter=${filter}")
    set_tests_properties(${name}.${part} PROPERTIES LABELS "${labels}" TIMEOUT 900
      ENVIRONMENT "GTEST_TOTAL_SHARDS=${parts};GTEST_SHARD_INDEX=${index}" ${ARGN})
  endforeach()
endfunction()

# morvut_tests(NAME SOURCES files... USES targets... [LABELS labels...]): one GoogleTest executable of a component.
function(morvut_tests name)
  cmake_parse_arguments(arg "" "" "SOURCES;USES;LABELS" ${ARGN})
  if(NOT arg_LABELS)
    set(arg_LABELS unit)
  endif()
  add_executable(${name} ${arg_SOURCES})
  morvut_settings(${name})
  target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
  if(MORVUT_TEST_SERVER)
    target_compile_definitions(${name} PRIVATE MORVUT_HAS_TEST_SERVER)
  endif()
  target_link_libraries(${name} PRIVATE ${arg_USES} GTest::gtest)
  morvut_needs_modules(${name} ${arg_USES})
  if(arg_LABELS STREQUAL unit)
    add_dependencies(unit_tests ${name})
  endif()
  # Each story is a test, which is found when the program is linked.
  file(GLOB_RECURSE stories CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.story")
  set_property(TARGET ${name} APPEND PROPERTY LINK_DEPENDS ${stories})
  if(CMAKE_CROSSCOMPILING)
    # One test per program: starting a program in the emulator takes longer than most tests, and finding them needs it too.
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES LABELS "${arg_LABELS}" TIMEOUT 300)
  elseif(MORVUT_TESTS_IN_PARTS)
    morvut_tests_in_parts(${name} ${name} "-Server/*" "${arg_LABELS}")
    if(MORVUT_TEST_SERVER)
      morvut_tests_in_parts(${name} ${name}.Server "Server/*" "${arg_LABELS}-db-server"
        FIXTURES_REQUIRED db-server ENVIRONMENT_MODIFICATION "MORVUT_TEST_SERVER=set:${MORVUT_TEST_SERVER}")
    endif()
  else()
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 TEST_FILTER "-Server/*"
      PROPERTIES LABELS "${arg_LABELS}" TIMEOUT 300)
    if(MORVUT_TEST_SERVER) # one label, since a list does not get through: ctest takes what it is given for a part of one
      gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 TEST_FILTER "Server/*" TEST_LIST ${name}_SERVER
        PROPERTIES LABELS "${arg_LABELS}-db-server" TIMEOUT 300 FIXTURES_REQUIRED db-server
        ENVIRONMENT "MORVUT_TEST_SERVER=${MORVUT_TEST_SERVER}")
    endif()
  endif()
endfunction()
