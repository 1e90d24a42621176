# How this project declares its tests.

# ktz_run(name COMMAND program [argument...] [GUI] [LABELS label...] [ENVIRONMENT variable=value...]): has ctest run a
# program under a watchdog, which tells where it hangs before ctest's own limit ends it. GUI programs get a display of
# their own, so that they send real events to real windows and may run side by side. The first label is gui or core.
function(ktz_run name)
    cmake_parse_arguments(ARG "GUI" "" "COMMAND;LABELS;ENVIRONMENT" ${ARGN})
    set(support ${PROJECT_SOURCE_DIR}/tests/support)
    if(ARG_GUI)
        set(labels gui ${ARG_LABELS})
        set(display ${support}/with-display)
    else()
        set(labels core ${ARG_LABELS})
        set(display)
    endif()
    add_test(NAME ${name} COMMAND ${display} ${support}/watchdog 240 ${ARG_COMMAND})
    set_tests_properties(${name} PROPERTIES
        LABELS "${labels}" ENVIRONMENT "${ARG_ENVIRONMENT}" TIMEOUT 300)
endfunction()

# What the tests with the labels core and threads run: a build with ThreadSanitizer needs nothing else.
add_custom_target(threading_tests)

# ktz_brings_widgets(result library...): whether one of the libraries, or what it uses, brings Qt's widgets.
function(ktz_brings_widgets result)
    set(found FALSE)
    foreach(library ${ARGN})
        set(uses)
        if(TARGET ${library})
            get_target_property(uses ${library} INTERFACE_LINK_LIBRARIES)
        endif()
        if(NOT found AND uses)
            ktz_brings_widgets(found ${uses})
        endif()
        if(library STREQUAL "Qt6::Widgets")
            set(found TRUE)
        endif()
    endforeach()
    set(${result} ${found} PARENT_SCOPE)
endfunction()

# ktz_tests(program [SOURCES file...] USES library...): a program of Qt Test classes, which ktz_test adds.
function(ktz_tests program)
    cmake_parse_arguments(ARG "" "" "SOURCES;USES" ${ARGN})
    add_executable(${program} ${ARG_SOURCES})
    target_link_libraries(${program} PRIVATE ktz_options ktz_test_support ${ARG_USES} Qt6::Test)
    ktz_compile_together(${program} ${ARG_USES})
endfunction()

# ktz_compile_together(target library...): has several of a target's sources make one translation unit, so that the
# compiler reads their headers once, and those that nearly every test reads not even then. Their local names must not
# meet. The libraries are those that the target uses.
function(ktz_compile_together target)
    ktz_compile_as_test(${target})
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 8)
    ktz_brings_widgets(widgets ${ARGN})
    if(widgets)
        target_precompile_headers(${target} REUSE_FROM ktz_test_headers_gui)
    else()
        target_precompile_headers(${target} REUSE_FROM ktz_test_headers)
    endif()
endfunction()

# ktz_compile_as_test(target): as all that shares the tests' precompiled headers.
function(ktz_compile_as_test target)
    # The folders that Qt Test tells each target would keep them from sharing headers.
    target_compile_options(${target} PRIVATE -UQT_TESTCASE_BUILDDIR -UQT_TESTCASE_SOURCEDIR)
    # A test runs once for each time that it is built: what it calls is optimised, it itself is not.
    target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-O0>)
endfunction()

# ktz_test_name(result class): test_mem_api for TestMemAPI.
function(ktz_test_name result class)
    string(REGEX REPLACE "([a-z0-9])([A-Z])" "\\1_\\2" name ${class})
    string(REGEX REPLACE "([A-Z])([A-Z][a-z])" "\\1_\\2" name ${name})
    string(TOLOWER ${name} name)
    set(${result} ${name} PARENT_SCOPE)
endfunction()

# ktz_test(program class [GUI] [LABELS label...] [ENVIRONMENT variable=value...]): adds the source of a class to a program
# of tests. ctest runs each class as a process of its own.
function(ktz_test program class)
    cmake_parse_arguments(ARG "GUI" "" "LABELS;ENVIRONMENT" ${ARGN})
    target_sources(${program} PRIVATE ${class}.cpp)
    if(ARG_GUI)
        set(gui GUI)
    endif()
    if(NOT ARG_GUI OR threads IN_LIST ARG_LABELS)
        add_dependencies(threading_tests ${program})
    endif()
    ktz_test_name(name ${class})
    ktz_run(${name} COMMAND $<TARGET_FILE:${program}> ${class} ${gui}
        LABELS ${ARG_LABELS} ENVIRONMENT ${ARG_ENVIRONMENT})
endfunction()

# ktz_test_again(program class suffix [FUNCTIONS function...] ENVIRONMENT variable=value...): a class with a display, once
# more, in another environment. Its label is again.
function(ktz_test_again program class suffix)
    cmake_parse_arguments(ARG "" "" "FUNCTIONS;ENVIRONMENT" ${ARGN})
    ktz_test_name(name ${class})
    ktz_run(${name}_${suffix} COMMAND $<TARGET_FILE:${program}> ${class} ${ARG_FUNCTIONS} GUI LABELS again
        ENVIRONMENT ${ARG_ENVIRONMENT})
endfunction()
