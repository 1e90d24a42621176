# How this project declares its libraries and programs: same warnings, same build modes, includes from the root.

# Alone it is for tools that run during the build: a sanitizer would judge what Qt does there.
add_library(ktz_warnings INTERFACE)
target_compile_options(ktz_warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
if(KTZ_WARNINGS_AS_ERRORS)
    target_compile_options(ktz_warnings INTERFACE -Werror)
endif()
if(CMAKE_INTERPROCEDURAL_OPTIMIZATION AND CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    # GCC 12 takes a size that the toolkit's hash table never has for one that it could have, when it links.
    target_link_options(ktz_warnings INTERFACE -Wno-alloc-size-larger-than)
endif()

add_library(ktz_options INTERFACE)
target_link_libraries(ktz_options INTERFACE ktz_warnings)
# Nothing replaces a function of ours when a program is loaded: the compiler may put one into another, as clang does
# unasked.
target_compile_options(ktz_options INTERFACE $<$<CXX_COMPILER_ID:GNU>:-fno-semantic-interposition>)
if(KTZ_SANITIZE)
    target_compile_options(ktz_options INTERFACE -fsanitize=${KTZ_SANITIZE} -fno-omit-frame-pointer)
    target_link_options(ktz_options INTERFACE -fsanitize=${KTZ_SANITIZE})
endif()
if(KTZ_COVERAGE)
    target_compile_options(ktz_options INTERFACE --coverage)
    target_link_options(ktz_options INTERFACE --coverage)
endif()

# ktz_own_headers(name scope file...): lets a target, and those who use it, include its own headers by their path from
# the project's root. They are links, one for each header, in a folder of the target's own: so a source sees the headers
# of the libraries that its target uses and no others, and an arrow that points up does not compile.
function(ktz_own_headers name scope)
    set(root ${PROJECT_BINARY_DIR}/include/${name})
    cmake_path(RELATIVE_PATH CMAKE_CURRENT_SOURCE_DIR BASE_DIRECTORY ${PROJECT_SOURCE_DIR} OUTPUT_VARIABLE folder)
    file(REMOVE_RECURSE ${root}) # with the links of a header that has gone
    list(FILTER ARGN INCLUDE REGEX "\\.h$")
    foreach(header IN LISTS ARGN)
        cmake_path(APPEND root ${folder} ${header} OUTPUT_VARIABLE link)
        cmake_path(GET link PARENT_PATH parent)
        file(MAKE_DIRECTORY ${parent})
        file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR}/${header} ${link} SYMBOLIC)
    endforeach()
    target_include_directories(${name} ${scope} ${root})
endfunction()

# ktz_library(name SOURCES file... USES library...): one static library of a floor of the house.
function(ktz_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;USES" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_link_libraries(${name} PUBLIC ktz_options ${ARG_USES})
    ktz_own_headers(${name} PUBLIC ${ARG_SOURCES})
endfunction()

# ktz_header_library(name HEADERS file... USES library...): a library with nothing to compile.
function(ktz_header_library name)
    cmake_parse_arguments(ARG "" "" "HEADERS;USES" ${ARGN})
    add_library(${name} INTERFACE)
    target_link_libraries(${name} INTERFACE ktz_options ${ARG_USES})
    ktz_own_headers(${name} INTERFACE ${ARG_HEADERS})
endfunction()

# ktz_platform(name SOURCES file... USES library...): one implementation of midi/MIDIPlatform.h. Its objects go into
# the program as they are, because the libraries above it and below it need each other's symbols.
function(ktz_platform name)
    cmake_parse_arguments(ARG "" "" "SOURCES;USES" ${ARGN})
    add_library(${name} OBJECT ${ARG_SOURCES})
    target_link_libraries(${name} PUBLIC ktz_options ${ARG_USES})
    ktz_own_headers(${name} PUBLIC ${ARG_SOURCES})
endfunction()

# Where the programs' own shared libraries lie, seen from the build's folder and from an installation's prefix alike: a
# program finds them from its own place, wherever that is. One folder nearer, and cpack has the system's loader told.
set(KTZ_PRIVATE_LIBRARIES lib/ktz-jx-editor/private)

# ktz_private_libraries(program): has a program look for its own shared libraries there; on a Mac, first in its bundle.
function(ktz_private_libraries program)
    if(APPLE)
        set(places @executable_path/../Frameworks @executable_path/../${KTZ_PRIVATE_LIBRARIES})
    else()
        set(places $ORIGIN/../${KTZ_PRIVATE_LIBRARIES})
    endif()
    set_target_properties(${program} PROPERTIES INSTALL_RPATH "${places}" BUILD_WITH_INSTALL_RPATH ON)
endfunction()

# ktz_program(name SOURCES file... USES library...)
function(ktz_program name)
    cmake_parse_arguments(ARG "" "" "SOURCES;USES" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE ktz_options ${ARG_USES})
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
endfunction()
