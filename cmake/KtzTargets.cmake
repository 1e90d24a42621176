# How this project declares its libraries, programs and tests: same warnings, same build modes, includes from the root.

add_library(ktz_options INTERFACE)
target_include_directories(ktz_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(ktz_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
if(KTZ_WARNINGS_AS_ERRORS)
    target_compile_options(ktz_options INTERFACE -Werror)
endif()
if(KTZ_SANITIZE)
    target_compile_options(ktz_options INTERFACE -fsanitize=${KTZ_SANITIZE} -fno-omit-frame-pointer)
    target_link_options(ktz_options INTERFACE -fsanitize=${KTZ_SANITIZE})
endif()
if(KTZ_COVERAGE)
    target_compile_options(ktz_options INTERFACE --coverage)
    target_link_options(ktz_options INTERFACE --coverage)
endif()

# ktz_library(name SOURCES file... USES library...): one static library of a floor of the house.
function(ktz_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;USES" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_link_libraries(${name} PUBLIC ktz_options ${ARG_USES})
endfunction()

# ktz_platform(name SOURCES file... USES library...): one implementation of midi/MIDIPlatform.h. Its objects go into
# the program as they are, because the libraries above it and below it need each other's symbols.
function(ktz_platform name)
    cmake_parse_arguments(ARG "" "" "SOURCES;USES" ${ARGN})
    add_library(${name} OBJECT ${ARG_SOURCES})
    target_link_libraries(${name} PUBLIC ktz_options ${ARG_USES})
endfunction()

# ktz_program(name SOURCES file... USES library...)
function(ktz_program name)
    cmake_parse_arguments(ARG "" "" "SOURCES;USES" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE ktz_options ${ARG_USES})
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
endfunction()

# ktz_test(name SOURCES file... USES library... [GUI]): a Qt Test program, run by ctest. GUI tests get a display of
# their own, so that they send real events to real windows and may run side by side.
function(ktz_test name)
    cmake_parse_arguments(ARG "GUI" "" "SOURCES;USES" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE ktz_options ktz_test_support ${ARG_USES} Qt6::Test)
    if(ARG_GUI)
        add_test(NAME ${name} COMMAND ${PROJECT_SOURCE_DIR}/tests/support/with-display $<TARGET_FILE:${name}>)
        set_tests_properties(${name} PROPERTIES LABELS gui)
    else()
        add_test(NAME ${name} COMMAND ${name})
        set_tests_properties(${name} PROPERTIES LABELS core)
    endif()
    set_tests_properties(${name} PROPERTIES TIMEOUT 300)
endfunction()
