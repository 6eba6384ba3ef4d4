# One static library a floor, made of every source file in its folder.

set(TRESMOR_WARNINGS -Wall -Wextra -Wpedantic -Wconversion -Werror)
# GCC 12 warns of overlapping copies where optimized std::string has none (its bug 105329); 13 no longer does.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  list(APPEND TRESMOR_WARNINGS -Wno-restrict)
endif()
set(TRESMOR_SANITIZE "" CACHE STRING "Sanitizers of this build, as -fsanitize= takes them")
option(TRESMOR_COVERAGE "Count the lines that the tests run" OFF)

function(tresmor_settings target)
  target_compile_options(${target} PRIVATE ${TRESMOR_WARNINGS})
  # An index outside its table ends the program, in the release too; it costs nothing that could be measured.
  target_compile_definitions(${target} PRIVATE _GLIBCXX_ASSERTIONS)
  target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  if(TRESMOR_SANITIZE)
    # The check of virtual tables opens a pipe each time and cries wolf where a test has used up all descriptors.
    target_compile_options(${target} PRIVATE -fsanitize=${TRESMOR_SANITIZE} -fno-omit-frame-pointer
                           -fno-sanitize-recover=all -fno-sanitize=vptr)
    target_link_options(${target} PUBLIC -fsanitize=${TRESMOR_SANITIZE})
  endif()
  if(TRESMOR_COVERAGE)
    # Threads count the same lines.
    target_compile_options(${target} PRIVATE --coverage -fprofile-update=atomic)
    target_link_options(${target} PUBLIC --coverage)
  endif()
endfunction()

# For what runs once where it was built, so that what counts is the time to build.
function(quick_to_build target)
  if(CMAKE_BUILD_TYPE STREQUAL "Debug")
    target_compile_options(${target} PRIVATE -O0)
  endif()
endfunction()

# tresmor_floor(name below... [DIR folder]): the folder is src/<name> unless told otherwise.
function(tresmor_floor name)
  cmake_parse_arguments(ARG "" "DIR" "" ${ARGN})
  if(NOT ARG_DIR)
    set(ARG_DIR ${name})
  endif()
  file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/${ARG_DIR}/*.cpp)
  if(sources)
    add_library(tresmor_${name} STATIC ${sources})
    tresmor_settings(tresmor_${name})
    target_link_libraries(tresmor_${name} PUBLIC ${ARG_UNPARSED_ARGUMENTS})
  else()
    add_library(tresmor_${name} INTERFACE)
    target_include_directories(tresmor_${name} INTERFACE ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(tresmor_${name} INTERFACE ${ARG_UNPARSED_ARGUMENTS})
  endif()
endfunction()

# tresmor_program(name folder [QT] parts...): the program lands at the top of the build folder. All but its main.cpp is a
# library of its own, so that tests can call it. QT is for programs with parts of Qt.
function(tresmor_program name folder)
  cmake_parse_arguments(ARG "QT" "" "" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/${folder}/*.cpp)
  list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
  add_library(tresmor_${folder} STATIC ${sources})
  tresmor_settings(tresmor_${folder})
  quick_to_build(tresmor_${folder})
  target_compile_definitions(tresmor_${folder} PRIVATE
                             TRESMOR_VERSION="${PROJECT_VERSION}" TRESMOR_VERSION_MAJOR=${PROJECT_VERSION_MAJOR}
                             TRESMOR_VERSION_MINOR=${PROJECT_VERSION_MINOR}
                             TRESMOR_VERSION_PATCH=${PROJECT_VERSION_PATCH})
  target_link_libraries(tresmor_${folder} PUBLIC ${ARG_UNPARSED_ARGUMENTS})
  add_executable(${name} ${PROJECT_SOURCE_DIR}/src/${folder}/main.cpp)
  tresmor_settings(${name})
  target_link_libraries(${name} PRIVATE tresmor_${folder})
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT TRESMOR_SANITIZE AND NOT ARG_QT)
    # Binding the C++ library at each start takes a third of the start's time, and of a short search a thirtieth. Qt
    # binds it anyway, and there must not be two.
    target_link_options(${name} PRIVATE -static-libstdc++ -static-libgcc)
  endif()
endfunction()
