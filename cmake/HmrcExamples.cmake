# morvut_hmrc_examples(TARGET): HmrcExamples.inc for the target's sources, one row `{"NAME", R"json(…)json"},` for each
# file NAME.json of components/HmrcApi/interfaces/examples, by name. Written while configuring, which a changed file
# starts again, so that no program of the building machine is needed.
function(morvut_hmrc_examples target)
  file(GLOB files CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/components/HmrcApi/interfaces/examples/*.json")
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${files})
  set(rows "")
  foreach(file ${files})
    get_filename_component(name "${file}" NAME_WE)
    file(READ "${file}" json)
    string(STRIP "${json}" json)
    string(APPEND rows "{\"${name}\", R\"json(${json})json\"},\n")
  endforeach()
  set(folder "${PROJECT_BINARY_DIR}/generated")
  set(before "")
  if(EXISTS "${folder}/HmrcExamples.inc")
    file(READ "${folder}/HmrcExamples.inc" before)
  endif()
  if(NOT "${rows}" STREQUAL "${before}") # a new time stamp would compile the target again
    file(WRITE "${folder}/HmrcExamples.inc" "${rows}")
  endif()
  target_include_directories(${target} PRIVATE "${folder}")
endfunction()
